// When the files of a folder last changed, for watching the scripts folder.
#pragma once

#include <map>
#include <string>

namespace vorlith {

// File name -> modification time (nanoseconds) and size, folded into one stamp; empty
// when the folder cannot be read. Subfolders are left out.
std::map<std::string, long long> VL_FileStamps(const char* posixFolder);

}  // namespace vorlith

// Path rules that do not need the simulator: the macOS colon (HFS) form and its POSIX
// equivalent, joining with a given separator, and the folder form Python is given.
#pragma once

#include <initializer_list>
#include <string>

namespace vorlith {

// "Disk:Users:me:" -> "/Users/me" when Disk is the boot volume, "/Volumes/Disk/Users/me"
// otherwise; a '/' inside an HFS name shows as ':' in POSIX. Like the system's own
// conversion the result has no trailing '/', except the root itself. Returns 0, or -1
// (posix untouched) for a relative or malformed path or one that does not fit size bytes.
int VL_HfsToPosix(const char* hfs, const char* bootVolume, char* posix, int size);

// base followed by the parts joined with separator (base is expected to end in one).
std::string VL_JoinPath(const std::string& base, std::initializer_list<const char*> parts,
                        const std::string& separator);

// The scripts folder as it is appended to sys.path: a colon path is written under
// "/Volumes" with ':' turned into '/'; a native path stays as it is.
std::string VL_PythonFormPath(const std::string& simPath, const std::string& separator);

// A script's '/' path in the simulator's form: with ':' separators where the simulator
// uses colon paths, unchanged otherwise. A volume prefix is not taken off.
std::string VL_ColonFormPath(const std::string& path, const std::string& separator);

}  // namespace vorlith

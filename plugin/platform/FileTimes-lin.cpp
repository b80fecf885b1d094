#include "platform/FileTimes.h"

#include <dirent.h>
#include <sys/stat.h>

namespace vorlith {

std::map<std::string, long long> VL_FileStamps(const char* posixFolder) {
    std::map<std::string, long long> stamps;
    DIR* folder = opendir(posixFolder);
    if (!folder) return stamps;
    std::string path = std::string(posixFolder) + "/";
    while (dirent* entry = readdir(folder)) {
        struct stat info;
        if (stat((path + entry->d_name).c_str(), &info) != 0 || !S_ISREG(info.st_mode)) continue;
        // The size as well: an edit within the file system's time resolution still shows.
        long long nanoseconds = static_cast<long long>(info.st_mtim.tv_sec) * 1000000000LL + info.st_mtim.tv_nsec;
        stamps[entry->d_name] = nanoseconds ^ (static_cast<long long>(info.st_size) << 1);
    }
    closedir(folder);
    return stamps;
}

}  // namespace vorlith

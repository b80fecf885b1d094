// XPLMUtilities' file-system calls: the system and preferences paths, the directory
// separator, splitting a path and paging through a directory's contents. Linux only:
// legacy and native paths are the same form there.

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "XPLMUtilities.h"
#include "host.h"

namespace xpsim {
namespace {

// The SDK asks callers for path buffers of at least this many bytes.
constexpr int kPathBufferSize = 512;

// The file XPLMGetPrefsPath names; plug-ins trim it to the folder with XPLMExtractFileAndPath.
constexpr const char* kPrefsFolder = "Output/preferences";
constexpr const char* kPrefsFile = "X-Plane.prf";

void writePath(const char* function, char* out, const std::string& path) {
    if (!out) return Host::get().reportError("%s: the buffer is NULL", function);
    std::snprintf(out, kPathBufferSize, "%s", path.c_str());
}

// Sorted byte-wise so a listing is the same on every machine; "." and ".." are left out.
bool listDirectory(const char* path, std::vector<std::string>* names) {
    DIR* dir = opendir(path);
    if (!dir) return false;
    while (const dirent* entry = readdir(dir)) {
        if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0) continue;
        names->emplace_back(entry->d_name);
    }
    closedir(dir);
    std::sort(names->begin(), names->end());
    return true;
}

}  // namespace
}  // namespace xpsim

using xpsim::Host;

extern "C" {

XPLM_API void XPLMGetSystemPath(char* outSystemPath) {
    xpsim::writePath("XPLMGetSystemPath", outSystemPath, Host::get().rootPath());
}

XPLM_API void XPLMGetPrefsPath(char* outPrefsPath) {
    // The SDK does not settle whether this is the folder or a file in it; we answer a file
    // in <root>/Output/preferences/, which XPLMExtractFileAndPath turns into the folder.
    Host& host = Host::get();
    const std::string folder = host.rootPath(xpsim::kPrefsFolder);
    mkdir(folder.c_str(), 0755);  // so the folder the answer names exists
    xpsim::writePath("XPLMGetPrefsPath", outPrefsPath, folder + "/" + xpsim::kPrefsFile);
}

XPLM_API const char* XPLMGetDirectorySeparator(void) { return "/"; }

XPLM_API char* XPLMExtractFileAndPath(char* inFullPath) {
    if (!inFullPath) {
        Host::get().reportError("XPLMExtractFileAndPath: the path is NULL");
        return nullptr;
    }
    size_t length = std::strlen(inFullPath);
    if (length > 1 && inFullPath[length - 1] == '/') inFullPath[--length] = '\0';
    char* separator = std::strrchr(inFullPath, '/');
    // The SDK does not say what a path without any separator gives; we leave it untouched
    // and answer it whole as the file name.
    if (!separator) return inFullPath;
    *separator = '\0';
    return separator + 1;
}

XPLM_API int XPLMGetDirectoryContents(const char* inDirectoryPath, int inFirstReturn, char* outFileNames,
                                      int inFileNameBufSize, char** outIndices, int inIndexCount,
                                      int* outTotalFiles, int* outReturnedFiles) {
    if (outTotalFiles) *outTotalFiles = 0;
    if (outReturnedFiles) *outReturnedFiles = 0;
    Host& host = Host::get();
    if (!inDirectoryPath || inFirstReturn < 0 || inFileNameBufSize < 0 ||
        (inFileNameBufSize > 0 && !outFileNames) || (outIndices && inIndexCount < 0)) {
        host.reportError("XPLMGetDirectoryContents: invalid arguments (path %s, first %d, buffer %d, index %d)",
                         inDirectoryPath ? inDirectoryPath : "NULL", inFirstReturn, inFileNameBufSize,
                         inIndexCount);
        return 0;
    }
    if (inFileNameBufSize > 0) outFileNames[0] = '\0';
    if (outIndices && inIndexCount > 0) outIndices[0] = nullptr;

    std::vector<std::string> names;
    // A folder that cannot be read is a run-time failure, not a programming error: an
    // empty listing and 0, without the error callback.
    if (!xpsim::listDirectory(inDirectoryPath, &names)) return 0;
    const int total = static_cast<int>(names.size());

    // The SDK does not say whether the closing NULL index counts against inIndexCount;
    // we count it, so the host never writes past the caller's array.
    const int maxIndexed = outIndices ? inIndexCount - 1 : INT_MAX;
    size_t used = 0;  // bytes of outFileNames holding names
    int returned = 0;
    bool everything = true;
    for (int i = inFirstReturn; i < total; ++i) {
        const std::string& name = names[static_cast<size_t>(i)];
        // Each name with its NUL, and room left for the empty string that ends the list.
        if (returned >= maxIndexed || used + name.size() + 2 > static_cast<size_t>(inFileNameBufSize)) {
            everything = false;
            break;
        }
        std::memcpy(outFileNames + used, name.c_str(), name.size() + 1);
        if (outIndices) outIndices[returned] = outFileNames + used;
        used += name.size() + 1;
        ++returned;
    }
    if (inFileNameBufSize > 0) outFileNames[used] = '\0';
    if (outIndices && inIndexCount > 0) outIndices[returned] = nullptr;
    if (outTotalFiles) *outTotalFiles = total;
    if (outReturnedFiles) *outReturnedFiles = returned;
    return everything ? 1 : 0;
}

}  // extern "C"

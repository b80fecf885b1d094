// The HFS to POSIX conversion and the other separator rules, free of the SDK so they
// can be tested on any platform.

#include "platform/PathConvert.h"

#include <cstring>
#include <vector>

namespace vorlith {

int VL_HfsToPosix(const char* hfs, const char* bootVolume, char* posix, int size) {
    if (!hfs || !posix || size <= 0 || hfs[0] == '\0' || hfs[0] == ':') return -1;
    std::vector<std::string> names(1);
    for (const char* p = hfs; *p; ++p) {
        if (*p == ':') names.emplace_back();
        else names.back() += (*p == '/') ? ':' : *p;
    }
    if (names.size() > 1 && names.back().empty()) names.pop_back();  // the folder mark
    for (const std::string& name : names)
        if (name.empty()) return -1;  // "::" means the parent folder: not a path we build

    std::string out;
    if (!bootVolume || names[0] != bootVolume) out = "/Volumes/" + names[0];
    for (std::size_t i = 1; i < names.size(); ++i) out += "/" + names[i];
    if (out.empty()) out = "/";
    if (out.size() + 1 > static_cast<std::size_t>(size)) return -1;
    std::memcpy(posix, out.c_str(), out.size() + 1);
    return 0;
}

std::string VL_JoinPath(const std::string& base, std::initializer_list<const char*> parts,
                        const std::string& separator) {
    std::string path = base;
    bool first = true;
    for (const char* part : parts) {
        if (!first) path += separator;
        path += part;
        first = false;
    }
    return path;
}

std::string VL_PythonFormPath(const std::string& simPath, const std::string& separator) {
    if (separator != ":") return simPath;
    std::string path = "/Volumes:" + simPath;
    for (char& c : path)
        if (c == ':') c = '/';
    return path;
}

std::string VL_ColonFormPath(const std::string& path, const std::string& separator) {
    if (separator != ":") return path;
    std::string colon = path;
    for (char& c : colon)
        if (c == '/') c = ':';
    return colon;
}

}  // namespace vorlith

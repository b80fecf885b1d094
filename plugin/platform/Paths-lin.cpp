// Linux paths: the simulator hands out native paths with '/', so converting is a
// bounded copy, and the SDK library sits in the plugins folder as XPLM_64.so.

#include "platform/Paths.h"

#include <cstring>

#include "XPLMUtilities.h"
#include "platform/PathConvert.h"

namespace vorlith {

std::string VL_SimSeparator() {
    const char* separator = XPLMGetDirectorySeparator();
    return separator ? separator : "/";
}

std::string VL_SimPath(std::initializer_list<const char*> parts) {
    char system[1024] = {0};  // the SDK writes at most 512 bytes
    XPLMGetSystemPath(system);
    system[sizeof system - 1] = '\0';
    return VL_JoinPath(system, parts, VL_SimSeparator());
}

int VL_ConvertPath(const char* simPath, char* posixPath, int size) {
    if (!simPath || !posixPath || size <= 0) return -1;
    std::size_t length = std::strlen(simPath);
    if (length + 1 > static_cast<std::size_t>(size)) return -1;
    std::memcpy(posixPath, simPath, length + 1);
    return 0;
}

std::string VL_ScriptPathFromSim(const char* simPath) {
    return VL_PythonFormPath(simPath ? simPath : "", VL_SimSeparator());
}

std::string VL_SimPathFromScript(const char* path) {
    return VL_ColonFormPath(path ? path : "", VL_SimSeparator());
}

std::string VL_SdkLibraryPath() { return VL_SimPath({"Resources", "plugins", "XPLM_64.so"}); }

}  // namespace vorlith

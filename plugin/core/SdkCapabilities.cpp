// Capability detection: one lookup per late SDK function through XPLMFindSymbol.

#include "core/SdkCapabilities.h"

#include "platform/DynamicLibrary.h"

namespace vorlith {

#define VL_DEFINE_LATE_POINTER(function, generation) decltype(&::function) function##_ptr = nullptr;
VL_LATE_SDK_FUNCTIONS(VL_DEFINE_LATE_POINTER)
#undef VL_DEFINE_LATE_POINTER

decltype(&::XPLMFindSymbol) XPLMFindSymbol_ptr = nullptr;

int FoundSDK200(const char* sdkLibraryPath) {
    void* library = XPLoadDLL(sdkLibraryPath);
    if (!library) return 0;  // SDK 1.02: the pointers stay as they are
    XPLMFindSymbol_ptr = reinterpret_cast<decltype(XPLMFindSymbol_ptr)>(XPFindSymbol(library, "XPLMFindSymbol"));
#define VL_LOOK_UP(function, generation) \
    function##_ptr = XPLMFindSymbol_ptr ? reinterpret_cast<decltype(function##_ptr)>(XPLMFindSymbol_ptr(#function)) : nullptr;
    VL_LATE_SDK_FUNCTIONS(VL_LOOK_UP)
#undef VL_LOOK_UP
    return XPLMFindSymbol_ptr ? 1 : 0;
}

}  // namespace vorlith

// The native-path bracket of the _NP functions: the simulator's path feature is global to
// the plug-in, so it is switched to the calling script's own setting for one SDK call and
// always left off afterwards.
#pragma once

#include "core/ScriptTable.h"
#include "core/SdkCapabilities.h"

namespace vorlith {

constexpr const char* VL_NativePathsFeature = "XPLM_USE_NATIVE_PATHS";

class VL_NativePathScope {
public:
    // The feature is looked up by its name rather than by its place in the simulator's
    // enumeration. A simulator without feature functions has only one kind of path: the
    // call then runs without the bracket instead of through a null pointer.
    explicit VL_NativePathScope(PyObject* scriptId) : active_(XPLMEnableFeature_ptr != nullptr) {
        if (!active_) return;
        int wanted = 0;
        if (VLTestTable)
            wanted = VLTestTable->IsFeatureEnabled(
                scriptId, VLTestTable->GetFeatureIdFromFeatureName(VL_NativePathsFeature));
        XPLMEnableFeature_ptr(VL_NativePathsFeature, wanted);
    }
    ~VL_NativePathScope() {
        if (active_) XPLMEnableFeature_ptr(VL_NativePathsFeature, 0);
    }
    VL_NativePathScope(const VL_NativePathScope&) = delete;
    VL_NativePathScope& operator=(const VL_NativePathScope&) = delete;

private:
    bool active_;
};

}  // namespace vorlith

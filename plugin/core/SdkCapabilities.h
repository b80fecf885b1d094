// The SDK functions that only newer simulators have: found at start through the SDK's
// own symbol lookup, null when the simulator lacks them. A binding that needs one
// tests its pointer and reports VL_NotSupported200 / VL_NotSupported210 instead.
#pragma once

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMMenus.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMScenery.h"
#include "XPLMUtilities.h"

namespace vorlith {

// Every late function in lookup order: X(function, generation).
#define VL_LATE_SDK_FUNCTIONS(X)                                                  \
    X(XPLMCreateWindowEx, 200) X(XPLMMeasureString, 200) X(XPLMCreateProbe, 200)  \
    X(XPLMDestroyProbe, 200) X(XPLMProbeTerrainXYZ, 200) X(XPLMLoadObject, 200)   \
    X(XPLMDrawObjects, 200) X(XPLMUnloadObject, 200) X(XPLMLookupObjects, 200)    \
    X(XPLMSetErrorCallback, 200) X(XPLMLoadDataFile, 200)                         \
    X(XPLMSaveDataFile, 200) X(XPLMFindCommand, 200) X(XPLMCommandBegin, 200)     \
    X(XPLMCommandEnd, 200) X(XPLMCommandOnce, 200) X(XPLMCreateCommand, 200)      \
    X(XPLMRegisterCommandHandler, 200) X(XPLMUnregisterCommandHandler, 200)       \
    X(XPLMHasFeature, 200) X(XPLMIsFeatureEnabled, 200) X(XPLMEnableFeature, 200) \
    X(XPLMEnumerateFeatures, 200) X(XPLMRemoveMenuItem, 210)                      \
    X(XPLMCreateFlightLoop, 210) X(XPLMDestroyFlightLoop, 210)                    \
    X(XPLMScheduleFlightLoop, 210) X(XPLMLoadObjectAsync, 210)

#define VL_DECLARE_LATE_POINTER(function, generation) extern decltype(&::function) function##_ptr;
VL_LATE_SDK_FUNCTIONS(VL_DECLARE_LATE_POINTER)
#undef VL_DECLARE_LATE_POINTER

extern decltype(&::XPLMFindSymbol) XPLMFindSymbol_ptr;

// The reports of a binding whose late function is missing.
constexpr const char* VL_NotSupported200 = "Not supported in SDK 1.02";
constexpr const char* VL_NotSupported210 = "Not supported in SDK 1.02 or SDK 2.00";

// Opens the SDK library at sdkLibraryPath and fills every pointer above. 1 if the
// library has XPLMFindSymbol (SDK 2.00 or later), 0 if not (pointers then stay null).
int FoundSDK200(const char* sdkLibraryPath);

}  // namespace vorlith

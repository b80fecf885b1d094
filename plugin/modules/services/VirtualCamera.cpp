// The module TembrookVCUtilities and the fourteen shared datarefs it carries to the
// companion virtual-camera plug-in: published at every interpreter start and withdrawn at
// every stop, so that they exist whichever of the two plug-ins starts first.

#include "XPLMDataAccess.h"
#include "core/PythonErrors.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"

namespace vorlith {

XPLMDataRef gVC_CameraIndexSharedDataRef = nullptr;
XPLMDataRef gVC_CameraTypeIndexSharedDataRef = nullptr;
XPLMDataRef gVC_CameraPluginReadySharedDataRef = nullptr;
XPLMDataRef gVC_AcquireCameraSharedDataRef = nullptr;
XPLMDataRef gVC_ReleaseCameraSharedDataRef = nullptr;
XPLMDataRef gVC_SetCameraSharedDataRef = nullptr;
XPLMDataRef gVC_XOffsetSharedDataRef = nullptr;
XPLMDataRef gVC_YOffsetSharedDataRef = nullptr;
XPLMDataRef gVC_ZOffsetSharedDataRef = nullptr;
XPLMDataRef gVC_HeadingOffsetSharedDataRef = nullptr;
XPLMDataRef gVC_PitchOffsetSharedDataRef = nullptr;
XPLMDataRef gVC_RollOffsetSharedDataRef = nullptr;
XPLMDataRef gVC_ZoomRatioSharedDataRef = nullptr;
XPLMDataRef gVC_LookAtAircraftIndexSharedDataRef = nullptr;

namespace {

constexpr const char* kModule = "TembrookVCUtilities";

struct SharedDataRef {
    const char* name;
    XPLMDataTypeID type;
    XPLMDataRef* handle;
};

// In the order they are published, withdrawn and looked up; the index is the reference
// value given to the SDK.
enum VirtualCameraData {
    kCameraIndex, kCameraTypeIndex, kCameraPluginReady, kAcquireCamera, kReleaseCamera, kSetCamera,
    kXOffset, kYOffset, kZOffset, kHeadingOffset, kPitchOffset, kRollOffset, kZoomRatio, kLookAtAircraft,
};
const SharedDataRef kSharedDataRefs[] = {
    {"tembrook/virtualcamera/cameraindex", xplmType_Int, &gVC_CameraIndexSharedDataRef},
    {"tembrook/virtualcamera/cameratypeindex", xplmType_Int, &gVC_CameraTypeIndexSharedDataRef},
    {"tembrook/virtualcamera/camerapluginready", xplmType_Int, &gVC_CameraPluginReadySharedDataRef},
    {"tembrook/virtualcamera/acquirecamera", xplmType_Int, &gVC_AcquireCameraSharedDataRef},
    {"tembrook/virtualcamera/releasecamera", xplmType_Int, &gVC_ReleaseCameraSharedDataRef},
    {"tembrook/virtualcamera/setcamera", xplmType_Int, &gVC_SetCameraSharedDataRef},
    {"tembrook/virtualcamera/xoffset", xplmType_Float, &gVC_XOffsetSharedDataRef},
    {"tembrook/virtualcamera/yoffset", xplmType_Float, &gVC_YOffsetSharedDataRef},
    {"tembrook/virtualcamera/zoffset", xplmType_Float, &gVC_ZOffsetSharedDataRef},
    {"tembrook/virtualcamera/headingoffset", xplmType_Float, &gVC_HeadingOffsetSharedDataRef},
    {"tembrook/virtualcamera/pitchoffset", xplmType_Float, &gVC_PitchOffsetSharedDataRef},
    {"tembrook/virtualcamera/rolloffset", xplmType_Float, &gVC_RollOffsetSharedDataRef},
    {"tembrook/virtualcamera/zoomratio", xplmType_Float, &gVC_ZoomRatioSharedDataRef},
    {"tembrook/virtualcamera/lookataircraft", xplmType_Int, &gVC_LookAtAircraftIndexSharedDataRef},
};
static_assert(sizeof kSharedDataRefs / sizeof kSharedDataRefs[0] == kLookAtAircraft + 1,
              "one row per shared dataref");

// What the companion writes is read when a script asks; nothing to do on a change.
void VirtualCameraDataChangedCB2(void*) {}

void* IndexRefcon(std::size_t index) { return reinterpret_cast<void*>(index); }

// A dataref that could not be shared or found (another plug-in shares the name with
// another type) reads 0 and takes no writes, without asking the SDK about a null handle.
template <int Index>
PyObject* GetInt(PyObject*, PyObject*) {
    return VL_Guarded(kModule, "XPLMGetDatai", [] {
        XPLMDataRef ref = *kSharedDataRefs[Index].handle;
        return VL_IntFromLong(ref ? XPLMGetDatai(ref) : 0);
    });
}

template <int Index>
PyObject* GetFloat(PyObject*, PyObject*) {
    return VL_Guarded(kModule, "XPLMGetDataf", [] {
        XPLMDataRef ref = *kSharedDataRefs[Index].handle;
        return PyFloat_FromDouble(ref ? XPLMGetDataf(ref) : 0.0f);
    });
}

void SetInt(int index, int value) {
    if (XPLMDataRef ref = *kSharedDataRefs[index].handle) XPLMSetDatai(ref, value);
}

template <int Index>
PyObject* SetIntFromArgs(PyObject*, PyObject* args) {
    int value;
    if (!PyArg_ParseTuple(args, "i", &value)) return nullptr;
    return VL_Guarded(kModule, "XPLMSetDatai", [&] {
        SetInt(Index, value);
        return VL_IntFromLong(0);
    });
}

template <int Index>
PyObject* SetFloatFromArgs(PyObject*, PyObject* args) {
    float value;
    if (!PyArg_ParseTuple(args, "f", &value)) return nullptr;
    return VL_Guarded(kModule, "XPLMSetDataf", [&] {
        if (XPLMDataRef ref = *kSharedDataRefs[Index].handle) XPLMSetDataf(ref, value);
        return VL_IntFromLong(0);
    });
}

// Acquire, release and set only write 1; the companion resets the value.
template <int Index>
PyObject* Command(PyObject*, PyObject*) {
    return VL_Guarded(kModule, "XPLMSetDatai", [] {
        SetInt(Index, 1);
        return VL_IntFromLong(0);
    });
}

PyMethodDef TembrookVCUtilitiesMethods[] = {
    {"VC_CameraPluginReady", GetInt<kCameraPluginReady>, VL_METH_ARGS, "Check that VC plugin is ready."},
    {"VC_AcquireCamera", Command<kAcquireCamera>, VL_METH_ARGS, "Acquire the VC."},
    {"VC_ReleaseCamera", Command<kReleaseCamera>, VL_METH_ARGS, "Release the VC."},
    {"VC_SetCamera", Command<kSetCamera>, VL_METH_ARGS, "Set the Camerar."},
    {"VC_GetCameraIndex", GetInt<kCameraIndex>, VL_METH_ARGS, "Get the Camera Index."},
    {"VC_GetCameraTypeIndex", GetInt<kCameraTypeIndex>, VL_METH_ARGS, "Get the Camera Type Index."},
    {"VC_GetXOffset", GetFloat<kXOffset>, VL_METH_ARGS, "Get the X Offset."},
    {"VC_GetYOffset", GetFloat<kYOffset>, VL_METH_ARGS, "Get the Y Offset."},
    {"VC_GetZOffset", GetFloat<kZOffset>, VL_METH_ARGS, "Get the Z Offset."},
    {"VC_GetHeadingOffset", GetFloat<kHeadingOffset>, VL_METH_ARGS, "Get the Heading Offset."},
    {"VC_GetPitchOffset", GetFloat<kPitchOffset>, VL_METH_ARGS, "Get the Pitch Offset."},
    {"VC_GetRollOffset", GetFloat<kRollOffset>, VL_METH_ARGS, "Get the Roll Offset."},
    {"VC_GetZoomRatio", GetFloat<kZoomRatio>, VL_METH_ARGS, "Get the Zoom Ratio."},
    {"VC_SetCameraIndex", SetIntFromArgs<kCameraIndex>, VL_METH_ARGS, "Set the Camera Index."},
    {"VC_SetCameraTypeIndex", SetIntFromArgs<kCameraTypeIndex>, VL_METH_ARGS, "Set the Camera Type Index."},
    {"VC_SetXOffset", SetFloatFromArgs<kXOffset>, VL_METH_ARGS, "Set the X Offset."},
    {"VC_SetYOffset", SetFloatFromArgs<kYOffset>, VL_METH_ARGS, "Set the Y Offset."},
    {"VC_SetZOffset", SetFloatFromArgs<kZOffset>, VL_METH_ARGS, "Set the Z Offset."},
    {"VC_SetHeadingOffset", SetFloatFromArgs<kHeadingOffset>, VL_METH_ARGS, "Set the Heading Offset."},
    {"VC_SetPitchOffset", SetFloatFromArgs<kPitchOffset>, VL_METH_ARGS, "Set the Pitch Offset."},
    {"VC_SetRollOffset", SetFloatFromArgs<kRollOffset>, VL_METH_ARGS, "Set the Roll Offset."},
    {"VC_SetZoomRatio", SetFloatFromArgs<kZoomRatio>, VL_METH_ARGS, "Set the Zoom Ratio."},
    {"VC_GetLookAtAircraft", GetInt<kLookAtAircraft>, VL_METH_ARGS, "Get the LookAtAircraft Index."},
    {"VC_SetLookAtAircraft", SetIntFromArgs<kLookAtAircraft>, VL_METH_ARGS, "Set the LookAtAircraft Index."},
    {nullptr, nullptr, 0, nullptr},
};

// A start that found no scripts folder leaves the data shared and is not stopped before
// the next start: sharing once until the stop keeps one share per stop.
bool gShared = false;

}  // namespace

void VL_ShareVirtualCameraData() {
    if (gShared) return;
    gShared = true;
    for (std::size_t i = 0; i < sizeof kSharedDataRefs / sizeof kSharedDataRefs[0]; ++i)
        XPLMShareData(kSharedDataRefs[i].name, kSharedDataRefs[i].type, VirtualCameraDataChangedCB2, IndexRefcon(i));
}

void VL_UnshareVirtualCameraData() {
    if (!gShared) return;
    gShared = false;
    for (std::size_t i = 0; i < sizeof kSharedDataRefs / sizeof kSharedDataRefs[0]; ++i)
        XPLMUnshareData(kSharedDataRefs[i].name, kSharedDataRefs[i].type, VirtualCameraDataChangedCB2,
                        IndexRefcon(i));
}

// Looked up again at every start: the handles of an earlier start may be gone.
void initTembrookVCUtilities() {
    for (const SharedDataRef& shared : kSharedDataRefs) *shared.handle = XPLMFindDataRef(shared.name);
    if (!VL_CreateModule("TembrookVCUtilities", TembrookVCUtilitiesMethods)) VL_PrintPythonError();
}

}  // namespace vorlith

// The module XPLMCamera: a script takes the camera with a control callable (one record
// in CameraCallbackList per call, its cell handed to VL_CameraControlCallback), gives it
// back, and reads where the camera is.

#include "XPLMCamera.h"
#include "callbacks/Trampolines.h"
#include "core/PythonErrors.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"

namespace vorlith {

namespace {

constexpr const char* kModule = "XPLMCamera";

PyObject* PY_XPLMControlCamera(PyObject*, PyObject* args) {
    PyObject *self, *callable, *refconObject;
    int howLong;
    if (!PyArg_ParseTuple(args, "OiOO", &self, &howLong, &callable, &refconObject)) return nullptr;
    void* refcon = VL_RefconFromObject(refconObject);
    return VL_Guarded(kModule, "XPLMControlCamera", [&] {
        // Every call is a record of its own, even for a script that already has one.
        _CallbackList* cell = VL_Table().AddCallback(CameraCallbackList, self, nullptr, callable, refcon);
        XPLMControlCamera(howLong, VL_CameraControlCallback, cell);
        // The size line carries the hot key list's name; scripts' authors know it so.
        if (VL_Tracing())
            VL_Trace("XPLMControlCamera")
                .line("pScriptId = %x, inHowLong = %d, inRefcon = %d\n", VL_Low32(self), howLong,
                      VL_Int(refcon))
                .size("HotKeysCallbackList", CameraCallbackList);
        return VL_Done();
    });
}

PyObject* PY_XPLMDontControlCamera(PyObject*, PyObject* args) {
    PyObject* self;
    if (!VL_ParseOneObject(args, &self)) return nullptr;
    return VL_Guarded(kModule, "XPLMDontControlCamera", [&]() -> PyObject* {
        int found = 0, position = 0;
        _CallbackList* cell = VL_Table().FindCallback(CameraCallbackList, self, nullptr, found, position);
        if (found) {
            try {
                XPLMDontControlCamera();
            } catch (...) {
                PrintException(kModule, "XPLMDontControlCamera", "Function Error");
                return VL_IntFromLong(0);
            }
            VL_Table().DeleteCallback(CameraCallbackList, cell, position);
        } else {
            VL_ReportForScript(kModule, "XPLMDontControlCamera", VL_NoSuchCallback, self);
        }
        if (VL_Tracing())
            VL_Trace("XPLMDontControlCamera")
                .line("pScriptId = %x, Script Name = %s\n", VL_Low32(self), VL_ScriptName(self).c_str())
                .size("CameraCallbackList", CameraCallbackList);
        return VL_Done();
    });
}

PyObject* PY_XPLMIsCameraBeingControlled(PyObject*, PyObject*) {
    return VL_Guarded(kModule, "XPLMIsCameraBeingControlled", [] {
        XPLMCameraControlDuration howLong = 0;
        int controlled = XPLMIsCameraBeingControlled(&howLong);
        return Py_BuildValue("(ii)", controlled, howLong);
    });
}

// Seven floats appended after what the list holds: a reused list grows by seven a call.
PyObject* PY_XPLMReadCameraPosition(PyObject*, PyObject* args) {
    PyObject* list;
    if (!VL_ParseOneObject(args, &list) || !VL_CheckOutLists({list})) return nullptr;
    XPLMCameraPosition_t position{};
    if (!VL_GuardedCall(kModule, "XPLMReadCameraPosition", [&] { XPLMReadCameraPosition(&position); }))
        return Py_BuildValue("(i)", 0);
    const float values[] = {position.x,       position.y,    position.z,   position.pitch,
                            position.heading, position.roll, position.zoom};
    for (float value : values)
        if (!VL_AppendOut(list, PyFloat_FromDouble(value))) return nullptr;
    return Py_BuildValue("(i)", 1);
}

PyMethodDef XPLMCameraMethods[] = {
    {"XPLMControlCamera", PY_XPLMControlCamera, VL_METH_ARGS, "Control Camera."},
    {"XPLMDontControlCamera", PY_XPLMDontControlCamera, VL_METH_ARGS, "Dont Control Camera."},
    {"XPLMIsCameraBeingControlled", PY_XPLMIsCameraBeingControlled, VL_METH_ARGS,
     "Is the Camera being Controlledk."},
    {"XPLMReadCameraPosition", PY_XPLMReadCameraPosition, VL_METH_ARGS, "Read Camera Position."},
    {nullptr, nullptr, 0, nullptr},
};

const VL_Constant XPLMCameraConstants[] = {
    {"xplm_ControlCameraUntilViewChanges", xplm_ControlCameraUntilViewChanges},
    {"xplm_ControlCameraForever", xplm_ControlCameraForever},
};

}  // namespace

void initXPLMCamera() {
    PyObject* module = VL_CreateModule("XPLMCamera", XPLMCameraMethods);
    if (!module || !VL_AddConstants(module, XPLMCameraConstants)) VL_PrintPythonError();
}

}  // namespace vorlith

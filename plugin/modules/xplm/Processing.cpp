// The module XPLMProcessing: the simulator's clock and flight loops, each registration a
// record in FlightLoopCallbackList whose cell the SDK hands back to VL_FlightLoopCallback.
// Creating, scheduling and destroying flight loops need an SDK 2.10 simulator.

#include <string>

#include "XPLMProcessing.h"
#include "callbacks/Trampolines.h"
#include "core/PythonErrors.h"
#include "core/SdkCapabilities.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"

namespace vorlith {

namespace {

constexpr const char* kModule = "XPLMProcessing";

PyObject* PY_XPLMGetElapsedTime(PyObject*, PyObject*) {
    return VL_Guarded(kModule, "XPLMGetElapsedTime",
                      [] { return PyFloat_FromDouble(XPLMGetElapsedTime()); });
}

PyObject* PY_XPLMGetCycleNumber(PyObject*, PyObject*) {
    return VL_Guarded(kModule, "XPLMGetCycleNumber",
                      [] { return VL_IntFromLong(XPLMGetCycleNumber()); });
}

PyObject* PY_XPLMRegisterFlightLoopCallback(PyObject*, PyObject* args) {
    PyObject *self, *callable, *refconObject;
    float interval;
    if (!PyArg_ParseTuple(args, "OOfO", &self, &callable, &interval, &refconObject)) return nullptr;
    void* refcon = VL_RefconFromObject(refconObject);
    return VL_Guarded(kModule, "XPLMRegisterFlightLoopCallback", [&] {
        // Found again by callable and refcon only: a null handle never names it.
        _CallbackList* cell = VL_Table().AddCallback(FlightLoopCallbackList, self, nullptr, callable,
                                                     refcon, VL_FoundBy::Callable);
        XPLMRegisterFlightLoopCallback(VL_FlightLoopCallback, interval, cell);
        if (VL_Tracing())
            VL_Trace("XPLMRegisterFlightLoopCallback")
                .line("pScriptId = %x, Interval = %f, inRefcon = %d\n", VL_Low32(self), interval,
                      VL_Int(refcon))
                .size("FlightLoopCallbackList", FlightLoopCallbackList);
        return VL_Done();
    });
}

PyObject* PY_XPLMUnregisterFlightLoopCallback(PyObject*, PyObject* args) {
    PyObject *self, *callable, *refconObject;
    if (!PyArg_ParseTuple(args, "OOO", &self, &callable, &refconObject)) return nullptr;
    void* refcon = VL_RefconFromObject(refconObject);
    return VL_Guarded(kModule, "XPLMUnregisterFlightLoopCallback", [&] {
        int found = 0, position = 0;
        _CallbackList* cell =
            VL_Table().FindCallback(FlightLoopCallbackList, self, callable, refcon, found, position);
        if (found) {
            XPLMUnregisterFlightLoopCallback(VL_FlightLoopCallback, cell);
            VL_Table().DeleteCallback(FlightLoopCallbackList, cell, position);
        } else {
            VL_ReportForScript(kModule, "XPLMUnregisterFlightLoopCallback", VL_NoSuchCallbackRefcon, self);
        }
        if (VL_Tracing())
            VL_Trace("XPLMUnregisterFlightLoopCallback")
                .line("pScriptId = %x, Script Name = %s, inRefcon = %d\n", VL_Low32(self),
                      VL_ScriptName(self).c_str(), VL_Int(refcon))
                .size("FlightLoopCallbackList", FlightLoopCallbackList);
        return VL_Done();
    });
}

// The one binding that explains its arguments: its form changed once and old scripts
// still call it the old way.
void LogIntervalUsage() {
    const std::string rule = std::string(115, '-') + "\n";
    VL_WriteToLog(rule.c_str());
    PrintException(kModule, "XPLMSetFlightLoopCallbackInterval", "Wrong number of parameters Error");
    VL_WriteToLog(rule.c_str());
    VL_WriteToLog("This changed from Version 2.66.01 onwards as the original syntax was incorrect.\n");
    VL_WriteToLog("Usage Syntax :- XPLMSetFlightLoopCallbackInterval(self, FlightLoopCallbackPointer, "
                  "Interval, RelativeToNow, RefCon)\n");
    VL_WriteToLog("Usage Example :- XPLMSetFlightLoopCallbackInterval(self, self.ExampleFlightLoopCB, "
                  "3.0, 1, 0)\n");
    VL_WriteToLog(rule.c_str());
}

PyObject* PY_XPLMSetFlightLoopCallbackInterval(PyObject*, PyObject* args) {
    PyObject *self, *callable, *refconObject;
    float interval;
    int relativeToNow;
    if (!PyArg_ParseTuple(args, "OOfiO", &self, &callable, &interval, &relativeToNow,
                          &refconObject)) {
        LogIntervalUsage();
        return nullptr;
    }
    void* refcon = VL_RefconFromObject(refconObject);
    return VL_Guarded(kModule, "XPLMSetFlightLoopCallbackInterval", [&] {
        int found = 0, position = 0;
        _CallbackList* cell =
            VL_Table().FindCallback(FlightLoopCallbackList, self, callable, refcon, found, position);
        if (found)
            XPLMSetFlightLoopCallbackInterval(VL_FlightLoopCallback, interval, relativeToNow, cell);
        else
            VL_ReportForScript(kModule, "XPLMSetFlightLoopCallbackInterval",
                               "Script '%s.py' was trying to set a callback and refcon that does not "
                               "exist, check refcon matches the one that was used in registering.",
                               self);
        return VL_Done();
    });
}

PyObject* PY_XPLMCreateFlightLoop(PyObject*, PyObject* args) {
    // An SDK 2.10 function: 0 on an older simulator, before looking at the arguments.
    if (!VL_Supported(kModule, "XPLMCreateFlightLoop", XPLMCreateFlightLoop_ptr, VL_NotSupported210))
        return VL_IntFromLong(0);
    PyObject *self, *parameters, *callable, *refconObject;
    int phase;
    if (!PyArg_ParseTuple(args, "OO", &self, &parameters)) return nullptr;
    // The parameters (phase, callable, refcon) get the parser's own TypeError.
    PyObject* fields = PySequence_Check(parameters) ? PySequence_Tuple(parameters) : nullptr;
    if (!fields) {
        if (!PyErr_Occurred()) PyErr_SetString(PyExc_TypeError, "expected sequence (phase, callback, refcon)");
        return nullptr;
    }
    if (!PyArg_ParseTuple(fields, "iOO", &phase, &callable, &refconObject)) {
        Py_DECREF(fields);
        return nullptr;
    }
    void* refcon = VL_RefconFromObject(refconObject);
    Py_INCREF(callable);  // outlives the tuple for the rest of the call
    Py_DECREF(fields);
    PyObject* result = VL_Guarded(kModule, "XPLMCreateFlightLoop", [&] {
        // Only a bound method gets a record; anything else runs as an inactive flight loop.
        bool recorded = Py_TYPE(callable) == &PyMethod_Type;
        _CallbackList* cell = recorded ? VL_Table().AddCallback(FlightLoopCallbackList, self,
                                                                nullptr, callable, refcon)
                                       : nullptr;
        XPLMCreateFlightLoop_t create = {static_cast<int>(sizeof(XPLMCreateFlightLoop_t)), phase,
                                         VL_FlightLoopCallback, cell};
        XPLMFlightLoopID id = XPLMCreateFlightLoop_ptr(&create);
        if (recorded) VL_Table().UpdateCallback(FlightLoopCallbackList, cell, id);
        if (VL_Tracing())
            VL_Trace("XPLMCreateFlightLoop")
                .line("pScriptId = %x, phase = %d, Refcon = %d, FlightLoopID = %x\n", VL_Low32(self),
                      phase, VL_Int(cell ? refcon : nullptr), VL_Low32(id))
                .size("FlightLoopCallbackList", FlightLoopCallbackList);
        return VL_HandleObject(id);
    });
    Py_DECREF(callable);
    return result;
}

PyObject* PY_XPLMDestroyFlightLoop(PyObject*, PyObject* args) {
    if (!VL_Supported(kModule, "XPLMDestroyFlightLoop", XPLMDestroyFlightLoop_ptr, VL_NotSupported210))
        return VL_IntFromLong(0);
    PyObject *self, *idObject;
    if (!PyArg_ParseTuple(args, "OO", &self, &idObject)) return nullptr;
    void* id = VL_HandleFromObject(idObject);
    return VL_Guarded(kModule, "XPLMDestroyFlightLoop", [&] {
        int found = 0, position = 0;
        _CallbackList* cell = VL_Table().FindCallback(FlightLoopCallbackList, self, id, found, position);
        if (found) {
            XPLMDestroyFlightLoop_ptr(id);
            VL_Table().DeleteCallback(FlightLoopCallbackList, cell, position);
        } else {
            VL_ReportForScript(kModule, "XPLMDestroyFlightLoop", VL_NoSuchCallback, self);
        }
        if (VL_Tracing())
            VL_Trace("XPLMDestroyFlightLoop")
                .line("pScriptId = %x, Script Name = %s, inFlightLoopID = %x\n", VL_Low32(self),
                      VL_ScriptName(self).c_str(), VL_Low32(id))
                .size("FlightLoopCallbackList", FlightLoopCallbackList);
        return VL_Done();
    });
}

PyObject* PY_XPLMScheduleFlightLoop(PyObject*, PyObject* args) {
    if (!VL_Supported(kModule, "XPLMScheduleFlightLoop", XPLMScheduleFlightLoop_ptr, VL_NotSupported210))
        return VL_IntFromLong(0);
    PyObject *self, *idObject;
    float interval;
    int relativeToNow;
    if (!PyArg_ParseTuple(args, "OOfi", &self, &idObject, &interval, &relativeToNow)) return nullptr;
    void* id = VL_HandleFromObject(idObject);
    return VL_Guarded(kModule, "XPLMScheduleFlightLoop", [&] {
        XPLMScheduleFlightLoop_ptr(id, interval, relativeToNow);
        return VL_Done();
    });
}

PyMethodDef XPLMProcessingMethods[] = {
    {"XPLMGetElapsedTime", PY_XPLMGetElapsedTime, VL_METH_ARGS, "Get Elapsed Time."},
    {"XPLMGetCycleNumber", PY_XPLMGetCycleNumber, VL_METH_ARGS, "Get Cycle Number."},
    {"XPLMRegisterFlightLoopCallback", PY_XPLMRegisterFlightLoopCallback, VL_METH_ARGS,
     "Register Flight Loop Callback."},
    {"XPLMUnregisterFlightLoopCallback", PY_XPLMUnregisterFlightLoopCallback, VL_METH_ARGS,
     "Unregister Flight Loop Callback."},
    {"XPLMSetFlightLoopCallbackInterval", PY_XPLMSetFlightLoopCallbackInterval, VL_METH_ARGS,
     "Set Flight Loop Callback Interval."},
    {"XPLMCreateFlightLoop", PY_XPLMCreateFlightLoop, VL_METH_ARGS, "Create Flight Loop Callback."},
    {"XPLMDestroyFlightLoop", PY_XPLMDestroyFlightLoop, VL_METH_ARGS, "Destroy Flight Loop Callback."},
    {"XPLMScheduleFlightLoop", PY_XPLMScheduleFlightLoop, VL_METH_ARGS,
     "Schedule Flight Loop Callback."},
    {nullptr, nullptr, 0, nullptr},
};

}  // namespace

void initXPLMProcessing() {
    if (!VL_CreateModule("XPLMProcessing", XPLMProcessingMethods)) VL_PrintPythonError();
}

}  // namespace vorlith

// The module XPLMPlanes: the user's aircraft and airport, aircraft models, taking the
// other aircraft (a record in PlanesAvailableCallbackList per XPLMAcquirePlanes, its cell
// handed to VL_PlanesAvailableCallback) and drawing an aircraft.

#include <string>
#include <vector>

#include "XPLMPlanes.h"
#include "callbacks/Trampolines.h"
#include "core/PythonErrors.h"
#include "core/SdkCapabilities.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"
#include "modules/xplm/NativePaths.h"
#include "platform/PathConvert.h"
#include "platform/Paths.h"

namespace vorlith {

namespace {

constexpr const char* kModule = "XPLMPlanes";

// The model name and path buffers; the SDK writes at most 256 and 512 bytes.
constexpr int kPathBuffer = 1024;
// XPLMAcquirePlanes reads at most this many aircraft paths from the list, then always ends
// the array with a null entry. The simulator has fewer AI slots than that and ignores
// names beyond its last one.
constexpr std::size_t kMaxAircraftPaths = 64;

template <void (*Call)(const char*)>
PyObject* WithText(PyObject* args, const char* function) {
    VL_Text text;
    if (!PyArg_ParseTuple(args, "O&", VL_ParseText, &text)) return nullptr;
    return VL_Guarded(kModule, function, [&] {
        Call(text.c_str());
        return VL_Done();
    });
}

template <void (*Call)(int)>
PyObject* WithInt(PyObject* args, const char* function) {
    int value;
    if (!PyArg_ParseTuple(args, "i", &value)) return nullptr;
    return VL_Guarded(kModule, function, [&] {
        Call(value);
        return VL_Done();
    });
}

PyObject* PY_XPLMSetUsersAircraft(PyObject*, PyObject* args) {
    return WithText<XPLMSetUsersAircraft>(args, "XPLMSetUsersAircraft");
}

PyObject* PY_XPLMPlaceUserAtAirport(PyObject*, PyObject* args) {
    return WithText<XPLMPlaceUserAtAirport>(args, "XPLMPlaceUserAtAirport");
}

PyObject* PY_XPLMCountAircraft(PyObject*, PyObject*) {
    int total = 0, active = 0;
    XPLMPluginID controller = 0;
    if (!VL_GuardedCall(kModule, "XPLMCountAircraft", [&] { XPLMCountAircraft(&total, &active, &controller); }))
        total = active = controller = 0;
    return Py_BuildValue("(iii)", total, active, controller);
}

// (file name, path) of a model; a pair of empty strings after a failed call. `convert`
// turns the simulator's path into the one the script gets.
template <typename Convert>
PyObject* NthAircraftModel(const char* function, int index, Convert&& convert) {
    char name[kPathBuffer] = {0}, path[kPathBuffer] = {0};
    std::string shown;
    if (!VL_GuardedCall(kModule, function, [&] {
            XPLMGetNthAircraftModel(index, name, path);
            name[kPathBuffer - 1] = path[kPathBuffer - 1] = '\0';
            shown = convert(path);
        }))
        name[0] = '\0', shown.clear();
    PyObject* nameObject = VL_TextFromString(name);
    PyObject* pathObject = nameObject ? VL_TextFromString(shown.c_str()) : nullptr;
    PyObject* result = pathObject ? PyTuple_Pack(2, nameObject, pathObject) : nullptr;
    Py_XDECREF(nameObject);
    Py_XDECREF(pathObject);
    return result;
}

// A colon path is shown as its POSIX form under /Volumes, as the system path is.
PyObject* PY_XPLMGetNthAircraftModel(PyObject*, PyObject* args) {
    int index;
    if (!PyArg_ParseTuple(args, "i", &index)) return nullptr;
    return NthAircraftModel("XPLMGetNthAircraftModel", index,
                            [](const char* path) { return VL_PythonFormPath(path, VL_SimSeparator()); });
}

PyObject* PY_XPLMGetNthAircraftModel_NP(PyObject*, PyObject* args) {
    PyObject* self;
    int index;
    if (!PyArg_ParseTuple(args, "Oi", &self, &index)) return nullptr;
    VL_NativePathScope scope(self);
    return NthAircraftModel("XPLMGetNthAircraftModel", index, [](const char* path) { return std::string(path); });
}

// The aircraft paths as the SDK reads them: the list's texts in order, an empty one as a
// null entry, and a null entry after the last. None is a list without aircraft.
bool ReadAircraftPaths(PyObject* list, std::vector<std::string>& texts, std::vector<char*>& array) {
    if (list != Py_None) {
        // A text is a sequence too, of one-letter "paths".
        PyObject* items = PySequence_Check(list) && !VL_TextCheck(list) ? PySequence_Tuple(list) : nullptr;
        if (!items) {
            if (!PyErr_Occurred() || PyErr_ExceptionMatches(PyExc_TypeError)) {
                PyErr_Clear();
                PyErr_SetString(PyExc_TypeError, "the aircraft must be a list of paths");
            }
            return false;
        }
        std::size_t count = static_cast<std::size_t>(PyTuple_GET_SIZE(items));
        if (count > kMaxAircraftPaths) count = kMaxAircraftPaths;
        for (std::size_t i = 0; i < count; ++i) {
            VL_Text text;
            if (!text.set(PyTuple_GET_ITEM(items, static_cast<Py_ssize_t>(i)))) {
                Py_DECREF(items);
                return false;
            }
            texts.emplace_back(text.c_str(), static_cast<std::size_t>(text.size()));
        }
        Py_DECREF(items);
    }
    for (std::string& text : texts) array.push_back(text.empty() ? nullptr : &text[0]);
    array.push_back(nullptr);
    return true;
}

PyObject* PY_XPLMAcquirePlanes(PyObject*, PyObject* args) {
    PyObject *self, *list, *callable, *refconObject;
    if (!PyArg_ParseTuple(args, "OOOO", &self, &list, &callable, &refconObject)) return nullptr;
    std::vector<std::string> texts;
    std::vector<char*> aircraft;
    if (!ReadAircraftPaths(list, texts, aircraft)) return nullptr;
    void* refcon = VL_RefconFromObject(refconObject);
    return VL_Guarded(kModule, "XPLMAcquirePlanes", [&] {
        // A record for every call, whether or not the planes are granted.
        _CallbackList* cell =
            VL_Table().AddCallback(PlanesAvailableCallbackList, self, nullptr, callable, refcon);
        int acquired = XPLMAcquirePlanes(aircraft.data(), VL_PlanesAvailableCallback, cell);
        if (VL_Tracing())
            VL_Trace("XPLMAcquirePlanes")
                .line("pScriptId = %x, inRefcon = %d\n", VL_Low32(self), VL_Int(refcon))
                .size("PlanesAvailableCallbackList", PlanesAvailableCallbackList);
        return VL_IntFromLong(acquired);
    });
}

PyObject* PY_XPLMReleasePlanes(PyObject*, PyObject* args) {
    PyObject* self;
    if (!VL_ParseOneObject(args, &self)) return nullptr;
    return VL_Guarded(kModule, "XPLMReleasePlanes", [&] {
        int found = 0, position = 0;
        _CallbackList* cell = VL_Table().FindCallback(PlanesAvailableCallbackList, self, nullptr, found, position);
        if (found) {
            XPLMReleasePlanes();
            VL_Table().DeleteCallback(PlanesAvailableCallbackList, cell, position);
        } else {
            VL_ReportForScript(kModule, "XPLMReleasePlanes", VL_NoSuchCallback, self);
        }
        if (VL_Tracing())
            VL_Trace("XPLMReleasePlanes")
                .line("pScriptId = %x, Script Name = %s\n", VL_Low32(self), VL_ScriptName(self).c_str())
                .size("PlanesAvailableCallbackList", PlanesAvailableCallbackList);
        return VL_Done();
    });
}

PyObject* PY_XPLMSetActiveAircraftCount(PyObject*, PyObject* args) {
    return WithInt<XPLMSetActiveAircraftCount>(args, "XPLMSetActiveAircraftCount");
}

PyObject* PY_XPLMSetAircraftModel(PyObject*, PyObject* args) {
    int index;
    VL_Text path;
    if (!PyArg_ParseTuple(args, "iO&", &index, VL_ParseText, &path)) return nullptr;
    return VL_Guarded(kModule, "XPLMSetAircraftModel", [&] {
        XPLMSetAircraftModel(index, path.c_str());
        return VL_Done();
    });
}

PyObject* PY_XPLMDisableAIForPlane(PyObject*, PyObject* args) {
    return WithInt<XPLMDisableAIForPlane>(args, "XPLMDisableAIForPlane");
}

// The draw state: a sequence of the structure's size (an int) and its ten floats. Anything
// else is a TypeError, never a read past the sequence's end.
bool ReadDrawState(PyObject* sequence, XPLMPlaneDrawState_t* state) {
    PyObject* items = PySequence_Check(sequence) ? PySequence_Tuple(sequence) : nullptr;
    if (!items || PyTuple_GET_SIZE(items) != 11) {
        Py_XDECREF(items);
        PyErr_Clear();
        PyErr_SetString(PyExc_TypeError, "the draw state must be a sequence of 11 numbers: the structure's "
                                         "size, then ten floats");
        return false;
    }
    float* fields[] = {&state->gearPosition, &state->flapRatio,  &state->spoilerRatio, &state->speedBrakeRatio,
                       &state->slatRatio,    &state->wingSweep,  &state->thrust,       &state->yokePitch,
                       &state->yokeHeading,  &state->yokeRoll};
    bool ok = true;
    long size = PyLong_AsLong(PyTuple_GET_ITEM(items, 0));
    ok = !(size == -1 && PyErr_Occurred());
    state->structSize = static_cast<int>(size);
    for (int i = 0; ok && i < 10; ++i) {
        double value = PyFloat_AsDouble(PyTuple_GET_ITEM(items, i + 1));
        ok = !(value == -1.0 && PyErr_Occurred());
        *fields[i] = static_cast<float>(value);
    }
    Py_DECREF(items);
    return ok;
}

PyObject* PY_XPLMDrawAircraft(PyObject*, PyObject* args) {
    int index, fullDraw;
    float x, y, z, pitch, roll, yaw;
    PyObject* sequence;
    if (!PyArg_ParseTuple(args, "iffffffiO", &index, &x, &y, &z, &pitch, &roll, &yaw, &fullDraw, &sequence))
        return nullptr;
    XPLMPlaneDrawState_t state{};
    if (!ReadDrawState(sequence, &state)) return nullptr;
    return VL_Guarded(kModule, "XPLMDrawAircraft", [&] {
        XPLMDrawAircraft(index, x, y, z, pitch, roll, yaw, fullDraw, &state);
        return VL_Done();
    });
}

PyObject* PY_XPLMReinitUsersPlane(PyObject*, PyObject*) {
    return VL_Guarded(kModule, "XPLMReinitUsersPlane", [] {
        XPLMReinitUsersPlane();
        return VL_Done();
    });
}

PyMethodDef XPLMPlanesMethods[] = {
    {"XPLMSetUsersAircraft", PY_XPLMSetUsersAircraft, VL_METH_ARGS, "Set Users Aircraft."},
    {"XPLMPlaceUserAtAirport", PY_XPLMPlaceUserAtAirport, VL_METH_ARGS, "Place User At Airport."},
    {"XPLMCountAircraft", PY_XPLMCountAircraft, VL_METH_ARGS, "Count Aircraft."},
    {"XPLMGetNthAircraftModel", PY_XPLMGetNthAircraftModel, VL_METH_ARGS, "Get Nth Aircraft Model."},
    {"XPLMGetNthAircraftModel_NP", PY_XPLMGetNthAircraftModel_NP, VL_METH_ARGS,
     "Get Nth Aircraft Model using Native Paths."},
    {"XPLMAcquirePlanes", PY_XPLMAcquirePlanes, VL_METH_ARGS, "Acquire Planes."},
    {"XPLMReleasePlanes", PY_XPLMReleasePlanes, VL_METH_ARGS, "Release Planes."},
    {"XPLMSetActiveAircraftCount", PY_XPLMSetActiveAircraftCount, VL_METH_ARGS, "Set Active Aircraft Count."},
    {"XPLMSetAircraftModel", PY_XPLMSetAircraftModel, VL_METH_ARGS, "Set Aircraft Model."},
    {"XPLMDisableAIForPlane", PY_XPLMDisableAIForPlane, VL_METH_ARGS, "Disable AI For Plane."},
    {"XPLMDrawAircraft", PY_XPLMDrawAircraft, VL_METH_ARGS, "Draw Aircraft."},
    {"XPLMReinitUsersPlane", PY_XPLMReinitUsersPlane, VL_METH_ARGS, "Reinit Users Plane."},
    {nullptr, nullptr, 0, nullptr},
};

const VL_Constant XPLMPlanesConstants[] = {
    {"XPLM_USER_AIRCRAFT", XPLM_USER_AIRCRAFT},
};

}  // namespace

void initXPLMPlanes() {
    PyObject* module = VL_CreateModule("XPLMPlanes", XPLMPlanesMethods);
    if (!module || !VL_AddConstants(module, XPLMPlanesConstants)) VL_PrintPythonError();
}

}  // namespace vorlith

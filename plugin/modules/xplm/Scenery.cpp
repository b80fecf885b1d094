// The module XPLMScenery: terrain probes, objects (load, draw, unload, load in the
// background) and the library lookup. Every function needs an SDK 2.00 simulator (the
// background load 2.10); lookups and background loads keep a record per registration
// in LibraryEnumeratorCallbackList and ObjectLoadedCallbackList until the script removes it.

#include <cstdint>
#include <vector>

#include "XPLMScenery.h"
#include "callbacks/Trampolines.h"
#include "core/PythonErrors.h"
#include "core/SdkCapabilities.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"

namespace vorlith {

namespace {

constexpr const char* kModule = "XPLMScenery";

bool IsBoundMethod(PyObject* callable) { return Py_TYPE(callable) == &PyMethod_Type; }

PyObject* PY_XPLMCreateProbe(PyObject*, PyObject* args) {
    if (!VL_Supported(kModule, "XPLMCreateProbe", XPLMCreateProbe_ptr, VL_NotSupported200))
        return VL_IntFromLong(0);
    int type;
    if (!PyArg_ParseTuple(args, "i", &type)) return nullptr;
    return VL_Guarded(kModule, "XPLMCreateProbe", [&] { return VL_HandleObject(XPLMCreateProbe_ptr(type)); });
}

PyObject* PY_XPLMDestroyProbe(PyObject*, PyObject* args) {
    if (!VL_Supported(kModule, "XPLMDestroyProbe", XPLMDestroyProbe_ptr, VL_NotSupported200))
        return VL_IntFromLong(0);
    PyObject* probe;
    if (!VL_ParseOneObject(args, &probe)) return nullptr;
    return VL_Guarded(kModule, "XPLMDestroyProbe", [&] {
        XPLMDestroyProbe_ptr(VL_HandleFromObject(probe));
        return VL_Done();
    });
}

// The eleven values of the result are appended after what the list holds.
PyObject* PY_XPLMProbeTerrainXYZ(PyObject*, PyObject* args) {
    if (!VL_Supported(kModule, "XPLMProbeTerrainXYZ", XPLMProbeTerrainXYZ_ptr, VL_NotSupported200))
        return VL_IntFromLong(0);
    PyObject *probe, *list;
    float x, y, z;
    if (!PyArg_ParseTuple(args, "OfffO", &probe, &x, &y, &z, &list) || !VL_CheckOutLists({list}))
        return nullptr;
    return VL_Guarded(kModule, "XPLMProbeTerrainXYZ", [&]() -> PyObject* {
        XPLMProbeInfo_t info{};
        info.structSize = sizeof info;
        XPLMProbeResult result = XPLMProbeTerrainXYZ_ptr(VL_HandleFromObject(probe), x, y, z, &info);
        const float values[] = {info.locationX, info.locationY, info.locationZ, info.normalX, info.normalY,
                                info.normalZ,   info.velocityX, info.velocityY, info.velocityZ};
        if (!VL_AppendOut(list, VL_IntFromLong(info.structSize))) return nullptr;
        for (float value : values)
            if (!VL_AppendOut(list, PyFloat_FromDouble(value))) return nullptr;
        if (!VL_AppendOut(list, VL_IntFromLong(info.is_wet))) return nullptr;
        return VL_IntFromLong(result);
    });
}

// Its availability has always been judged by XPLMCreateWindowEx, an SDK 2.00 function
// like itself; the pointer called is tested too, so that no simulator can make it null.
PyObject* PY_XPLMLoadObject(PyObject*, PyObject* args) {
    if (!VL_Supported(kModule, "XPLMLoadObject", XPLMCreateWindowEx_ptr, VL_NotSupported200) ||
        !VL_Supported(kModule, "XPLMLoadObject", XPLMLoadObject_ptr, VL_NotSupported200))
        return VL_IntFromLong(0);
    VL_Text path;
    if (!PyArg_ParseTuple(args, "O&", VL_ParseText, &path)) return nullptr;
    return VL_Guarded(kModule, "XPLMLoadObject", [&] { return VL_HandleObject(XPLMLoadObject_ptr(path.c_str())); });
}

// Fills one draw-info record from an item of six numbers; false with a TypeError set.
bool ReadLocation(PyObject* item, XPLMDrawInfo_t* at) {
    PyObject* fields = PySequence_Check(item) ? PySequence_Tuple(item) : nullptr;
    if (!fields || PyTuple_GET_SIZE(fields) != 6) {
        Py_XDECREF(fields);
        PyErr_Clear();
        PyErr_SetString(PyExc_TypeError, "each location must be a sequence of six numbers "
                                         "(x, y, z, pitch, heading, roll)");
        return false;
    }
    float* values[] = {&at->x, &at->y, &at->z, &at->pitch, &at->heading, &at->roll};
    at->structSize = sizeof *at;
    for (int i = 0; i < 6; ++i) {
        double value = PyFloat_AsDouble(PyTuple_GET_ITEM(fields, i));
        if (value == -1.0 && PyErr_Occurred()) {
            Py_DECREF(fields);
            return false;
        }
        *values[i] = static_cast<float>(value);
    }
    Py_DECREF(fields);
    return true;
}

PyObject* PY_XPLMDrawObjects(PyObject*, PyObject* args) {
    if (!VL_Supported(kModule, "XPLMDrawObjects", XPLMDrawObjects_ptr, VL_NotSupported200))
        return VL_IntFromLong(0);
    PyObject *object, *sequence;
    int count, lighting, earthRelative;
    if (!PyArg_ParseTuple(args, "OiOii", &object, &count, &sequence, &lighting, &earthRelative)) return nullptr;
    Py_ssize_t size = PySequence_Check(sequence) ? PySequence_Size(sequence) : -1;
    if (size < 0) PyErr_Clear();
    // A count that is not the list's length (negative or huge included) draws nothing.
    if (size <= 0 || size != count) {
        PrintException(kModule, "XPLMDrawObjects", "Parameter Error - List empty or not equal to count");
        return VL_IntFromLong(0);
    }
    std::vector<XPLMDrawInfo_t> locations(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        PyObject* item = PySequence_GetItem(sequence, i);
        bool ok = item && ReadLocation(item, &locations[static_cast<std::size_t>(i)]);
        Py_XDECREF(item);
        if (!ok) return nullptr;
    }
    return VL_Guarded(kModule, "XPLMDrawObjects", [&] {
        XPLMDrawObjects_ptr(VL_HandleFromObject(object), count, locations.data(), lighting, earthRelative);
        return VL_Done();
    });
}

PyObject* PY_XPLMUnloadObject(PyObject*, PyObject* args) {
    if (!VL_Supported(kModule, "XPLMUnloadObject", XPLMUnloadObject_ptr, VL_NotSupported200))
        return VL_IntFromLong(0);
    PyObject* object;
    if (!VL_ParseOneObject(args, &object)) return nullptr;
    return VL_Guarded(kModule, "XPLMUnloadObject", [&] {
        XPLMUnloadObject_ptr(VL_HandleFromObject(object));
        return VL_Done();
    });
}

// The SDK enumerates during the call; the record stays until VL_RemoveLookupObjects. A
// repeated lookup with the same callable and refcon, or one whose callable is not a bound
// method, is not made: it answers the low 32 bits of the script's address instead.
PyObject* PY_XPLMLookupObjects(PyObject*, PyObject* args) {
    if (!VL_Supported(kModule, "XPLMLookupObjects", XPLMLookupObjects_ptr, VL_NotSupported200))
        return VL_IntFromLong(0);
    PyObject *self, *callable, *refconObject;
    VL_Text path;
    float lat, lon;
    if (!PyArg_ParseTuple(args, "OO&ffOO", &self, VL_ParseText, &path, &lat, &lon, &callable, &refconObject))
        return nullptr;
    void* refcon = VL_RefconFromObject(refconObject);
    return VL_Guarded(kModule, "XPLMLookupObjects", [&] {
        int found = 0, position = 0;
        VL_Table().FindCallback(LibraryEnumeratorCallbackList, self, callable, refcon, found, position);
        int result = static_cast<int>(reinterpret_cast<std::uintptr_t>(self));
        if (IsBoundMethod(callable) && !found) {
            _CallbackList* cell =
                VL_Table().AddCallback(LibraryEnumeratorCallbackList, self, nullptr, callable, refcon);
            result = XPLMLookupObjects_ptr(path.c_str(), lat, lon, VL_LibraryEnumeratorCallback, cell);
        }
        if (VL_Tracing())
            VL_Trace("XPLMLookupObjects")
                .line("pScriptId = %x, inPath = %s, inLatitude = %f, inLongitude = %f, inRefcon = %d\n",
                      VL_Low32(self), path.c_str(), lat, lon, VL_Int(refcon))
                .size("LibraryEnumeratorCallbackList", LibraryEnumeratorCallbackList);
        return VL_IntFromLong(result);
    });
}

// Its reports have always named the module XPLMPlugin.
PyObject* PY_VL_RemoveLookupObjects(PyObject*, PyObject* args) {
    PyObject *self, *callable, *refconObject;
    if (!PyArg_ParseTuple(args, "OOO", &self, &callable, &refconObject)) return nullptr;
    void* refcon = VL_RefconFromObject(refconObject);
    return VL_Guarded(kModule, "VL_RemoveLookupObjects", [&] {
        if (IsBoundMethod(callable)) {
            int found = 0, position = 0;
            _CallbackList* cell =
                VL_Table().FindCallback(LibraryEnumeratorCallbackList, self, callable, refcon, found, position);
            if (found)
                VL_Table().DeleteCallback(LibraryEnumeratorCallbackList, cell, position);
            else
                VL_ReportForScript("XPLMPlugin", "VL_RemoveLookupObjects", VL_NoSuchCallbackRefcon, self);
        }
        if (VL_Tracing())
            VL_Trace("VL_RemoveLookupObjects")
                .line("pScriptId = %x, Script Name = %s, inRefcon = %d\n", VL_Low32(self),
                      VL_ScriptName(self).c_str(), VL_Int(refcon))
                .size("LibraryEnumeratorCallbackList", LibraryEnumeratorCallbackList);
        return VL_Done();
    });
}

// Its availability has always been judged by XPLMLookupObjects; on an SDK 2.00 simulator
// that one exists and this one does not, so the pointer called is tested too.
PyObject* PY_XPLMLoadObjectAsync(PyObject*, PyObject* args) {
    if (!VL_Supported(kModule, "XPLMLoadObjectAsync", XPLMLookupObjects_ptr, VL_NotSupported210) ||
        !VL_Supported(kModule, "XPLMLoadObjectAsync", XPLMLoadObjectAsync_ptr, VL_NotSupported210))
        return VL_IntFromLong(0);
    PyObject *self, *callable, *refconObject;
    VL_Text path;
    if (!PyArg_ParseTuple(args, "OO&OO", &self, VL_ParseText, &path, &callable, &refconObject)) return nullptr;
    void* refcon = VL_RefconFromObject(refconObject);
    return VL_Guarded(kModule, "XPLMLoadObjectAsync", [&] {
        int found = 0, position = 0;
        VL_Table().FindCallback(ObjectLoadedCallbackList, self, callable, refcon, found, position);
        // A second load with the same callable and refcon before removal is skipped.
        if (IsBoundMethod(callable) && !found) {
            _CallbackList* cell = VL_Table().AddCallback(ObjectLoadedCallbackList, self, nullptr, callable, refcon);
            XPLMLoadObjectAsync_ptr(path.c_str(), VL_ObjectLoadedCallback, cell);
        }
        if (VL_Tracing())
            VL_Trace("XPLMLoadObjectAsync")
                .line("pScriptId = %x, inPath = %s, inRefcon = %d\n", VL_Low32(self), path.c_str(),
                      VL_Int(refcon))
                .size("ObjectLoadedCallbackList", ObjectLoadedCallbackList);
        return VL_Done();
    });
}

// Removes the script's first background-load record, whatever callable is given.
PyObject* PY_VL_RemoveObjectLoadedCallback(PyObject*, PyObject* args) {
    PyObject *self, *callable;
    if (!PyArg_ParseTuple(args, "OO", &self, &callable)) return nullptr;
    return VL_Guarded(kModule, "VL_RemoveObjectLoadedCallback", [&] {
        if (IsBoundMethod(callable)) {
            int found = 0, position = 0;
            _CallbackList* cell = VL_Table().FindCallback(ObjectLoadedCallbackList, self, nullptr, found, position);
            if (found)
                VL_Table().DeleteCallback(ObjectLoadedCallbackList, cell, position);
            else
                VL_ReportForScript(kModule, "VL_RemoveObjectLoadedCallback", VL_NoSuchCallbackRefcon, self);
        }
        if (VL_Tracing())
            VL_Trace("VL_RemoveObjectLoadedCallback")
                .line("pScriptId = %x, Script Name = %s\n", VL_Low32(self), VL_ScriptName(self).c_str())
                .size("ObjectLoadedCallbackList", ObjectLoadedCallbackList);
        return VL_Done();
    });
}

PyMethodDef XPLMSceneryMethods[] = {
    {"XPLMCreateProbe", PY_XPLMCreateProbe, VL_METH_ARGS, "Creates a probe."},
    {"XPLMDestroyProbe", PY_XPLMDestroyProbe, VL_METH_ARGS, "Destroys a probe."},
    {"XPLMProbeTerrainXYZ", PY_XPLMProbeTerrainXYZ, VL_METH_ARGS, "Probes the Terrain."},
    {"XPLMLoadObject", PY_XPLMLoadObject, VL_METH_ARGS, "Load an Object."},
    {"XPLMDrawObjects", PY_XPLMDrawObjects, VL_METH_ARGS, "Draw Objects."},
    {"XPLMUnloadObject", PY_XPLMUnloadObject, VL_METH_ARGS, "Unload an Object."},
    {"XPLMLookupObjects", PY_XPLMLookupObjects, VL_METH_ARGS, "Look up Objects."},
    {"VL_RemoveLookupObjects", PY_VL_RemoveLookupObjects, VL_METH_ARGS, "Remove Look up Objects."},
    {"XPLMLoadObjectAsync", PY_XPLMLoadObjectAsync, VL_METH_ARGS, "Load an Object Async."},
    {"VL_RemoveObjectLoadedCallback", PY_VL_RemoveObjectLoadedCallback, VL_METH_ARGS, "Remove Object."},
    {nullptr, nullptr, 0, nullptr},
};

const VL_Constant XPLMSceneryConstants[] = {
    {"xplm_ProbeY", xplm_ProbeY},
    {"xplm_ProbeHitTerrain", xplm_ProbeHitTerrain},
    {"xplm_ProbeError", xplm_ProbeError},
    {"xplm_ProbeMissed", xplm_ProbeMissed},
};

}  // namespace

void initXPLMScenery() {
    PyObject* module = VL_CreateModule("XPLMScenery", XPLMSceneryMethods);
    if (!module || !VL_AddConstants(module, XPLMSceneryConstants)) VL_PrintPythonError();
}

}  // namespace vorlith

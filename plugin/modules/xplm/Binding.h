// What every binding function shares: handles and reference values as Python integers,
// the guard that turns an SDK failure into PrintException and the integer 0, out-lists,
// the DEBUG:DebugCallbacks trace lines, and module and constant registration.
#pragma once

#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <stdexcept>
#include <string>

#include "callbacks/Registry.h"
#include "core/Log.h"
#include "core/ScriptTable.h"
#include "platform/PythonCompat.h"

namespace vorlith {

// --- handles and reference values ---

// Any integer is any handle. Something else is no handle at all: null, with its
// conversion error cleared so that the script is not blamed for it later.
inline void* VL_HandleFromObject(PyObject* object) {
    void* pointer = PyLong_AsVoidPtr(object);
    if (!pointer && PyErr_Occurred()) PyErr_Clear();
    return pointer;
}
inline PyObject* VL_HandleObject(const void* pointer) {
    return PyLong_FromVoidPtr(const_cast<void*>(pointer));
}
// Arguments of a VL_METH_FAST binding through the argument parser, as a METH_VARARGS
// binding parses them: the same results and the same TypeError. The quick paths below
// take the frequent cases without it and leave every other case to it.
inline bool VL_ParseArgs(VL_Args args, const char* format, ...) {
    PyObject* tuple = PyTuple_New(args.count);
    if (!tuple) return false;
    for (Py_ssize_t i = 0; i < args.count; ++i) {
        Py_INCREF(args.items[i]);
        PyTuple_SET_ITEM(tuple, i, args.items[i]);
    }
    va_list values;
    va_start(values, format);
    int parsed = PyArg_VaParse(tuple, format, values);
    va_end(values);
    Py_DECREF(tuple);  // "O" results stay alive: the caller's arguments hold them
    return parsed != 0;
}

// "O": the one object.
inline bool VL_ParseObject(VL_Args args, PyObject** object) {
    if (args.count != 1) return VL_ParseArgs(args, "O", object);
    *object = args.items[0];
    return true;
}

// The same for a binding called with an argument tuple.
inline bool VL_ParseOneObject(PyObject* args, PyObject** object) {
    return VL_ParseObject(VL_Args{&PyTuple_GET_ITEM(args, 0), PyTuple_GET_SIZE(args)}, object);
}

// "Oi", "Of" and "Od": an object and a number; exact ints and floats skip the parser.
inline bool VL_ParseObjectAndNumber(VL_Args args, PyObject** object, int* value) {
    if (args.count == 2 && VL_IntCheckExact(args.items[1])) {
        long number = PyLong_AsLong(args.items[1]);
        if (number >= INT_MIN && number <= INT_MAX && !(number == -1 && PyErr_Occurred())) {
            *object = args.items[0];
            *value = static_cast<int>(number);
            return true;
        }
        PyErr_Clear();
    }
    return VL_ParseArgs(args, "Oi", object, value);
}
inline bool VL_ParseObjectAndNumber(VL_Args args, PyObject** object, float* value) {
    if (args.count == 2 && PyFloat_CheckExact(args.items[1])) {
        *object = args.items[0];
        *value = static_cast<float>(PyFloat_AS_DOUBLE(args.items[1]));
        return true;
    }
    return VL_ParseArgs(args, "Of", object, value);
}
inline bool VL_ParseObjectAndNumber(VL_Args args, PyObject** object, double* value) {
    if (args.count == 2 && PyFloat_CheckExact(args.items[1])) {
        *object = args.items[0];
        *value = PyFloat_AS_DOUBLE(args.items[1]);
        return true;
    }
    return VL_ParseArgs(args, "Od", object, value);
}
// A script's reference value is an integer kept as a pointer-sized value.
inline void* VL_RefconFromObject(PyObject* object) { return VL_HandleFromObject(object); }

// The result of an SDK function that has none.
inline PyObject* VL_Done() { return VL_IntFromLong(1); }

// --- the guard ---

// Runs `call` (the SDK call and what belongs to it); anything thrown is reported as
// `message` and gives false. Buffers are owned by `call`'s locals, so they are freed on
// the way out either way. A few functions report "Function Error", or another module's
// and function's name.
template <typename Call>
bool VL_GuardedCallReporting(const char* module, const char* function, const char* message,
                             Call&& call) {
    try {
        call();
        return true;
    } catch (...) {
        PrintException(module, function, message);
        return false;
    }
}

// The guard of most bindings: "Parameter Error".
template <typename Call>
bool VL_GuardedCall(const char* module, const char* function, Call&& call) {
    return VL_GuardedCallReporting(module, function, "Parameter Error", call);
}

// The usual binding body: what `call` returns, or the integer 0 after a failure.
template <typename Call>
PyObject* VL_Guarded(const char* module, const char* function, Call&& call) {
    PyObject* result = nullptr;
    if (!VL_GuardedCall(module, function, [&] { result = call(); })) return VL_IntFromLong(0);
    return result;
}

// A late SDK function (null when the simulator lacks it): false after reporting `message`
// (VL_NotSupported200 or VL_NotSupported210) for the binding.
template <typename Function>
bool VL_Supported(const char* module, const char* function, Function* pointer, const char* message) {
    if (pointer) return true;
    PrintException(module, function, message);
    return false;
}

// The script table a binding works with; its absence is a failure of the call.
inline VL_ScriptTable& VL_Table() {
    if (!VLTestTable) throw std::logic_error("no script table");
    return *VLTestTable;
}

// The name a script gave itself in XPluginStart ("" when it is not in the table).
inline std::string VL_ScriptName(PyObject* scriptId) {
    std::string name, signature, description;
    if (VLTestTable) VLTestTable->GetScriptDescriptions(scriptId, name, signature, description);
    return name;
}

// The module a script was imported as: its file name without ".py" ("" when unknown).
inline std::string VL_ScriptModuleName(PyObject* scriptId) {
    const VL_ScriptTable* table = VLTestTable;
    const _VL_ScriptEntry* entry = table ? table->FindEntry(scriptId) : nullptr;
    return entry ? entry->moduleName : std::string();
}

// Reports through PrintException a text whose one "%s" is the script's module name
// (reports name the script's file, and come before XPluginStart has named it).
inline void VL_ReportForScript(const char* module, const char* function, const char* format,
                               PyObject* scriptId) {
    char text[1024];
    std::snprintf(text, sizeof text, format, VL_ScriptModuleName(scriptId).c_str());
    PrintException(module, function, text);
}

constexpr const char* VL_NoSuchCallback =
    "Script '%s.py' was unregistering a callback that does not exist.";
constexpr const char* VL_NoSuchCallbackRefcon =
    "Script '%s.py' was unregistering a callback and refcon that does not exist, check refcon "
    "matches the one that was used in registering.";

// --- out-lists ---

// An out argument is a list that receives the value, or None for "not wanted".
inline bool VL_IsOutList(PyObject* object) { return object == Py_None || PyList_Check(object); }

// Raises TypeError unless every argument is an out-list; call before the SDK.
inline bool VL_CheckOutLists(std::initializer_list<PyObject*> objects) {
    for (PyObject* object : objects) {
        if (!VL_IsOutList(object)) {
            PyErr_Format(PyExc_TypeError, "expected list or None, not %.200s",
                         Py_TYPE(object)->tp_name);
            return false;
        }
    }
    return true;
}

// Stores a new value (the reference is taken over) in element 0 of the list, replacing
// what was there or appending to an empty list; None drops the value.
inline bool VL_StoreOut(PyObject* list, PyObject* value) {
    if (!value) return false;
    if (!PyList_Check(list)) {
        Py_DECREF(value);
        return true;
    }
    if (PyList_Size(list) > 0) return PyList_SetItem(list, 0, value) == 0;
    int status = PyList_Append(list, value);
    Py_DECREF(value);
    return status == 0;
}

// Appends a new value (the reference is taken over) to the list, after what it holds;
// None drops the value. For the functions that append instead of storing in element 0.
inline bool VL_AppendOut(PyObject* list, PyObject* value) {
    if (!value) return false;
    int status = PyList_Check(list) ? PyList_Append(list, value) : 0;
    Py_DECREF(value);
    return status == 0;
}

// --- DEBUG:DebugCallbacks trace lines ---

inline bool VL_Tracing() { return gVL_DebugCallbacks != 0; }
// Pointers in trace lines are shown as their low 32 bits ("pScriptId = %x").
inline unsigned VL_Low32(const void* pointer) {
    return static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(pointer));
}
inline int VL_Int(const void* refcon) {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(refcon));
}

// One trace block: the function's name, the lines given, the name again. Used as a
// temporary, e.g. VL_Trace("XPLMShareData").line("pScriptId = %x\n", ...).size(...);
class VL_Trace {
public:
    explicit VL_Trace(const char* function) : function_(function) {
        VL_WriteToLogf("%s\n", function_);
    }
    ~VL_Trace() { VL_WriteToLogf("%s\n", function_); }
    VL_Trace(const VL_Trace&) = delete;
    VL_Trace& operator=(const VL_Trace&) = delete;

    VL_Trace& line(const char* format, ...) __attribute__((format(printf, 2, 3))) {
        char text[4096];
        va_list args;
        va_start(args, format);
        std::vsnprintf(text, sizeof text, format, args);
        va_end(args);
        VL_WriteToLog(text);
        return *this;
    }
    // "<list> size = %d", the list's size after the change.
    template <typename List>
    VL_Trace& size(const char* listName, const List& list) {
        return line("%s size = %d\n", listName, static_cast<int>(list.size()));
    }

private:
    const char* function_;
};

// --- module registration ---

struct VL_Constant {
    const char* name;
    long value;
};

// Sets the constants in the module's dictionary in table order; false with a Python
// error set when one could not be made.
template <std::size_t N>
bool VL_AddConstants(PyObject* module, const VL_Constant (&constants)[N]) {
    PyObject* dict = PyModule_GetDict(module);
    if (!dict) return false;
    for (const VL_Constant& constant : constants) {
        PyObject* value = VL_IntFromLong(constant.value);
        int status = value ? PyDict_SetItemString(dict, constant.name, value) : -1;
        Py_XDECREF(value);
        if (status != 0) return false;
    }
    return true;
}

}  // namespace vorlith

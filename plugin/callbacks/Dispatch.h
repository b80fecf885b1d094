// The one shape of every call from the simulator into a script's callable: check the
// record may be called, build the argument tuple, call, convert the result, and turn
// every Python error into a printed traceback and the kind's fixed value.
#pragma once

#include <cstdint>

#include "callbacks/Registry.h"
#include "core/Log.h"

namespace vorlith {

// What a kind of callback answers when it does not get a result from Python, and the
// line it logs when its record has no callable.
template <typename R>
struct VL_CallbackKind {
    const char* missingLine;
    R inactive;  // the script is disabled, unknown, or of an earlier interpreter
    R missing;   // the record has no callable
    R failed;    // the callable raised
    bool printFailure = true;         // the widget kind leaves the error pending
    const char* failedLine = nullptr;  // logged after the traceback, when set
};

// A script's own reference value as the callable gets it back.
inline PyObject* VL_RefconObject(const _CallbackListEntry* record) {
    return VL_IntFromLong(static_cast<long>(reinterpret_cast<std::intptr_t>(record->refcon)));
}

// The result formats: "i", "f", "d", or none. A result of another type gives 0.
inline int VL_ResultInt(PyObject* result) {
    int value = 0;
    if (!PyArg_Parse(result, "i", &value)) PyErr_Print();
    return value;
}
inline float VL_ResultFloat(PyObject* result) {
    float value = 0.0f;
    if (!PyArg_Parse(result, "f", &value)) PyErr_Print();
    return value;
}
inline double VL_ResultDouble(PyObject* result) {
    double value = 0.0;
    if (!PyArg_Parse(result, "d", &value)) PyErr_Print();
    return value;
}
// Kinds whose SDK callback returns nothing.
inline int VL_ResultNone(PyObject*) { return 1; }

// Calls `callable` with the tuple `build()` makes and converts what it returns; the
// caller holds the PythonGuard and has checked the script may be called.
template <typename R, typename Build, typename Convert>
R VL_CallPython(const VL_CallbackKind<R>& kind, PyObject* callable, Build&& build,
                Convert&& convert) {
    if (!callable) {
        if (PyErr_Occurred()) PyErr_Print();
        VL_WriteToLog(kind.missingLine);
        return kind.missing;
    }
    // An error an earlier callback left pending would be blamed on this call.
    if (PyErr_Occurred()) PyErr_Print();
    Py_INCREF(callable);  // the callable may unregister itself while it runs
    PyObject* args = build();
    PyObject* result = args ? PyObject_Call(callable, args, nullptr) : nullptr;
    Py_XDECREF(args);
    Py_DECREF(callable);
    if (!result) {
        if (kind.printFailure) PyErr_Print();
        if (kind.failedLine) VL_WriteToLog(kind.failedLine);
        return kind.failed;
    }
    R value = convert(result);
    Py_DECREF(result);
    return value;
}

// The dispatch of a callback record: `build(refcon)` makes the tuple from the record's
// reference value. The record's fields are read before the call: the call may delete it.
template <typename R, typename Build, typename Convert>
R VL_CallUser(const VL_CallbackKind<R>& kind, const _CallbackListEntry* record, Build&& build,
              Convert&& convert) {
    if (!VL_IsRecordActive(record)) return kind.inactive;
    return VL_CallPython(kind, record->callable, [&]() -> PyObject* {
        PyObject* refcon = VL_RefconObject(record);
        if (!refcon) return nullptr;
        PyObject* args = build(refcon);
        Py_DECREF(refcon);
        return args;
    }, convert);
}

}  // namespace vorlith

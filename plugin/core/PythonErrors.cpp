// Printing a script's Python error.

#include "core/PythonErrors.h"

#include <exception>

#include "core/Log.h"
#include "platform/PythonCompat.h"

namespace vorlith {

namespace {

// Owns the three parts of a fetched error.
struct FetchedError {
    PyObject* type = nullptr;
    PyObject* value = nullptr;
    PyObject* traceback = nullptr;
    FetchedError() {
        PyErr_Fetch(&type, &value, &traceback);
        PyErr_NormalizeException(&type, &value, &traceback);
        if (!value) {
            value = Py_None;
            Py_INCREF(value);
        }
        if (!traceback) {
            traceback = Py_None;
            Py_INCREF(traceback);
        }
    }
    ~FetchedError() {
        Py_XDECREF(type);
        Py_XDECREF(value);
        Py_XDECREF(traceback);
    }
    FetchedError(const FetchedError&) = delete;
    FetchedError& operator=(const FetchedError&) = delete;
    void display() const { PyErr_Display(type, value, traceback); }
};

}  // namespace

// What PyErr_Print does, without its two exits: one when the error is SystemExit, one when
// sys.excepthook itself raises SystemExit. The hook a script installed is still used.
void VL_PrintPythonError() {
    if (!PyErr_Occurred()) return;
    FetchedError error;
    if (!error.type) return;
    // Python 2 declares these names char*.
    PySys_SetObject(const_cast<char*>("last_type"), error.type);
    PySys_SetObject(const_cast<char*>("last_value"), error.value);
    PySys_SetObject(const_cast<char*>("last_traceback"), error.traceback);
    PyErr_Clear();
    PyObject* hook = PySys_GetObject(const_cast<char*>("excepthook"));  // borrowed
    if (!hook || hook == Py_None) {
        error.display();
        PyErr_Clear();
        return;
    }
    PyObject* result = PyObject_CallFunctionObjArgs(hook, error.type, error.value, error.traceback, nullptr);
    if (result) {
        Py_DECREF(result);
        return;
    }
    FetchedError hookError;
    PySys_WriteStderr("Error in sys.excepthook:\n");
    if (hookError.type) hookError.display();
    PySys_WriteStderr("\nOriginal exception was:\n");
    error.display();
    PyErr_Clear();
}

bool VL_RunPythonText(const char* text) {
    PyObject* main = PyImport_AddModule("__main__");  // borrowed
    PyObject* globals = main ? PyModule_GetDict(main) : nullptr;
    PyObject* result = globals ? PyRun_String(text, Py_file_input, globals, globals) : nullptr;
    if (!result) {
        VL_PrintPythonError();
        return false;
    }
    Py_DECREF(result);
    return true;
}

void VL_LogCppException(const char* where) noexcept {
    try {
        throw;
    } catch (const std::exception& e) {
        VL_WriteToLogf("Internal error in %s: %s\n", where, e.what());
    } catch (...) {
        VL_WriteToLogf("Internal error in %s\n", where);
    }
}

}  // namespace vorlith

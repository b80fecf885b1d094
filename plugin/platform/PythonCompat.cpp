// The version-dependent bodies of PythonCompat.h.

#include "platform/PythonCompat.h"

#include <cstdio>
#include <cstring>

namespace vorlith {

bool VL_Text::set(PyObject* o) {
    PyObject* bytes = nullptr;
#if PY_MAJOR_VERSION >= 3
    if (PyBytes_Check(o)) {
        Py_INCREF(o);
        bytes = o;
    } else if (PyUnicode_Check(o)) {
        bytes = PyUnicode_AsEncodedString(o, "utf-8", "surrogateescape");
        if (!bytes) return false;
    }
#else
    if (PyString_Check(o)) {
        Py_INCREF(o);
        bytes = o;
    } else if (PyUnicode_Check(o)) {
        bytes = PyUnicode_AsUTF8String(o);
        if (!bytes) return false;
    }
#endif
    if (!bytes) {
        PyErr_Format(PyExc_TypeError, "expected str or bytes, not %.200s", Py_TYPE(o)->tp_name);
        return false;
    }
    Py_XDECREF(owner_);
    owner_ = bytes;
#if PY_MAJOR_VERSION >= 3
    data_ = PyBytes_AS_STRING(bytes);
    size_ = PyBytes_GET_SIZE(bytes);
#else
    data_ = PyString_AS_STRING(bytes);
    size_ = PyString_GET_SIZE(bytes);
#endif
    return true;
}

int VL_ParseText(PyObject* o, void* text) {
    return static_cast<VL_Text*>(text)->set(o) ? 1 : 0;
}

PyObject* VL_CreateModule(const char* name, PyMethodDef* methods, const char* doc) {
#if PY_MAJOR_VERSION >= 3
    // A module of sys.modules with its functions attached is importable at once; a
    // PyModuleDef would need registering before the interpreter starts.
    PyObject* module = PyImport_AddModule(name);
    if (!module) return nullptr;
    if (methods && PyModule_AddFunctions(module, methods) != 0) return nullptr;
    if (doc && PyModule_SetDocString(module, doc) != 0) return nullptr;
    return module;
#else
    return Py_InitModule4(name, methods, doc, nullptr, PYTHON_API_VERSION);
#endif
}

bool VL_InitializeInterpreter(char* why, std::size_t size) {
#if PY_VERSION_HEX >= 0x03080000
    PyConfig config;
    PyConfig_InitPythonConfig(&config);
    config.install_signal_handlers = 0;  // the simulator owns the process's signals
    config.parse_argv = 0;
    PyStatus status = PyConfig_SetBytesString(&config, &config.home, VORLITH_PYTHON_HOME);
    if (!PyStatus_Exception(status)) status = Py_InitializeFromConfig(&config);
    PyConfig_Clear(&config);
    if (PyStatus_Exception(status)) {
        std::snprintf(why, size, "%s", status.err_msg ? status.err_msg : "unknown error");
        return false;
    }
    return true;
#elif PY_MAJOR_VERSION >= 3
    static wchar_t* home = Py_DecodeLocale(VORLITH_PYTHON_HOME, nullptr);
    Py_SetPythonHome(home);
    Py_InitializeEx(0);
    (void)why;
    (void)size;
    return Py_IsInitialized() != 0;
#else
    static char home[] = VORLITH_PYTHON_HOME;
    Py_SetPythonHome(home);
    Py_InitializeEx(0);
    PyEval_InitThreads();  // creates the lock that the guard hands to script threads
    static char empty[] = "";
    char* argv[] = {empty};
    PySys_SetArgvEx(1, argv, 0);  // scripts may read sys.argv, as under Python 3
    (void)why;
    (void)size;
    return Py_IsInitialized() != 0;
#endif
}

}  // namespace vorlith

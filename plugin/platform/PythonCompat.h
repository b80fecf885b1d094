// What differs between the Python 2.7 and Python 3 C interfaces, in one place: integer
// and text objects, module creation after the interpreter started, the method-table
// flag and the interpreter's start. Nothing else in the plug-in asks for the version.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include <cstddef>
#include <cstring>

namespace vorlith {

// Method-table flag of every binding function: positional arguments only.
constexpr int VL_METH_ARGS = METH_VARARGS;

// The positional arguments of a binding called the cheapest way the interpreter offers:
// METH_FASTCALL on Python 3 (no tuple is made), the argument tuple's items on Python 2.
// A binding written as PyObject* f(VL_Args) goes into its method table as VL_Fast<f>()
// with the flag VL_METH_FAST.
struct VL_Args {
    PyObject* const* items;
    Py_ssize_t count;
};

#if PY_MAJOR_VERSION >= 3

constexpr int VL_METH_FAST = METH_FASTCALL;
template <PyObject* (*Binding)(VL_Args)>
PyObject* VL_FastEntry(PyObject*, PyObject* const* items, Py_ssize_t count) {
    return Binding(VL_Args{items, count});
}

inline PyObject* VL_IntFromLong(long value) { return PyLong_FromLong(value); }
inline bool VL_IntCheck(PyObject* o) { return PyLong_Check(o); }
inline bool VL_IntCheckExact(PyObject* o) { return PyLong_CheckExact(o); }
// Text from the simulator: UTF-8, with bytes that are not UTF-8 kept as surrogate escapes.
inline PyObject* VL_TextFromStringAndSize(const char* text, Py_ssize_t size) {
    return PyUnicode_DecodeUTF8(text, size, "surrogateescape");
}
inline bool VL_TextCheck(PyObject* o) { return PyUnicode_Check(o) || PyBytes_Check(o); }
inline PyObject* VL_BytesFromStringAndSize(const char* data, Py_ssize_t size) {
    return PyBytes_FromStringAndSize(data, size);
}

#else

constexpr int VL_METH_FAST = METH_VARARGS;
template <PyObject* (*Binding)(VL_Args)>
PyObject* VL_FastEntry(PyObject*, PyObject* args) {
    return Binding(VL_Args{&PyTuple_GET_ITEM(args, 0), PyTuple_GET_SIZE(args)});
}

inline PyObject* VL_IntFromLong(long value) { return PyInt_FromLong(value); }
inline bool VL_IntCheck(PyObject* o) { return PyInt_Check(o) || PyLong_Check(o); }
inline bool VL_IntCheckExact(PyObject* o) { return PyInt_CheckExact(o); }
inline PyObject* VL_TextFromStringAndSize(const char* text, Py_ssize_t size) {
    return PyString_FromStringAndSize(text, size);
}
inline bool VL_TextCheck(PyObject* o) { return PyString_Check(o) || PyUnicode_Check(o); }
inline PyObject* VL_BytesFromStringAndSize(const char* data, Py_ssize_t size) {
    return PyString_FromStringAndSize(data, size);
}

#endif

template <PyObject* (*Binding)(VL_Args)>
PyCFunction VL_Fast() {
    return reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(&VL_FastEntry<Binding>));
}

// Calls callable with the n objects at args (positional, borrowed). args[-1] must be
// writable: Python 3 may use it to prepend a bound method's self without copying.
inline PyObject* VL_CallWithArguments(PyObject* callable, PyObject** args, std::size_t n) {
#if PY_VERSION_HEX >= 0x03090000
    return PyObject_Vectorcall(callable, args, n | PY_VECTORCALL_ARGUMENTS_OFFSET, nullptr);
#else
    // A bound method is called as its function with self first, as the interpreter's own
    // calls do: one argument tuple made instead of two.
    PyObject* self = PyMethod_Check(callable) ? PyMethod_GET_SELF(callable) : nullptr;
    std::size_t first = self ? 1 : 0;
    PyObject* tuple = PyTuple_New(static_cast<Py_ssize_t>(n + first));
    if (!tuple) return nullptr;
    if (self) {
        Py_INCREF(self);
        PyTuple_SET_ITEM(tuple, 0, self);
        callable = PyMethod_GET_FUNCTION(callable);
    }
    for (std::size_t i = 0; i < n; ++i) {
        Py_INCREF(args[i]);
        PyTuple_SET_ITEM(tuple, static_cast<Py_ssize_t>(first + i), args[i]);
    }
    PyObject* result = PyObject_Call(callable, tuple, nullptr);
    Py_DECREF(tuple);
    return result;
#endif
}

// Runs compiled code in the globals and locals given.
inline PyObject* VL_EvalCode(PyObject* code, PyObject* globals, PyObject* locals) {
#if PY_MAJOR_VERSION >= 3
    return PyEval_EvalCode(code, globals, locals);
#else
    return PyEval_EvalCode(reinterpret_cast<PyCodeObject*>(code), globals, locals);
#endif
}

inline PyObject* VL_TextFromString(const char* text) {
    if (!text) text = "";
    return VL_TextFromStringAndSize(text, static_cast<Py_ssize_t>(std::strlen(text)));
}

// A text argument as the SDK takes it: bytes as they are, text as UTF-8 (surrogate
// escapes give back their original bytes). Keeps the bytes alive while it lives.
class VL_Text {
public:
    VL_Text() = default;
    ~VL_Text() { Py_XDECREF(owner_); }
    VL_Text(const VL_Text&) = delete;
    VL_Text& operator=(const VL_Text&) = delete;

    // Takes o's bytes; false with a TypeError (or encoding error) set when o is not text.
    bool set(PyObject* o);
    const char* c_str() const { return data_; }
    Py_ssize_t size() const { return size_; }

private:
    PyObject* owner_ = nullptr;
    const char* data_ = "";
    Py_ssize_t size_ = 0;
};

// PyArg_ParseTuple converter for "O&" that fills a VL_Text: the text argument of every
// binding, since "s" takes neither bytes (Python 3) nor text with surrogate escapes.
int VL_ParseText(PyObject* o, void* text);

// Creates module `name` in sys.modules with the functions of `methods` (terminated by an
// empty row) and returns it (borrowed). Works after the interpreter started, on both.
PyObject* VL_CreateModule(const char* name, PyMethodDef* methods, const char* doc = nullptr);

// Starts the interpreter without its signal handlers, with its home set to where the build
// found the standard library. False (with a reason in why[size]) if it could not start.
bool VL_InitializeInterpreter(char* why, std::size_t size);

}  // namespace vorlith

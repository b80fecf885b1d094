// TembrookInternalModule: where the start text points sys.stdout and sys.stderr.
// Standard output goes to the output file, standard error to the log, and both to the
// control panel's print list as lines.

#include "core/Log.h"
#include "core/PythonErrors.h"
#include "core/Text.h"
#include "platform/PythonCompat.h"

namespace vorlith {

namespace {

using FileWriter = void (*)(const char* text, std::size_t length);

// A text as the binding converters take it, or, when it cannot be encoded (lone
// surrogates), with those characters escaped: a failing write would lose the traceback
// that was being printed, and Python would give up on sys.stderr.
int ParseCapturedText(PyObject* o, void* out) {
    auto* text = static_cast<VL_Text*>(out);
    if (text->set(o)) return 1;
    if (!PyUnicode_Check(o) || !PyErr_ExceptionMatches(PyExc_UnicodeError)) return 0;
    PyErr_Clear();
    PyObject* escaped = PyUnicode_AsEncodedString(o, "utf-8", "backslashreplace");
    bool ok = escaped && text->set(escaped);
    Py_XDECREF(escaped);
    return ok ? 1 : 0;
}

PyObject* Capture(PyObject* args, FileWriter write) {
    VL_Text text;
    if (!PyArg_ParseTuple(args, "O&", ParseCapturedText, &text)) return nullptr;
    write(text.c_str(), static_cast<std::size_t>(text.size()));
    // print writes a line's text and its "\n" separately: the "\n" alone adds nothing.
    char line[4096];
    VL_StripNewlines(line, sizeof line, text.c_str(), static_cast<std::size_t>(text.size()));
    if (line[0] != '\0') AddPrintItem(line);
    Py_RETURN_NONE;
}

PyObject* PY_PrintStdout(PyObject*, PyObject* args) { return Capture(args, VL_WriteToLog2Bytes); }
PyObject* PY_PrintStderr(PyObject*, PyObject* args) { return Capture(args, VL_WriteToLogBytes); }

PyMethodDef TembrookInternalModuleMethods[] = {
    {"PrintStdout", PY_PrintStdout, VL_METH_ARGS, "Prints to stdout"},
    {"PrintStderr", PY_PrintStderr, VL_METH_ARGS, "Prints to stderr"},
    {nullptr, nullptr, 0, nullptr},
};

}  // namespace

void initTembrookInternalModule() {
    PyObject* module = VL_CreateModule("TembrookInternalModule", TembrookInternalModuleMethods);
    if (!module) {
        VL_PrintPythonError();
        return;
    }
    // The start text imports it before anything else exists in the module.
    PyDict_SetItemString(PyModule_GetDict(module), "__builtins__", PyEval_GetBuiltins());
}

}  // namespace vorlith

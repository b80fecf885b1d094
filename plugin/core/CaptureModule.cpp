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

PyObject* Capture(PyObject* args, FileWriter write) {
    VL_Text text;
    if (!PyArg_ParseTuple(args, "O&", VL_ParseText, &text)) return nullptr;
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

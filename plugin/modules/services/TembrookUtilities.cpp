// The module TembrookUtilities: scripts write lines to the control panel's display and
// print lists and clear them. The text goes to no file, and keeps its newlines.

#include "core/PythonErrors.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"
#include "ui/ControlPanel.h"

namespace vorlith {

namespace {

constexpr const char* kModule = "TembrookUtilities";

PyObject* PY_TembrookDisplay(PyObject*, PyObject* args) {
    VL_Text text;
    if (!PyArg_ParseTuple(args, "O&", VL_ParseText, &text)) return nullptr;
    VL_GuardedCall(kModule, "TembrookDisplay", [&] { AddDisplayItem(text.c_str()); });
    return VL_IntFromLong(0);
}

PyObject* PY_TembrookClearDisplay(PyObject*, PyObject*) {
    VL_GuardedCall(kModule, "TembrookClearDisplay", [] { ClearDisplay(); });
    return VL_IntFromLong(0);
}

PyObject* PY_TembrookPrint(PyObject*, PyObject* args) {
    VL_Text text;
    if (!PyArg_ParseTuple(args, "O&", VL_ParseText, &text)) return nullptr;
    VL_GuardedCall(kModule, "TembrookPrint", [&] { AddPrintItem(text.c_str()); });
    return VL_IntFromLong(0);
}

PyObject* PY_TembrookClearPrint(PyObject*, PyObject*) {
    VL_GuardedCall(kModule, "TembrookClearPrint", [] { ClearPrint(); });
    return VL_IntFromLong(0);
}

PyMethodDef TembrookUtilitiesMethods[] = {
    {"TembrookDisplay", PY_TembrookDisplay, VL_METH_ARGS, "Sends Text to the Pseudo Display."},
    {"TembrookClearDisplay", PY_TembrookClearDisplay, VL_METH_ARGS, "Clear Display."},
    {"TembrookPrint", PY_TembrookPrint, VL_METH_ARGS, "Sends Text to the Pseudo Print."},
    {"TembrookClearPrint", PY_TembrookClearPrint, VL_METH_ARGS, "Clear Printer."},
    {nullptr, nullptr, 0, nullptr},
};

}  // namespace

void initTembrookUtilities() {
    if (!VL_CreateModule("TembrookUtilities", TembrookUtilitiesMethods)) VL_PrintPythonError();
}

}  // namespace vorlith

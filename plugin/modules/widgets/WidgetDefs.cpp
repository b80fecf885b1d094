// The module XPWidgetDefs: the widget library's properties, dispatch modes and messages,
// and three decoders of the structures that widget messages point at. A script holds those
// parameters as integers; the decoders answer only for one that was delivered to a script
// in this frame, from the copy made at delivery, and never read the address itself.

#include "XPWidgetDefs.h"
#include "callbacks/WidgetParameters.h"
#include "core/PythonErrors.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"

namespace vorlith {

namespace {

// The structure of `kind` behind the one "l" argument, or null with a ValueError.
bool Decode(PyObject* args, VL_WidgetStruct kind, const char* what, VL_WidgetStructCopy* copy) {
    long param;
    if (!PyArg_ParseTuple(args, "l", &param)) return false;
    if (VL_FindWidgetStruct(kind, static_cast<intptr_t>(param), copy)) return true;
    PyErr_Format(PyExc_ValueError,
                 "%ld is not the %s parameter of a widget message delivered in this frame", param, what);
    return false;
}

PyObject* PY_VL_GetMouseState(PyObject*, PyObject* args) {
    VL_WidgetStructCopy copy;
    if (!Decode(args, VL_WidgetStruct::Mouse, "mouse state", &copy)) return nullptr;
    const XPMouseState_t& m = copy.mouse;
    return Py_BuildValue("iiii", m.x, m.y, m.button, m.delta);
}

PyObject* PY_VL_GetKeyState(PyObject*, PyObject* args) {
    VL_WidgetStructCopy copy;
    if (!Decode(args, VL_WidgetStruct::Key, "key state", &copy)) return nullptr;
    const XPKeyState_t& k = copy.key;
    return Py_BuildValue("iii", static_cast<int>(k.key), static_cast<int>(k.flags), static_cast<int>(k.vkey));
}

PyObject* PY_VL_GetWidgetGeometryChange(PyObject*, PyObject* args) {
    VL_WidgetStructCopy copy;
    if (!Decode(args, VL_WidgetStruct::GeometryChange, "geometry change", &copy)) return nullptr;
    const XPWidgetGeometryChange_t& g = copy.change;
    return Py_BuildValue("iiii", g.dx, g.dy, g.dwidth, g.dheight);
}

PyMethodDef XPWidgetDefsMethods[] = {
    {"VL_GetMouseState", PY_VL_GetMouseState, VL_METH_ARGS, "Get the mouse state from param1."},
    {"VL_GetKeyState", PY_VL_GetKeyState, VL_METH_ARGS, "Get the key state from param1."},
    {"VL_GetWidgetGeometryChange", PY_VL_GetWidgetGeometryChange, VL_METH_ARGS,
     "Get the widget geometry changes from param1."},
    {nullptr, nullptr, 0, nullptr},
};

const VL_Constant XPWidgetDefsConstants[] = {
    VL_CONSTANT(xpProperty_Refcon),
    VL_CONSTANT(xpProperty_Dragging),
    VL_CONSTANT(xpProperty_DragXOff),
    VL_CONSTANT(xpProperty_DragYOff),
    VL_CONSTANT(xpProperty_Hilited),
    VL_CONSTANT(xpProperty_Object),
    VL_CONSTANT(xpProperty_Clip),
    VL_CONSTANT(xpProperty_Enabled),
    VL_CONSTANT(xpProperty_UserStart),
    VL_CONSTANT(xpMode_Direct),
    VL_CONSTANT(xpMode_UpChain),
    VL_CONSTANT(xpMode_Recursive),
    VL_CONSTANT(xpMode_DirectAllCallbacks),
    VL_CONSTANT(xpMode_Once),
    VL_CONSTANT(xpWidgetClass_None),
    VL_CONSTANT(xpMsg_None),
    VL_CONSTANT(xpMsg_Create),
    VL_CONSTANT(xpMsg_Destroy),
    VL_CONSTANT(xpMsg_Paint),
    VL_CONSTANT(xpMsg_Draw),
    VL_CONSTANT(xpMsg_KeyPress),
    VL_CONSTANT(xpMsg_KeyTakeFocus),
    VL_CONSTANT(xpMsg_KeyLoseFocus),
    VL_CONSTANT(xpMsg_MouseDown),
    VL_CONSTANT(xpMsg_MouseDrag),
    VL_CONSTANT(xpMsg_MouseUp),
    VL_CONSTANT(xpMsg_Reshape),
    VL_CONSTANT(xpMsg_ExposedChanged),
    VL_CONSTANT(xpMsg_AcceptChild),
    VL_CONSTANT(xpMsg_LoseChild),
    VL_CONSTANT(xpMsg_AcceptParent),
    VL_CONSTANT(xpMsg_Shown),
    VL_CONSTANT(xpMsg_Hidden),
    VL_CONSTANT(xpMsg_DescriptorChanged),
    VL_CONSTANT(xpMsg_PropertyChanged),
    VL_CONSTANT(xpMsg_UserStart),
    VL_CONSTANT(xpMsg_MouseWheel),
    VL_CONSTANT(xpMsg_CursorAdjust),
};
static_assert(sizeof XPWidgetDefsConstants / sizeof XPWidgetDefsConstants[0] == 38,
              "XPWidgetDefs has 38 constants");

}  // namespace

void initXPWidgetDefs() {
    PyObject* module = VL_CreateModule("XPWidgetDefs", XPWidgetDefsMethods);
    if (!module || !VL_AddConstants(module, XPWidgetDefsConstants)) VL_PrintPythonError();
}

}  // namespace vorlith

// The module XPUIGraphics: drawing the simulator's own windows, elements and tracks, the
// sizes they like, and the geometry of a track's parts; 44 constants name the styles.

#include "XPUIGraphics.h"
#include "core/PythonErrors.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"

namespace vorlith {

namespace {

constexpr const char* kModule = "XPUIGraphics";

PyObject* PY_XPDrawWindow(PyObject*, PyObject* args) {
    int x1, y1, x2, y2, style;
    if (!PyArg_ParseTuple(args, "iiiii", &x1, &y1, &x2, &y2, &style)) return nullptr;
    return VL_Guarded(kModule, "XPDrawWindow", [&] {
        XPDrawWindow(x1, y1, x2, y2, style);
        return VL_Done();
    }, VL_FunctionError);
}

// Sizes given through out-lists, None where the script does not want one.
PyObject* StoreSizes(std::initializer_list<PyObject*> lists, const int* values) {
    int i = 0;
    for (PyObject* list : lists) {
        if (list != Py_None && !VL_StoreOut(list, VL_IntFromLong(values[i]))) return nullptr;
        ++i;
    }
    return VL_Done();
}
int* Wanted(PyObject* list, int& value) { return list == Py_None ? nullptr : &value; }

PyObject* PY_XPGetWindowDefaultDimensions(PyObject*, PyObject* args) {
    int style;
    PyObject *width, *height;
    if (!PyArg_ParseTuple(args, "iOO", &style, &width, &height)) return nullptr;
    if (!VL_CheckOutLists({width, height})) return nullptr;
    return VL_Guarded(kModule, "XPGetWindowDefaultDimensions", [&] {
        int values[2] = {0, 0};
        XPGetWindowDefaultDimensions(style, Wanted(width, values[0]), Wanted(height, values[1]));
        return StoreSizes({width, height}, values);
    }, VL_FunctionError);
}

PyObject* PY_XPDrawElement(PyObject*, PyObject* args) {
    int x1, y1, x2, y2, style, lit;
    if (!PyArg_ParseTuple(args, "iiiiii", &x1, &y1, &x2, &y2, &style, &lit)) return nullptr;
    return VL_Guarded(kModule, "XPDrawElement", [&] {
        XPDrawElement(x1, y1, x2, y2, style, lit);
        return VL_Done();
    }, VL_FunctionError);
}

PyObject* PY_XPGetElementDefaultDimensions(PyObject*, PyObject* args) {
    int style;
    PyObject *width, *height, *canBeLit;
    if (!PyArg_ParseTuple(args, "iOOO", &style, &width, &height, &canBeLit)) return nullptr;
    if (!VL_CheckOutLists({width, height, canBeLit})) return nullptr;
    return VL_Guarded(kModule, "XPGetElementDefaultDimensions", [&] {
        int values[3] = {0, 0, 0};
        XPGetElementDefaultDimensions(style, Wanted(width, values[0]), Wanted(height, values[1]),
                                      Wanted(canBeLit, values[2]));
        return StoreSizes({width, height, canBeLit}, values);
    }, VL_FunctionError);
}

PyObject* PY_XPDrawTrack(PyObject*, PyObject* args) {
    int x1, y1, x2, y2, minimum, maximum, value, style, lit;
    if (!PyArg_ParseTuple(args, "iiiiiiiii", &x1, &y1, &x2, &y2, &minimum, &maximum, &value, &style, &lit))
        return nullptr;
    return VL_Guarded(kModule, "XPDrawTrack", [&] {
        XPDrawTrack(x1, y1, x2, y2, minimum, maximum, value, style, lit);
        return VL_Done();
    }, VL_FunctionError);
}

PyObject* PY_XPGetTrackDefaultDimensions(PyObject*, PyObject* args) {
    int style;
    if (!PyArg_ParseTuple(args, "i", &style)) return nullptr;
    return VL_Guarded(kModule, "XPGetTrackDefaultDimensions", [&] {
        int width = 0, canBeLit = 0;
        XPGetTrackDefaultDimensions(style, &width, &canBeLit);
        return Py_BuildValue("ii", width, canBeLit);
    }, VL_FunctionError);
}

PyObject* PY_XPGetTrackMetrics(PyObject*, PyObject* args) {
    int x1, y1, x2, y2, minimum, maximum, value, style;
    if (!PyArg_ParseTuple(args, "iiiiiiii", &x1, &y1, &x2, &y2, &minimum, &maximum, &value, &style))
        return nullptr;
    return VL_Guarded(kModule, "XPGetTrackMetrics", [&] {
        int vertical = 0, downButton = 0, downPage = 0, thumb = 0, upPage = 0, upButton = 0;
        XPGetTrackMetrics(x1, y1, x2, y2, minimum, maximum, value, style, &vertical, &downButton,
                          &downPage, &thumb, &upPage, &upButton);
        return Py_BuildValue("iiiiii", vertical, downButton, downPage, thumb, upPage, upButton);
    }, VL_FunctionError);
}

PyMethodDef XPUIGraphicsMethods[] = {
    {"XPDrawWindow", PY_XPDrawWindow, VL_METH_ARGS, "Create a widget."},
    {"XPGetWindowDefaultDimensions", PY_XPGetWindowDefaultDimensions, VL_METH_ARGS, "Create a widget."},
    {"XPDrawElement", PY_XPDrawElement, VL_METH_ARGS, "Create a widget."},
    {"XPGetElementDefaultDimensions", PY_XPGetElementDefaultDimensions, VL_METH_ARGS, "Create a widget."},
    {"XPDrawTrack", PY_XPDrawTrack, VL_METH_ARGS, "Create a widget."},
    {"XPGetTrackDefaultDimensions", PY_XPGetTrackDefaultDimensions, VL_METH_ARGS, "Create a widget."},
    {"XPGetTrackMetrics", PY_XPGetTrackMetrics, VL_METH_ARGS, "Create a widget."},
    {nullptr, nullptr, 0, nullptr},
};

const VL_Constant XPUIGraphicsConstants[] = {
    VL_CONSTANT(xpWindow_Help),
    VL_CONSTANT(xpWindow_MainWindow),
    VL_CONSTANT(xpWindow_SubWindow),
    VL_CONSTANT(xpWindow_Screen),
    VL_CONSTANT(xpWindow_ListView),
    VL_CONSTANT(xpElement_TextField),
    VL_CONSTANT(xpElement_CheckBox),
    VL_CONSTANT(xpElement_CheckBoxLit),
    VL_CONSTANT(xpElement_WindowCloseBox),
    VL_CONSTANT(xpElement_WindowCloseBoxPressed),
    VL_CONSTANT(xpElement_PushButton),
    VL_CONSTANT(xpElement_PushButtonLit),
    VL_CONSTANT(xpElement_OilPlatform),
    VL_CONSTANT(xpElement_Ship),
    VL_CONSTANT(xpElement_OilPlatformSmall),
    VL_CONSTANT(xpElement_ILSGlideScope),
    VL_CONSTANT(xpElement_MarkerLeft),
    VL_CONSTANT(xpElement_Airport),
    VL_CONSTANT(xpElement_Waypoint),
    VL_CONSTANT(xpElement_NDB),
    VL_CONSTANT(xpElement_VOR),
    VL_CONSTANT(xpElement_RadioTower),
    VL_CONSTANT(xpElement_AircraftCarrier),
    VL_CONSTANT(xpElement_Fire),
    VL_CONSTANT(xpElement_MarkerRight),
    VL_CONSTANT(xpElement_CustomObject),
    VL_CONSTANT(xpElement_CoolingTower),
    VL_CONSTANT(xpElement_SmokeStack),
    VL_CONSTANT(xpElement_Building),
    VL_CONSTANT(xpElement_PowerLine),
    VL_CONSTANT(xpElement_CopyButtons),
    VL_CONSTANT(xpElement_CopyButtonsWithEditingGrid),
    VL_CONSTANT(xpElement_EditingGrid),
    VL_CONSTANT(xpElement_ScrollBar),
    VL_CONSTANT(xpElement_VORWithCompassRose),
    VL_CONSTANT(xpElement_Zoomer),
    VL_CONSTANT(xpElement_TextFieldMiddle),
    VL_CONSTANT(xpElement_LittleDownArrow),
    VL_CONSTANT(xpElement_LittleUpArrow),
    VL_CONSTANT(xpElement_WindowDragBar),
    VL_CONSTANT(xpElement_WindowDragBarSmooth),
    VL_CONSTANT(xpTrack_ScrollBar),
    VL_CONSTANT(xpTrack_Slider),
    VL_CONSTANT(xpTrack_Progress),
};
static_assert(sizeof XPUIGraphicsConstants / sizeof XPUIGraphicsConstants[0] == 44,
              "XPUIGraphics has 44 constants");

}  // namespace

void initXPUIGraphics() {
    PyObject* module = VL_CreateModule("XPUIGraphics", XPUIGraphicsMethods);
    if (!module || !VL_AddConstants(module, XPUIGraphicsConstants)) VL_PrintPythonError();
}

}  // namespace vorlith

// The module XPWidgetUtils: widgets built from a table in one call, moving a widget, and
// the behaviour functions a widget callback calls first. Widget ids are read as integers
// of any size (the ids of this SDK do not fit in 32 bits); a message parameter that points
// at a structure must be one delivered to a script in this frame, and the SDK gets a copy.

#include <vector>

#include "XPWidgetUtils.h"
#include "XPWidgets.h"
#include "callbacks/WidgetParameters.h"
#include "core/PythonErrors.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"

namespace vorlith {

namespace {

constexpr const char* kModule = "XPWidgetUtils";
constexpr Py_ssize_t kEntryItems = 9;

// One entry of the creation table: a list of at least nine items; its descriptor text
// lives in `descriptor` for the SDK call.
bool ParseEntry(PyObject* entry, Py_ssize_t index, Py_ssize_t count, XPWidgetCreate_t* row,
                VL_Text* descriptor) {
    if (!PyList_Check(entry) || PyList_GET_SIZE(entry) < kEntryItems) {
        PyErr_Format(PyExc_TypeError,
                     "XPUCreateWidgets: entry %zd must be a list of %zd items (left, top, right, "
                     "bottom, visible, descriptor, is root, container index, class)",
                     index, kEntryItems);
        return false;
    }
    PyObject* items = PyList_GetSlice(entry, 0, kEntryItems);
    if (!items) return false;
    PyObject* fields = PySequence_Tuple(items);
    Py_DECREF(items);
    if (!fields) return false;
    int ok = PyArg_ParseTuple(fields, "iiiiiO&iii", &row->left, &row->top, &row->right, &row->bottom,
                              &row->visible, VL_ParseText, descriptor, &row->isRoot,
                              &row->containerIndex, &row->widgetClass);
    Py_DECREF(fields);
    if (!ok) return false;
    // The SDK reads the container of an earlier row from the ids it is filling in.
    if (row->containerIndex != NO_PARENT && row->containerIndex != PARAM_PARENT &&
        (row->containerIndex < 0 || row->containerIndex >= count)) {
        PyErr_Format(PyExc_ValueError,
                     "XPUCreateWidgets: entry %zd names container index %d, not an entry of the table",
                     index, row->containerIndex);
        return false;
    }
    row->descriptor = descriptor->c_str();
    return true;
}

PyObject* PY_XPUCreateWidgets(PyObject*, PyObject* args) {
    PyObject *table, *outList;
    long countArgument;
    void* paramParent = nullptr;
    if (!PyArg_ParseTuple(args, "OlO&O", &table, &countArgument, VL_ParseIntegerHandle, &paramParent,
                          &outList))
        return nullptr;
    if (!VL_CheckOutLists({outList})) return nullptr;
    if (!PyList_Check(table)) {
        PyErr_Format(PyExc_TypeError, "XPUCreateWidgets: the table must be a list, not %.200s",
                     Py_TYPE(table)->tp_name);
        return nullptr;
    }
    // A count the table cannot fill is refused before anything is made or allocated.
    Py_ssize_t count = countArgument < 0 ? 0 : static_cast<Py_ssize_t>(countArgument);
    if (count > PyList_GET_SIZE(table)) {
        PyErr_Format(PyExc_ValueError, "XPUCreateWidgets: count %ld but the table has %zd entries",
                     countArgument, PyList_GET_SIZE(table));
        return nullptr;
    }
    std::vector<XPWidgetCreate_t> rows(static_cast<std::size_t>(count));
    std::vector<VL_Text> descriptors(static_cast<std::size_t>(count));
    for (Py_ssize_t i = 0; i < count; ++i)
        if (!ParseEntry(PyList_GET_ITEM(table, i), i, count, &rows[i], &descriptors[i])) return nullptr;
    std::vector<XPWidgetID> widgets(static_cast<std::size_t>(count), nullptr);
    bool ok = VL_GuardedCall(kModule, "XPUCreateWidgets", [&] {
        XPUCreateWidgets(rows.data(), static_cast<int>(count), paramParent, widgets.data());
    });
    if (!ok) return Py_BuildValue("(i)", 0);
    if (outList != Py_None) {
        for (XPWidgetID widget : widgets) {
            PyObject* handle = VL_HandleObject(widget);
            int status = handle ? PyList_Append(outList, handle) : -1;
            Py_XDECREF(handle);
            if (status != 0) return nullptr;
        }
    }
    return Py_BuildValue("(i)", 1);
}

PyObject* PY_XPUMoveWidgetBy(PyObject*, PyObject* args) {
    void* widget = nullptr;
    int dx, dy;
    if (!PyArg_ParseTuple(args, "O&ii", VL_ParseIntegerHandle, &widget, &dx, &dy)) return nullptr;
    return VL_Guarded(kModule, "XPUMoveWidgetBy", [&] {
        XPUMoveWidgetBy(widget, dx, dy);
        return VL_Done();
    });
}

// The arguments of a behaviour function: message, widget, param1, param2 and, when
// `last` is given, one more int. Parameters that point at a structure are turned into
// the address of a copy in `copies`.
struct Behaviour {
    int message = 0;
    void* widget = nullptr;
    intptr_t params[2] = {0, 0};
    VL_WidgetStructCopy copies[2];

    bool parse(PyObject* args, const char* function, int* last) {
        void* raw[2] = {nullptr, nullptr};
        bool parsed = last ? PyArg_ParseTuple(args, "iO&O&O&i", &message, VL_ParseIntegerHandle, &widget,
                                              VL_ParseIntegerHandle, &raw[0], VL_ParseIntegerHandle,
                                              &raw[1], last)
                           : PyArg_ParseTuple(args, "iO&O&O&", &message, VL_ParseIntegerHandle, &widget,
                                              VL_ParseIntegerHandle, &raw[0], VL_ParseIntegerHandle,
                                              &raw[1]);
        if (!parsed) return false;
        for (int i = 0; i < 2; ++i) {
            params[i] = reinterpret_cast<intptr_t>(raw[i]);
            VL_WidgetStruct kind = VL_WidgetStructOf(message, i + 1);
            if (kind == VL_WidgetStruct::None) continue;
            if (!VL_FindWidgetStruct(kind, params[i], &copies[i])) {
                PyErr_Format(PyExc_ValueError,
                             "%s: param%d is not a parameter of message %d delivered in this frame",
                             function, i + 1, message);
                return false;
            }
            params[i] = reinterpret_cast<intptr_t>(&copies[i]);
        }
        return true;
    }
};

PyObject* PY_XPUFixedLayout(PyObject*, PyObject* args) {
    Behaviour b;
    if (!b.parse(args, "XPUFixedLayout", nullptr)) return nullptr;
    return VL_Guarded(kModule, "XPUFixedLayout", [&] {
        return VL_IntFromLong(XPUFixedLayout(b.message, b.widget, b.params[0], b.params[1]));
    });
}

PyObject* PY_XPUSelectIfNeeded(PyObject*, PyObject* args) {
    Behaviour b;
    int eatClick;
    if (!b.parse(args, "XPUSelectIfNeeded", &eatClick)) return nullptr;
    return VL_Guarded(kModule, "XPUSelectIfNeeded", [&] {
        return VL_IntFromLong(XPUSelectIfNeeded(b.message, b.widget, b.params[0], b.params[1], eatClick));
    });
}

PyObject* PY_XPUDefocusKeyboard(PyObject*, PyObject* args) {
    Behaviour b;
    int eatClick;
    if (!b.parse(args, "XPUDefocusKeyboard", &eatClick)) return nullptr;
    return VL_Guarded(kModule, "XPUDefocusKeyboard", [&] {
        return VL_IntFromLong(XPUDefocusKeyboard(b.message, b.widget, b.params[0], b.params[1], eatClick));
    });
}

// Scripts give only the drag area's left; its top, right and bottom are the widget's own,
// so the widget drags by any point from that left edge on.
PyObject* PY_XPUDragWidget(PyObject*, PyObject* args) {
    Behaviour b;
    int left;
    if (!b.parse(args, "XPUDragWidget", &left)) return nullptr;
    return VL_Guarded(kModule, "XPUDragWidget", [&] {
        int top = 0, right = 0, bottom = 0;
        XPGetWidgetGeometry(b.widget, nullptr, &top, &right, &bottom);
        return VL_IntFromLong(
            XPUDragWidget(b.message, b.widget, b.params[0], b.params[1], left, top, right, bottom));
    });
}

PyMethodDef XPWidgetUtilsMethods[] = {
    {"XPUCreateWidgets", PY_XPUCreateWidgets, VL_METH_ARGS, "Create an XPU widget."},
    {"XPUMoveWidgetBy", PY_XPUMoveWidgetBy, VL_METH_ARGS, "Move a widget."},
    {"XPUFixedLayout", PY_XPUFixedLayout, VL_METH_ARGS, "Fixed Layout."},
    {"XPUSelectIfNeeded", PY_XPUSelectIfNeeded, VL_METH_ARGS, "Select if needed."},
    {"XPUDefocusKeyboard", PY_XPUDefocusKeyboard, VL_METH_ARGS, "Defocus keyboard."},
    {"XPUDragWidget", PY_XPUDragWidget, VL_METH_ARGS, "Drag widget."},
    {nullptr, nullptr, 0, nullptr},
};

const VL_Constant XPWidgetUtilsConstants[] = {
    VL_CONSTANT(NO_PARENT),
    VL_CONSTANT(PARAM_PARENT),
};

}  // namespace

void initXPWidgetUtils() {
    PyObject* module = VL_CreateModule("XPWidgetUtils", XPWidgetUtilsMethods);
    if (!module || !VL_AddConstants(module, XPWidgetUtilsConstants)) VL_PrintPythonError();
}

}  // namespace vorlith

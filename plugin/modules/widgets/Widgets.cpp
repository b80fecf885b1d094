// The module XPWidgets: the SDK's widget library. Every widget made from Python gets a
// record in WidgetCallbackList, by which VL_WidgetCallback finds the script's callable
// for the widget's messages; destroying a widget removes its record and its children's.

#include <algorithm>
#include <climits>
#include <vector>

#include "XPWidgets.h"
#include "callbacks/Trampolines.h"
#include "callbacks/WidgetParameters.h"
#include "core/PythonErrors.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"

namespace vorlith {

namespace {

constexpr const char* kModule = "XPWidgets";

// The widget of a function whose one argument is a widget.
bool ParseWidget(PyObject* args, XPWidgetID* widget) {
    PyObject* object;
    if (!VL_ParseOneObject(args, &object)) return false;
    *widget = VL_HandleFromObject(object);
    return true;
}

PyObject* PY_XPCreateWidget(PyObject*, PyObject* args) {
    int left, top, right, bottom, visible, isRoot, widgetClass;
    VL_Text descriptor;
    PyObject* containerObject;
    if (!PyArg_ParseTuple(args, "iiiiiO&iOi", &left, &top, &right, &bottom, &visible, VL_ParseText,
                          &descriptor, &isRoot, &containerObject, &widgetClass))
        return nullptr;
    XPWidgetID container = VL_HandleFromObject(containerObject);
    return VL_Guarded(kModule, "XPCreateWidget", [&] {
        XPWidgetID widget = XPCreateWidget(left, top, right, bottom, visible, descriptor.c_str(),
                                           isRoot, container, widgetClass);
        // A widget the SDK refused (an unknown class) has nothing to record.
        if (widget)
            VL_Table().AddWidgetCallback(WidgetCallbackList, nullptr, widget, nullptr, isRoot, container);
        if (VL_Tracing())
            VL_Trace("XPCreateWidget")
                .line("outWidgetID = %x, inIsRoot = %d, inContainer = %x\n", VL_Low32(widget), isRoot,
                      VL_Low32(container))
                .size("WidgetCallbackList", WidgetCallbackList);
        return VL_HandleObject(widget);
    });
}

PyObject* PY_XPCreateCustomWidget(PyObject*, PyObject* args) {
    PyObject *self, *callable;
    int left, top, right, bottom, visible, isRoot;
    VL_Text descriptor;
    void* container = nullptr;
    if (!PyArg_ParseTuple(args, "OiiiiiO&iO&O", &self, &left, &top, &right, &bottom, &visible,
                          VL_ParseText, &descriptor, &isRoot, VL_ParseIntegerHandle, &container,
                          &callable))
        return nullptr;
    return VL_Guarded(kModule, "XPCreateCustomWidget", [&] {
        XPWidgetID widget = XPCreateCustomWidget(left, top, right, bottom, visible, descriptor.c_str(),
                                                 isRoot, container, VL_WidgetCallback);
        if (widget) {
            VL_Table().AddWidgetCallback(WidgetCallbackList, self, widget, callable, isRoot, container);
            // The SDK's own xpMsg_Create came before the record; this one reaches the script.
            XPSendMessageToWidget(widget, xpMsg_Create, xpMode_Once, 1, 0);
        }
        if (VL_Tracing())
            VL_Trace("XPCreateCustomWidget")
                .line("pScriptId = %x, outWidgetID = %x, inIsRoot = %d, inContainer = %x\n",
                      VL_Low32(self), VL_Low32(widget), isRoot, VL_Low32(container))
                .size("WidgetCallbackList", WidgetCallbackList);
        return VL_HandleObject(widget);
    });
}

PyObject* PY_XPAddWidgetCallback(PyObject*, PyObject* args) {
    PyObject *self, *widgetObject, *callable;
    if (!PyArg_ParseTuple(args, "OOO", &self, &widgetObject, &callable)) return nullptr;
    XPWidgetID widget = VL_HandleFromObject(widgetObject);
    return VL_Guarded(kModule, "XPAddWidgetCallback", [&] {
        int found = 0, position = 0;
        VL_Table().FindWidgetCallback(WidgetCallbackList, widget, found, position);
        if (found)
            VL_Table().UpdateWidgetCallback(WidgetCallbackList, self, widget, callable);
        else  // named by its file like every report of a script: XPluginStart has not named it yet
            VL_ReportForScript(kModule, "XPAddWidgetCallback",
                               "Script '%s.py' XPAddWidgetCallback Error.", self);
        XPAddWidgetCallback(widget, VL_WidgetCallback);
        if (VL_Tracing())
            VL_Trace("XPAddWidgetCallback")
                .line("pScriptId = %x, inWidgetID = %x\n", VL_Low32(self), VL_Low32(widget))
                .size("WidgetCallbackList", WidgetCallbackList);
        return VL_Done();
    });
}

PyObject* PY_XPDestroyWidget(PyObject*, PyObject* args) {
    PyObject *self, *widgetObject;
    int destroyChildren;
    if (!PyArg_ParseTuple(args, "OOi", &self, &widgetObject, &destroyChildren)) return nullptr;
    XPWidgetID widget = VL_HandleFromObject(widgetObject);
    return VL_Guarded(kModule, "XPDestroyWidget", [&] {
        XPWidgetID parent = XPGetParentWidget(widget);
        int found = 0, position = 0;
        VL_Table().FindWidgetCallback(WidgetCallbackList, self, widget, found, position);
        XPDestroyWidget(widget, destroyChildren);
        if (found) {
            // The widget's callbacks ran during the destruction and may have changed the
            // list: the record is looked up again rather than trusted by position.
            int still = 0;
            _WidgetCallbackListEntry* record =
                VL_Table().FindWidgetCallback(WidgetCallbackList, self, widget, still, position);
            if (still) VL_Table().DeleteWidgetCallback(WidgetCallbackList, record, position);
            VL_Table().DeleteWidgetChildCallbacks(WidgetCallbackList, self, widget);
        } else if (!parent) {
            VL_ReportForScript(kModule, "XPDestroyWidget", VL_NoSuchCallback, self);
        }
        if (VL_Tracing()) {
            VL_Trace trace("XPDestroyWidget");
            trace.line("pScriptId = %x, Script Name = %s, inWidgetID = %x\n", VL_Low32(self),
                       VL_ScriptName(self).c_str(), VL_Low32(widget));
            if (found || !parent) trace.size("WidgetCallbackList", WidgetCallbackList);
        }
        return VL_Done();
    });
}

PyObject* PY_XPSendMessageToWidget(PyObject*, PyObject* args) {
    PyObject *widgetObject, *param1Object, *param2Object;
    int message, mode;
    if (!PyArg_ParseTuple(args, "OiiOO", &widgetObject, &message, &mode, &param1Object, &param2Object))
        return nullptr;
    XPWidgetID widget = VL_HandleFromObject(widgetObject);
    auto param1 = reinterpret_cast<intptr_t>(VL_HandleFromObject(param1Object));
    auto param2 = reinterpret_cast<intptr_t>(VL_HandleFromObject(param2Object));
    return VL_Guarded(kModule, "XPSendMessageToWidget", [&] {
        VL_ScriptSentMessage sent(message, param1, param2);
        return VL_IntFromLong(XPSendMessageToWidget(widget, message, mode, param1, param2));
    });
}

PyObject* PY_XPPlaceWidgetWithin(PyObject*, PyObject* args) {
    PyObject *subObject, *containerObject;
    if (!PyArg_ParseTuple(args, "OO", &subObject, &containerObject)) return nullptr;
    XPWidgetID sub = VL_HandleFromObject(subObject);
    XPWidgetID container = VL_HandleFromObject(containerObject);
    return VL_Guarded(kModule, "XPPlaceWidgetWithin", [&] {
        XPPlaceWidgetWithin(sub, container);
        return VL_Done();
    });
}

PyObject* PY_XPGetNthChildWidget(PyObject*, PyObject* args) {
    PyObject* widgetObject;
    long index;
    if (!PyArg_ParseTuple(args, "Ol", &widgetObject, &index)) return nullptr;
    XPWidgetID widget = VL_HandleFromObject(widgetObject);
    // An index beyond an int must not wrap around into the children.
    int nth = index < INT_MIN || index > INT_MAX ? -1 : static_cast<int>(index);
    return VL_Guarded(kModule, "XPGetNthChildWidget",
                      [&] { return VL_HandleObject(XPGetNthChildWidget(widget, nth)); });
}

// The functions of one widget argument, as a table: what each does with the widget and
// turns into its result.
template <typename Act>
PyObject* OnWidget(PyObject* args, const char* function, Act&& act) {
    XPWidgetID widget;
    if (!ParseWidget(args, &widget)) return nullptr;
    return VL_Guarded(kModule, function, [&] { return act(widget); });
}

PyObject* PY_XPCountChildWidgets(PyObject*, PyObject* args) {
    return OnWidget(args, "XPCountChildWidgets",
                    [](XPWidgetID w) { return VL_IntFromLong(XPCountChildWidgets(w)); });
}
PyObject* PY_XPGetParentWidget(PyObject*, PyObject* args) {
    return OnWidget(args, "XPGetParentWidget",
                    [](XPWidgetID w) { return VL_HandleObject(XPGetParentWidget(w)); });
}
PyObject* PY_XPShowWidget(PyObject*, PyObject* args) {
    return OnWidget(args, "XPShowWidget", [](XPWidgetID w) { return XPShowWidget(w), VL_Done(); });
}
PyObject* PY_XPHideWidget(PyObject*, PyObject* args) {
    return OnWidget(args, "XPHideWidget", [](XPWidgetID w) { return XPHideWidget(w), VL_Done(); });
}
PyObject* PY_XPIsWidgetVisible(PyObject*, PyObject* args) {
    return OnWidget(args, "XPIsWidgetVisible",
                    [](XPWidgetID w) { return VL_IntFromLong(XPIsWidgetVisible(w)); });
}
PyObject* PY_XPFindRootWidget(PyObject*, PyObject* args) {
    return OnWidget(args, "XPFindRootWidget",
                    [](XPWidgetID w) { return VL_HandleObject(XPFindRootWidget(w)); });
}
PyObject* PY_XPBringRootWidgetToFront(PyObject*, PyObject* args) {
    return OnWidget(args, "XPBringRootWidgetToFront",
                    [](XPWidgetID w) { return XPBringRootWidgetToFront(w), VL_Done(); });
}
PyObject* PY_XPIsWidgetInFront(PyObject*, PyObject* args) {
    return OnWidget(args, "XPIsWidgetInFront",
                    [](XPWidgetID w) { return VL_IntFromLong(XPIsWidgetInFront(w)); });
}
PyObject* PY_XPSetKeyboardFocus(PyObject*, PyObject* args) {
    return OnWidget(args, "XPSetKeyboardFocus",
                    [](XPWidgetID w) { return VL_HandleObject(XPSetKeyboardFocus(w)); });
}
PyObject* PY_XPLoseKeyboardFocus(PyObject*, PyObject* args) {
    return OnWidget(args, "XPLoseKeyboardFocus",
                    [](XPWidgetID w) { return XPLoseKeyboardFocus(w), VL_Done(); });
}

// XPGetWidgetGeometry and XPGetWidgetExposedGeometry: four out-lists, left, top, right, bottom.
PyObject* GetBox(PyObject* args, const char* function,
                 void (*get)(XPWidgetID, int*, int*, int*, int*)) {
    PyObject *widgetObject, *lists[4];
    if (!PyArg_ParseTuple(args, "OOOOO", &widgetObject, &lists[0], &lists[1], &lists[2], &lists[3]))
        return nullptr;
    if (!VL_CheckOutLists({lists[0], lists[1], lists[2], lists[3]})) return nullptr;
    XPWidgetID widget = VL_HandleFromObject(widgetObject);
    return VL_Guarded(kModule, function, [&]() -> PyObject* {
        int values[4] = {0, 0, 0, 0};
        int* out[4];
        for (int i = 0; i < 4; ++i) out[i] = lists[i] == Py_None ? nullptr : &values[i];
        get(widget, out[0], out[1], out[2], out[3]);
        for (int i = 0; i < 4; ++i)
            if (out[i] && !VL_StoreOut(lists[i], VL_IntFromLong(values[i]))) return nullptr;
        return VL_Done();
    });
}

PyObject* PY_XPGetWidgetGeometry(PyObject*, PyObject* args) {
    return GetBox(args, "XPGetWidgetGeometry", XPGetWidgetGeometry);
}

PyObject* PY_XPGetWidgetExposedGeometry(PyObject*, PyObject* args) {
    return GetBox(args, "XPGetWidgetExposedGeometry", XPGetWidgetExposedGeometry);
}

PyObject* PY_XPSetWidgetGeometry(PyObject*, PyObject* args) {
    PyObject* widgetObject;
    int left, top, right, bottom;
    if (!PyArg_ParseTuple(args, "Oiiii", &widgetObject, &left, &top, &right, &bottom)) return nullptr;
    XPWidgetID widget = VL_HandleFromObject(widgetObject);
    return VL_Guarded(kModule, "XPSetWidgetGeometry", [&] {
        XPSetWidgetGeometry(widget, left, top, right, bottom);
        return VL_Done();
    });
}

PyObject* PY_XPGetWidgetForLocation(PyObject*, PyObject* args) {
    void* container = nullptr;
    int x, y;
    long recursive, visibleOnly;
    if (!PyArg_ParseTuple(args, "O&iill", VL_ParseIntegerHandle, &container, &x, &y, &recursive,
                          &visibleOnly))
        return nullptr;
    return VL_Guarded(kModule, "XPGetWidgetForLocation", [&] {
        return VL_HandleObject(XPGetWidgetForLocation(container, x, y, recursive != 0, visibleOnly != 0));
    });
}

PyObject* PY_XPSetWidgetDescriptor(PyObject*, PyObject* args) {
    PyObject* widgetObject;
    VL_Text descriptor;
    if (!PyArg_ParseTuple(args, "OO&", &widgetObject, VL_ParseText, &descriptor)) return nullptr;
    XPWidgetID widget = VL_HandleFromObject(widgetObject);
    return VL_Guarded(kModule, "XPSetWidgetDescriptor", [&] {
        XPSetWidgetDescriptor(widget, descriptor.c_str());
        return VL_Done();
    });
}

PyObject* PY_XPGetWidgetDescriptor(PyObject*, PyObject* args) {
    PyObject *widgetObject, *list;
    int maxLength;
    if (!PyArg_ParseTuple(args, "OOi", &widgetObject, &list, &maxLength)) return nullptr;
    if (!VL_CheckOutLists({list})) return nullptr;
    XPWidgetID widget = VL_HandleFromObject(widgetObject);
    PyObject* result = nullptr;
    bool ok = VL_GuardedCall(kModule, "XPGetWidgetDescriptor", [&] {
        int length = XPGetWidgetDescriptor(widget, nullptr, 0);
        if (list != Py_None) {
            // The buffer holds what the script asked for, but never more than the text:
            // a huge or negative maximum allocates nothing it does not need.
            int wanted = std::max(0, std::min(maxLength, length));
            std::vector<char> buffer(static_cast<std::size_t>(wanted) + 1, '\0');
            if (wanted > 0) XPGetWidgetDescriptor(widget, buffer.data(), wanted);
            PyObject* text = VL_TextFromStringAndSize(buffer.data(), wanted);
            int status = text ? PyList_Append(list, text) : -1;
            Py_XDECREF(text);
            if (status != 0) return;
        }
        result = VL_IntFromLong(static_cast<long>(static_cast<unsigned>(length)));
    });
    if (!ok) return Py_BuildValue("(is)", 0, "");
    return result;
}

PyObject* PY_XPSetWidgetProperty(PyObject*, PyObject* args) {
    PyObject *widgetObject, *valueObject;
    int property;
    if (!PyArg_ParseTuple(args, "OiO", &widgetObject, &property, &valueObject)) return nullptr;
    XPWidgetID widget = VL_HandleFromObject(widgetObject);
    auto value = reinterpret_cast<intptr_t>(VL_HandleFromObject(valueObject));
    return VL_Guarded(kModule, "XPSetWidgetProperty", [&] {
        XPSetWidgetProperty(widget, property, value);
        return VL_Done();
    });
}

PyObject* PY_XPGetWidgetProperty(PyObject*, PyObject* args) {
    PyObject *widgetObject, *existsList;
    int property;
    if (!PyArg_ParseTuple(args, "OiO", &widgetObject, &property, &existsList)) return nullptr;
    if (!VL_CheckOutLists({existsList})) return nullptr;
    XPWidgetID widget = VL_HandleFromObject(widgetObject);
    return VL_Guarded(kModule, "XPGetWidgetProperty", [&]() -> PyObject* {
        int exists = 0;
        intptr_t value = XPGetWidgetProperty(widget, property, existsList == Py_None ? nullptr : &exists);
        if (existsList != Py_None && !VL_StoreOut(existsList, VL_IntFromLong(exists))) return nullptr;
        return VL_IntFromLong(static_cast<int>(value));
    });
}

PyObject* PY_XPGetWidgetWithFocus(PyObject*, PyObject*) {
    return VL_Guarded(kModule, "XPGetWidgetWithFocus",
                      [] { return VL_HandleObject(XPGetWidgetWithFocus()); }, VL_FunctionError);
}

PyObject* PY_XPGetWidgetClassFunc(PyObject*, PyObject* args) {
    int widgetClass;
    if (!PyArg_ParseTuple(args, "i", &widgetClass)) return nullptr;
    return VL_Guarded(kModule, "XPGetWidgetClassFunc", [&] {
        return VL_HandleObject(reinterpret_cast<void*>(XPGetWidgetClassFunc(widgetClass)));
    }, VL_FunctionError);
}

PyMethodDef XPWidgetsMethods[] = {
    {"XPCreateWidget", PY_XPCreateWidget, VL_METH_ARGS, "Create a widget."},
    {"XPCreateCustomWidget", PY_XPCreateCustomWidget, VL_METH_ARGS, "Create a custom widget."},
    {"XPAddWidgetCallback", PY_XPAddWidgetCallback, VL_METH_ARGS, "Add widget callback."},
    {"XPDestroyWidget", PY_XPDestroyWidget, VL_METH_ARGS, "Destroy a widget."},
    {"XPSendMessageToWidget", PY_XPSendMessageToWidget, VL_METH_ARGS, "Send message to widget."},
    {"XPPlaceWidgetWithin", PY_XPPlaceWidgetWithin, VL_METH_ARGS, "Place within another widget."},
    {"XPCountChildWidgets", PY_XPCountChildWidgets, VL_METH_ARGS, "Count child widgets."},
    {"XPGetNthChildWidget", PY_XPGetNthChildWidget, VL_METH_ARGS, "Get Nth child."},
    {"XPGetParentWidget", PY_XPGetParentWidget, VL_METH_ARGS, "Get parent."},
    {"XPShowWidget", PY_XPShowWidget, VL_METH_ARGS, "Show widget."},
    {"XPHideWidget", PY_XPHideWidget, VL_METH_ARGS, "Hide widget."},
    {"XPIsWidgetVisible", PY_XPIsWidgetVisible, VL_METH_ARGS, "Is the widget visible."},
    {"XPFindRootWidget", PY_XPFindRootWidget, VL_METH_ARGS, "Find the root widget."},
    {"XPBringRootWidgetToFront", PY_XPBringRootWidgetToFront, VL_METH_ARGS, "Bring root widget to front."},
    {"XPIsWidgetInFront", PY_XPIsWidgetInFront, VL_METH_ARGS, "Is the widget in front."},
    {"XPGetWidgetGeometry", PY_XPGetWidgetGeometry, VL_METH_ARGS, "Get the widget geometry."},
    {"XPSetWidgetGeometry", PY_XPSetWidgetGeometry, VL_METH_ARGS, "Set the widget geometry."},
    {"XPGetWidgetForLocation", PY_XPGetWidgetForLocation, VL_METH_ARGS, "Get widget for location."},
    {"XPGetWidgetExposedGeometry", PY_XPGetWidgetExposedGeometry, VL_METH_ARGS,
     "Get widget exposed geometry."},
    {"XPSetWidgetDescriptor", PY_XPSetWidgetDescriptor, VL_METH_ARGS, "Set widget descriptor."},
    {"XPGetWidgetDescriptor", PY_XPGetWidgetDescriptor, VL_METH_ARGS, "Get widget descriptor."},
    {"XPSetWidgetProperty", PY_XPSetWidgetProperty, VL_METH_ARGS, "Set the widget property."},
    {"XPGetWidgetProperty", PY_XPGetWidgetProperty, VL_METH_ARGS, "Get the widget property."},
    {"XPSetKeyboardFocus", PY_XPSetKeyboardFocus, VL_METH_ARGS, "Set keyboard focus."},
    {"XPLoseKeyboardFocus", PY_XPLoseKeyboardFocus, VL_METH_ARGS, "Lose keyboard focuse."},
    {"XPGetWidgetWithFocus", PY_XPGetWidgetWithFocus, VL_METH_ARGS, "Get widget with focus."},
    {"XPGetWidgetClassFunc", PY_XPGetWidgetClassFunc, VL_METH_ARGS, "Get widget class function."},
    {nullptr, nullptr, 0, nullptr},
};

}  // namespace

void initXPWidgets() {
    if (!VL_CreateModule("XPWidgets", XPWidgetsMethods)) VL_PrintPythonError();
}

}  // namespace vorlith

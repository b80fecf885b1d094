// The module XPLMMenus: menus a script creates, each a record in MenuCallbackList whose
// cell is the menu's reference value for VL_MenuCallback, and their items, whose
// reference values are the script's integers. Only the creating script destroys a menu.

#include "XPLMMenus.h"
#include "callbacks/Trampolines.h"
#include "core/PythonErrors.h"
#include "core/SdkCapabilities.h"
#include "modules/Modules.h"
#include "modules/xplm/Binding.h"

namespace vorlith {

namespace {

constexpr const char* kModule = "XPLMMenus";

PyObject* PY_XPLMFindPluginsMenu(PyObject*, PyObject*) {
    return VL_Guarded(kModule, "XPLMFindPluginsMenu",
                      [] { return VL_HandleObject(XPLMFindPluginsMenu()); });
}

// Any object is taken as the handler: only its record says which script it belongs to.
PyObject* PY_XPLMCreateMenu(PyObject*, PyObject* args) {
    PyObject *self, *parentObject, *callable, *refconObject;
    VL_Text name;
    int parentItem;
    if (!PyArg_ParseTuple(args, "OO&OiOO", &self, VL_ParseText, &name, &parentObject, &parentItem,
                          &callable, &refconObject))
        return nullptr;
    XPLMMenuID parent = VL_HandleFromObject(parentObject);
    void* refcon = VL_RefconFromObject(refconObject);
    return VL_Guarded(kModule, "XPLMCreateMenu", [&] {
        _CallbackList* cell = VL_Table().AddCallback(MenuCallbackList, self, nullptr, callable, refcon);
        XPLMMenuID menu = XPLMCreateMenu(name.c_str(), parent, parentItem, VL_MenuCallback, cell);
        VL_Table().UpdateCallback(MenuCallbackList, self, callable, menu);
        if (VL_Tracing())
            VL_Trace("XPLMCreateMenu")
                .line("pScriptId = %x, inName = %s, inParentMenu = %x, inParentItem = %d, "
                      "inMenuRef = %d\n",
                      VL_Low32(self), name.c_str(), VL_Low32(parent), parentItem, VL_Int(refcon))
                .size("MenuCallbackList", MenuCallbackList);
        return VL_HandleObject(menu);
    });
}

// A menu without this script's record (another script's, the Plugins menu) stays.
PyObject* PY_XPLMDestroyMenu(PyObject*, PyObject* args) {
    PyObject *self, *menuObject;
    if (!PyArg_ParseTuple(args, "OO", &self, &menuObject)) return nullptr;
    XPLMMenuID menu = VL_HandleFromObject(menuObject);
    return VL_Guarded(kModule, "XPLMDestroyMenu", [&] {
        int found = 0, position = 0;
        _CallbackList* cell = VL_Table().FindCallback(MenuCallbackList, self, menu, found, position);
        if (found) {
            XPLMDestroyMenu(menu);
            VL_Table().DeleteCallback(MenuCallbackList, cell, position);
        } else {
            VL_ReportForScript(kModule, "XPLMDestroyMenu", VL_NoSuchCallback, self);
        }
        if (VL_Tracing())
            VL_Trace("XPLMDestroyMenu")
                .line("pScriptId = %x, Script Name = %s, inMenuID = %x\n", VL_Low32(self),
                      VL_ScriptName(self).c_str(), VL_Low32(menu))
                .size("MenuCallbackList", MenuCallbackList);
        return VL_Done();
    });
}

PyObject* PY_XPLMRemoveMenuItem(PyObject*, PyObject* args) {
    if (!XPLMRemoveMenuItem_ptr) {
        PrintException(kModule, "XPLMRemoveMenuItem", VL_NotSupported210);
        return VL_IntFromLong(0);
    }
    PyObject* menuObject;
    int index;
    if (!PyArg_ParseTuple(args, "Oi", &menuObject, &index)) return nullptr;
    XPLMMenuID menu = VL_HandleFromObject(menuObject);
    return VL_Guarded(kModule, "XPLMRemoveMenuItem", [&] {
        XPLMRemoveMenuItem_ptr(menu, index);
        return VL_Done();
    });
}

PyObject* PY_XPLMClearAllMenuItems(PyObject*, PyObject* args) {
    PyObject* menuObject;
    if (!VL_ParseOneObject(args, &menuObject)) return nullptr;
    XPLMMenuID menu = VL_HandleFromObject(menuObject);
    return VL_Guarded(kModule, "XPLMClearAllMenuItems", [&] {
        XPLMClearAllMenuItems(menu);
        return VL_Done();
    });
}

PyObject* PY_XPLMAppendMenuItem(PyObject*, PyObject* args) {
    PyObject *menuObject, *itemObject;
    VL_Text name;
    int forceEnglish;
    if (!PyArg_ParseTuple(args, "OO&Oi", &menuObject, VL_ParseText, &name, &itemObject, &forceEnglish))
        return nullptr;
    XPLMMenuID menu = VL_HandleFromObject(menuObject);
    void* item = VL_HandleFromObject(itemObject);
    return VL_Guarded(kModule, "XPLMAppendMenuItem", [&] {
        return VL_IntFromLong(XPLMAppendMenuItem(menu, name.c_str(), item, forceEnglish));
    });
}

PyObject* PY_XPLMAppendMenuSeparator(PyObject*, PyObject* args) {
    PyObject* menuObject;
    if (!VL_ParseOneObject(args, &menuObject)) return nullptr;
    XPLMMenuID menu = VL_HandleFromObject(menuObject);
    return VL_Guarded(kModule, "XPLMAppendMenuSeparator", [&] {
        XPLMAppendMenuSeparator(menu);
        return VL_Done();
    });
}

PyObject* PY_XPLMSetMenuItemName(PyObject*, PyObject* args) {
    PyObject* menuObject;
    VL_Text name;
    int index, forceEnglish;
    if (!PyArg_ParseTuple(args, "OiO&i", &menuObject, &index, VL_ParseText, &name, &forceEnglish))
        return nullptr;
    XPLMMenuID menu = VL_HandleFromObject(menuObject);
    return VL_Guarded(kModule, "XPLMSetMenuItemName", [&] {
        XPLMSetMenuItemName(menu, index, name.c_str(), forceEnglish);
        return VL_Done();
    });
}

// The menu calls that take a handle, an item index and an int, and answer nothing.
template <void (*Function)(XPLMMenuID, int, int)>
PyObject* ItemCall(PyObject* args, const char* name) {
    PyObject* menuObject;
    int index, value;
    if (!PyArg_ParseTuple(args, "Oii", &menuObject, &index, &value)) return nullptr;
    XPLMMenuID menu = VL_HandleFromObject(menuObject);
    return VL_Guarded(kModule, name, [&] {
        Function(menu, index, value);
        return VL_Done();
    });
}

PyObject* PY_XPLMCheckMenuItem(PyObject*, PyObject* args) {
    return ItemCall<XPLMCheckMenuItem>(args, "XPLMCheckMenuItem");
}

PyObject* PY_XPLMEnableMenuItem(PyObject*, PyObject* args) {
    return ItemCall<XPLMEnableMenuItem>(args, "XPLMEnableMenuItem");
}

// The state is the result itself, not an out-list.
PyObject* PY_XPLMCheckMenuItemState(PyObject*, PyObject* args) {
    PyObject* menuObject;
    int index;
    if (!PyArg_ParseTuple(args, "Oi", &menuObject, &index)) return nullptr;
    XPLMMenuID menu = VL_HandleFromObject(menuObject);
    return VL_Guarded(kModule, "XPLMCheckMenuItemState", [&] {
        XPLMMenuCheck state = xplm_Menu_NoCheck;
        XPLMCheckMenuItemState(menu, index, &state);
        return VL_IntFromLong(state);
    });
}

PyMethodDef XPLMMenusMethods[] = {
    {"XPLMFindPluginsMenu", PY_XPLMFindPluginsMenu, VL_METH_ARGS, "Find Plugins Menu."},
    {"XPLMCreateMenu", PY_XPLMCreateMenu, VL_METH_ARGS, "Create Menu."},
    {"XPLMDestroyMenu", PY_XPLMDestroyMenu, VL_METH_ARGS, "Destroy Menu."},
    {"XPLMRemoveMenuItem", PY_XPLMRemoveMenuItem, VL_METH_ARGS, "Remove Menu Item."},
    {"XPLMClearAllMenuItems", PY_XPLMClearAllMenuItems, VL_METH_ARGS, "Clear All Menu Items."},
    {"XPLMAppendMenuItem", PY_XPLMAppendMenuItem, VL_METH_ARGS, "Append Menu Item."},
    {"XPLMAppendMenuSeparator", PY_XPLMAppendMenuSeparator, VL_METH_ARGS, "Append Menu Separator."},
    {"XPLMSetMenuItemName", PY_XPLMSetMenuItemName, VL_METH_ARGS, "Set Menu Item Name."},
    {"XPLMCheckMenuItem", PY_XPLMCheckMenuItem, VL_METH_ARGS, "Check Menu Item."},
    {"XPLMCheckMenuItemState", PY_XPLMCheckMenuItemState, VL_METH_ARGS, "Check Menu Item State."},
    {"XPLMEnableMenuItem", PY_XPLMEnableMenuItem, VL_METH_ARGS, "Enable Menu Item."},
    {nullptr, nullptr, 0, nullptr},
};

const VL_Constant kConstants[] = {
    {"xplm_Menu_NoCheck", xplm_Menu_NoCheck},
    {"xplm_Menu_Unchecked", xplm_Menu_Unchecked},
    {"xplm_Menu_Checked", xplm_Menu_Checked},
};

}  // namespace

void initXPLMMenus() {
    PyObject* module = VL_CreateModule("XPLMMenus", XPLMMenusMethods);
    if (!module || !VL_AddConstants(module, kConstants)) VL_PrintPythonError();
}

}  // namespace vorlith

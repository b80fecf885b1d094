// XPLMMenus: the menu bar with the simulator's Plugins menu, plug-in menus and their
// items, and picking an item by its path ("Plugins/Name/Item") for the driver.

#include <algorithm>
#include <string>
#include <vector>

#include "XPLMMenus.h"
#include "handles.h"
#include "host.h"

namespace xpsim {
namespace {

struct MenuItem {
    std::string name;
    void* itemRef = nullptr;
    int owner = 0;  // the plug-in that appended it
    bool separator = false;
    bool enabled = true;
    XPLMMenuCheck check = xplm_Menu_NoCheck;
    void* submenu = nullptr;
};

struct Menu {
    std::string name;
    void* parent = nullptr;  // null: in the menu bar
    XPLMMenuHandler_f handler = nullptr;
    void* menuRef = nullptr;
    int owner = 0;
    std::vector<MenuItem> items;
};

struct MenuState {
    HandleTable<Menu> menus{HandleKind::Menu};
    std::vector<void*> menuBar;  // top-level menus, left to right
    void* pluginsMenu = nullptr;
};

MenuState& state() {
    static MenuState s;
    return s;
}

void* pluginsMenu() {
    MenuState& s = state();
    if (!s.pluginsMenu) {
        Menu plugins;
        plugins.name = "Plugins";
        s.pluginsMenu = s.menus.add(std::move(plugins));
        s.menuBar.push_back(s.pluginsMenu);
    }
    return s.pluginsMenu;
}

// Each plug-in sees only its own items of the Plugins menu and numbers them from 0, so
// one plug-in's items never move when another one's come or go. The SDK leaves this
// open for X-Plane 9/10 (later SDKs document it); every other menu numbers all items.
bool sharedByPlugins(const void* menu) { return menu == state().pluginsMenu; }

bool visibleTo(const void* menu, const MenuItem& item, int plugin) {
    return !sharedByPlugins(menu) || item.owner == plugin;
}

// Position in menu.items of the index-th item the current plug-in sees, or -1.
int position(const void* handle, const Menu& menu, int index) {
    const int plugin = Host::get().currentPlugin;
    if (index < 0) return -1;
    for (size_t i = 0; i < menu.items.size(); ++i) {
        if (visibleTo(handle, menu.items[i], plugin) && index-- == 0) return static_cast<int>(i);
    }
    return -1;
}

int visibleCount(const void* handle, const Menu& menu) {
    const int plugin = Host::get().currentPlugin;
    int count = 0;
    for (const MenuItem& item : menu.items) count += visibleTo(handle, item, plugin) ? 1 : 0;
    return count;
}

Menu* findMenu(const char* function, void* handle) {
    pluginsMenu();
    Menu* menu = state().menus.get(handle);
    if (!menu) Host::get().reportError("%s: %p is not a valid menu", function, handle);
    return menu;
}

MenuItem* findItem(const char* function, void* handle, int index) {
    Menu* menu = findMenu(function, handle);
    if (!menu) return nullptr;
    const int at = position(handle, *menu, index);
    if (at < 0) {
        Host::get().reportError("%s: menu %s has no item %d", function, menu->name.c_str(), index);
        return nullptr;
    }
    return &menu->items[static_cast<size_t>(at)];
}

// Destroying a menu detaches it from where it hangs; its own submenus stay valid (the
// plug-in still holds their ids) until destroyed or their owner is unloaded.
void destroy(void* handle) {
    MenuState& s = state();
    Menu* menu = s.menus.get(handle);
    if (!menu) return;
    if (Menu* parent = s.menus.get(menu->parent)) {
        for (MenuItem& item : parent->items) {
            if (item.submenu == handle) item.submenu = nullptr;
        }
    }
    s.menuBar.erase(std::remove(s.menuBar.begin(), s.menuBar.end(), handle), s.menuBar.end());
    s.menus.remove(handle);
}

// One step of a resolved path: the menu and the position of the item in it.
struct PathStep {
    void* menu;
    size_t item;
};

// Matches `rest` against the items of `handle`, allowing item names that contain '/';
// the first item in menu order that leads to a complete match wins.
bool resolveItems(void* handle, const std::string& rest, std::vector<PathStep>* steps) {
    const Menu* menu = state().menus.get(handle);
    if (!menu) return false;
    for (size_t i = 0; i < menu->items.size(); ++i) {
        const MenuItem& item = menu->items[i];
        if (item.separator || rest.compare(0, item.name.size(), item.name) != 0) continue;
        steps->push_back({handle, i});
        if (rest.size() == item.name.size()) return true;
        if (rest[item.name.size()] == '/' && resolveItems(item.submenu, rest.substr(item.name.size() + 1), steps))
            return true;
        steps->pop_back();
    }
    return false;
}

}  // namespace

void forgetPluginMenus(int plugin) {
    MenuState& s = state();
    std::vector<void*> owned;
    s.menus.forEach([&](void* handle, Menu& menu) {
        if (menu.owner == plugin && handle != s.pluginsMenu) owned.push_back(handle);
    });
    for (void* handle : owned) destroy(handle);
    s.menus.forEach([&](void*, Menu& menu) {
        auto& items = menu.items;
        for (size_t i = items.size(); i-- > 0;) {
            if (items[i].owner == plugin) items.erase(items.begin() + static_cast<long>(i));
        }
    });
}

void resetMenus() {
    MenuState& s = state();
    s.menus.clear();
    s.menuBar.clear();
    s.pluginsMenu = nullptr;
}

namespace driver {

bool pickMenu(const std::string& path, std::string* error) {
    auto fail = [&](const std::string& message) {
        if (error) *error = "menu " + path + ": " + message;
        return false;
    };
    pluginsMenu();
    MenuState& s = state();
    std::vector<PathStep> steps;
    for (void* top : std::vector<void*>(s.menuBar)) {
        const std::string& name = s.menus.get(top)->name;
        if (path.size() > name.size() && path.compare(0, name.size(), name) == 0 && path[name.size()] == '/' &&
            resolveItems(top, path.substr(name.size() + 1), &steps))
            break;
    }
    if (steps.empty()) return fail("no such item");
    for (const PathStep& step : steps) {
        const Menu& menu = *s.menus.get(step.menu);
        const MenuItem& item = menu.items[step.item];
        if (!item.enabled) return fail("item " + item.name + " is disabled");
        // A disabled plug-in's menus behave as greyed out: they cannot be picked.
        if (!isPluginEnabled(menu.owner) || !isPluginEnabled(item.owner))
            return fail("item " + item.name + " belongs to a disabled plug-in");
    }
    const PathStep& last = steps.back();
    const Menu& menu = *s.menus.get(last.menu);
    const MenuItem& item = menu.items[last.item];
    if (s.menus.contains(item.submenu)) return fail("item " + item.name + " opens a sub-menu");
    Host::get().log("xpsim: menu pick " + path);
    // Items of a menu without a handler produce no call.
    if (menu.handler) {
        const XPLMMenuHandler_f handler = menu.handler;
        void* menuRef = menu.menuRef;
        void* itemRef = item.itemRef;
        CallingPlugin calling(menu.owner);
        handler(menuRef, itemRef);
    }
    return true;
}

}  // namespace driver
}  // namespace xpsim

using xpsim::Host;

extern "C" {

XPLM_API XPLMMenuID XPLMFindPluginsMenu(void) { return xpsim::pluginsMenu(); }

XPLM_API XPLMMenuID XPLMCreateMenu(const char* inName, XPLMMenuID inParentMenu, int inParentItem,
                                   XPLMMenuHandler_f inHandler, void* inMenuRef) {
    Host& host = Host::get();
    if (!inName || !*inName) {
        host.reportError("XPLMCreateMenu: the name is NULL or empty");
        return nullptr;
    }
    xpsim::MenuItem* parentItem = nullptr;
    if (inParentMenu) {
        parentItem = xpsim::findItem("XPLMCreateMenu", inParentMenu, inParentItem);
        if (!parentItem) return nullptr;
        if (parentItem->separator) {
            host.reportError("XPLMCreateMenu: item %d is a separator", inParentItem);
            return nullptr;
        }
    }
    xpsim::Menu menu;
    menu.name = inName;
    menu.parent = inParentMenu;
    menu.handler = inHandler;
    menu.menuRef = inMenuRef;
    menu.owner = host.currentPlugin;
    void* handle = xpsim::state().menus.add(std::move(menu));
    // A submenu attached where another hung replaces it there; the other stays valid.
    if (parentItem) {
        parentItem->submenu = handle;
    } else {
        xpsim::state().menuBar.push_back(handle);
    }
    return handle;
}

XPLM_API void XPLMDestroyMenu(XPLMMenuID inMenuID) {
    const xpsim::Menu* menu = xpsim::findMenu("XPLMDestroyMenu", inMenuID);
    if (!menu) return;
    if (inMenuID == xpsim::state().pluginsMenu)
        return Host::get().reportError("XPLMDestroyMenu: the Plugins menu belongs to the simulator");
    // Only the creator may destroy a menu; its owner still holds the id and its handler.
    if (menu->owner != Host::get().currentPlugin)
        return Host::get().reportError("XPLMDestroyMenu: menu %s belongs to plug-in %d", menu->name.c_str(),
                                       menu->owner);
    xpsim::destroy(inMenuID);
}

XPLM_API void XPLMClearAllMenuItems(XPLMMenuID inMenuID) {
    xpsim::Menu* menu = xpsim::findMenu("XPLMClearAllMenuItems", inMenuID);
    if (!menu) return;
    const int plugin = Host::get().currentPlugin;
    auto& items = menu->items;
    for (size_t i = items.size(); i-- > 0;) {
        if (xpsim::visibleTo(inMenuID, items[i], plugin)) items.erase(items.begin() + static_cast<long>(i));
    }
}

XPLM_API int XPLMAppendMenuItem(XPLMMenuID inMenu, const char* inItemName, void* inItemRef, int inForceEnglish) {
    xpsim::Menu* menu = xpsim::findMenu("XPLMAppendMenuItem", inMenu);
    if (!menu) return -1;
    if (!inItemName) {
        Host::get().reportError("XPLMAppendMenuItem: the item name is NULL");
        return -1;
    }
    xpsim::MenuItem item;
    item.name = inItemName;
    item.itemRef = inItemRef;
    item.owner = Host::get().currentPlugin;
    menu->items.push_back(std::move(item));
    return xpsim::visibleCount(inMenu, *menu) - 1;
}

XPLM_API void XPLMAppendMenuSeparator(XPLMMenuID inMenu) {
    xpsim::Menu* menu = xpsim::findMenu("XPLMAppendMenuSeparator", inMenu);
    if (!menu) return;
    // The SDK presumes, without saying, that a separator takes an index; so do we.
    xpsim::MenuItem item;
    item.separator = true;
    item.owner = Host::get().currentPlugin;
    menu->items.push_back(std::move(item));
}

XPLM_API void XPLMSetMenuItemName(XPLMMenuID inMenu, int inIndex, const char* inItemName, int inForceEnglish) {
    if (!inItemName) return Host::get().reportError("XPLMSetMenuItemName: the item name is NULL");
    if (xpsim::MenuItem* item = xpsim::findItem("XPLMSetMenuItemName", inMenu, inIndex)) item->name = inItemName;
}

XPLM_API void XPLMCheckMenuItem(XPLMMenuID inMenu, int index, XPLMMenuCheck inCheck) {
    if (inCheck < xplm_Menu_NoCheck || inCheck > xplm_Menu_Checked)
        return Host::get().reportError("XPLMCheckMenuItem: %d is not a check state", inCheck);
    if (xpsim::MenuItem* item = xpsim::findItem("XPLMCheckMenuItem", inMenu, index)) item->check = inCheck;
}

XPLM_API void XPLMCheckMenuItemState(XPLMMenuID inMenu, int index, XPLMMenuCheck* outCheck) {
    if (!outCheck) return Host::get().reportError("XPLMCheckMenuItemState: the output is NULL");
    xpsim::MenuItem* item = xpsim::findItem("XPLMCheckMenuItemState", inMenu, index);
    *outCheck = item ? item->check : xplm_Menu_NoCheck;
}

XPLM_API void XPLMEnableMenuItem(XPLMMenuID inMenu, int index, int enabled) {
    if (xpsim::MenuItem* item = xpsim::findItem("XPLMEnableMenuItem", inMenu, index)) item->enabled = enabled != 0;
}

XPLM_API void XPLMRemoveMenuItem(XPLMMenuID inMenu, int inIndex) {
    xpsim::Menu* menu = xpsim::findMenu("XPLMRemoveMenuItem", inMenu);
    if (!menu) return;
    const int at = xpsim::position(inMenu, *menu, inIndex);
    if (at < 0)
        return Host::get().reportError("XPLMRemoveMenuItem: menu %s has no item %d", menu->name.c_str(), inIndex);
    menu->items.erase(menu->items.begin() + at);
}

}  // extern "C"

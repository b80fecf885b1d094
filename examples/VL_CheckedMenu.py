# A menu "Checked Menu" under Plugins whose items switch on and off: picking an item
# flips its check mark. Each item's reference value says which item it is.
from __future__ import print_function
from XPLMMenus import (XPLMAppendMenuItem, XPLMCheckMenuItem, XPLMCheckMenuItemState,
                       XPLMCreateMenu, XPLMDestroyMenu, XPLMFindPluginsMenu, xplm_Menu_Checked,
                       xplm_Menu_Unchecked)

ITEMS = ["Landing lights", "Taxi lights", "Strobes"]


class Vorlith:
    def XPluginStart(self):
        plugins = XPLMFindPluginsMenu()
        # A submenu hangs on an item of the Plugins menu.
        item = XPLMAppendMenuItem(plugins, "Checked Menu", 0, 1)
        self.handler = self.MenuHandler
        self.menu = XPLMCreateMenu(self, "Checked Menu", plugins, item, self.handler, 0)
        for index, name in enumerate(ITEMS):
            XPLMAppendMenuItem(self.menu, name, index, 1)
            XPLMCheckMenuItem(self.menu, index, xplm_Menu_Unchecked)
        return "Checked Menu", "vorlith.examples.checkedmenu", "Menu items that switch on and off"

    def XPluginStop(self):
        XPLMDestroyMenu(self, self.menu)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def MenuHandler(self, menuRef, itemRef):
        on = XPLMCheckMenuItemState(self.menu, itemRef) != xplm_Menu_Checked
        XPLMCheckMenuItem(self.menu, itemRef, xplm_Menu_Checked if on else xplm_Menu_Unchecked)
        print("%s %s" % (ITEMS[itemRef], "on" if on else "off"))

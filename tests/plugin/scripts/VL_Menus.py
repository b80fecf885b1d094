# A submenu of the Plugins menu whose items the test picks by path; the handler toggles
# the picked item's check mark. VL_Other tries to destroy it and cannot.
from __future__ import print_function
from XPLMMenus import *

MENU = []  # the submenu's id, for VL_Other


def plain_handler(menuRef, itemRef):
    print("plain handler %d item %d" % (menuRef, itemRef))


class Vorlith:
    def XPluginStart(self):
        plugins = XPLMFindPluginsMenu()
        self.handler = self.Handler
        self.menu = XPLMCreateMenu(self, "VL Menus", plugins, XPLMAppendMenuItem(plugins, "VL Menus", 0, 1),
                                   self.handler, 40)
        MENU.append(self.menu)
        print("append -> %r" % [XPLMAppendMenuItem(self.menu, name, i + 1, 1)
                                for i, name in enumerate(("Alpha", "Beta"))])
        print("separator -> %r" % XPLMAppendMenuSeparator(self.menu))
        print("append -> %r" % [XPLMAppendMenuItem(self.menu, name, i + 3, 1) for i, name in enumerate(("Gamma", "Gone"))])
        print("remove -> %r" % XPLMRemoveMenuItem(self.menu, 4))
        print("check -> %r" % XPLMCheckMenuItem(self.menu, 0, xplm_Menu_Unchecked))
        print("rename -> %r" % XPLMSetMenuItemName(self.menu, 1, "Beta renamed", 1))
        print("grey -> %r" % XPLMEnableMenuItem(self.menu, 3, 0))
        print("states %r" % [XPLMCheckMenuItemState(self.menu, i) for i in (0, 1)])
        # A plain function is a handler like a bound method; this menu is left for the check.
        self.plain = XPLMCreateMenu(self, "VL Plain", None, 0, plain_handler, 50)
        XPLMAppendMenuItem(self.plain, "Plain item", 7, 1)
        print("destroy plugins menu -> %r" % XPLMDestroyMenu(self, plugins))
        return "VL_Menus", "vorlith.test.menus", "menus"

    def XPluginStop(self):
        print("destroy -> %r" % XPLMDestroyMenu(self, self.menu))

    def Handler(self, menuRef, itemRef):
        index = itemRef - 1
        checked = XPLMCheckMenuItemState(self.menu, index) == xplm_Menu_Checked
        XPLMCheckMenuItem(self.menu, index, xplm_Menu_Unchecked if checked else xplm_Menu_Checked)
        print("picked %d menu ref %d now %d" % (itemRef, menuRef, XPLMCheckMenuItemState(self.menu, index)))

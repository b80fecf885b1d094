# Another script: tries to destroy VL_Menus' menu, and calls the late functions with
# arguments that only an SDK having them would look at.
from __future__ import print_function
import sys
from XPLMDisplay import XPLMCreateWindowEx
from XPLMMenus import XPLMDestroyMenu, XPLMRemoveMenuItem


class Vorlith:
    def XPluginStart(self):
        for label, call in (("window ex", lambda: XPLMCreateWindowEx(self, "not a sequence")),
                            ("remove item", lambda: XPLMRemoveMenuItem())):
            try:
                print("%s -> %r" % (label, call()))
            except TypeError:
                print("%s raised TypeError" % label)
        return "VL_Other", "vorlith.test.other", "another script"

    def XPluginEnable(self):
        if "VL_Menus" in sys.modules:
            print("other destroy -> %r" % XPLMDestroyMenu(self, sys.modules["VL_Menus"].MENU[0]))
        return 1

# Tries to destroy a menu that another script (VL_Menus) created.
from __future__ import print_function
import sys
from XPLMMenus import *


class Vorlith:
    def XPluginStart(self):
        return "VL_MenuThief", "vorlith.test.menuthief", "destroys what is not its own"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        print("thief destroy -> %r" % XPLMDestroyMenu(self, sys.modules["VL_Menus"].MENU[0]))
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

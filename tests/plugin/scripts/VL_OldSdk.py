# Functions an SDK 2.00 simulator lacks answer 0 before looking at their arguments.
from __future__ import print_function
from XPLMDisplay import XPLMCreateWindowEx
from XPLMMenus import XPLMRemoveMenuItem


class Vorlith:
    def XPluginStart(self):
        print("create window ex -> %r" % XPLMCreateWindowEx(self, "not even a sequence"))
        print("remove menu item -> %r" % XPLMRemoveMenuItem())
        return "VL_OldSdk", "vorlith.test.oldsdk", "an older simulator"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

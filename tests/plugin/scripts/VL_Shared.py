# Shares a float with other plug-ins and hears when one of them changes it.
from __future__ import print_function
from XPLMDataAccess import *

NAME = "vorlith/test/shared"


class Vorlith:
    def XPluginStart(self):
        self.changed = self.Changed
        print("share -> %r" % XPLMShareData(self, NAME, xplmType_Float, self.changed, 4))
        print("conflict -> %r" % XPLMShareData(self, NAME, xplmType_Int, self.changed, 5))
        self.ref = XPLMFindDataRef(NAME)
        return "VL_Shared", "vorlith.test.shared", "shared data"

    def XPluginStop(self):
        print("unshare wrong refcon -> %r" % XPLMUnshareData(self, NAME, xplmType_Float, self.changed, 6))
        print("unshare fresh method -> %r" % XPLMUnshareData(self, NAME, xplmType_Float, self.Changed, 4))
        print("unshare -> %r" % XPLMUnshareData(self, NAME, xplmType_Float, self.changed, 4))

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def Changed(self, refcon):
        print("changed refcon %d value %r" % (refcon, XPLMGetDataf(self.ref)))

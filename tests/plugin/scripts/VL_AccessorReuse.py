# One bound method serving two datarefs: the handle of the second registration lands in
# the first one's record, so removing the second empties the first dataref's getter.
# The first dataref must then read 0, never crash.
from __future__ import print_function
from XPLMDataAccess import *
from XPLMProcessing import *


class Vorlith:
    def XPluginStart(self):
        self.getter = self.GetFloat
        args = (None, None, self.getter, None) + (None,) * 8 + (0, 0)
        self.first = XPLMRegisterDataAccessor(self, "vorlith/test/first", xplmType_Float, 0, *args)
        self.second = XPLMRegisterDataAccessor(self, "vorlith/test/second", xplmType_Float, 0, *args)
        self.check = self.Check
        XPLMRegisterFlightLoopCallback(self, self.check, -1.0, 0)
        return "VL_AccessorReuse", "vorlith.test.accessorreuse", "one getter, two datarefs"

    def XPluginStop(self):
        XPLMUnregisterFlightLoopCallback(self, self.check, 0)

    def Check(self, sinceLastCall, sinceLastLoop, counter, refcon):
        print("first %r second %r" % (XPLMGetDataf(self.first), XPLMGetDataf(self.second)))
        print("unregister second -> %r" % XPLMUnregisterDataAccessor(self, self.second))
        print("first after %r" % XPLMGetDataf(self.first))
        print("unregister first -> %r" % XPLMUnregisterDataAccessor(self, self.first))
        return 0.0

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def GetFloat(self, refcon):
        return 6.5

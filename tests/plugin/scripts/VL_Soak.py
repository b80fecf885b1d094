# What a real script does over a Reload: publishes datarefs through the same bound
# methods told apart by refcon and removes them at its stop, and forgets a flight loop
# of each kind, a shared dataref and an accessor, as careless scripts do.
from XPLMDataAccess import *
from XPLMProcessing import *

BALLAST = list(range(5000))  # makes a script kept past its interpreter easy to see


class Vorlith:
    def XPluginStart(self):
        self.get, self.set, self.loop, self.changed = self.Get, self.Set, self.Loop, self.Changed
        name = "vorlith/soak/" + __name__ + "/"
        self.refs = []
        for i in range(4):
            accessors = (self.get, self.set) + (None,) * 10 + (i, i)
            self.refs.append(XPLMRegisterDataAccessor(self, name + str(i), xplmType_Int, 1, *accessors))
        XPLMRegisterDataAccessor(self, name + "left", xplmType_Int, 0, *((self.get,) + (None,) * 11 + (9, 9)))
        XPLMRegisterFlightLoopCallback(self, self.loop, -1.0, 1)
        XPLMScheduleFlightLoop(self, XPLMCreateFlightLoop(self, (0, self.loop, 2)), -1.0, 1)
        XPLMShareData(self, name + "shared", xplmType_Int, self.changed, 3)
        return __name__, "vorlith.test." + __name__, "reload soak"

    def XPluginStop(self):
        for ref in self.refs:
            XPLMUnregisterDataAccessor(self, ref)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def Get(self, refcon):
        return refcon

    def Set(self, refcon, value):
        pass

    def Loop(self, sinceLastCall, sinceLastLoop, counter, refcon):
        return -1.0

    def Changed(self, refcon):
        pass

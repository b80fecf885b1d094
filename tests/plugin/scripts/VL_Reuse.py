# Publishes three datarefs through the same two bound methods told apart by their
# refcon, and runs the same bound method as a legacy and as a created flight loop; at
# its stop it removes everything with the call that matches each registration.
from __future__ import print_function
from XPLMDataAccess import *
from XPLMProcessing import *


class Vorlith:
    def XPluginStart(self):
        self.get, self.set, self.loop = self.GetFloat, self.SetFloat, self.Loop
        self.values = {1: 1.5, 2: 2.5, 3: 3.5}
        self.calls = {0: 0, 5: 0}
        self.refs = {}
        for i in (1, 2, 3):
            accessors = (None, None, self.get, self.set) + (None,) * 8 + (i, i)
            self.refs[i] = XPLMRegisterDataAccessor(self, "vorlith/test/reuse%d" % i, xplmType_Float, 1,
                                                    *accessors)
        XPLMRegisterFlightLoopCallback(self, self.loop, -1.0, 0)
        self.created = XPLMCreateFlightLoop(self, (1, self.loop, 5))
        XPLMScheduleFlightLoop(self, self.created, -1.0, 1)
        return "VL_Reuse", "vorlith.test.reuse", "one accessor pair, three datarefs"

    def XPluginStop(self):
        for i in (1, 3):
            print("unregister %d -> %r" % (i, XPLMUnregisterDataAccessor(self, self.refs[i])))
        XPLMUnregisterFlightLoopCallback(self, self.loop, 0)
        XPLMDestroyFlightLoop(self, self.created)
        print("legacy ran %s created ran %s" % (self.calls[0] > 2, self.calls[5] > 2))

    def Loop(self, sinceLastCall, sinceLastLoop, counter, refcon):
        self.calls[refcon] += 1
        if refcon == 0 and self.calls[0] == 1:
            XPLMSetDataf(self.refs[2], 8.25)
            print("reads %r" % [XPLMGetDataf(self.refs[i]) for i in (1, 2, 3)])
            print("unregister 2 -> %r" % XPLMUnregisterDataAccessor(self, self.refs[2]))
            print("after %r" % [XPLMGetDataf(self.refs[i]) for i in (1, 2, 3)])
            print("destroy 0 -> %r" % XPLMDestroyFlightLoop(self, 0))
        return -1.0

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def GetFloat(self, refcon):
        return self.values[refcon]

    def SetFloat(self, refcon, value):
        self.values[refcon] = value

# Removal rules: a wrong refcon or a bound method made afresh finds nothing and the
# loop keeps running; the registered object and refcon remove it.
from __future__ import print_function
from XPLMProcessing import *


class Vorlith:
    def XPluginStart(self):
        self.calls = 0
        self.loop = self.FlightLoop
        XPLMRegisterFlightLoopCallback(self, self.loop, -1.0, 3)
        return "VL_LoopRemoval", "vorlith.test.loopremoval", "loop removal"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def FlightLoop(self, sinceLastCall, sinceLastLoop, counter, refcon):
        self.calls += 1
        print("call %d" % self.calls)
        if self.calls == 2:
            print("wrong refcon ->", XPLMUnregisterFlightLoopCallback(self, self.loop, 4))
        elif self.calls == 3:
            print("fresh method ->", XPLMUnregisterFlightLoopCallback(self, self.FlightLoop, 3))
        elif self.calls == 4:
            print("registered ->", XPLMUnregisterFlightLoopCallback(self, self.loop, 3))
        return -1.0

# A flight loop registered with a bound method made at the call: nothing else keeps
# that object alive, yet the loop must keep running.
from __future__ import print_function
import gc
from XPLMProcessing import *


class Vorlith:
    def XPluginStart(self):
        self.calls = 0
        XPLMRegisterFlightLoopCallback(self, self.FlightLoop, -1.0, 0)
        gc.collect()
        self.garbage = [[i] * 8 for i in range(2000)]  # reuse freed memory
        return "VL_FreshLoop", "vorlith.test.freshloop", "fresh bound method"

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
        if self.calls % 10 == 0:
            print("fresh loop %d" % self.calls)
        return -1.0

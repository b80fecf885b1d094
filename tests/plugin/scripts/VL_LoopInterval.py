# A loop registered unscheduled and started by XPLMSetFlightLoopCallbackInterval, and
# the old call without self, which explains itself in the log and raises.
from __future__ import print_function
from XPLMProcessing import *


class Vorlith:
    def XPluginStart(self):
        self.loop = self.FlightLoop
        XPLMRegisterFlightLoopCallback(self, self.loop, 0.0, 5)
        print("set -> %r" % XPLMSetFlightLoopCallbackInterval(self, self.loop, 0.25, 1, 5))
        print("set unknown -> %r" % XPLMSetFlightLoopCallbackInterval(self, self.loop, 0.25, 1, 6))
        try:
            XPLMSetFlightLoopCallbackInterval(self.loop, 0.25, 1, 5)
            print("old form accepted")
        except TypeError:
            print("old form raised TypeError")
        return "VL_LoopInterval", "vorlith.test.loopinterval", "interval changes"

    def XPluginStop(self):
        XPLMUnregisterFlightLoopCallback(self, self.loop, 5)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def FlightLoop(self, sinceLastCall, sinceLastLoop, counter, refcon):
        print("interval loop at %.3f" % XPLMGetElapsedTime())
        return 0.25

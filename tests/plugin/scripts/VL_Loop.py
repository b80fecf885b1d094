# A flight loop registered at 1 s that asks to be called every 0.5 s after that.
from __future__ import print_function
from XPLMProcessing import *


class Vorlith:
    def XPluginStart(self):
        self.calls = 0
        self.loop = self.FlightLoop
        XPLMRegisterFlightLoopCallback(self, self.loop, 1.0, 7)
        return "VL_Loop", "vorlith.test.loop", "flight loop every half second"

    def XPluginStop(self):
        XPLMUnregisterFlightLoopCallback(self, self.loop, 7)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def FlightLoop(self, sinceLastCall, sinceLastLoop, counter, refcon):
        self.calls += 1
        print("loop %d at %.3f since %.3f refcon %d types %s %s %s cycle %d" % (
            self.calls, XPLMGetElapsedTime(), sinceLastCall, refcon,
            type(sinceLastCall).__name__, type(counter).__name__, type(refcon).__name__,
            XPLMGetCycleNumber()))
        return 0.5

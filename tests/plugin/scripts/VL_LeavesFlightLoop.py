# Registers a flight loop and never removes it: what the ini switches trace and check.
from XPLMProcessing import XPLMRegisterFlightLoopCallback


class Vorlith:
    def XPluginStart(self):
        self.flightLoop = self.FlightLoopCallback
        XPLMRegisterFlightLoopCallback(self, self.flightLoop, 1.0, 0)
        return "Leaves a flight loop", "vorlith.test.leaves", "Never unregisters"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        pass

    def FlightLoopCallback(self, sinceLastCall, sinceLastFlightLoop, counter, refcon):
        return 1.0

# Leaves a flight loop, a shared dataref and a data accessor registered at stop, as a
# script that forgets to clean up does.
from __future__ import print_function
from XPLMDataAccess import *
from XPLMProcessing import *


class Vorlith:
    def XPluginStart(self):
        self.loop = self.FlightLoop
        self.changed = self.Changed
        self.getter = self.GetInt
        XPLMRegisterFlightLoopCallback(self, self.loop, 1.0, 0)
        XPLMShareData(self, "vorlith/test/leaky", xplmType_Int, self.changed, 0)
        XPLMRegisterDataAccessor(self, "vorlith/test/leakyvalue", xplmType_Int, 0, self.getter,
                                 None, None, None, None, None, None, None, None, None, None, None, 0, 0)
        return "LeakyName", "vorlith.test.leaky", "leaves registrations behind"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def FlightLoop(self, sinceLastCall, sinceLastLoop, counter, refcon):
        return 1.0

    def Changed(self, refcon):
        pass

    def GetInt(self, refcon):
        return 1

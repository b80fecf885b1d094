# The SDK 2.10 flight-loop functions on a simulator without them.
from __future__ import print_function
from XPLMProcessing import *


class Vorlith:
    def XPluginStart(self):
        print("create -> %r" % XPLMCreateFlightLoop(self, (0, self.Loop, 0)))
        print("schedule -> %r" % XPLMScheduleFlightLoop(self, 1, 1.0, 1))
        print("destroy -> %r" % XPLMDestroyFlightLoop(self, 1))
        return "VL_LoopLate", "vorlith.test.looplate", "no SDK 2.10"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def Loop(self, sinceLastCall, sinceLastLoop, counter, refcon):
        return 0.0

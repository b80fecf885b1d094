# Wrong arguments to XPLMProcessing raise the parser's TypeError; a refcon that is no
# integer counts as 0; garbage handles do no harm.
from __future__ import print_function
from XPLMProcessing import *


def attempt(label, call, *args):
    try:
        print("%s -> %r" % (label, call(*args)))
    except Exception as e:
        print("%s raised %s" % (label, type(e).__name__))


class Vorlith:
    def XPluginStart(self):
        self.loop = self.FlightLoop
        attempt("text interval", XPLMRegisterFlightLoopCallback, self, self.loop, "fast", 0)
        attempt("missing refcon", XPLMRegisterFlightLoopCallback, self, self.loop, 1.0)
        attempt("unregister alone", XPLMUnregisterFlightLoopCallback, self)
        attempt("schedule text", XPLMScheduleFlightLoop, self, 1, "soon", 1)
        attempt("destroy too many", XPLMDestroyFlightLoop, self, 1, 2)
        attempt("text refcon", XPLMRegisterFlightLoopCallback, self, self.loop, -1.0, "text")
        attempt("schedule garbage", XPLMScheduleFlightLoop, self, 123456789, 1.0, 1)
        attempt("destroy garbage", XPLMDestroyFlightLoop, self, 123456789)
        attempt("elapsed", lambda: type(XPLMGetElapsedTime()).__name__)
        attempt("cycle", lambda: type(XPLMGetCycleNumber()).__name__)
        return "VL_LoopArgs", "vorlith.test.loopargs", "argument mistakes"

    def XPluginStop(self):
        XPLMUnregisterFlightLoopCallback(self, self.loop, "text")

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def FlightLoop(self, sinceLastCall, sinceLastLoop, counter, refcon):
        print("loop refcon %r" % refcon)
        return 0.0

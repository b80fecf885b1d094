# Flight loops of SDK 2.10: created, scheduled and destroyed from Python; one created
# with a plain function has no record and can never reach Python.
from __future__ import print_function
from XPLMProcessing import *


def plain(sinceLastCall, sinceLastLoop, counter, refcon):
    print("PLAIN FUNCTION CALLED")
    return 1.0


class Vorlith:
    def XPluginStart(self):
        self.calls = 0
        self.loop = self.Created
        self.id = XPLMCreateFlightLoop(self, (1, self.loop, 9))
        print("created %s" % (self.id != 0))
        print("schedule -> %r" % XPLMScheduleFlightLoop(self, self.id, 0.5, 1))
        self.plain = XPLMCreateFlightLoop(self, [0, plain, 3])
        print("plain created %s" % (self.plain != 0))
        print("schedule plain -> %r" % XPLMScheduleFlightLoop(self, self.plain, -1.0, 1))
        for label, params in (("number", 5), ("short", (0, self.loop)), ("text phase", ("0", self.loop, 0))):
            try:
                XPLMCreateFlightLoop(self, params)
                print("%s accepted" % label)
            except TypeError:
                print("%s raised TypeError" % label)
        return "VL_LoopCreate", "vorlith.test.loopcreate", "created flight loops"

    def XPluginStop(self):
        print("destroy plain -> %r" % XPLMDestroyFlightLoop(self, self.plain))
        print("destroy -> %r" % XPLMDestroyFlightLoop(self, self.id))
        print("destroy again -> %r" % XPLMDestroyFlightLoop(self, self.id))

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def Created(self, sinceLastCall, sinceLastLoop, counter, refcon):
        self.calls += 1
        print("created loop %d refcon %d at %.3f" % (self.calls, refcon, XPLMGetElapsedTime()))
        return 0.5

# Does what must never take the simulator down: lists that empty themselves while the
# plug-in copies them, sequences claiming sys.maxsize elements, negative counts, an
# exception text that cannot be encoded, SystemExit in a callback, and threads left
# running at stop.
from __future__ import print_function
import sys
import threading
import time
from XPLMDataAccess import *
from XPLMProcessing import *

shared = {"stop": False}


class Emptier(object):
    """A number that empties the list holding it when the plug-in converts it."""
    def __init__(self, holder):
        self.holder = holder

    def __index__(self):
        del self.holder[:]
        return 7
    __int__ = __index__

    def __float__(self):
        del self.holder[:]
        return 2.5


class Endless(object):
    """A sequence that claims sys.maxsize elements."""
    def __len__(self):
        return sys.maxsize

    def __getitem__(self, i):
        return 3 if i < 10 else 3.5


def sleeper():
    time.sleep(3600)  # blocked in C: never sees SystemExit


def looper():
    while True:  # ignores every request to stop, but runs Python code
        time.sleep(0.01)


def polite():
    while not shared["stop"]:
        time.sleep(0.01)


class Vorlith:
    def XPluginStart(self):
        self.getters = [self.Ints, self.Floats, self.Bytes]
        gi, gf, gb = self.getters
        self.ref = XPLMRegisterDataAccessor(self, "vorlith/test/hostile", xplmType_IntArray | xplmType_FloatArray
                                            | xplmType_Data, 0, None, None, None, None, None, None,
                                            gi, None, gf, None, gb, None, 0, 0)
        self.loop = self.Loop
        self.calls = 0
        XPLMRegisterFlightLoopCallback(self, self.loop, -1.0, 0)
        self.threads = []
        for name, target, daemon in (("Sleeper", sleeper, True), ("Looper", looper, False),
                                     ("Polite", polite, False)):
            thread = threading.Thread(target=target, name=name)
            thread.daemon = daemon
            thread.start()
            self.threads.append(thread)
        print("hostile start")
        return "VL_Hostile", "vorlith.test.hostile", "never takes the simulator down"

    def XPluginStop(self):
        XPLMUnregisterFlightLoopCallback(self, self.loop, 0)
        XPLMUnregisterDataAccessor(self, self.ref)
        sys.excepthook = sys.__excepthook__
        shared["stop"] = True
        self.threads[2].join()
        print("hostile stop")

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def Ints(self, refcon, values, offset, maximum):
        if values is None:
            return 4
        values.extend([Emptier(values) for i in range(4)])
        return 4

    def Floats(self, refcon, values, offset, maximum):
        if values is None:
            return 4
        values.extend([Emptier(values) for i in range(4)])
        return 4

    def Bytes(self, refcon, values, offset, maximum):
        if values is None:
            return 3
        values.extend([Emptier(values) for i in range(3)])
        return 3

    def Attempt(self, label, function, *args):
        try:
            print("%s -> %r" % (label, function(*args)))
        except Exception as e:
            print("%s raised %s" % (label, type(e).__name__))

    def Loop(self, sinceLast, sinceLoop, counter, refcon):
        values = []
        print("emptied ints %d %r" % (XPLMGetDatavi(self.ref, values, 0, 4), values))
        values = []
        print("emptied floats %d %r" % (XPLMGetDatavf(self.ref, values, 0, 4), values))
        values = []
        print("emptied bytes %d %r" % (XPLMGetDatab(self.ref, values, 0, 3), [len(v) for v in values]))
        batteries = XPLMFindDataRef("sim/cockpit/electrical/battery_array_on")
        ratios = XPLMFindDataRef("sim/flightmodel/engine/ENGN_thro")
        self.Attempt("endless ints", XPLMSetDatavi, batteries, Endless(), 0, 2)
        self.Attempt("endless ints past the ints", XPLMSetDatavi, batteries, Endless(), 0, 20)
        self.Attempt("endless ints all of them", XPLMSetDatavi, batteries, Endless(), 0, (1 << 31) - 1)
        self.Attempt("endless floats", XPLMSetDatavf, ratios, Endless(), 0, 2)
        self.Attempt("endless bytes", XPLMSetDatab, batteries, Endless(), 0, 1 << 30)
        self.Attempt("negative count", XPLMSetDatavi, batteries, [1, 2], -5, -(1 << 30))
        self.Attempt("negative max", XPLMGetDatavi, batteries, [], -5, -(1 << 30))
        self.calls += 1
        if self.calls == 1:
            raise ValueError(u"unencodable \ud800 text")
        sys.excepthook = self.ExitingHook  # even the hook printing it asks to exit
        raise SystemExit(3)

    def ExitingHook(self, *exception):
        sys.exit(5)

# XPLMScenery: probes append, objects load, draw and unload, library lookups and
# background loads keep records until removed; garbage handles and lists are survived.
from __future__ import print_function
from XPLMScenery import *
from XPLMProcessing import *

OBJECT = "Resources/default scenery/sim objects/apt_lights/windsock.obj"
TRAIN = "lib/airport/vehicles/baggage_train.obj"


def show(label, call):
    try:
        print("%s -> %r" % (label, call()))
    except Exception as e:
        print("%s raised %s" % (label, type(e).__name__))


class Vorlith:
    def XPluginStart(self):
        probe = XPLMCreateProbe(xplm_ProbeY)
        info = []
        show("probe", lambda: XPLMProbeTerrainXYZ(probe, 0.0, 500.0, 0.0, info))
        XPLMProbeTerrainXYZ(probe, 10.0, 0.0, -10.0, info)
        print("probe values %d size %r height %.1f wet %r" % (len(info), info[0], info[2], info[10]))
        show("garbage probe", lambda: XPLMProbeTerrainXYZ(0xdeadbeef, 0.0, 0.0, 0.0, []))
        show("probe into None", lambda: XPLMProbeTerrainXYZ(probe, 0.0, 0.0, 0.0, None))
        show("destroy", lambda: XPLMDestroyProbe(probe))

        self.object = XPLMLoadObject(OBJECT)
        print("object loaded %r" % (self.object != 0))
        show("draw mismatch", lambda: XPLMDrawObjects(self.object, 2, [[0, 0, 0, 0, 0, 0]], 1, 0))
        show("draw negative", lambda: XPLMDrawObjects(self.object, -1, [], 1, 0))
        show("draw huge", lambda: XPLMDrawObjects(self.object, 1 << 30, [[0] * 6], 1, 0))
        show("draw short item", lambda: XPLMDrawObjects(self.object, 1, [[0, 0, 0]], 1, 0))
        show("draw text item", lambda: XPLMDrawObjects(self.object, 1, [[1, 2, "x", 4, 5, 6]], 1, 0))
        show("draw None", lambda: XPLMDrawObjects(self.object, 1, None, 1, 0))
        show("unload garbage", lambda: XPLMUnloadObject(12345))

        self.found = self.Found
        show("lookup", lambda: XPLMLookupObjects(self, TRAIN, 47.4, -122.3, self.found, 5))
        again = XPLMLookupObjects(self, TRAIN, 47.4, -122.3, self.found, 5)
        print("lookup again enumerates %r" % (again == 2))
        show("remove wrong refcon", lambda: VL_RemoveLookupObjects(self, self.found, 6))
        show("remove", lambda: VL_RemoveLookupObjects(self, self.found, 5))

        self.loaded = self.Loaded
        self.other = self.Other
        show("async", lambda: XPLMLoadObjectAsync(self, OBJECT, self.loaded, 1))
        show("async repeated", lambda: XPLMLoadObjectAsync(self, OBJECT, self.loaded, 1))
        show("async second", lambda: XPLMLoadObjectAsync(self, OBJECT, self.loaded, 2))
        self.frames = 0
        self.loop = self.Loop
        XPLMRegisterFlightLoopCallback(self, self.loop, -1.0, 0)
        return "VL_Scenery", "vorlith.test.scenery", "scenery"

    def Found(self, path, refcon):
        print("found %s refcon %d" % (path, refcon))

    def Loaded(self, handle, refcon):
        print("loaded refcon %d handle %r" % (refcon, handle != 0))
        if refcon == 2:
            XPLMUnloadObject(handle)

    def Other(self, handle, refcon):
        print("other called")

    def Loop(self, since, elapsed, counter, refcon):
        self.frames += 1
        if self.frames < 3:
            show("draw", lambda: XPLMDrawObjects(self.object, 2, ([1, 2, 3, 0, 90, 0], (4, 5, 6, 0, 0, 0)), 1, 0))
        if self.frames == 3:
            XPLMUnloadObject(self.object)
            # A different callable still removes the script's first record.
            show("remove loaded", lambda: VL_RemoveObjectLoadedCallback(self, self.other))
            return 0
        return -1.0

    def XPluginStop(self):
        XPLMUnregisterFlightLoopCallback(self, self.loop, 0)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

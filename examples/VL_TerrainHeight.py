# Prints the aircraft's height above the ground under it, once every simulated second.
#
# A terrain probe (made once, at start) is asked where the ground is below a point of
# the local OpenGL frame. It answers by filling a list: [size, x, y, z, normal x, y, z,
# velocity x, y, z, is_wet], appended to whatever the list already holds, so a fresh
# list is passed every time.
from XPLMDataAccess import XPLMFindDataRef, XPLMGetDatad
from XPLMProcessing import XPLMRegisterFlightLoopCallback, XPLMUnregisterFlightLoopCallback
from XPLMScenery import (XPLMCreateProbe, XPLMDestroyProbe, XPLMProbeTerrainXYZ, xplm_ProbeHitTerrain,
                         xplm_ProbeY)


class Vorlith:
    def XPluginStart(self):
        self.x = XPLMFindDataRef("sim/flightmodel/position/local_x")
        self.y = XPLMFindDataRef("sim/flightmodel/position/local_y")
        self.z = XPLMFindDataRef("sim/flightmodel/position/local_z")
        self.probe = XPLMCreateProbe(xplm_ProbeY)
        self.flightLoop = self.FlightLoopCallback
        XPLMRegisterFlightLoopCallback(self, self.flightLoop, 1.0, 0)
        return "Terrain Height", "vorlith.examples.terrainheight", "Prints the height above the ground"

    def XPluginStop(self):
        XPLMUnregisterFlightLoopCallback(self, self.flightLoop, 0)
        XPLMDestroyProbe(self.probe)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        pass

    def FlightLoopCallback(self, elapsedSinceLastCall, elapsedSinceLastFlightLoop, counter, refcon):
        x, y, z = XPLMGetDatad(self.x), XPLMGetDatad(self.y), XPLMGetDatad(self.z)
        info = []
        if XPLMProbeTerrainXYZ(self.probe, x, y, z, info) == xplm_ProbeHitTerrain:
            ground = info[2]
            print("height above ground %.1f m (ground at %.1f m%s)" % (y - ground, ground,
                                                                       ", water" if info[10] else ""))
        else:
            print("no terrain under the aircraft")
        return 1.0

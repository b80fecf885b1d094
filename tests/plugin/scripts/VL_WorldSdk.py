# What the world modules offer, and what their late SDK functions answer on the
# simulator generation this runs under.
from __future__ import print_function
import TembrookVCUtilities
import XPLMCamera
import XPLMGraphics
import XPLMNavigation
import XPLMPlanes
import XPLMScenery


class Vorlith:
    def XPluginStart(self):
        for module in (XPLMGraphics, XPLMCamera, XPLMNavigation, XPLMScenery, XPLMPlanes, TembrookVCUtilities):
            names = [getattr(module, n) for n in dir(module) if not n.startswith("_")]
            print("%s functions %d constants %d" % (module.__name__, len([n for n in names if callable(n)]),
                                                    len([n for n in names if isinstance(n, int)])))
        print("docs %s|%s|%s" % (XPLMCamera.XPLMIsCameraBeingControlled.__doc__,
                                 TembrookVCUtilities.VC_SetCamera.__doc__, XPLMGraphics.XPLMMeasureString.__doc__))
        self.loaded = self.Loaded
        print("late %r %r %r %r" % (
            XPLMGraphics.XPLMMeasureString(XPLMGraphics.xplmFont_Basic, "ab", 2),
            XPLMScenery.XPLMCreateProbe(XPLMScenery.xplm_ProbeY) != 0,
            XPLMScenery.XPLMLoadObjectAsync(self, "nothing.obj", self.loaded, 0),
            XPLMScenery.XPLMProbeTerrainXYZ(1, 0.0, 0.0, 0.0, [])))
        return "VL_WorldSdk", "vorlith.test.worldsdk", "world modules"

    def Loaded(self, handle, refcon):
        pass

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

# What the world modules offer, what their late SDK functions answer on the simulator
# generation this runs under, and what the virtual camera's shared datarefs hold at
# start before new values are written (so a restart shows what survived).
from __future__ import print_function
from TembrookVCUtilities import *
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
        print("docs %s|%s|%s" % (XPLMCamera.XPLMIsCameraBeingControlled.__doc__, VC_SetCamera.__doc__,
                                 XPLMGraphics.XPLMMeasureString.__doc__))
        self.loaded = self.Loaded
        print("late %r %r %r %r" % (
            XPLMGraphics.XPLMMeasureString(XPLMGraphics.xplmFont_Basic, "ab", 2),
            XPLMScenery.XPLMCreateProbe(XPLMScenery.xplm_ProbeY) != 0,
            XPLMScenery.XPLMLoadObjectAsync(self, "nothing.obj", self.loaded, 0),
            XPLMScenery.XPLMProbeTerrainXYZ(1, 0.0, 0.0, 0.0, [])))

        print("start ready %d index %d type %d look %d x %.2f zoom %.2f heading %.2f" % (
            VC_CameraPluginReady(), VC_GetCameraIndex(), VC_GetCameraTypeIndex(), VC_GetLookAtAircraft(),
            VC_GetXOffset(), VC_GetZoomRatio(), VC_GetHeadingOffset()))
        results = [VC_SetCameraIndex(3), VC_SetCameraTypeIndex(2), VC_SetLookAtAircraft(5), VC_SetXOffset(1.5),
                   VC_SetYOffset(-2.25), VC_SetZOffset(3), VC_SetHeadingOffset(90.5), VC_SetPitchOffset(-10),
                   VC_SetRollOffset(0.25), VC_SetZoomRatio(2.0), VC_AcquireCamera(), VC_SetCamera()]
        print("set results %r" % results)
        print("read y %.2f z %.2f pitch %.2f roll %.2f" % (VC_GetYOffset(), VC_GetZOffset(), VC_GetPitchOffset(),
                                                           VC_GetRollOffset()))
        try:
            VC_SetXOffset("far")
        except TypeError:
            print("text offset raised TypeError")
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

# TembrookVCUtilities: prints what the shared datarefs hold at start, then writes new
# values, so a restart shows what survived.
from __future__ import print_function
from TembrookVCUtilities import *


class Vorlith:
    def XPluginStart(self):
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
        return "VL_VirtualCamera", "vorlith.test.virtualcamera", "virtual camera"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

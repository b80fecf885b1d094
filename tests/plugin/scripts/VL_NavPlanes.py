# XPLMNavigation and XPLMPlanes: walking and searching the navaids, out-lists, the FMS,
# aircraft models and taking the other aircraft, with mistakes along the way.
from __future__ import print_function
from XPLMNavigation import *
from XPLMPlanes import *


def show(label, call):
    try:
        print("%s -> %r" % (label, call()))
    except Exception as e:
        print("%s raised %s" % (label, type(e).__name__))


class Vorlith:
    def XPluginStart(self):
        count, ref = 0, XPLMGetFirstNavAid()
        while ref != XPLM_NAV_NOT_FOUND:
            count, ref = count + 1, XPLMGetNextNavAid(ref)
        print("navaids %d" % count)
        ksea = XPLMFindNavAid(None, "KSEA", None, None, None, xplm_Nav_Airport)
        ident = []
        show("id only", lambda: XPLMGetNavAidInfo(ksea, None, None, None, None, None, None, ident, None, None))
        print("id %r" % ident)
        kind, lat, name, region = [9, 9], [], [], []
        XPLMGetNavAidInfo(ksea, kind, lat, None, None, None, None, None, name, region)
        print("info %r %.3f %s %r" % (kind, lat[0], name[0], region))
        vor = XPLMFindNavAid("olympia", None, None, None, 11340, xplm_Nav_VOR)
        near = XPLMFindNavAid(None, None, 47.9, -122.28, None, xplm_Nav_Airport)
        ident = []
        XPLMGetNavAidInfo(near, None, None, None, None, None, None, ident, None, None)
        print("vor found %r near %s" % (vor >= 0, ident[0]))
        show("last fix is after first", lambda: XPLMFindLastNavAidOfType(xplm_Nav_Fix) > XPLMFindFirstNavAidOfType(xplm_Nav_Fix))
        show("text latitude", lambda: XPLMFindNavAid(None, None, "x", None, None, 1))
        show("info not lists", lambda: XPLMGetNavAidInfo(ksea, 1, None, None, None, None, None, None, None, None))
        show("garbage info", lambda: XPLMGetNavAidInfo(987654, [], None, None, None, None, None, None, None, None))

        XPLMSetFMSEntryInfo(0, ksea, 3000)
        XPLMSetFMSEntryLatLon(1, 47.5, -122.25, 5000)
        XPLMSetDestinationFMSEntry(1)
        print("fms count %d destination %d" % (XPLMCountFMSEntries(), XPLMGetDestinationFMSEntry()))
        kind, ident, ref, alt, lat, lon = [], [], [], [], [], None
        show("fms info", lambda: XPLMGetFMSEntryInfo(0, kind, ident, ref, alt, lat, lon))
        print("fms 0 %r %r %r %r" % (kind, ident, ref == [ksea], alt))
        XPLMGetFMSEntryInfo(1, kind, None, None, alt, lat, None)
        print("fms 1 %r %r %.2f" % (kind, alt, lat[0]))
        XPLMClearFMSEntry(1)
        print("fms after clear %d" % XPLMCountFMSEntries())

        total, active, controller = XPLMCountAircraft()
        name, path = XPLMGetNthAircraftModel(0)
        print("aircraft %d model %r path ends with it %r" % (total, name, path.endswith(name)))
        print("native path same %r" % (XPLMGetNthAircraftModel_NP(self, 0) == (name, path)))
        show("place", lambda: XPLMPlaceUserAtAirport("KBFI"))
        show("release without acquire", lambda: XPLMReleasePlanes(self))
        self.available = self.Available
        show("acquire", lambda: XPLMAcquirePlanes(self, [""], self.available, 3))
        show("acquire text", lambda: XPLMAcquirePlanes(self, "abc", self.available, 3))
        show("acquire numbers", lambda: XPLMAcquirePlanes(self, [1, 2], self.available, 3))
        show("acquire None", lambda: XPLMAcquirePlanes(self, None, self.available, 4))
        show("acquire many", lambda: XPLMAcquirePlanes(self, ["x.acf"] * 100000, self.available, 5))
        print("before %d controller %d" % (controller, XPLMCountAircraft()[2]))
        state = [44, 1.0, 0.5, 0, 0, 0, 0, 0.8, 0, 0, 0]
        show("draw", lambda: XPLMDrawAircraft(1, 1.0, 2.0, 3.0, 0, 0, 90, 1, state))
        show("draw short", lambda: XPLMDrawAircraft(1, 1.0, 2.0, 3.0, 0, 0, 90, 1, state[:5]))
        show("draw text", lambda: XPLMDrawAircraft(1, 1.0, 2.0, 3.0, 0, 0, 90, 1, ["a"] * 11))
        show("draw None", lambda: XPLMDrawAircraft(1, 1.0, 2.0, 3.0, 0, 0, 90, 1, None))
        show("release", lambda: XPLMReleasePlanes(self))
        print("after release controller %d" % XPLMCountAircraft()[2])
        return "VL_NavPlanes", "vorlith.test.navplanes", "navigation and planes"

    def Available(self, refcon):
        print("available %d" % refcon)

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

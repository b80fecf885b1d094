# Shows a label naming the airport nearest to the aircraft, with its distance, in the
# top left corner of the screen.
#
# The navigation database is searched once every five seconds (a flight loop); the label
# is drawn every frame (a draw callback in the window phase, where coordinates are
# screen pixels with the origin at the bottom left).
import math

from XPLMDataAccess import XPLMFindDataRef, XPLMGetDatad, XPLMGetDatai
from XPLMDisplay import XPLMRegisterDrawCallback, XPLMUnregisterDrawCallback, xplm_Phase_Window
from XPLMGraphics import (XPLMDrawString, XPLMDrawTranslucentDarkBox, XPLMGetFontDimensions,
                          XPLMMeasureString, xplmFont_Basic)
from XPLMNavigation import XPLM_NAV_NOT_FOUND, XPLMFindNavAid, XPLMGetNavAidInfo, xplm_Nav_Airport
from XPLMProcessing import XPLMRegisterFlightLoopCallback, XPLMUnregisterFlightLoopCallback

EARTH_RADIUS_NM = 3440.065


def distance_nm(lat1, lon1, lat2, lon2):
    p1, p2 = math.radians(lat1), math.radians(lat2)
    dp, dl = p2 - p1, math.radians(lon2 - lon1)
    a = math.sin(dp / 2) ** 2 + math.cos(p1) * math.cos(p2) * math.sin(dl / 2) ** 2
    return 2 * EARTH_RADIUS_NM * math.asin(math.sqrt(a))


class Vorlith:
    def XPluginStart(self):
        self.latitude = XPLMFindDataRef("sim/flightmodel/position/latitude")
        self.longitude = XPLMFindDataRef("sim/flightmodel/position/longitude")
        self.screenHeight = XPLMFindDataRef("sim/graphics/view/window_height")
        self.label = "Nearest airport: searching..."
        # Keep the bound methods: unregistering needs the very same objects.
        self.flightLoop = self.FlightLoopCallback
        self.draw = self.DrawCallback
        XPLMRegisterFlightLoopCallback(self, self.flightLoop, -1.0, 0)
        XPLMRegisterDrawCallback(self, self.draw, xplm_Phase_Window, 0, 0)
        return "Nearest Airport", "vorlith.examples.nearestairport", "Labels the nearest airport"

    def XPluginStop(self):
        XPLMUnregisterFlightLoopCallback(self, self.flightLoop, 0)
        XPLMUnregisterDrawCallback(self, self.draw, xplm_Phase_Window, 0, 0)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        pass

    def FlightLoopCallback(self, elapsedSinceLastCall, elapsedSinceLastFlightLoop, counter, refcon):
        lat, lon = XPLMGetDatad(self.latitude), XPLMGetDatad(self.longitude)
        # With a position and nothing else, the search answers the nearest airport.
        airport = XPLMFindNavAid(None, None, lat, lon, None, xplm_Nav_Airport)
        if airport == XPLM_NAV_NOT_FOUND:
            self.label = "No airport in the navigation data"
        else:
            # One list per value wanted, None for the others; each list receives its value.
            ident, name, airportLat, airportLon = [], [], [], []
            XPLMGetNavAidInfo(airport, None, airportLat, airportLon, None, None, None, ident, name, None)
            self.label = "%s  %s  %.1f nm" % (ident[0], name[0],
                                              distance_nm(lat, lon, airportLat[0], airportLon[0]))
        return 5.0

    def DrawCallback(self, inPhase, inIsBefore, inRefcon):
        width, height = [], []
        XPLMGetFontDimensions(xplmFont_Basic, width, height, None)
        textWidth = XPLMMeasureString(xplmFont_Basic, self.label, len(self.label))
        top = XPLMGetDatai(self.screenHeight) - 10
        XPLMDrawTranslucentDarkBox(10, top, 20 + textWidth, top - height[0] - 10)
        XPLMDrawString((1.0, 1.0, 1.0), 15, top - height[0] - 5, self.label, 0, xplmFont_Basic)
        return 1

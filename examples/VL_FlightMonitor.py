# Prints where the aircraft is and how fast it goes, once every simulated second.
#
# A flight loop: the simulator calls FlightLoopCallback, and the number it returns is
# the time in seconds until the next call. Datarefs are looked up once, at start.
from XPLMDataAccess import XPLMFindDataRef, XPLMGetDatad, XPLMGetDataf, XPLMGetDatai
from XPLMProcessing import (XPLMGetElapsedTime, XPLMRegisterFlightLoopCallback,
                            XPLMUnregisterFlightLoopCallback)


class Vorlith:
    def XPluginStart(self):
        self.latitude = XPLMFindDataRef("sim/flightmodel/position/latitude")
        self.longitude = XPLMFindDataRef("sim/flightmodel/position/longitude")
        self.elevation = XPLMFindDataRef("sim/flightmodel/position/elevation")
        self.airspeed = XPLMFindDataRef("sim/flightmodel/position/indicated_airspeed")
        self.heading = XPLMFindDataRef("sim/flightmodel/position/true_psi")
        self.paused = XPLMFindDataRef("sim/time/paused")
        # Keep the bound method: unregistering needs the very same object.
        self.flightLoop = self.FlightLoopCallback
        XPLMRegisterFlightLoopCallback(self, self.flightLoop, 1.0, 0)
        return "Flight Monitor", "vorlith.examples.flightmonitor", "Prints position and speed every second"

    def XPluginStop(self):
        XPLMUnregisterFlightLoopCallback(self, self.flightLoop, 0)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        pass

    def FlightLoopCallback(self, elapsedSinceLastCall, elapsedSinceLastFlightLoop, counter, refcon):
        print("t=%5.1f s  lat %.4f  lon %.4f  elev %.0f m  heading %.0f  IAS %.0f kt%s" % (
            XPLMGetElapsedTime(),
            XPLMGetDatad(self.latitude), XPLMGetDatad(self.longitude), XPLMGetDatad(self.elevation),
            XPLMGetDataf(self.heading), XPLMGetDataf(self.airspeed),
            "  (paused)" if XPLMGetDatai(self.paused) else ""))
        return 1.0

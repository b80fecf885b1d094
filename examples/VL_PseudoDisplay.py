# Shows the aircraft's altitude on the control panel's display list once a second
# (Plugins > Vorlith > Control Panel) and says on its print list that it started.
import TembrookUtilities
import XPLMDataAccess
import XPLMProcessing


class Vorlith:
    def XPluginStart(self):
        self.altitude = XPLMDataAccess.XPLMFindDataRef("sim/flightmodel/position/elevation")
        self.loop = self.ShowAltitude  # kept: the same object unregisters it
        XPLMProcessing.XPLMRegisterFlightLoopCallback(self, self.loop, 1.0, 0)
        TembrookUtilities.TembrookPrint("Pseudo display example started")
        return "Pseudo Display", "vorlith.examples.pseudodisplay", "Altitude on the control panel"

    def XPluginStop(self):
        XPLMProcessing.XPLMUnregisterFlightLoopCallback(self, self.loop, 0)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def ShowAltitude(self, sinceLast, sinceLoop, counter, refcon):
        # One line at a time: the list is emptied before the new value goes in.
        TembrookUtilities.TembrookClearDisplay()
        TembrookUtilities.TembrookDisplay("Altitude %.0f m" % XPLMDataAccess.XPLMGetDatad(self.altitude))
        return 1.0

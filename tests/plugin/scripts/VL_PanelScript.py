# One of the control panel test's many scripts: says when it is enabled or disabled, and
# leaves its flight loop registered at stop, which a reload must make harmless.
import XPLMProcessing


class Vorlith:
    def XPluginStart(self):
        self.name = __name__
        self.loop = self.Loop
        XPLMProcessing.XPLMRegisterFlightLoopCallback(self, self.loop, -1.0, 0)
        return self.name, "vorlith.test." + self.name.lower(), "Panel test script " + self.name

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        print(self.name + " enable")
        return 1

    def XPluginDisable(self):
        print(self.name + " disable")

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def Loop(self, sinceLast, sinceLoop, counter, refcon):
        return -1.0

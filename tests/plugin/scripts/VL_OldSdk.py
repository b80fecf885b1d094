# Every function of a newer SDK called on an SDK 1.02 simulator: each answers 0.
from __future__ import print_function
import XPLMPlugin as P
import XPLMUtilities as U


class Vorlith:
    def XPluginStart(self):
        calls = [
            (U.XPLMFindSymbol, "XPLMFindSymbol"), (U.XPLMLoadDataFile, 1, "a.sit"),
            (U.XPLMSaveDataFile, 1, "a.sit"), (U.XPLMFindCommand, "sim/operation/pause_toggle"),
            (U.XPLMCommandBegin, 1), (U.XPLMCommandEnd, 1), (U.XPLMCommandOnce, 1),
            (U.XPLMCreateCommand, "a/b", "c"), (U.XPLMRegisterCommandHandler, self, 1, self.Handler, 1, 0),
            (U.XPLMUnregisterCommandHandler, self, 1, self.Handler, 1, 0), (P.XPLMHasFeature, "x"),
            (P.XPLMIsFeatureEnabled, "x"), (P.XPLMEnableFeature, self, "x", 1),
            (P.XPLMEnumerateFeatures, self, self.Handler, 0),
        ]
        print("results %s" % [call[0](*call[1:]) for call in calls])
        # Without feature functions the native-path forms run without their bracket.
        print("system NP %s" % (U.XPLMGetSystemPath_NP(self) == U.XPLMGetSystemPath()))
        return "OldSdk", "vorlith.test.oldsdk", "SDK 1.02"

    def Handler(self, *args):
        return 1

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

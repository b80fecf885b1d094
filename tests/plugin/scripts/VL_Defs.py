# Prints the constants of XPLMDefs so the test can check them against the SDK.
from __future__ import print_function
import XPLMDefs


class Vorlith:
    def XPluginStart(self):
        names = sorted(n for n in dir(XPLMDefs) if not n.startswith("__"))
        print("count %d" % len(names))
        for name in names:
            print("%s=%d" % (name, getattr(XPLMDefs, name)))
        return "VL_Defs", "vorlith.test.defs", "constants"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

# Prints every function of the plug-in's modules with its doc string, one per line.
from __future__ import print_function
import TembrookInternalModule
import XPLMDataAccess
import XPLMDefs
import XPLMProcessing


class Vorlith:
    def XPluginStart(self):
        for module in (TembrookInternalModule, XPLMDataAccess, XPLMDefs, XPLMProcessing):
            names = sorted(n for n in dir(module) if callable(getattr(module, n)))
            print("%s has %d" % (module.__name__, len(names)))
            for name in names:
                print("%s.%s: %s" % (module.__name__, name, getattr(module, name).__doc__))
        return "VL_DocStrings", "vorlith.test.docstrings", "doc strings"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

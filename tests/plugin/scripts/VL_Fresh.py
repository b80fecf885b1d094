# Tells whether the interpreter it is imported into saw it before: after a reload the
# interpreter must be a new one, with nothing left from the previous run.
import sys

print("imported; seen before: %s" % hasattr(sys, "vorlith_test_marker"))
sys.vorlith_test_marker = 1


class Vorlith:
    def XPluginStart(self):
        return "Fresh", "vorlith.test.fresh", "Checks the interpreter is new"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        pass

# Makes a binding report a failure whose text is far longer than the report's buffer.
from XPLMDataAccess import XPLMFindDataRef


class Vorlith:
    def XPluginStart(self):
        print("found: %s" % XPLMFindDataRef("no/such/" + "z" * 3000))
        return "Long report", "vorlith.test.longreport", "Reports a long failure"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        pass

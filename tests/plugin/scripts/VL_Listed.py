# Says under which module name it was imported; copied under many file names.
print("imported %s" % __name__)


class Vorlith:
    def XPluginStart(self):
        return __name__, "vorlith.test." + __name__, "Listing rules"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        pass

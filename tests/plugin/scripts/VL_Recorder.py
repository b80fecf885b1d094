# Records every call the plug-in makes on it, one line each on standard output.


class Vorlith:
    def __init__(self):
        self.name = __name__

    def XPluginStart(self):
        print("%s start" % self.name)
        return "Recorder " + self.name, "vorlith.test." + self.name, "Records the calls it gets"

    def XPluginStop(self):
        print("%s stop" % self.name)

    def XPluginEnable(self):
        print("%s enable" % self.name)
        return 1

    def XPluginDisable(self):
        print("%s disable" % self.name)

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        print("%s message from %d: %d %d %s" % (self.name, inFromWho, inMessage, inParam,
                                               type(inParam).__name__))

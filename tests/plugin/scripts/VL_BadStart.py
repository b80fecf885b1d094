# XPluginStart returns something other than three strings; the file name says what
# (VL_BadStartList: a list, VL_BadStartTwo: two strings, VL_BadStartNumber: numbers).


class Vorlith:
    def __init__(self):
        self.name = __name__

    def XPluginStart(self):
        print("%s start" % self.name)
        if self.name.endswith("List"):
            return ["Bad", "vorlith.test.bad", "A list"]
        if self.name.endswith("Two"):
            return "Bad", "vorlith.test.bad"
        return 1, 2, 3

    def XPluginStop(self):
        print("%s stop" % self.name)

    def XPluginEnable(self):
        print("%s enable" % self.name)
        return 1

    def XPluginDisable(self):
        print("%s disable" % self.name)

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        pass

# Every method raises; the plug-in must report each and go on with the other scripts.


class Vorlith:
    def XPluginStart(self):
        print("VL_Raises start")
        raise KeyError("start failed")

    def XPluginStop(self):
        print("VL_Raises stop")
        raise KeyError("stop failed")

    def XPluginEnable(self):
        print("VL_Raises enable")
        raise KeyError("enable failed")

    def XPluginDisable(self):
        print("VL_Raises disable")
        raise KeyError("disable failed")

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        raise KeyError("message failed")

# The other half of VL_Ping.py: answers every ping, to whichever script sent it.
from PythonScriptMessaging import VL_SendMessageToScript

PING, PONG = 1, 2


class Vorlith:
    def XPluginStart(self):
        return "Pong", "vorlith.examples.pong", "Answers VL_Ping's pings"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        # Messages from the simulator and other plug-ins arrive here too, with an integer sender.
        if inMessage == PING:
            VL_SendMessageToScript(self, inFromWho, PONG, inParam.replace("ping", "pong"))

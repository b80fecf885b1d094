# Two scripts talking: every second VL_Ping sends a numbered "ping" to VL_Pong, found by
# its signature, and prints the "pong" that comes back. See VL_Pong.py.
from PythonScriptMessaging import VL_FindScriptBySignature, VL_SendMessageToScript
from XPLMProcessing import XPLMRegisterFlightLoopCallback, XPLMUnregisterFlightLoopCallback

PING, PONG = 1, 2


class Vorlith:
    def XPluginStart(self):
        self.count = 0
        self.loop = self.SendPing
        XPLMRegisterFlightLoopCallback(self, self.loop, 1.0, 0)
        return "Ping", "vorlith.examples.ping", "Sends a ping to VL_Pong every second"

    def XPluginStop(self):
        XPLMUnregisterFlightLoopCallback(self, self.loop, 0)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        # From another script inFromWho is that script's object, inParam any Python object.
        if inMessage == PONG:
            print("Ping got %s" % inParam)

    def SendPing(self, elapsedSinceLastCall, elapsedSinceLastFlightLoop, counter, refcon):
        pong = VL_FindScriptBySignature("vorlith.examples.pong")
        if pong is not None:
            self.count += 1
            VL_SendMessageToScript(self, pong, PING, "ping %d" % self.count)
        return 1.0

# Installed twice (VL_MsgA, VL_MsgB): A finds B through PythonScriptMessaging, switches
# it off and on and sends it messages; both print what reaches them.
from __future__ import print_function
import PythonScriptMessaging as M
import XPLMProcessing


def raises(label, call, *args):
    try:
        call(*args)
        print("%s raised nothing" % label)
    except Exception as e:
        print("%s raised %s" % (label, type(e).__name__))


class Vorlith:
    def XPluginStart(self):
        self.name = __name__
        if self.name == "VL_MsgA":
            self.run = self.Run
            XPLMProcessing.XPLMRegisterFlightLoopCallback(self, self.run, 0.1, 0)
        return "Messaging " + self.name, "vorlith.test." + self.name, "Talks to the other scripts"

    def XPluginStop(self):
        if self.name == "VL_MsgA":
            XPLMProcessing.XPLMUnregisterFlightLoopCallback(self, self.run, 0)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        print("%s XPluginDisable" % self.name)

    def XPluginReceiveMessage(self, sender, message, param):
        origin = M.VL_GetScriptInfo(sender)[0] or sender
        print("%s got %d from %s param %s" % (self.name, message, origin, param))
        if message == 11:
            raise RuntimeError("receiver fails")

    def Run(self, sinceLast, sinceLoop, counter, refcon):
        count = M.VL_CountScripts()
        a, b = M.VL_GetNthScript(0), M.VL_GetNthScript(1)
        print("count %d first is me %s" % (count, a is self))
        raises("index 2", M.VL_GetNthScript, 2)
        raises("index -1", M.VL_GetNthScript, -1)
        print("found b %s unknown %s" % (M.VL_FindScriptBySignature("vorlith.test.VL_MsgB") is b,
                                         M.VL_FindScriptBySignature("vorlith.test.nobody")))
        print("info %s|%s|%s" % M.VL_GetScriptInfo(b))
        print("info unknown %r" % (M.VL_GetScriptInfo(object()) == ("", "", "")))
        print("enabled %d unknown %d" % (M.VL_IsScriptEnabled(b), M.VL_IsScriptEnabled(5)))
        print("send -> %d" % M.VL_SendMessageToScript(self, b, 7, "one"))
        print("broadcast -> %d" % M.VL_SendMessageToScript(self, None, 8, 2.5))
        print("disable -> %d enabled %d" % (M.VL_DisableScript(b), M.VL_IsScriptEnabled(b)))
        print("send to disabled -> %d" % M.VL_SendMessageToScript(self, b, 9, None))
        print("disable again -> %d" % M.VL_DisableScript(b))
        print("enable -> %d again -> %d unknown -> %d" % (M.VL_EnableScript(b), M.VL_EnableScript(b),
                                                          M.VL_EnableScript(object())))
        print("send to object -> %d" % M.VL_SendMessageToScript(self, object(), 10, None))
        print("receiver raises -> %d" % M.VL_SendMessageToScript(b, b, 11, [1, 2]))
        print("send -> %d" % M.VL_SendMessageToScript(self, b, 12, None))
        raises("send short", M.VL_SendMessageToScript, self, b)
        return 0

# Creates the command "vorlith/examples/say_hello" and handles it: bind it to a key or a
# joystick button in the simulator, or run it from another plug-in.
#
# A handler gets the phase (begin, continue while held, end) and returns 1 to let other
# handlers and the simulator go on, 0 to stop the command here.
from XPLMUtilities import (XPLMCreateCommand, XPLMRegisterCommandHandler, XPLMUnregisterCommandHandler,
                           xplm_CommandBegin, xplm_CommandEnd)


class Vorlith:
    def XPluginStart(self):
        self.command = XPLMCreateCommand("vorlith/examples/say_hello", "Say hello")
        # Keep the bound method: unregistering needs the very same object.
        self.handler = self.SayHello
        XPLMRegisterCommandHandler(self, self.command, self.handler, 1, 0)
        return "Command Handler", "vorlith.examples.commandhandler", "Handles a command of its own"

    def XPluginStop(self):
        XPLMUnregisterCommandHandler(self, self.command, self.handler, 1, 0)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        pass

    def SayHello(self, inCommand, inPhase, inRefcon):
        if inPhase == xplm_CommandBegin:
            print("Hello! (command pressed)")
        elif inPhase == xplm_CommandEnd:
            print("Goodbye! (command released)")
        return 1

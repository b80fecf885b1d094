# Publishes a dataref of its own, "vorlith/examples/counter", whose value lives in this
# script: the simulator (and every other plug-in) reads it through the accessors below
# and may write it. A flight loop counts it up and reads it back through the simulator.
from XPLMDataAccess import (XPLMFindDataRef, XPLMGetDatai, XPLMRegisterDataAccessor,
                            XPLMSetDatai, XPLMUnregisterDataAccessor, xplmType_Int)
from XPLMProcessing import XPLMRegisterFlightLoopCallback, XPLMUnregisterFlightLoopCallback


class Vorlith:
    def XPluginStart(self):
        self.counter = 0
        # Accessors are bound methods kept on the instance, like every callback.
        self.getCounter = self.GetCounter
        self.setCounter = self.SetCounter
        self.dataref = XPLMRegisterDataAccessor(
            self, "vorlith/examples/counter", xplmType_Int, 1,
            self.getCounter, self.setCounter,   # int
            None, None,                         # float
            None, None,                         # double
            None, None,                         # int array
            None, None,                         # float array
            None, None,                         # bytes
            0, 0)
        self.flightLoop = self.FlightLoopCallback
        XPLMRegisterFlightLoopCallback(self, self.flightLoop, 1.0, 0)
        return "Own Dataref", "vorlith.examples.owndataref", "Publishes vorlith/examples/counter"

    def XPluginStop(self):
        XPLMUnregisterFlightLoopCallback(self, self.flightLoop, 0)
        XPLMUnregisterDataAccessor(self, self.dataref)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        pass

    def GetCounter(self, refcon):
        return self.counter

    def SetCounter(self, refcon, value):
        self.counter = value

    def FlightLoopCallback(self, elapsedSinceLastCall, elapsedSinceLastFlightLoop, counter, refcon):
        # Found by name like any other dataref; the calls go through the simulator.
        ref = XPLMFindDataRef("vorlith/examples/counter")
        XPLMSetDatai(ref, XPLMGetDatai(ref) + 1)
        print("vorlith/examples/counter reads %d" % XPLMGetDatai(ref))
        return 1.0

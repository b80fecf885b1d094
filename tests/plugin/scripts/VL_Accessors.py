# Publishes datarefs whose values live in Python, reads them back through the SDK and
# removes them at stop.
from __future__ import print_function
from XPLMDataAccess import *
from XPLMProcessing import *


class Vorlith:
    def XPluginStart(self):
        self.value = 1.5
        self.ints = [10, 20, 30, 40]
        self.text = "hello"
        self.accessors = [self.GetFloat, self.SetFloat, self.GetInts, self.SetInts,
                          self.GetBytes, self.SetBytes, self.GetDouble]
        g, s, gvi, svi, gb, sb, gd = self.accessors
        self.floatRef = XPLMRegisterDataAccessor(self, "vorlith/test/float", xplmType_Float, 1,
                                                 None, None, g, s, None, None, None, None,
                                                 None, None, None, None, 11, 12)
        self.intsRef = XPLMRegisterDataAccessor(self, "vorlith/test/ints", xplmType_IntArray, 1,
                                                None, None, None, None, None, None, gvi, svi,
                                                None, None, None, None, 21, 22)
        self.textRef = XPLMRegisterDataAccessor(self, "vorlith/test/text", xplmType_Data, 1,
                                                None, None, None, None, None, None, None, None,
                                                None, None, gb, sb, 31, 32)
        # A plain function is no accessor: the double can be read but not written.
        self.doubleRef = XPLMRegisterDataAccessor(self, "vorlith/test/double", xplmType_Double, 0,
                                                  None, None, None, None, gd, lambda r, v: None,
                                                  None, None, None, None, None, None, 41, 42)
        # Published datarefs answer once the plug-in is enabled: read them in the first loop.
        self.check = self.Check
        XPLMRegisterFlightLoopCallback(self, self.check, -1.0, 0)
        return "VL_Accessors", "vorlith.test.accessors", "datarefs from Python"

    def XPluginStop(self):
        XPLMUnregisterFlightLoopCallback(self, self.check, 0)
        for ref in (self.floatRef, self.intsRef, self.textRef, self.doubleRef):
            print("unregister -> %r" % XPLMUnregisterDataAccessor(self, ref))

    def Check(self, sinceLastCall, sinceLastLoop, counter, refcon):
        print("float reads %r" % XPLMGetDataf(self.floatRef))
        XPLMSetDataf(self.floatRef, 2.75)
        print("float after write %r" % XPLMGetDataf(self.floatRef))
        print("ints size %d" % XPLMGetDatavi(self.intsRef, None, 0, 0))
        values = []
        print("ints read %d %r" % (XPLMGetDatavi(self.intsRef, values, 1, 2), values))
        XPLMSetDatavi(self.intsRef, [7, 8], 2, 2)
        values = []
        XPLMGetDatavi(self.intsRef, values, 0, 8)
        print("ints after write %r" % values)
        values = []
        print("text read %d %r" % (XPLMGetDatab(self.textRef, values, 0, 64), values))
        values = []
        print("text cut %d %r" % (XPLMGetDatab(self.textRef, values, 0, 3), values))
        XPLMSetDatab(self.textRef, [65, 200, 7], 0, 3)
        print("double reads %r" % XPLMGetDatad(self.doubleRef))
        return 0.0

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def GetFloat(self, refcon):
        print("get float refcon %d" % refcon)
        return self.value

    def SetFloat(self, refcon, value):
        print("set float refcon %d value %r" % (refcon, value))
        self.value = value

    def GetDouble(self, refcon):
        return 0.125

    def GetInts(self, refcon, values, offset, maximum):
        print("get ints refcon %d list %s offset %d max %d" % (
            refcon, type(values).__name__, offset, maximum))
        if values is None:
            return len(self.ints)
        part = self.ints[offset:offset + maximum]
        values.extend(part)
        return len(part)

    def SetInts(self, refcon, values, offset, count):
        print("set ints refcon %d values %r offset %d count %d" % (refcon, values, offset, count))
        self.ints[offset:offset + count] = values

    def GetBytes(self, refcon, values, offset, maximum):
        if values is None:
            return len(self.text)
        values.append(self.text[offset:])
        return len(self.text) - offset

    def SetBytes(self, refcon, values, offset, count):
        print("set bytes refcon %d values %r offset %d count %d" % (refcon, values, offset, count))

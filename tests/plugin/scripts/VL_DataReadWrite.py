# Reads and writes the simulator's datarefs of every type and prints what came back.
from __future__ import print_function
from XPLMDataAccess import *


def show(label, value):
    print("%s %s %r" % (label, type(value).__name__, value))


class Vorlith:
    def XPluginStart(self):
        nav = XPLMFindDataRef("sim/cockpit/radios/nav1_freq_hz")
        alt = XPLMFindDataRef("sim/cockpit/autopilot/altitude")
        x = XPLMFindDataRef("sim/flightmodel/position/local_x")
        batteries = XPLMFindDataRef("sim/cockpit/electrical/battery_array_on")
        blades = XPLMFindDataRef("sim/aircraft/prop/acf_num_blades")
        tail = XPLMFindDataRef("sim/aircraft/view/acf_tailnum")
        latitude = XPLMFindDataRef("sim/flightmodel/position/latitude")

        show("types", [XPLMGetDataRefTypes(r) for r in (nav, alt, x, batteries, blades, tail)])
        show("writable", [XPLMCanWriteDataRef(r) for r in (nav, latitude)])
        show("set int", XPLMSetDatai(nav, 11030))
        show("int", XPLMGetDatai(nav))
        XPLMSetDataf(alt, 4500.5)
        show("float", XPLMGetDataf(alt))
        XPLMSetDatad(x, 1234.125)
        show("double", XPLMGetDatad(x))

        show("set ints", XPLMSetDatavi(batteries, [1, 0, 1], 2, 3))
        values = []
        show("read ints", XPLMGetDatavi(batteries, values, 0, 8))
        show("ints", values)
        show("size ints", XPLMGetDatavi(batteries, None, 0, 8))

        XPLMSetDatavf(blades, [2.0, 3.5, 4.25], 0, 3)
        values = [9.0, 9.0, 9.0]
        show("read floats", XPLMGetDatavf(blades, values, 0, 8))
        show("floats", values)
        values = []
        show("read floats at 1", XPLMGetDatavf(blades, values, 1, 2))
        show("floats at 1", values)

        show("set bytes", XPLMSetDatab(tail, ["N12345"], 0, 10))
        values = []
        show("read bytes", XPLMGetDatab(tail, values, 0, 100))
        show("bytes", values)
        XPLMSetDatab(tail, [78, 57, 200, 0], 0, 4)
        values = []
        XPLMGetDatab(tail, values, 0, 2)
        show("two bytes", values)
        show("size bytes", XPLMGetDatab(tail, None, 0, 1))
        return "VL_DataReadWrite", "vorlith.test.datareadwrite", "dataref reads and writes"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

# Every mistake a script can make with XPLMDataAccess: each call prints what it raised
# or returned; none may take the simulator down.
from __future__ import print_function
from XPLMDataAccess import *


def attempt(label, call, *args):
    try:
        print("%s -> %r" % (label, call(*args)))
    except Exception as e:
        print("%s raised %s: %s" % (label, type(e).__name__, e))


class Vorlith:
    def XPluginStart(self):
        nav = XPLMFindDataRef("sim/cockpit/radios/nav1_freq_hz")
        batteries = XPLMFindDataRef("sim/cockpit/electrical/battery_array_on")
        blades = XPLMFindDataRef("sim/aircraft/prop/acf_num_blades")
        tail = XPLMFindDataRef("sim/aircraft/view/acf_tailnum")
        attempt("no args", XPLMGetDatai)
        attempt("too many", XPLMGetDatai, nav, 1)
        attempt("text int", XPLMSetDatai, nav, "x")
        attempt("text float", XPLMSetDataf, nav, "x")
        attempt("number name", XPLMFindDataRef, 123)
        attempt("unknown name", XPLMFindDataRef, "vorlith/no/such/dataref")
        attempt("huge name", XPLMFindDataRef, "n" * 100000)
        attempt("not a sequence", XPLMSetDatavi, batteries, 5, 0, 1)
        attempt("float in ints", XPLMSetDatavi, batteries, [1, 2.5], 0, 2)
        attempt("int in floats", XPLMSetDatavf, blades, [1.0, 2], 0, 2)
        attempt("empty bytes", XPLMSetDatab, tail, [], 0, 1)
        attempt("bytes not a sequence", XPLMSetDatab, tail, None, 0, 1)
        attempt("out not a list", XPLMGetDatavi, batteries, 5, 0, 8)
        attempt("out a tuple", XPLMGetDatavf, blades, (), 0, 8)
        attempt("count past the values", XPLMSetDatavi, batteries, [1], 0, 1000000)
        attempt("huge text", XPLMSetDatab, tail, ["t" * 100000], 0, 100000)
        out = []
        attempt("huge max", XPLMGetDatab, tail, out, 0, 1000000)
        print("huge max read %d characters" % len(out[0]))
        attempt("many bytes", XPLMSetDatab, tail, list(range(1, 10000)), 0, 10000)
        attempt("negative max", XPLMGetDatavi, batteries, [], 0, -5)
        attempt("garbage handle", XPLMGetDatai, 123456789)
        attempt("text handle", XPLMGetDatai, "handle")
        attempt("after text handle", XPLMGetDatai, nav)
        attempt("unregister garbage", XPLMUnregisterDataAccessor, self, 987654)
        return "VL_DataErrors", "vorlith.test.dataerrors", "dataref mistakes"

    def XPluginStop(self):
        pass

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

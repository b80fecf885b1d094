# Windows, hot keys, draw callbacks and key sniffers, driven by the test's mouse and keys.
# Each destroy reads back from the log's trace (DEBUG:DebugCallbacks) which window's
# bundle it freed. Leaves some registrations behind for the integrity check.
from __future__ import print_function
import os
from XPLMDefs import *
from XPLMDisplay import *


def plain(*args):
    print("PLAIN FUNCTION CALLED")


def low32(value):
    return "%x" % (value & 0xffffffff)


LOG = os.path.join(os.path.dirname(os.path.abspath(__file__)), "VorlithLog.txt")


class Vorlith:
    def window(self, label, callables, refcon, box=(10, 60, 50, 20)):
        # Fresh bound methods per window: a callable shared by two windows would have the
        # second window's id written into the first window's record.
        left, top, right, bottom = box
        handle = XPLMCreateWindowEx(self, [left, top, right, bottom, 1] + callables + [refcon])
        self.bundles[low32(XPLMGetWindowRefCon(handle))] = label
        return handle

    def destroy(self, label, handle):
        result = XPLMDestroyWindow(self, handle)
        with open(LOG) as log:
            freed = [line for line in log.read().splitlines() if line.startswith("pDrawWindowCB = ")][-1][16:]
        print("destroy %s -> %r freed %s" % (label, result, self.bundles.get(freed, freed)))

    def bound(self):
        return [self.Draw, self.Key, self.Mouse, self.Cursor, self.Wheel]

    def XPluginStart(self):
        self.drawn = set()
        self.bundles = {"0": "none"}
        width, height = [], [5, 6]
        print("screen -> %r %r %r" % (XPLMGetScreenSize(width, height), width, height))
        print("screen None -> %r" % XPLMGetScreenSize(None, None))
        for label, params in (("short", [1, 2, 3, 4, 1, plain]), ("text left", ["1", 2, 3, 4, 1] + [None] * 5 + [0]),
                              ("number", 7), ("twelve", [0] * 12)):
            try:
                XPLMCreateWindowEx(self, params)
                print("%s accepted" % label)
            except TypeError:
                print("%s raised TypeError" % label)
        # Destroyed in creation order, then with no bundle left, then in reverse order.
        a1, a2 = self.window("A1", self.bound(), 1), self.window("A2", self.bound(), 2)
        self.destroy("A1", a1)
        self.destroy("A2", a2)
        self.destroy("garbage", 12345)
        b = [self.window("B%d" % i, self.bound(), i) for i in (1, 2, 3)]
        for i in (2, 1, 0):
            self.destroy("B%d" % (i + 1), b[i])
        # Q's last record sits where P's bundle is: P's bundle leaves the list but P keeps
        # working until it destroys itself from its own mouse handler.
        self.p = self.window("P", [plain, None, self.Mouse, None, None], 3, (600, 700, 700, 600))
        q = self.window("Q", self.bound(), 4)
        self.destroy("Q", q)

        self.main = self.window("main", self.bound(), 5, (100, 400, 300, 200))
        self.legacyKey, self.legacyMouse = self.Key, self.Mouse
        self.legacy = XPLMCreateWindow(self, 400, 400, 500, 300, 1, plain, self.legacyKey, self.legacyMouse, 6)
        self.bundles[low32(XPLMGetWindowRefCon(self.legacy))] = "legacy"
        geometry = [[], [], [9], None]
        print("geometry -> %r %r" % (XPLMGetWindowGeometry(self.main, *geometry), geometry))
        print("visible %r front %r" % (XPLMGetWindowIsVisible(self.main), XPLMIsWindowInFront(self.legacy)))

        self.drawCallback, self.sniffer, self.hot, self.hot2 = self.DrawCallback, self.Sniffer, self.HotKey, self.HotKey
        for refcon in (11, 21):
            print("draw %d -> %r" % (refcon, XPLMRegisterDrawCallback(self, self.drawCallback, xplm_Phase_Window, 0, refcon)))
        print("draw wrong refcon -> %r" % XPLMUnregisterDrawCallback(self, self.drawCallback, xplm_Phase_Window, 0, 99))
        for refcon in (13, 23):
            print("sniffer %d -> %r" % (refcon, XPLMRegisterKeySniffer(self, self.sniffer, 1, refcon)))
        self.hotKey = XPLMRegisterHotKey(self, XPLM_VK_F1, 0, "Vorlith test hot key", self.hot, 8)
        self.spare = XPLMRegisterHotKey(self, XPLM_VK_F2, xplm_ShiftFlag, "x" * 5000, self.hot2, 9)
        info = [[], [5, 6], [], None]
        print("hot key info -> %r %r" % (XPLMGetHotKeyInfo(self.hotKey, *info), info))
        info = [None, None, [], None]
        XPLMGetHotKeyInfo(self.spare, *info)
        print("long description cut to %d" % len(info[2][0]))
        count = XPLMCountHotKeys()
        print("last hot key is ours %r" % (XPLMGetNthHotKey(count - 1) == self.spare))
        print("unregister unknown hot key -> %r" % XPLMUnregisterHotKey(self, 777))
        return "VL_Display", "vorlith.test.display", "windows and keys"

    def XPluginStop(self):
        print("draw 21 off -> %r" % XPLMUnregisterDrawCallback(self, self.drawCallback, xplm_Phase_Window, 0, 21))
        print("sniffer 23 off -> %r" % XPLMUnregisterKeySniffer(self, self.sniffer, 1, 23))
        print("hot key off -> %r" % XPLMUnregisterHotKey(self, self.spare))
        self.destroy("legacy", self.legacy)

    def Draw(self, window, refcon):
        if refcon not in self.drawn:
            self.drawn.add(refcon)
            print("draw window %d" % refcon)

    def Mouse(self, window, x, y, status, refcon):
        print("mouse %d at %d %d status %d" % (refcon, x, y, status))
        if refcon == 3 and status == xplm_MouseUp:
            self.destroy("P from its own handler", window)
        if refcon == 5 and status == xplm_MouseDown:
            XPLMTakeKeyboardFocus(window)
        return 1

    def Key(self, window, key, flags, virtualKey, refcon, losingFocus):
        print("key %r flags %d vkey %d refcon %d losing %d" % (key, flags, virtualKey, refcon, losingFocus))
        if key == ord('q'):
            XPLMTakeKeyboardFocus(0)

    def Cursor(self, window, x, y, refcon):
        if ("cursor", refcon) not in self.drawn:
            self.drawn.add(("cursor", refcon))
            print("cursor %d at %d %d" % (refcon, x, y))
        return xplm_CursorArrow

    def Wheel(self, window, x, y, wheel, clicks, refcon):
        print("wheel %d at %d %d axis %d clicks %d" % (refcon, x, y, wheel, clicks))
        return 1

    def DrawCallback(self, phase, isBefore, refcon):
        if ("phase", refcon) not in self.drawn:
            self.drawn.add(("phase", refcon))
            print("draw callback phase %d before %d refcon %d" % (phase, isBefore, refcon))
        return 1

    def Sniffer(self, key, flags, virtualKey, refcon):
        print("sniffer %d saw %d" % (refcon, virtualKey))
        return 1

    def HotKey(self, refcon):
        print("hot key %d" % refcon)

# XPLMGraphics and XPLMCamera: out-lists and appended lists, text cut and wrapped,
# coordinates, camera records, and mistakes that must not break anything.
from __future__ import print_function
from XPLMGraphics import *
from XPLMCamera import *
from XPLMProcessing import *


def show(label, call):
    try:
        print("%s -> %r" % (label, call()))
    except Exception as e:
        print("%s raised %s" % (label, type(e).__name__))


class Vorlith:
    def XPluginStart(self):
        textures = [5]
        XPLMGenerateTextureNumbers(textures, 2)
        XPLMGenerateTextureNumbers(textures, 1)
        print("textures %d distinct %d" % (len(textures), len(set(textures))))
        show("huge texture count", lambda: XPLMGenerateTextureNumbers([], 1 << 30))
        show("state", lambda: XPLMSetGraphicsState(0, 1, 0, 0, 1, 0, 0))
        x, y, z = XPLMWorldToLocal(47.5, -122.3, 100.0)
        lat, lon, alt = XPLMLocalToWorld(x, y, z)
        print("round trip %.4f %.4f %.1f" % (lat, lon, alt))
        width, height = [], [5, 6]
        XPLMGetFontDimensions(xplmFont_Basic, None, height, None)
        print("height only %r %r" % (width, height))
        XPLMGetFontDimensions(xplmFont_Led, width, height, None)
        print("led %r %r" % (width, height))
        show("measure", lambda: XPLMMeasureString(xplmFont_Basic, "Hello", 5))
        show("measure past the end", lambda: XPLMMeasureString(xplmFont_Basic, "Hello", 1 << 30))

        show("release unknown", lambda: XPLMDontControlCamera(self))
        show("controlled before", XPLMIsCameraBeingControlled)
        position = []
        XPLMReadCameraPosition(position)
        show("read", lambda: XPLMReadCameraPosition(position))
        print("position floats %d" % len(position))
        self.control = self.Control
        self.frames = 0
        self.loop = self.Loop
        XPLMRegisterFlightLoopCallback(self, self.loop, -1.0, 0)
        return "VL_Graphics", "vorlith.test.graphics", "graphics and camera"

    def Control(self, position, losing, refcon):
        if position == 0:
            print("camera lost refcon %d" % refcon)
            return 0
        position[0] = 123.0
        position[6] = 2.0
        return 1

    def Loop(self, since, elapsed, counter, refcon):
        self.frames += 1
        if self.frames == 1:
            # The simulator hands the camera only to an enabled plug-in: not during start.
            show("control", lambda: XPLMControlCamera(self, xplm_ControlCameraForever, self.control, 7))
            show("control again", lambda: XPLMControlCamera(self, xplm_ControlCameraForever, self.control, 8))
            show("controlled", XPLMIsCameraBeingControlled)
        if self.frames < 3:
            XPLMDrawString((1.0, 1.0, 1.0), 10, 20, "x" * (1 << 20), 0, xplmFont_Basic)
            XPLMDrawString((1.0, 0.5, 0.0), 10, 200, "one two three", 40, xplmFont_Basic)
            XPLMDrawNumber((1.0, 1.0, 1.0), 300, 20, -3.14159, 3, 2, 1, xplmFont_Basic)
            XPLMDrawTranslucentDarkBox(0, 100, 50, 0)
            show("string bad colour", lambda: XPLMDrawString((1.0, 1.0), 0, 0, "a", 0, 0))
        if self.frames == 3:
            position = []
            XPLMReadCameraPosition(position)
            print("camera x %.1f zoom %.1f" % (position[0], position[6]))
            show("release", lambda: XPLMDontControlCamera(self))
            show("controlled after", XPLMIsCameraBeingControlled)
            return 0
        return -1.0

    def XPluginStop(self):
        XPLMUnregisterFlightLoopCallback(self, self.loop, 0)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

# A window that shows how often it was clicked and the last key typed into it. Click it
# to give it the keyboard; Escape gives the keyboard back to the simulator. The hot key
# F8 hides and shows it.
from __future__ import print_function
from XPLMDefs import XPLM_VK_ESCAPE, XPLM_VK_F8
from XPLMDisplay import (XPLMCreateWindowEx, XPLMDestroyWindow, XPLMGetWindowIsVisible,
                         XPLMRegisterHotKey, XPLMSetWindowIsVisible, XPLMTakeKeyboardFocus,
                         XPLMUnregisterHotKey, xplm_CursorArrow, xplm_MouseDown)
from XPLMGraphics import XPLMDrawString, XPLMDrawTranslucentDarkBox, xplmFont_Basic


class Vorlith:
    def XPluginStart(self):
        self.clicks, self.lastKey = 0, "none"
        # Every callback is a bound method kept on the instance for as long as it is used.
        self.draw, self.key, self.mouse = self.DrawWindow, self.HandleKey, self.HandleMouse
        self.cursor, self.wheel, self.toggle = self.HandleCursor, self.HandleWheel, self.ToggleWindow
        # left, top, right, bottom, visible, then the five callbacks and a refcon.
        self.window = XPLMCreateWindowEx(self, [50, 600, 350, 500, 1, self.draw, self.key, self.mouse,
                                                self.cursor, self.wheel, 0])
        self.hotKey = XPLMRegisterHotKey(self, XPLM_VK_F8, 0, "Show or hide the hello window", self.toggle, 0)
        return "Hello Window", "vorlith.examples.hellowindow", "A window, its clicks and keys, a hot key"

    def XPluginStop(self):
        XPLMUnregisterHotKey(self, self.hotKey)
        XPLMDestroyWindow(self, self.window)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

    def DrawWindow(self, window, refcon):
        XPLMDrawTranslucentDarkBox(50, 600, 350, 500)
        text = "Clicks: %d  Last key: %s" % (self.clicks, self.lastKey)
        XPLMDrawString((1.0, 1.0, 1.0), 60, 550, text, 0, xplmFont_Basic)

    def HandleMouse(self, window, x, y, status, refcon):
        if status == xplm_MouseDown:
            self.clicks += 1
            XPLMTakeKeyboardFocus(window)
            print("hello window clicked %d times" % self.clicks)
        return 1  # the click is ours

    def HandleKey(self, window, key, flags, virtualKey, refcon, losingFocus):
        if losingFocus:
            return
        if virtualKey == XPLM_VK_ESCAPE:
            XPLMTakeKeyboardFocus(0)
        else:
            self.lastKey = chr(key) if 32 <= key < 127 else "code %d" % key
            print("hello window got key %s" % self.lastKey)

    def HandleCursor(self, window, x, y, refcon):
        return xplm_CursorArrow

    def HandleWheel(self, window, x, y, wheel, clicks, refcon):
        return 1

    def ToggleWindow(self, refcon):
        visible = 0 if XPLMGetWindowIsVisible(self.window) else 1
        XPLMSetWindowIsVisible(self.window, visible)
        print("hello window %s" % ("shown" if visible else "hidden"))

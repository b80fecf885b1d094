# A widget of its own: a small gauge that draws itself with the simulator's interface
# elements (XPUIGraphics), lights up while the mouse holds it, can be dragged around,
# and shows a value a flight loop moves.
from XPLMProcessing import XPLMRegisterFlightLoopCallback, XPLMUnregisterFlightLoopCallback
from XPUIGraphics import *
from XPWidgetDefs import *
from XPWidgetUtils import XPUDragWidget
from XPWidgets import *


class Vorlith:
    def XPluginStart(self):
        self.value = 0
        self.pressed = 0
        # A custom widget's callback is its whole behaviour: drawing, mouse, everything.
        self.callback = self.GaugeCallback
        self.gauge = XPCreateCustomWidget(self, 600, 300, 760, 240, 1, "Gauge", 1, 0, self.callback)
        self.loop = self.FlightLoopCallback
        XPLMRegisterFlightLoopCallback(self, self.loop, 0.1, 0)
        return "Custom Widget", "vorlith.examples.customwidget", "A gauge widget that draws itself"

    def XPluginStop(self):
        XPLMUnregisterFlightLoopCallback(self, self.loop, 0)
        XPDestroyWidget(self, self.gauge, 1)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        pass

    def FlightLoopCallback(self, elapsedSinceLastCall, elapsedSinceLastFlightLoop, counter, refcon):
        self.value = (self.value + 1) % 101
        return 0.1

    def GaugeCallback(self, message, widget, param1, param2):
        if message == xpMsg_Draw:
            left, top, right, bottom = [], [], [], []
            XPGetWidgetGeometry(widget, left, top, right, bottom)
            l, t, r, b = left[0], top[0], right[0], bottom[0]
            XPDrawWindow(l, b, r, t, xpWindow_MainWindow)
            XPDrawElement(l + 10, t - 30, l + 30, t - 10, xpElement_PushButton, self.pressed)
            XPDrawTrack(l + 40, t - 30, r - 10, t - 14, 0, 100, self.value, xpTrack_Progress, 0)
            return 1
        if message in (xpMsg_MouseDown, xpMsg_MouseDrag, xpMsg_MouseUp):
            # Lit while held; the whole widget is the drag area from its left edge on.
            self.pressed = 0 if message == xpMsg_MouseUp else 1
            XPUDragWidget(message, widget, param1, param2, 0)
            return 1
        return 0

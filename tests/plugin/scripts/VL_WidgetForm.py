# A settings form driven by the test's clicks, drags and keys: prints every message its
# callbacks see, the decoded mouse, key and geometry parameters, and what the widget
# functions answer for out-lists, 64-bit ids, tables and foreign parameters.
from __future__ import print_function
import sys
import XPStandardWidgets
import XPUIGraphics
import XPWidgetDefs
import XPWidgetUtils
import XPWidgets
from XPLMProcessing import *
from XPStandardWidgets import *
from XPWidgetDefs import *
from XPWidgetUtils import *
from XPWidgets import *


def attempt(label, call):
    try:
        print("%s -> %r" % (label, call()))
    except (TypeError, ValueError) as error:
        print("%s raised %s" % (label, type(error).__name__))


class Vorlith:
    def XPluginStart(self):
        self.names = {}
        self.modules()
        self.handler, self.first, self.second = self.Window, self.First, self.Second
        self.custom_cb, self.loop = self.Custom, self.Later
        self.window = self.make(100, 600, 500, 200, "Settings", 1, 0, xpWidgetClass_MainWindow)
        XPSetWidgetProperty(self.window, xpProperty_MainWindowHasCloseBoxes, 1)
        XPAddWidgetCallback(self, self.window, self.handler)
        self.field = self.make(110, 570, 300, 550, "", 0, self.window, xpWidgetClass_TextField, "Field")
        XPAddWidgetCallback(self, self.field, self.first)
        XPAddWidgetCallback(self, self.field, self.second)  # the record now holds Second
        self.sound = self.make(110, 540, 200, 525, "Sound", 0, self.window, xpWidgetClass_Button)
        XPSetWidgetProperty(self.sound, xpProperty_ButtonType, xpRadioButton)
        XPSetWidgetProperty(self.sound, xpProperty_ButtonBehavior, xpButtonBehaviorCheckBox)
        self.group = self.make(110, 520, 300, 495, "Group", 0, self.window, xpWidgetClass_SubWindow)
        self.radios = [self.make(120 + 90 * i, 515, 200 + 90 * i, 500, n, 0, self.group, xpWidgetClass_Button)
                       for i, n in enumerate(("A", "B"))]
        for radio in self.radios:
            XPSetWidgetProperty(radio, xpProperty_ButtonType, xpRadioButton)
            XPSetWidgetProperty(radio, xpProperty_ButtonBehavior, xpButtonBehaviorRadioButton)
        XPAddWidgetCallback(self, self.radios[0], self.handler)  # a grandchild's record
        self.volume = self.make(110, 490, 400, 474, "Volume", 0, self.window, xpWidgetClass_ScrollBar)
        for prop, value in ((xpProperty_ScrollBarType, xpScrollBarTypeSlider), (xpProperty_ScrollBarMax, 10),
                            (xpProperty_ScrollBarPageAmount, 3)):
            XPSetWidgetProperty(self.volume, prop, value)
        self.ok = self.make(110, 460, 170, 440, "OK", 0, self.window, xpWidgetClass_Button)
        self.custom = XPCreateCustomWidget(self, 310, 570, 390, 530, 1, "Custom", 0, self.window, self.custom_cb)
        self.names[self.custom] = "Custom"
        self.checks()
        XPLMRegisterFlightLoopCallback(self, self.loop, -1.0, 0)
        return "VL_WidgetForm", "vorlith.test.widgetform", "widget form"

    def modules(self):
        for module in (XPWidgets, XPWidgetDefs, XPStandardWidgets, XPUIGraphics, XPWidgetUtils):
            names = [n for n in vars(module) if not n.startswith("__")]
            functions = [n for n in names if callable(getattr(module, n))]
            constants = [n for n in names if n not in functions]
            print("%s %d %d" % (module.__name__, len(functions), len(constants)))
            if sys.version_info[0] >= 3:  # modules keep the order their tables give
                print("order %s %s" % (functions[:1] + constants[:1], constants[-1:]))
        print("|".join(getattr(XPWidgets, n).__doc__ for n in sorted(dir(XPWidgets)) if n.startswith("XP")))

    def make(self, l, t, r, b, text, root, container, cls, name=None):
        widget = XPCreateWidget(l, t, r, b, 1, text, root, container, cls)
        self.names[widget] = name or text
        return widget

    def name(self, widget):
        return self.names.get(widget, "?")

    def checks(self):
        out = []
        print("descriptor %r %r" % (XPGetWidgetDescriptor(self.sound, out, 100), out))
        out = ["x"]
        print("descriptor %r %r" % (XPGetWidgetDescriptor(self.sound, out, 2), out))
        print("descriptor None %r" % XPGetWidgetDescriptor(self.sound, None, 100))
        for maximum in (-5, 2 ** 31 - 1):
            out = []
            print("descriptor max %d %r %r" % (maximum, XPGetWidgetDescriptor(self.sound, out, maximum), out))
        XPSetWidgetProperty(self.ok, xpProperty_UserStart, 0x180000001)
        exists = [5, 6]
        print("property %r exists %r" % (XPGetWidgetProperty(self.ok, xpProperty_UserStart, exists), exists))
        exists = []
        print("property %r exists %r" % (XPGetWidgetProperty(self.ok, xpProperty_UserStart + 1, exists), exists))
        made = []
        table = [[600, 400, 800, 300, 1, "Made", 1, NO_PARENT, xpWidgetClass_MainWindow],
                 [610, 380, 700, 360, 1, "Child", 0, 0, xpWidgetClass_Caption]]
        print("create %r made %d" % (XPUCreateWidgets(table, 2, 0, made), len(made)))
        print("wide id %s parent ok %s" % (made[0] > 0xFFFFFFFF, XPGetParentWidget(made[1]) == made[0]))
        XPUMoveWidgetBy(made[0], 10, -5)
        box = [[], [], [], []]
        XPGetWidgetGeometry(made[0], box[0], box[1], None, box[3])
        print("moved %r" % box)
        print("location %s" % (XPGetWidgetForLocation(made[0], 620, 370, 1, 1) == made[1]))
        XPAddWidgetCallback(self, made[1], self.handler)  # no record: reported
        XPDestroyWidget(self, made[0], 1)  # a root without a record: reported
        attempt("tuple entry", lambda: XPUCreateWidgets([tuple(table[0])], 1, 0, []))
        attempt("short entry", lambda: XPUCreateWidgets([table[0][:5]], 1, 0, []))
        attempt("count", lambda: XPUCreateWidgets(table, 3, 0, []))
        attempt("container index", lambda: XPUCreateWidgets([table[0][:7] + [5, 1]], 1, 0, []))
        attempt("foreign mouse", lambda: VL_GetMouseState(12345))
        attempt("foreign drag", lambda: XPUDragWidget(xpMsg_MouseDown, self.custom, 12345, 0, 0))
        attempt("garbage widget", lambda: XPGetWidgetDescriptor(987654321, [], 10))
        # Readable memory, but not a key state the simulator made.
        attempt("sent", lambda: XPSendMessageToWidget(self.custom, xpMsg_KeyPress, xpMode_Direct, id(self), 0))

    def Window(self, message, widget, param1, param2):
        if message == xpMsg_PushButtonPressed:
            self.pushed = True
            out = []
            XPGetWidgetDescriptor(self.field, out, 100)
            states = [XPGetWidgetProperty(w, xpProperty_ButtonState, None) for w in [self.sound] + self.radios]
            print("pushed %s text %r states %r volume %d" % (self.name(param1), out[0], states,
                  XPGetWidgetProperty(self.volume, xpProperty_ScrollBarSliderPosition, None)))
        elif message == xpMsg_ButtonStateChanged:
            print("%s state %d" % (self.name(param1), param2))
        elif message in (xpMsg_TextFieldChanged, xpMsg_ScrollBarSliderPositionChanged):
            print("changed %s" % self.name(param1))
        elif message == xpMessage_CloseButtonPushed:
            print("close %s" % self.name(param1))
            XPDestroyWidget(self, self.window, 0)  # its direct children's records go too
        else:
            return 0
        return 1

    def First(self, message, widget, param1, param2):
        print("first %d %d" % (message, param1))
        return 0

    def Second(self, message, widget, param1, param2):
        if message == xpMsg_Create:
            print("second create %d" % param1)
        elif message == xpMsg_KeyPress:
            self.key = param1
            print("key %r" % (VL_GetKeyState(param1),))
            attempt("key as mouse", lambda: VL_GetMouseState(param1))
        return 0

    def Custom(self, message, widget, param1, param2):
        if message == xpMsg_Create:
            print("custom create %d" % param1)
        elif message == xpMsg_MouseDown:
            self.mouse = param1
            print("custom down %r" % (VL_GetMouseState(param1),))
        elif message == xpMsg_KeyPress:
            attempt("custom key", lambda: VL_GetKeyState(param1))
        elif message == xpMsg_Reshape and param1 == widget:
            print("custom reshape %r" % (VL_GetWidgetGeometryChange(param2),))
        if message in (xpMsg_MouseDown, xpMsg_MouseDrag, xpMsg_MouseUp):
            return XPUDragWidget(message, widget, param1, param2, 0)
        return 0

    def Later(self, since, elapsed, counter, refcon):
        if hasattr(self, "key") and not hasattr(self, "seen"):
            self.seen = True
            attempt("key later in its frame", lambda: VL_GetKeyState(self.key))
        if not hasattr(self, "pushed"):
            return -1.0
        attempt("old key", lambda: VL_GetKeyState(self.key))
        attempt("old mouse", lambda: VL_GetMouseState(self.mouse))
        return 0.0

    def XPluginStop(self):
        XPLMUnregisterFlightLoopCallback(self, self.loop, 0)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, sender, message, param):
        pass

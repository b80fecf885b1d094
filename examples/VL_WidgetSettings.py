# A settings window built from standard widgets: a text field, a check box, a radio
# group, a slider and OK / Cancel. OK copies the values into three datarefs this script
# publishes, "vorlith/examples/settings/sound", ".../mode" and ".../volume", where the
# simulator and every other plug-in can read them; the name is printed.
from XPLMDataAccess import XPLMRegisterDataAccessor, XPLMUnregisterDataAccessor, xplmType_Int
from XPStandardWidgets import *
from XPWidgetDefs import xpProperty_Refcon
from XPWidgets import *

NAMES = ("sound", "mode", "volume")


class Vorlith:
    def XPluginStart(self):
        self.values = [0, 0, 5]  # what the datarefs read until OK is pressed
        self.getValue = self.GetValue  # callbacks are kept on the instance
        self.datarefs = [XPLMRegisterDataAccessor(
            self, "vorlith/examples/settings/" + name, xplmType_Int, 0,
            self.getValue, None, None, None, None, None, None, None, None, None, None, None,
            index, 0) for index, name in enumerate(NAMES)]

        # The window is a root widget; every control is created inside it.
        self.window = XPCreateWidget(100, 600, 400, 380, 1, "Settings", 1, 0, xpWidgetClass_MainWindow)
        XPSetWidgetProperty(self.window, xpProperty_MainWindowHasCloseBoxes, 1)
        XPCreateWidget(110, 570, 160, 555, 1, "Name", 0, self.window, xpWidgetClass_Caption)
        self.name = XPCreateWidget(170, 570, 390, 550, 1, "", 0, self.window, xpWidgetClass_TextField)
        self.sound = self.button(110, 540, "Sound", xpButtonBehaviorCheckBox)
        # A radio group: the handler below switches the others off.
        self.modes = [self.button(110 + 90 * i, 515, text, xpButtonBehaviorRadioButton)
                      for i, text in enumerate(("Quiet", "Normal", "Loud"))]
        XPSetWidgetProperty(self.modes[0], xpProperty_ButtonState, 1)
        self.volume = XPCreateWidget(110, 485, 390, 469, 1, "", 0, self.window, xpWidgetClass_ScrollBar)
        XPSetWidgetProperty(self.volume, xpProperty_ScrollBarType, xpScrollBarTypeSlider)
        XPSetWidgetProperty(self.volume, xpProperty_ScrollBarMax, 10)
        XPSetWidgetProperty(self.volume, xpProperty_ScrollBarPageAmount, 1)
        XPSetWidgetProperty(self.volume, xpProperty_ScrollBarSliderPosition, self.values[2])
        self.ok = XPCreateWidget(110, 440, 190, 420, 1, "OK", 0, self.window, xpWidgetClass_Button)
        self.cancel = XPCreateWidget(200, 440, 280, 420, 1, "Cancel", 0, self.window, xpWidgetClass_Button)

        # The controls report to their window (their messages go up the chain), so one
        # callback on the window handles them all.
        self.handler = self.WindowHandler
        XPAddWidgetCallback(self, self.window, self.handler)
        return "Widget Settings", "vorlith.examples.widgetsettings", "A settings window of standard widgets"

    def button(self, left, top, text, behaviour):
        widget = XPCreateWidget(left, top, left + 85, top - 15, 1, text, 0, self.window, xpWidgetClass_Button)
        XPSetWidgetProperty(widget, xpProperty_ButtonType, xpRadioButton)
        XPSetWidgetProperty(widget, xpProperty_ButtonBehavior, behaviour)
        return widget

    def XPluginStop(self):
        if self.window:
            XPDestroyWidget(self, self.window, 1)
        for dataref in self.datarefs:
            XPLMUnregisterDataAccessor(self, dataref)

    def XPluginEnable(self):
        return 1

    def XPluginDisable(self):
        pass

    def XPluginReceiveMessage(self, inFromWho, inMessage, inParam):
        pass

    def GetValue(self, refcon):
        return self.values[refcon]

    def state(self, widget):
        return XPGetWidgetProperty(widget, xpProperty_ButtonState, None)

    def WindowHandler(self, message, widget, param1, param2):
        if message == xpMsg_ButtonStateChanged and param1 in self.modes and param2:
            for other in self.modes:
                if other != param1:
                    XPSetWidgetProperty(other, xpProperty_ButtonState, 0)
            return 1
        if message == xpMsg_PushButtonPressed and param1 == self.ok:
            text = []
            XPGetWidgetDescriptor(self.name, text, 256)
            modes = [self.state(mode) for mode in self.modes]
            self.values = [self.state(self.sound), modes.index(1) if 1 in modes else 0,
                           XPGetWidgetProperty(self.volume, xpProperty_ScrollBarSliderPosition, None)]
            print("Settings for %r: sound %d, mode %d, volume %d" % tuple(text + self.values))
            return 1
        if (message == xpMsg_PushButtonPressed and param1 == self.cancel) or \
                message == xpMessage_CloseButtonPushed:
            XPHideWidget(self.window)
            return 1
        return 0

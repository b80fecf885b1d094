/* Test plug-in: builds a form from every standard widget class plus a custom widget in
 * nested containers, and records every message each widget gets (except painting),
 * in order, into events.txt. The window's handler plays the plug-in's part: radio
 * group, close box, keys, the slider driving the progress bar. */
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMPlugin.h"
#include "XPStandardWidgets.h"
#include "XPWidgetUtils.h"
#include "XPWidgets.h"
#include "test_plugin.h"
#include "widget_messages.h"

#define MSG_REPORT 0x7FF20001        /* record focus, texts, states, the custom widget's exposure */
#define MSG_DESTROY_GROUP 0x7FF20002 /* destroy the nested container and what it holds */
#define MSG_HIDE_INNER 0x7FF20003    /* hide the inner container */

enum { kMaxWidgets = 32 };
static struct {
    XPWidgetID id;
    const char* name;
} gWidgets[kMaxWidgets];
static int gCount;

static XPWidgetID gForm, gNameField, gOk, gCancel, gSound, gMusic, gGroup, gRadio[3], gInner, gCustom, gVolume, gProgress;

static const char* nameOf(XPWidgetID id) {
    int i;
    if (!id) return "0";
    for (i = 0; i < gCount; ++i)
        if (gWidgets[i].id == id) return gWidgets[i].name;
    return "?";
}

/* Added to every widget: records and passes the message on. */
static int logger(XPWidgetMessage m, XPWidgetID w, intptr_t p1, intptr_t p2) {
    const char* name = widgetMessageName(m);
    if (m == xpMsg_Paint || m == xpMsg_Draw || m == xpMsg_CursorAdjust) return 0;
    if (m == xpMsg_PropertyChanged)
        recordEvent("%s PropertyChanged %d=%ld", nameOf(w), (int)p1, (long)p2);
    else if (m == xpMsg_KeyPress)
        recordEvent("%s KeyPress %d", nameOf(w), KEY_CHAR(p1));
    else if (m == xpMsg_MouseDown || m == xpMsg_MouseDrag || m == xpMsg_MouseUp)
        recordEvent("%s %s %d,%d", nameOf(w), name, MOUSE_X(p1), MOUSE_Y(p1));
    else if (m == xpMsg_ButtonStateChanged)
        recordEvent("%s ButtonStateChanged %s %ld", nameOf(w), nameOf((XPWidgetID)p1), (long)p2);
    else if (widgetMessageNamesWidget(m))
        recordEvent("%s %s %s", nameOf(w), name, nameOf((XPWidgetID)p1));
    else
        recordEvent("%s %s %ld", nameOf(w), name, (long)p1);
    return 0;
}

/* A widget of the plug-in's own: draws its descriptor, takes clicks and keys. */
static int customFunc(XPWidgetMessage m, XPWidgetID w, intptr_t p1, intptr_t p2) {
    float white[3] = {1, 1, 1};
    int left, top, bottom;
    switch (m) {
    case xpMsg_Draw:
        XPGetWidgetGeometry(w, &left, &top, NULL, &bottom);
        XPLMDrawString(white, left + 2, bottom + 2, "custom", NULL, xplmFont_Basic);
        return 1;
    case xpMsg_MouseDown:
        XPSetKeyboardFocus(w);
        return 1;
    case xpMsg_MouseUp:
        return 1;
    case xpMsg_KeyTakeFocus:
        return 1;
    case xpMsg_KeyPress:
        if (KEY_FLAGS(p1) & xplm_DownFlag) recordEvent("custom typed %c", KEY_CHAR(p1));
        return 1;
    default:
        return 0;
    }
}

/* The plug-in's part of the form. */
static int formHandler(XPWidgetMessage m, XPWidgetID w, intptr_t p1, intptr_t p2) {
    int i;
    char text[64];
    switch (m) {
    case xpMessage_CloseButtonPushed:
        recordEvent("closing");
        XPDestroyWidget(gForm, 1);
        gForm = NULL;
        return 1;
    case xpMsg_PushButtonPressed:
        if ((XPWidgetID)p1 == gOk) {
            XPGetWidgetDescriptor(gNameField, text, sizeof text - 1);
            text[sizeof text - 1] = 0;
            recordEvent("ok name=%s", text);
        } else {
            XPSetKeyboardFocus(NULL);
        }
        return 1;
    case xpMsg_ButtonStateChanged:
        for (i = 0; i < 3; ++i)
            if ((XPWidgetID)p1 == gRadio[i] && p2 == 1) {
                int j;
                for (j = 0; j < 3; ++j)
                    if (j != i) XPSetWidgetProperty(gRadio[j], xpProperty_ButtonState, 0);
            }
        return 1;
    case xpMsg_ScrollBarSliderPositionChanged:
        XPSetWidgetProperty(gProgress, xpProperty_ProgressPosition,
                            10 * XPGetWidgetProperty(gVolume, xpProperty_ScrollBarSliderPosition, NULL));
        return 1;
    case xpMsg_KeyPress:
        if (KEY_CHAR(p1) == XPLM_KEY_RETURN && (KEY_FLAGS(p1) & xplm_DownFlag)) {
            recordEvent("return");
            return 1;
        }
        return 0;
    default:
        return 0;
    }
}

static XPWidgetID add(XPWidgetID id, const char* name) {
    if (gCount < kMaxWidgets) {
        gWidgets[gCount].id = id;
        gWidgets[gCount].name = name;
        ++gCount;
    }
    XPAddWidgetCallback(id, logger);
    return id;
}

static XPWidgetID make(int l, int t, int r, int b, const char* name, XPWidgetID parent, XPWidgetClass cls) {
    return add(XPCreateWidget(l, t, r, b, 1, name, 0, parent, cls), name);
}

static void buildForm(void) {
    int i;
    static const char* radioNames[3] = {"A", "B", "C"};
    gCount = 0;
    gForm = XPCreateWidget(100, 600, 500, 200, 1, "Form", 1, NULL, xpWidgetClass_MainWindow);
    XPSetWidgetProperty(gForm, xpProperty_MainWindowHasCloseBoxes, 1);
    XPAddWidgetCallback(gForm, formHandler);
    add(gForm, "Form");
    make(110, 570, 170, 555, "Label", gForm, xpWidgetClass_Caption);
    gNameField = make(180, 570, 380, 550, "Name", gForm, xpWidgetClass_TextField);
    XPSetWidgetDescriptor(gNameField, "");
    XPSetWidgetProperty(gNameField, xpProperty_MaxCharacters, 8);
    gOk = make(110, 540, 170, 520, "OK", gForm, xpWidgetClass_Button);
    gCancel = make(180, 540, 240, 520, "Cancel", gForm, xpWidgetClass_Button);
    gSound = make(110, 510, 200, 495, "Sound", gForm, xpWidgetClass_Button);
    gMusic = make(210, 510, 300, 495, "Music", gForm, xpWidgetClass_Button);
    XPSetWidgetProperty(gSound, xpProperty_ButtonType, xpRadioButton);
    XPSetWidgetProperty(gSound, xpProperty_ButtonBehavior, xpButtonBehaviorCheckBox);
    XPSetWidgetProperty(gMusic, xpProperty_ButtonType, xpRadioButton);
    XPSetWidgetProperty(gMusic, xpProperty_ButtonBehavior, xpButtonBehaviorCheckBox);
    gGroup = make(110, 480, 300, 380, "Group", gForm, xpWidgetClass_SubWindow);
    for (i = 0; i < 3; ++i) {
        gRadio[i] = make(120, 470 - 20 * i, 200, 455 - 20 * i, radioNames[i], gGroup, xpWidgetClass_Button);
        XPSetWidgetProperty(gRadio[i], xpProperty_ButtonType, xpRadioButton);
        XPSetWidgetProperty(gRadio[i], xpProperty_ButtonBehavior, xpButtonBehaviorRadioButton);
    }
    gInner = make(210, 470, 290, 390, "Inner", gGroup, xpWidgetClass_SubWindow);
    XPSetWidgetProperty(gInner, xpProperty_SubWindowType, xpSubWindowStyle_Screen);
    /* Sticks out of Inner on the right: clipped there. */
    gCustom = add(XPCreateCustomWidget(250, 460, 340, 440, 1, "Custom", 0, gInner, customFunc), "Custom");
    gVolume = make(110, 370, 400, 354, "Volume", gForm, xpWidgetClass_ScrollBar);
    XPSetWidgetProperty(gVolume, xpProperty_ScrollBarMin, 0);
    XPSetWidgetProperty(gVolume, xpProperty_ScrollBarMax, 10);
    XPSetWidgetProperty(gVolume, xpProperty_ScrollBarPageAmount, 2);
    XPSetWidgetProperty(gVolume, xpProperty_ScrollBarType, xpScrollBarTypeSlider);
    gProgress = make(110, 340, 400, 330, "Progress", gForm, xpWidgetClass_Progress);
    XPSetWidgetProperty(gProgress, xpProperty_ProgressMax, 100);
    recordEvent("built");
}

static void report(void) {
    char text[64];
    int l, t, r, b, i;
    XPWidgetID buttons[5];
    recordEvent("focus %s", nameOf(XPGetWidgetWithFocus()));
    if (!gForm) return;
    XPGetWidgetDescriptor(gNameField, text, sizeof text - 1);
    text[sizeof text - 1] = 0;
    recordEvent("text %s", text);
    buttons[0] = gSound, buttons[1] = gMusic, buttons[2] = gRadio[0], buttons[3] = gRadio[1], buttons[4] = gRadio[2];
    for (i = 0; i < 5; ++i)
        recordEvent("state %s %ld", nameOf(buttons[i]), (long)XPGetWidgetProperty(buttons[i], xpProperty_ButtonState, NULL));
    recordEvent("volume %ld progress %ld", (long)XPGetWidgetProperty(gVolume, xpProperty_ScrollBarSliderPosition, NULL),
                (long)XPGetWidgetProperty(gProgress, xpProperty_ProgressPosition, NULL));
    XPGetWidgetExposedGeometry(gCustom, &l, &t, &r, &b);
    recordEvent("exposed Custom %d %d %d %d visible %d", l, t, r, b, XPIsWidgetVisible(gCustom));
}

PLUGIN_API int XPluginStart(char* outName, char* outSig, char* outDesc) {
    startTestPlugin(outName, outSig, outDesc, "xpsim.test.", "Builds a widget form and records its messages.");
    return 1;
}

PLUGIN_API void XPluginStop(void) {
    /* keep_widgets: leave the form behind, for the host to clean up. */
    if (gForm && !folderHasFile("keep_widgets")) XPDestroyWidget(gForm, 1);
    gForm = NULL;
}

PLUGIN_API int XPluginEnable(void) {
    if (!gForm) buildForm();
    return 1;
}

PLUGIN_API void XPluginDisable(void) {}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID from, int message, void* param) {
    if (message == MSG_REPORT) report();
    if (message == MSG_DESTROY_GROUP && gForm) XPDestroyWidget(gGroup, 1);
    if (message == MSG_HIDE_INNER && gForm) XPHideWidget(gInner);
}

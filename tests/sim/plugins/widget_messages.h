/* Names of the widget messages, for the logs of the widget tests and the widget_form
 * test plug-in (C and C++). */
#ifndef XPSIM_WIDGET_MESSAGES_H
#define XPSIM_WIDGET_MESSAGES_H

#include "XPStandardWidgets.h"
#include "XPWidgetDefs.h"

static inline const char* widgetMessageName(XPWidgetMessage m) {
    static const struct {
        int message;
        const char* name;
    } names[] = {
        {xpMsg_Create, "Create"}, {xpMsg_Destroy, "Destroy"}, {xpMsg_Paint, "Paint"}, {xpMsg_Draw, "Draw"},
        {xpMsg_KeyPress, "KeyPress"}, {xpMsg_KeyTakeFocus, "KeyTakeFocus"}, {xpMsg_KeyLoseFocus, "KeyLoseFocus"},
        {xpMsg_MouseDown, "MouseDown"}, {xpMsg_MouseDrag, "MouseDrag"}, {xpMsg_MouseUp, "MouseUp"},
        {xpMsg_Reshape, "Reshape"}, {xpMsg_ExposedChanged, "ExposedChanged"}, {xpMsg_AcceptChild, "AcceptChild"},
        {xpMsg_LoseChild, "LoseChild"}, {xpMsg_AcceptParent, "AcceptParent"}, {xpMsg_Shown, "Shown"},
        {xpMsg_Hidden, "Hidden"}, {xpMsg_DescriptorChanged, "DescriptorChanged"},
        {xpMsg_PropertyChanged, "PropertyChanged"}, {xpMsg_MouseWheel, "MouseWheel"},
        {xpMsg_CursorAdjust, "CursorAdjust"}, {xpMessage_CloseButtonPushed, "CloseButtonPushed"},
        {xpMsg_PushButtonPressed, "PushButtonPressed"}, {xpMsg_ButtonStateChanged, "ButtonStateChanged"},
        {xpMsg_TextFieldChanged, "TextFieldChanged"},
        {xpMsg_ScrollBarSliderPositionChanged, "ScrollBarSliderPositionChanged"}};
    unsigned i;
    for (i = 0; i < sizeof names / sizeof names[0]; ++i)
        if (names[i].message == m) return names[i].name;
    return "User";
}

/* Messages whose p1 names a widget. */
static inline int widgetMessageNamesWidget(XPWidgetMessage m) {
    switch (m) {
    case xpMsg_Reshape: case xpMsg_AcceptChild: case xpMsg_LoseChild: case xpMsg_AcceptParent:
    case xpMsg_Shown: case xpMsg_Hidden: case xpMessage_CloseButtonPushed: case xpMsg_PushButtonPressed:
    case xpMsg_ButtonStateChanged: case xpMsg_TextFieldChanged: case xpMsg_ScrollBarSliderPositionChanged:
        return 1;
    default:
        return 0;
    }
}

#endif

// The standard widget classes that draw and click: main window (close boxes, title-bar
// drag, select on click), sub window, button (push, check box, radio), caption,
// general graphics and progress indicator. Text field and scroll bar have their own files.

#include <initializer_list>
#include <iterator>

#include "class_helpers.h"

namespace xpsim {
namespace widgets {

namespace {

// The SDK gives no sizes; a title strip as tall as the drag-bar artwork, and a close box
// in each top corner, inside it.
constexpr int kTitleBarHeight = 18;
constexpr int kCloseBoxSize = 14;
constexpr int kCloseBoxInset = 2;

Rect closeBox(const Rect& window, int which) {  // 1: left corner, 2: right corner
    int top = window.top - kCloseBoxInset;
    int left = which == 1 ? window.left + kCloseBoxInset : window.right - kCloseBoxInset - kCloseBoxSize;
    return Rect{left, top, left + kCloseBoxSize, top - kCloseBoxSize};
}

int closeBoxAt(XPWidgetID id, int x, int y) {
    if (!prop(id, xpProperty_MainWindowHasCloseBoxes)) return 0;
    Rect box = boxOf(id);
    for (int which = 1; which <= 2; ++which)
        if (closeBox(box, which).contains(x, y)) return which;
    return 0;
}

int mainWindowFunc(XPWidgetMessage message, XPWidgetID id, intptr_t p1, intptr_t p2) {
    Widget* w = find(id);
    if (!w) return 0;
    Rect box = w->box;
    Rect titleBar{box.left, box.top, box.right, box.top - kTitleBarHeight};
    switch (message) {
    case xpMsg_Create:
    case xpMsg_Destroy:
        return 1;
    case xpMsg_Draw: {
        if (prop(id, xpProperty_MainWindowType) == xpMainWindowStyle_Translucent)
            XPLMDrawTranslucentDarkBox(box.left, box.top, box.right, box.bottom);
        else
            XPDrawWindow(box.left, box.bottom, box.right, box.top, xpWindow_MainWindow);
        bool lit = prop(id, xpProperty_MainWindowType) == xpMainWindowStyle_Translucent;
        drawLabel(box.left + kCloseBoxSize + 2 * kCloseBoxInset + 4, textBaseline(titleBar), w->descriptor, lit);
        if (prop(id, xpProperty_MainWindowHasCloseBoxes)) {
            for (int which = 1; which <= 2; ++which) {
                Rect r = closeBox(box, which);
                bool pressed = find(id)->pressedPart == which;
                XPDrawElement(r.left, r.bottom, r.right, r.top,
                              pressed ? xpElement_WindowCloseBoxPressed : xpElement_WindowCloseBox, 0);
            }
        }
        return 1;
    }
    case xpMsg_MouseDown: {
        // A click anywhere in the window selects it; the click still counts.
        XPUSelectIfNeeded(message, id, p1, p2, 0);
        if (!find(id)) return 1;
        if (int which = closeBoxAt(id, mouseOf(p1)->x, mouseOf(p1)->y)) {
            find(id)->pressedPart = which;
            return 1;
        }
        XPUDragWidget(message, id, p1, p2, titleBar.left, titleBar.top, titleBar.right, titleBar.bottom);
        return 1;  // the window's body is solid: clicks do not fall through to X-Plane
    }
    case xpMsg_MouseDrag:
    case xpMsg_MouseUp: {
        int pressed = w->pressedPart;
        if (pressed) {
            // Like a push button: pressed while the mouse stays in the box, pushed when
            // released there. The SDK does not say whether the window hides itself; it
            // does not: closing is the plug-in's decision.
            int x = mouseOf(p1)->x, y = mouseOf(p1)->y;
            bool inside = closeBox(box, pressed > 0 ? pressed : -pressed).contains(x, y);
            int which = pressed > 0 ? pressed : -pressed;
            if (message == xpMsg_MouseDrag) {
                w->pressedPart = inside ? which : -which;
                return 1;
            }
            w->pressedPart = 0;
            if (inside) dispatch(id, xpMessage_CloseButtonPushed, xpMode_UpChain, reinterpret_cast<intptr_t>(id), 0);
            return 1;
        }
        XPUDragWidget(message, id, p1, p2, titleBar.left, titleBar.top, titleBar.right, titleBar.bottom);
        return 1;
    }
    default:
        return 0;
    }
}

int subWindowFunc(XPWidgetMessage message, XPWidgetID id, intptr_t, intptr_t) {
    Widget* w = find(id);
    if (!w) return 0;
    if (message == xpMsg_Create || message == xpMsg_Destroy) return 1;
    if (message != xpMsg_Draw) return 0;  // a panel: clicks go to what it sits on
    XPWindowStyle style = xpWindow_SubWindow;
    switch (prop(id, xpProperty_SubWindowType)) {
    case xpSubWindowStyle_Screen: style = xpWindow_Screen; break;
    case xpSubWindowStyle_ListView: style = xpWindow_ListView; break;
    default: break;
    }
    XPDrawWindow(w->box.left, w->box.bottom, w->box.right, w->box.top, style);
    return 1;
}

XPElementStyle buttonElement(XPWidgetID id) {
    bool hilited = prop(id, xpProperty_Hilited) != 0;
    switch (prop(id, xpProperty_ButtonType)) {
    case xpRadioButton: return xpElement_CheckBox;
    case xpWindowCloseBox: return hilited ? xpElement_WindowCloseBoxPressed : xpElement_WindowCloseBox;
    case xpLittleDownArrow: return xpElement_LittleDownArrow;
    case xpLittleUpArrow: return xpElement_LittleUpArrow;
    default: return hilited ? xpElement_PushButtonLit : xpElement_PushButton;
    }
}

void drawButton(XPWidgetID id) {
    Widget* w = find(id);
    Rect r = w->box;
    intptr_t type = prop(id, xpProperty_ButtonType);
    if (type == xpRadioButton) {
        // Check-box and radio looks are both drawn square, lit when the state is on.
        int size = 0;
        XPGetElementDefaultDimensions(xpElement_CheckBox, &size, nullptr, nullptr);
        int bottom = (r.top + r.bottom - size) / 2;
        XPDrawElement(r.left, bottom, r.left + size, bottom + size, xpElement_CheckBox,
                      prop(id, xpProperty_ButtonState) ? 1 : 0);
        drawLabel(r.left + size + 4, textBaseline(r), w->descriptor, false);
        return;
    }
    XPDrawElement(r.left, r.bottom, r.right, r.top, buttonElement(id), 0);
    if (type == xpPushButton) {
        float width = XPLMMeasureString(xplmFont_Basic, w->descriptor.c_str(), static_cast<int>(w->descriptor.size()));
        drawLabel((r.left + r.right) / 2 - static_cast<int>(width) / 2, textBaseline(r), w->descriptor, false);
    }
}

int buttonFunc(XPWidgetMessage message, XPWidgetID id, intptr_t p1, intptr_t) {
    if (!find(id)) return 0;
    switch (message) {
    case xpMsg_Create:
        // The documented properties exist from the start, as the SDK's tab-order helper
        // expects of xpProperty_Enabled; set quietly, before anyone listens.
        for (int p : std::initializer_list<int>{xpProperty_ButtonType, xpProperty_ButtonBehavior, xpProperty_ButtonState, xpProperty_Hilited})
            find(id)->properties.emplace(p, 0);
        find(id)->properties.emplace(xpProperty_Enabled, 1);
        return 1;
    case xpMsg_Destroy:
        return 1;
    case xpMsg_Draw:
        drawButton(id);
        return 1;
    case xpMsg_MouseDown: {
        // A disabled button keeps the click (it is still a solid control) but does nothing.
        if (!isEnabled(id)) return 1;
        switch (prop(id, xpProperty_ButtonBehavior)) {
        case xpButtonBehaviorCheckBox: {
            intptr_t state = prop(id, xpProperty_ButtonState) ? 0 : 1;
            setProp(id, xpProperty_ButtonState, state);
            if (find(id)) dispatch(id, xpMsg_ButtonStateChanged, xpMode_UpChain, reinterpret_cast<intptr_t>(id), state);
            return 1;
        }
        case xpButtonBehaviorRadioButton:
            if (prop(id, xpProperty_ButtonState) != 1) {
                setProp(id, xpProperty_ButtonState, 1);
                if (find(id)) dispatch(id, xpMsg_ButtonStateChanged, xpMode_UpChain, reinterpret_cast<intptr_t>(id), 1);
            }
            return 1;
        default:
            setProp(id, xpProperty_Hilited, 1);
            return 1;
        }
    }
    case xpMsg_MouseDrag:
    case xpMsg_MouseUp: {
        if (prop(id, xpProperty_ButtonBehavior) != xpButtonBehaviorPushButton || !isEnabled(id)) return 1;
        bool inside = boxOf(id).contains(mouseOf(p1)->x, mouseOf(p1)->y);
        if (message == xpMsg_MouseDrag) {
            if ((prop(id, xpProperty_Hilited) != 0) != inside) setProp(id, xpProperty_Hilited, inside ? 1 : 0);
            return 1;
        }
        if (prop(id, xpProperty_Hilited)) setProp(id, xpProperty_Hilited, 0);
        // The SDK leaves param2 open; it is 0.
        if (inside && find(id))
            dispatch(id, xpMsg_PushButtonPressed, xpMode_UpChain, reinterpret_cast<intptr_t>(id), 0);
        return 1;
    }
    case xpMsg_KeyTakeFocus:
        return 0;  // buttons are clicked, not typed into
    default:
        return 0;
    }
}

int captionFunc(XPWidgetMessage message, XPWidgetID id, intptr_t, intptr_t) {
    Widget* w = find(id);
    if (!w) return 0;
    if (message == xpMsg_Create || message == xpMsg_Destroy) return 1;
    if (message != xpMsg_Draw) return 0;  // transparent to clicks
    drawLabel(w->box.left, textBaseline(w->box), w->descriptor, prop(id, xpProperty_CaptionLit) != 0);
    return 1;
}

// xpShip (4) .. xpWayPoint (23); 0 where the SDK defines no icon.
const XPElementStyle kIconElements[] = {
    xpElement_Ship, xpElement_ILSGlideScope, xpElement_MarkerLeft, xpElement_Airport, xpElement_NDB,
    xpElement_VOR, xpElement_RadioTower, xpElement_AircraftCarrier, xpElement_Fire, xpElement_MarkerRight,
    xpElement_CustomObject, xpElement_CoolingTower, xpElement_SmokeStack, xpElement_Building,
    xpElement_PowerLine, xpElement_VORWithCompassRose, 0, xpElement_OilPlatform, xpElement_OilPlatformSmall,
    xpElement_Waypoint};

int generalGraphicsFunc(XPWidgetMessage message, XPWidgetID id, intptr_t, intptr_t) {
    Widget* w = find(id);
    if (!w) return 0;
    if (message == xpMsg_Create || message == xpMsg_Destroy) return 1;
    if (message != xpMsg_Draw) return 0;
    intptr_t type = prop(id, xpProperty_GeneralGraphicsType);
    intptr_t index = type - xpShip;
    if (index < 0 || index >= static_cast<intptr_t>(std::size(kIconElements)) || !kIconElements[index]) return 1;
    XPDrawElement(w->box.left, w->box.bottom, w->box.right, w->box.top, kIconElements[index], 0);
    return 1;
}

int progressFunc(XPWidgetMessage message, XPWidgetID id, intptr_t, intptr_t) {
    Widget* w = find(id);
    if (!w) return 0;
    if (message == xpMsg_Create) {
        w->properties.emplace(xpProperty_ProgressPosition, 0);
        w->properties.emplace(xpProperty_ProgressMin, 0);
        w->properties.emplace(xpProperty_ProgressMax, 100);
        return 1;
    }
    if (message == xpMsg_Destroy) return 1;
    if (message != xpMsg_Draw) return 0;
    XPDrawTrack(w->box.left, w->box.bottom, w->box.right, w->box.top, static_cast<int>(prop(id, xpProperty_ProgressMin)),
                static_cast<int>(prop(id, xpProperty_ProgressMax)), static_cast<int>(prop(id, xpProperty_ProgressPosition)),
                xpTrack_Progress, 0);
    return 1;
}

}  // namespace

XPWidgetFunc_t classFunction(XPWidgetClass widgetClass) {
    switch (widgetClass) {
    case xpWidgetClass_MainWindow: return mainWindowFunc;
    case xpWidgetClass_SubWindow: return subWindowFunc;
    case xpWidgetClass_Button: return buttonFunc;
    case xpWidgetClass_TextField: return textFieldFunc;
    case xpWidgetClass_ScrollBar: return scrollBarFunc;
    case xpWidgetClass_Caption: return captionFunc;
    case xpWidgetClass_GeneralGraphics: return generalGraphicsFunc;
    case xpWidgetClass_Progress: return progressFunc;
    default: return nullptr;
    }
}

}  // namespace widgets
}  // namespace xpsim

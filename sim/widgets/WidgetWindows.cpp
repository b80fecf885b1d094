// Root widgets on XPLM windows: each root owns one window, and the window's callbacks
// paint the tree, route the mouse (with capture until the button is released), the
// wheel, the cursor and the keys to the widgets.

#include <vector>

#include "XPWidgets.h"
#include "driver.h"
#include "host_api.h"
#include "widget_core.h"

namespace xpsim {
namespace widgets {

namespace {

XPWidgetID gCapture = nullptr;         // the widget that took the last mouse-down
XPLMWindowID gFocusWindow = nullptr;  // our window that holds the XPLM keyboard focus

// The root whose window this is, or null when the window is stale for us.
XPWidgetID rootOf(XPLMWindowID window, void* refcon) {
    Widget* w = find(refcon);
    return w && w->window == window ? refcon : nullptr;
}

XPWidgetID topOf(XPWidgetID id) {
    Widget* w = find(id);
    while (w && find(w->parent)) {
        id = w->parent;
        w = find(id);
    }
    return w ? id : nullptr;
}

void paint(XPWidgetID id) {
    Widget* w = find(id);
    if (!w || !w->visible) return;
    // The SDK leaves open whether every child is offered xpMsg_Paint; each is, so any
    // widget can take over its own painting.
    if (dispatch(id, xpMsg_Paint, xpMode_Direct, 0, 0) || !(w = find(id))) return;
    auto clip = w->properties.find(xpProperty_Clip);
    bool clipped = clip != w->properties.end() && clip->second;
    if (clipped) {
        Rect r = exposedBox(id);
        DrawItem item;
        item.kind = "clip";
        item.x = r.left, item.y = r.top, item.right = r.right, item.bottom = r.bottom;
        item.plugin = w->owner;
        recordDraw(item);
    }
    dispatch(id, xpMsg_Draw, xpMode_Direct, 0, 0);
    if ((w = find(id))) {
        std::vector<XPWidgetID> children = w->children;
        for (XPWidgetID child : children) paint(child);
    }
    if (clipped) {
        DrawItem item;
        item.kind = "unclip";
        recordDraw(item);
    }
}

void drawWindow(XPLMWindowID window, void* refcon) {
    if (XPWidgetID root = rootOf(window, refcon)) paint(root);
}

int handleMouse(XPLMWindowID window, int x, int y, XPLMMouseStatus status, void* refcon) {
    XPWidgetID root = rootOf(window, refcon);
    XPMouseState_t state{x, y, 0, 0};
    intptr_t p1 = reinterpret_cast<intptr_t>(&state);
    if (status == xplm_MouseDown) {
        gCapture = nullptr;
        if (!root || !isShowing(root)) return 0;
        // Offered to the widget under the mouse, then to each ancestor until one takes it.
        XPWidgetID target = widgetAt(root, x, y, true, true);
        while (Widget* t = find(target)) {
            XPWidgetID parent = t->parent;
            if (dispatch(target, xpMsg_MouseDown, xpMode_Direct, p1, 0)) {
                if (find(target)) gCapture = target;
                return 1;
            }
            target = find(target) ? find(target)->parent : parent;
        }
        return 0;  // nobody wanted it: the click goes through the window
    }
    XPWidgetID capture = gCapture;
    if (status == xplm_MouseUp) gCapture = nullptr;
    if (!find(capture)) return 1;
    dispatch(capture, status == xplm_MouseUp ? xpMsg_MouseUp : xpMsg_MouseDrag, xpMode_Direct, p1, 0);
    return 1;
}

void handleKey(XPLMWindowID window, char key, XPLMKeyFlags flags, char virtualKey, void* refcon, int losingFocus) {
    if (losingFocus) {
        // `window` names the window taking the focus; the refcon is the losing root's.
        Widget* losing = find(refcon);
        if (!losing || !losing->window || losing->window != gFocusWindow) return;  // we moved it ourselves
        gFocusWindow = nullptr;
        // The SDK does not say whether the widget hears that another window took the
        // keyboard; it does, with p1 = 1 (someone else took it).
        focusTakenByOtherWindow();
        return;
    }
    XPWidgetID focus = XPGetWidgetWithFocus();
    if (!focus) return;
    XPKeyState_t state{key, flags, virtualKey};
    // A key nobody in the chain consumes goes to X-Plane. A filter may have rewritten it
    // on the way; X-Plane gets it as the user typed it.
    if (!dispatch(focus, xpMsg_KeyPress, xpMode_UpChain, reinterpret_cast<intptr_t>(&state), 0))
        hostapi::passKeyToSimulator(key, flags, virtualKey);
}

XPLMCursorStatus handleCursor(XPLMWindowID window, int x, int y, void* refcon) {
    XPWidgetID root = rootOf(window, refcon);
    XPWidgetID target = root ? widgetAt(root, x, y, true, true) : nullptr;
    XPLMCursorStatus cursor = xplm_CursorDefault;
    if (!target) return cursor;
    XPMouseState_t state{x, y, 0, 0};
    dispatch(target, xpMsg_CursorAdjust, xpMode_UpChain, reinterpret_cast<intptr_t>(&state),
             reinterpret_cast<intptr_t>(&cursor));
    return cursor;
}

int handleWheel(XPLMWindowID window, int x, int y, int wheel, int clicks, void* refcon) {
    XPWidgetID root = rootOf(window, refcon);
    XPWidgetID target = root && isShowing(root) ? widgetAt(root, x, y, true, true) : nullptr;
    if (!target) return 0;
    XPMouseState_t state{x, y, wheel, clicks};
    return dispatch(target, xpMsg_MouseWheel, xpMode_UpChain, reinterpret_cast<intptr_t>(&state), 0);
}

}  // namespace

void createRootWindow(XPWidgetID id) {
    Widget* w = find(id);
    XPLMCreateWindow_t params{};
    params.structSize = sizeof params;
    params.left = w->box.left;
    params.top = w->box.top;
    params.right = w->box.right;
    params.bottom = w->box.bottom;
    params.visible = w->visible ? 1 : 0;
    params.drawWindowFunc = drawWindow;
    params.handleMouseClickFunc = handleMouse;
    params.handleKeyFunc = handleKey;
    params.handleCursorFunc = handleCursor;
    params.handleMouseWheelFunc = handleWheel;
    params.refcon = id;
    hostapi::CallingPlugin calling(w->owner);
    XPLMWindowID window = XPLMCreateWindowEx(&params);
    if ((w = find(id))) w->window = window;
}

void destroyRootWindow(Widget& w) {
    if (!w.window) return;
    XPLMWindowID window = w.window;
    w.window = nullptr;
    if (gFocusWindow == window) gFocusWindow = nullptr;
    hostapi::CallingPlugin calling(w.owner);
    XPLMDestroyWindow(window);
}

void forgetRootWindow(Widget& w) {
    if (gFocusWindow == w.window) gFocusWindow = nullptr;
    w.window = nullptr;
}

void syncRootWindow(XPWidgetID id) {
    Widget* w = find(id);
    if (!w || !w->window) return;
    hostapi::CallingPlugin calling(w->owner);
    XPLMSetWindowGeometry(w->window, w->box.left, w->box.top, w->box.right, w->box.bottom);
    if ((w = find(id)) && w->window) XPLMSetWindowIsVisible(w->window, w->visible ? 1 : 0);
}

void takeWindowFocus(XPWidgetID id) {
    Widget* root = find(topOf(id));
    XPLMWindowID window = root && root->isRoot ? root->window : nullptr;
    if (window == gFocusWindow) return;
    if (!window) {
        // Only give the keyboard back if one of our windows holds it; another
        // plug-in's window may have it.
        gFocusWindow = nullptr;
        XPLMTakeKeyboardFocus(nullptr);
        return;
    }
    gFocusWindow = window;  // set first: the old window hears it lost focus
    hostapi::CallingPlugin calling(root->owner);
    XPLMTakeKeyboardFocus(window);
}

void forgetMouseCapture(XPWidgetID id) {
    if (!id || gCapture == id) gCapture = nullptr;
    if (!id) gFocusWindow = nullptr;
}

}  // namespace widgets
}  // namespace xpsim

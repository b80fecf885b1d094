// XPLMDisplay windows: creation and destruction, geometry, visibility, refcon,
// z-order, keyboard focus, and drawing them in the window phase.

#include "display_state.h"

namespace xpsim::display {

Window* findWindow(XPLMWindowID id, const char* function) {
    Window* w = state().windows.get(id);
    if (!w) Host::get().reportError("%s: invalid window id %p", function, id);
    return w;
}

void raiseWindow(XPLMWindowID id) { state().windows.moveToEnd(id); }

void removeWindow(XPLMWindowID id) {
    State& s = state();
    if (s.focus == id) s.focus = nullptr;
    if (s.capture == id) s.capture = nullptr;
    s.windows.remove(id);
}

void drawWindows() {
    std::vector<void*> zOrder = state().windows.order();
    for (void* id : zOrder) {
        Window* w = state().windows.get(id);  // an earlier draw callback may have destroyed it
        if (!w || !w->visible || !isPluginEnabled(w->plugin)) continue;
        CallingPlugin scope(w->plugin);
        DrawItem item;
        item.kind = "window";
        item.x = w->left;
        item.y = w->top;
        item.right = w->right;
        item.bottom = w->bottom;
        item.plugin = w->plugin;
        recordDraw(item);
        if (w->draw) w->draw(id, w->refcon);
    }
}

namespace {

// Losing-focus calls in progress. The SDK does not say what happens when windows take
// the focus back from their losing-focus calls; we let that nest this deep, then the
// last taker keeps the focus without telling the one it took it from.
int gFocusCallDepth = 0;
constexpr int kMaxFocusCallDepth = 8;

XPLMWindowID createWindow(const Window& window) {
    // New windows open in front: the end of the z-order.
    return state().windows.add(window);
}

}  // namespace
}  // namespace xpsim::display

using namespace xpsim;
using namespace xpsim::display;

XPLM_API XPLMWindowID XPLMCreateWindow(int inLeft, int inTop, int inRight, int inBottom, int inIsVisible,
                                       XPLMDrawWindow_f inDrawCallback, XPLMHandleKey_f inKeyCallback,
                                       XPLMHandleMouseClick_f inMouseCallback, void* inRefcon) {
    return createWindow(Window{Host::get().currentPlugin, inLeft, inTop, inRight, inBottom, inIsVisible != 0,
                               inDrawCallback, inKeyCallback, inMouseCallback, nullptr, nullptr, inRefcon});
}

XPLM_API XPLMWindowID XPLMCreateWindowEx(XPLMCreateWindow_t* inParams) {
    if (!inParams) {
        Host::get().reportError("XPLMCreateWindowEx: the parameters are NULL");
        return nullptr;
    }
    // A later SDK's caller passes a bigger struct that starts with the same fields;
    // a smaller one cannot have filled them all.
    if (inParams->structSize < static_cast<int>(sizeof(XPLMCreateWindow_t))) {
        Host::get().reportError("XPLMCreateWindowEx: structSize %d is smaller than %d", inParams->structSize,
                                static_cast<int>(sizeof(XPLMCreateWindow_t)));
        return nullptr;
    }
    const XPLMCreateWindow_t& p = *inParams;
    // SDK 2.x requires all five callbacks. The SDK does not say what happens without
    // one; we report it and create the window anyway, a missing callback doing nothing.
    if (!p.drawWindowFunc || !p.handleMouseClickFunc || !p.handleKeyFunc || !p.handleCursorFunc ||
        !p.handleMouseWheelFunc) {
        Host::get().reportError("XPLMCreateWindowEx: every callback must be set (a NULL callback does nothing)");
    }
    return createWindow(Window{Host::get().currentPlugin, p.left, p.top, p.right, p.bottom, p.visible != 0,
                               p.drawWindowFunc, p.handleKeyFunc, p.handleMouseClickFunc, p.handleCursorFunc,
                               p.handleMouseWheelFunc, p.refcon});
}

XPLM_API void XPLMDestroyWindow(XPLMWindowID inWindowID) {
    if (!findWindow(inWindowID, "XPLMDestroyWindow")) return;
    // The SDK does not say whether the focus removal on destroy calls the window's key
    // callback with losingFocus; we do not call a window its owner is destroying.
    removeWindow(inWindowID);
}

XPLM_API void XPLMGetWindowGeometry(XPLMWindowID inWindowID, int* outLeft, int* outTop, int* outRight,
                                    int* outBottom) {
    const Window* w = findWindow(inWindowID, "XPLMGetWindowGeometry");
    if (outLeft) *outLeft = w ? w->left : 0;
    if (outTop) *outTop = w ? w->top : 0;
    if (outRight) *outRight = w ? w->right : 0;
    if (outBottom) *outBottom = w ? w->bottom : 0;
}

XPLM_API void XPLMSetWindowGeometry(XPLMWindowID inWindowID, int inLeft, int inTop, int inRight, int inBottom) {
    Window* w = findWindow(inWindowID, "XPLMSetWindowGeometry");
    if (!w) return;
    w->left = inLeft;
    w->top = inTop;
    w->right = inRight;
    w->bottom = inBottom;
}

XPLM_API int XPLMGetWindowIsVisible(XPLMWindowID inWindowID) {
    const Window* w = findWindow(inWindowID, "XPLMGetWindowIsVisible");
    return w && w->visible ? 1 : 0;
}

XPLM_API void XPLMSetWindowIsVisible(XPLMWindowID inWindowID, int inIsVisible) {
    if (Window* w = findWindow(inWindowID, "XPLMSetWindowIsVisible")) w->visible = inIsVisible != 0;
}

XPLM_API void* XPLMGetWindowRefCon(XPLMWindowID inWindowID) {
    const Window* w = findWindow(inWindowID, "XPLMGetWindowRefCon");
    return w ? w->refcon : nullptr;
}

XPLM_API void XPLMSetWindowRefCon(XPLMWindowID inWindowID, void* inRefcon) {
    if (Window* w = findWindow(inWindowID, "XPLMSetWindowRefCon")) w->refcon = inRefcon;
}

XPLM_API void XPLMTakeKeyboardFocus(XPLMWindowID inWindow) {
    State& s = state();
    if (inWindow && !findWindow(inWindow, "XPLMTakeKeyboardFocus")) return;
    if (inWindow == s.focus) return;
    XPLMWindowID losing = s.focus;
    s.focus = inWindow;  // already moved when the losing window hears of it
    const Window* old = s.windows.get(losing);
    if (!old || !old->key || !isPluginEnabled(old->plugin)) return;
    NestingGuard nesting(gFocusCallDepth, kMaxFocusCallDepth);
    if (!nesting) {
        Host::get().reportError("XPLMTakeKeyboardFocus: windows keep taking the focus back from their losing-focus "
                                "calls; window %p keeps it",
                                inWindow);
        return;
    }
    // The 2.1 SDK only says the call happens; the later SDK documents the window id
    // argument of this call as the window taking the focus (0 for X-Plane). We follow
    // that; the refcon is the losing window's own.
    Window call = *old;
    CallingPlugin scope(call.plugin);
    call.key(inWindow, 0, 0, 0, call.refcon, 1);
}

XPLM_API void XPLMBringWindowToFront(XPLMWindowID inWindow) {
    if (findWindow(inWindow, "XPLMBringWindowToFront")) raiseWindow(inWindow);
}

XPLM_API int XPLMIsWindowInFront(XPLMWindowID inWindow) {
    if (!findWindow(inWindow, "XPLMIsWindowInFront")) return 0;
    const std::vector<void*>& zOrder = state().windows.order();
    for (auto it = zOrder.rbegin(); it != zOrder.rend(); ++it) {
        if (state().windows.get(*it)->visible) return *it == inWindow ? 1 : 0;
    }
    return 0;
}

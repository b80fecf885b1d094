// The widget library's internal model: the widget record, the validated widget table
// and message dispatch. Shared by the core API, the root windows and the standard classes.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "XPLMDisplay.h"
#include "XPWidgetDefs.h"

namespace xpsim {
namespace widgets {

constexpr int kCustomClass = -1;

struct WidgetFunc {
    XPWidgetFunc_t fn;
    int plugin;  // the plug-in that installed it; calls are attributed to it
};

struct Rect {
    int left = 0, top = 0, right = 0, bottom = 0;
    bool operator==(const Rect& o) const {
        return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
    }
    bool operator!=(const Rect& o) const { return !(*this == o); }
    bool contains(int x, int y) const { return x >= left && x <= right && y >= bottom && y <= top; }
};

struct Widget {
    Rect box;
    bool visible = false;
    bool isRoot = false;
    XPWidgetID parent = nullptr;
    std::vector<XPWidgetID> children;
    std::string descriptor;
    std::map<int, intptr_t> properties;
    std::vector<WidgetFunc> funcs;  // oldest (the class or custom function) first
    int owner = 0;
    int widgetClass = kCustomClass;
    uint64_t serial = 0;            // creation order, for listings
    XPLMWindowID window = nullptr;  // roots only
    bool dying = false;             // XPDestroyWidget is under way
    int pressedPart = 0;            // standard classes: what the mouse-down hit
};

// The live widget, or null (no error reported).
Widget* find(XPWidgetID id);
// The live widget, or null after reporting "<function>: invalid widget id" to the
// calling plug-in.
Widget* lookup(XPWidgetID id, const char* function);

// XPSendMessageToWidget without the validation of the mode.
int dispatch(XPWidgetID id, XPWidgetMessage message, XPDispatchMode mode, intptr_t p1, intptr_t p2);

// True when `ancestor` is `id` or one of its ancestors.
bool isWithin(XPWidgetID id, XPWidgetID ancestor);
// The exposed box: the widget's box clipped by every ancestor's.
Rect exposedBox(XPWidgetID id);
// Own flags of the widget and all ancestors set, and the tree rooted.
bool isShowing(XPWidgetID id);
// Deepest widget under (x, y) starting at `container`, or null.
XPWidgetID widgetAt(XPWidgetID container, int x, int y, bool recursive, bool visibleOnly);

// Every live widget, in creation order.
std::vector<XPWidgetID> allWidgets();

// Root windows (WidgetWindows.cpp).
void createRootWindow(XPWidgetID id);
void destroyRootWindow(Widget& w);
void forgetRootWindow(Widget& w);  // the window is already gone (its plug-in was unloaded)
void syncRootWindow(XPWidgetID id);  // geometry and visibility follow the root widget
void takeWindowFocus(XPWidgetID id);  // the XPLM keyboard focus for id's root, or X-Plane for null
void forgetMouseCapture(XPWidgetID id);

// Another XPLM window took the keyboard: the focused widget hears it lost focus.
void focusTakenByOtherWindow();
void writeBox(const Rect& r, int* left, int* top, int* right, int* bottom);
// Moves a widget and all its descendants, each with its own xpMsg_Reshape.
void moveSubtree(XPWidgetID id, int dx, int dy);

// Standard classes (StandardWidgets.cpp).
XPWidgetFunc_t classFunction(XPWidgetClass widgetClass);

// While the library moves a whole subtree (XPUDragWidget), layout managers that would
// move the children again stand aside.
extern int gMovingSubtree;

}  // namespace widgets
}  // namespace xpsim

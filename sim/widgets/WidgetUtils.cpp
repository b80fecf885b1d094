// XPWidgetUtils: bulk creation from a table, moving, the fixed layout manager and the
// select / defocus / drag behaviours that widget functions call.

#include "XPWidgetUtils.h"

#include <cstdio>

#include "XPWidgets.h"
#include "host_api.h"
#include "widget_core.h"

using namespace xpsim::widgets;

extern "C" {

void XPUCreateWidgets(const XPWidgetCreate_t* inWidgetDefs, int inCount, XPWidgetID inParamParent,
                      XPWidgetID* ioWidgets) {
    if (inCount <= 0) return;
    if (!inWidgetDefs || !ioWidgets) {
        xpsim::hostapi::reportError("XPUCreateWidgets: the table or the result array is null");
        return;
    }
    for (int i = 0; i < inCount; ++i) {
        const XPWidgetCreate_t& def = inWidgetDefs[i];
        XPWidgetID container = nullptr;
        if (def.containerIndex == PARAM_PARENT) {
            container = inParamParent;
        } else if (def.containerIndex >= 0) {
            // Only rows already created can be containers; the SDK leaves the others
            // undefined, we report them and create the row without a container.
            if (def.containerIndex < i) {
                container = ioWidgets[def.containerIndex];
            } else {
                char message[128];
                std::snprintf(message, sizeof message,
                              "XPUCreateWidgets: row %d names row %d as its container, which is not created yet", i,
                              def.containerIndex);
                xpsim::hostapi::reportError(message);
            }
        }
        ioWidgets[i] = XPCreateWidget(def.left, def.top, def.right, def.bottom, def.visible, def.descriptor,
                                      def.isRoot, container, def.widgetClass);
    }
}

void XPUMoveWidgetBy(XPWidgetID inWidget, int inDeltaX, int inDeltaY) {
    Widget* w = lookup(inWidget, "XPUMoveWidgetBy");
    if (!w) return;
    // The widget alone: children keep their global places unless a layout moves them.
    Rect r = w->box;
    XPSetWidgetGeometry(inWidget, r.left + inDeltaX, r.top + inDeltaY, r.right + inDeltaX, r.bottom + inDeltaY);
}

int XPUFixedLayout(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t inParam1, intptr_t inParam2) {
    // Only the widget's own reshape (a child's also bubbles up here), and not while the
    // library is already moving the whole subtree.
    if (inMessage != xpMsg_Reshape || reinterpret_cast<XPWidgetID>(inParam1) != inWidget || gMovingSubtree)
        return 0;
    const XPWidgetGeometryChange_t* change = reinterpret_cast<const XPWidgetGeometryChange_t*>(inParam2);
    Widget* w = find(inWidget);
    if (!w || !change || (change->dx == 0 && change->dy == 0)) return 0;
    // Children keep their place relative to the top-left corner. The SDK leaves the
    // result open; 0 lets the reshape go on up the chain.
    std::vector<XPWidgetID> children = w->children;
    for (XPWidgetID child : children)
        if (find(child)) moveSubtree(child, change->dx, change->dy);
    return 0;
}

int XPUSelectIfNeeded(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t, intptr_t, int inEatClick) {
    if (inMessage != xpMsg_MouseDown || !lookup(inWidget, "XPUSelectIfNeeded")) return 0;
    if (XPIsWidgetInFront(inWidget)) return 0;
    XPBringRootWidgetToFront(inWidget);
    return inEatClick ? 1 : 0;
}

int XPUDefocusKeyboard(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t, intptr_t, int inEatClick) {
    if (inMessage != xpMsg_MouseDown || !lookup(inWidget, "XPUDefocusKeyboard")) return 0;
    XPSetKeyboardFocus(nullptr);
    return inEatClick ? 1 : 0;
}

int XPUDragWidget(XPWidgetMessage inMessage, XPWidgetID inWidget, intptr_t inParam1, intptr_t, int inLeft, int inTop,
                  int inRight, int inBottom) {
    if (inMessage != xpMsg_MouseDown && inMessage != xpMsg_MouseDrag && inMessage != xpMsg_MouseUp) return 0;
    Widget* w = lookup(inWidget, "XPUDragWidget");
    if (!w || !inParam1) return 0;
    const XPMouseState_t* mouse = reinterpret_cast<const XPMouseState_t*>(inParam1);
    if (inMessage == xpMsg_MouseDown) {
        if (!IN_RECT(mouse->x, mouse->y, inLeft, inTop, inRight, inBottom)) return 0;
        // The grab point, kept relative to the widget's left/top corner.
        XPSetWidgetProperty(inWidget, xpProperty_Dragging, 1);
        XPSetWidgetProperty(inWidget, xpProperty_DragXOff, mouse->x - w->box.left);
        if ((w = find(inWidget))) XPSetWidgetProperty(inWidget, xpProperty_DragYOff, mouse->y - w->box.top);
        return 1;
    }
    if (!XPGetWidgetProperty(inWidget, xpProperty_Dragging, nullptr)) return 0;
    if (inMessage == xpMsg_MouseUp) {
        XPSetWidgetProperty(inWidget, xpProperty_Dragging, 0);
        return 1;
    }
    int dx = mouse->x - static_cast<int>(XPGetWidgetProperty(inWidget, xpProperty_DragXOff, nullptr)) - w->box.left;
    int dy = mouse->y - static_cast<int>(XPGetWidgetProperty(inWidget, xpProperty_DragYOff, nullptr)) - w->box.top;
    // The SDK does not say whether the drag carries the children; child boxes are
    // global, so the whole subtree moves together.
    if (dx || dy) moveSubtree(inWidget, dx, dy);
    return 1;
}

}  // extern "C"


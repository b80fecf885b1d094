// XPWidgets: the widget table, the tree, geometry, descriptors, properties, keyboard
// focus, subclassing and message dispatch. Root widgets get their XPLM windows from
// WidgetWindows.cpp; the standard classes live in their own files.

#include "XPWidgets.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "handles.h"
#include "host_api.h"
#include "widget_core.h"

namespace xpsim {
namespace widgets {

int gMovingSubtree = 0;

namespace {

HandleTable<Widget> gTable(HandleKind::Widget);
uint64_t gNextSerial = 1;
XPWidgetID gFocus = nullptr;
int gDispatchDepth = 0;
// Deep enough for any real form, shallow enough that a widget function that keeps
// sending itself messages ends with an error instead of a stack overflow.
constexpr int kMaxDispatchDepth = 200;

void report(const char* function, const char* what) {
    char message[256];
    std::snprintf(message, sizeof message, "%s: %s", function, what);
    hostapi::reportError(message);
}

// Calls the widget's functions newest first. `all`: do not stop at the first that
// handles it; `once`: only the newest. A function may destroy the widget or add
// functions: the list is copied first and the widget checked again before each call.
int callFunctions(XPWidgetID id, XPWidgetMessage message, intptr_t p1, intptr_t p2, bool all, bool once) {
    Widget* w = find(id);
    if (!w) return 0;
    std::vector<WidgetFunc> funcs(w->funcs.rbegin(), w->funcs.rend());
    int handled = 0;
    for (const WidgetFunc& f : funcs) {
        if (!find(id)) break;
        int result;
        {
            hostapi::CallingPlugin calling(f.plugin);
            result = f.fn(message, id, p1, p2);
        }
        if (result) {
            handled = 1;
            if (!all) break;
        }
        if (once) break;
    }
    return handled;
}

int dispatchRecursive(XPWidgetID id, XPWidgetMessage message, intptr_t p1, intptr_t p2) {
    // The SDK does not say whether a handled message stops the walk; we visit the whole
    // subtree (pre-order, children in index order) and answer whether anyone handled it.
    int handled = callFunctions(id, message, p1, p2, false, false);
    Widget* w = find(id);
    if (!w) return handled;
    std::vector<XPWidgetID> children = w->children;
    for (XPWidgetID child : children)
        if (find(child)) handled |= dispatchRecursive(child, message, p1, p2);
    return handled;
}

void collectSubtree(XPWidgetID id, std::vector<XPWidgetID>& out) {
    Widget* w = find(id);
    if (!w) return;
    out.push_back(id);
    for (XPWidgetID child : w->children) collectSubtree(child, out);
}

}  // namespace

// --- exposure bookkeeping -------------------------------------------------------------

namespace {

using ExposureSnapshot = std::vector<std::pair<XPWidgetID, Rect>>;
int gDeferExposure = 0;

ExposureSnapshot snapshotExposure(XPWidgetID id) {
    std::vector<XPWidgetID> ids;
    collectSubtree(id, ids);
    ExposureSnapshot snap;
    for (XPWidgetID w : ids) snap.emplace_back(w, exposedBox(w));
    return snap;
}

// The SDK does not say which changes send xpMsg_ExposedChanged; we send it (direct) to
// every widget whose exposed box differs after a geometry change or a re-parenting.
void notifyExposure(const ExposureSnapshot& before) {
    for (const auto& entry : before)
        if (find(entry.first) && exposedBox(entry.first) != entry.second)
            dispatch(entry.first, xpMsg_ExposedChanged, xpMode_Direct, 0, 0);
}

}  // namespace

// --- the model ------------------------------------------------------------------------

Widget* find(XPWidgetID id) { return gTable.get(id); }

Widget* lookup(XPWidgetID id, const char* function) {
    Widget* w = gTable.get(id);
    if (!w) {
        char what[64];
        std::snprintf(what, sizeof what, "invalid widget id %p", id);
        report(function, what);
    }
    return w;
}

std::vector<XPWidgetID> allWidgets() {
    std::vector<std::pair<uint64_t, XPWidgetID>> order;
    gTable.forEach([&](void* id, Widget& w) { order.emplace_back(w.serial, id); });
    std::sort(order.begin(), order.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<XPWidgetID> out;
    for (const auto& o : order) out.push_back(o.second);
    return out;
}

bool isWithin(XPWidgetID id, XPWidgetID ancestor) {
    for (Widget* w = find(id); w; w = find(id)) {
        if (id == ancestor) return true;
        id = w->parent;
    }
    return false;
}

Rect exposedBox(XPWidgetID id) {
    Widget* w = find(id);
    if (!w) return Rect{};
    Rect r = w->box;
    for (Widget* p = find(w->parent); p; p = find(p->parent)) {
        r.left = std::max(r.left, p->box.left);
        r.right = std::min(r.right, p->box.right);
        r.top = std::min(r.top, p->box.top);
        r.bottom = std::max(r.bottom, p->box.bottom);
    }
    // The SDK does not say what a widget wholly outside its parent gets; we collapse the
    // box to an empty one at its clipped left/bottom instead of returning an inverted one.
    if (r.right < r.left) r.right = r.left;
    if (r.top < r.bottom) r.top = r.bottom;
    return r;
}

bool isShowing(XPWidgetID id) {
    Widget* w = find(id);
    if (!w) return false;
    for (;;) {
        if (!w->visible) return false;
        Widget* p = find(w->parent);
        if (!p) return w->isRoot;
        w = p;
    }
}

XPWidgetID widgetAt(XPWidgetID container, int x, int y, bool recursive, bool visibleOnly) {
    Widget* c = find(container);
    if (!c || !c->box.contains(x, y) || (visibleOnly && !c->visible)) return nullptr;
    // Later children are closer to the viewer, so they win where siblings overlap.
    for (auto it = c->children.rbegin(); it != c->children.rend(); ++it) {
        Widget* child = find(*it);
        if (!child || (visibleOnly && !child->visible) || !child->box.contains(x, y)) continue;
        if (!recursive) return *it;
        XPWidgetID hit = widgetAt(*it, x, y, true, visibleOnly);
        if (hit) return hit;
    }
    return container;
}

int dispatch(XPWidgetID id, XPWidgetMessage message, XPDispatchMode mode, intptr_t p1, intptr_t p2) {
    if (!find(id)) return 0;
    if (gDispatchDepth >= kMaxDispatchDepth) {
        report("XPSendMessageToWidget", "messages nested too deeply (a widget function keeps sending messages); message dropped");
        return 0;
    }
    ++gDispatchDepth;
    int handled = 0;
    switch (mode) {
    case xpMode_Direct: handled = callFunctions(id, message, p1, p2, false, false); break;
    case xpMode_DirectAllCallbacks: handled = callFunctions(id, message, p1, p2, true, false); break;
    case xpMode_Once: handled = callFunctions(id, message, p1, p2, false, true); break;
    case xpMode_Recursive: handled = dispatchRecursive(id, message, p1, p2); break;
    case xpMode_UpChain: {
        XPWidgetID current = id;
        while (current) {
            Widget* w = find(current);
            if (!w) break;
            XPWidgetID parent = w->parent;
            if (callFunctions(current, message, p1, p2, false, false)) {
                handled = 1;
                break;
            }
            // A function may have re-parented or destroyed the widget on the way.
            Widget* after = find(current);
            current = after ? after->parent : (find(parent) ? parent : nullptr);
        }
        break;
    }
    default: break;
    }
    --gDispatchDepth;
    return handled;
}

// --- focus ----------------------------------------------------------------------------

namespace {

// Focus goes back to X-Plane; the holder hears it with `p1` (0: removed by code,
// 1: taken by someone else).
void dropFocus(intptr_t p1, bool releaseWindow) {
    XPWidgetID old = gFocus;
    if (!old) return;
    gFocus = nullptr;
    if (releaseWindow) takeWindowFocus(nullptr);
    dispatch(old, xpMsg_KeyLoseFocus, xpMode_Direct, p1, 0);
}

}  // namespace

void focusTakenByOtherWindow() { dropFocus(1, false); }

// --- creation and destruction -----------------------------------------------------------

namespace {

void attach(XPWidgetID id, XPWidgetID container) {
    Widget* w = find(id);
    XPWidgetID old = w->parent;
    ExposureSnapshot before = snapshotExposure(id);
    if (Widget* o = find(old)) o->children.erase(std::remove(o->children.begin(), o->children.end(), id), o->children.end());
    if (Widget* c = find(container)) c->children.push_back(id);
    w->parent = container;
    if (old == container) return;
    // The SDK does not give the order; we tell the old parent, then the child, then the
    // new parent.
    if (old) dispatch(old, xpMsg_LoseChild, xpMode_Direct, reinterpret_cast<intptr_t>(id), 0);
    dispatch(id, xpMsg_AcceptParent, xpMode_Direct, reinterpret_cast<intptr_t>(container), 0);
    if (container) dispatch(container, xpMsg_AcceptChild, xpMode_Direct, reinterpret_cast<intptr_t>(id), 0);
    notifyExposure(before);
}

XPWidgetID create(const char* function, int left, int top, int right, int bottom, int visible,
                  const char* descriptor, int isRoot, XPWidgetID container, XPWidgetFunc_t fn, int widgetClass) {
    if (container) {
        Widget* c = lookup(container, function);
        if (!c) return nullptr;
        if (c->dying) {
            report(function, "the container is being destroyed");
            return nullptr;
        }
        if (isRoot) {
            // A root never has a parent; the container is dropped, the root still made.
            report(function, "a root widget cannot have a container; container ignored");
            container = nullptr;
        }
    }
    Widget w;
    w.box = Rect{left, top, right, bottom};
    w.visible = visible != 0;
    w.isRoot = isRoot != 0;
    w.descriptor = descriptor ? descriptor : "";
    w.owner = hostapi::currentPlugin();
    w.funcs.push_back(WidgetFunc{fn, w.owner});
    w.widgetClass = widgetClass;
    w.serial = gNextSerial++;
    XPWidgetID id = gTable.add(std::move(w));
    if (isRoot) createRootWindow(id);
    if (container) {
        find(container)->children.push_back(id);
        find(id)->parent = container;
    }
    dispatch(id, xpMsg_Create, xpMode_Direct, 0, 0);
    // Creation inside a container tells both sides, as placing it there would.
    if (container && find(id) && find(container)) {
        dispatch(id, xpMsg_AcceptParent, xpMode_Direct, reinterpret_cast<intptr_t>(container), 0);
        dispatch(container, xpMsg_AcceptChild, xpMode_Direct, reinterpret_cast<intptr_t>(id), 0);
    }
    return find(id) ? id : nullptr;
}

void destroy(XPWidgetID id, bool recursive, intptr_t p1) {
    Widget* w = find(id);
    if (!w || w->dying) return;
    w->dying = true;
    // The SDK does not say where focus goes when its holder dies; it returns to X-Plane,
    // and the holder hears xpMsg_KeyLoseFocus before its xpMsg_Destroy.
    if (gFocus == id) dropFocus(0, true);
    std::vector<XPWidgetID> children = find(id)->children;
    for (XPWidgetID child : children) {
        if (!find(child)) continue;
        if (recursive)
            destroy(child, true, 1);
        else
            attach(child, nullptr);
    }
    dispatch(id, xpMsg_Destroy, xpMode_DirectAllCallbacks, p1, 0);
    w = find(id);
    if (Widget* parent = find(w->parent)) {
        parent->children.erase(std::remove(parent->children.begin(), parent->children.end(), id), parent->children.end());
        if (!parent->dying) dispatch(w->parent, xpMsg_LoseChild, xpMode_Direct, reinterpret_cast<intptr_t>(id), 0);
    }
    w = find(id);
    for (XPWidgetID child : w->children)  // placed here while it was dying: left floating
        if (Widget* c = find(child)) c->parent = nullptr;
    if (gFocus == id) gFocus = nullptr;
    forgetMouseCapture(id);
    if (w->isRoot) destroyRootWindow(*w);
    gTable.remove(id);
}

void forgetPlugin(int plugin) {
    // The plug-in's code is gone: its widgets vanish without messages, and functions it
    // added to other plug-ins' widgets are dropped.
    std::vector<XPWidgetID> ids = allWidgets();
    for (XPWidgetID id : ids) {
        Widget* w = find(id);
        auto& f = w->funcs;
        f.erase(std::remove_if(f.begin() + 1, f.end(), [&](const WidgetFunc& wf) { return wf.plugin == plugin; }), f.end());
    }
    for (XPWidgetID id : ids) {
        Widget* w = find(id);
        if (!w || w->owner != plugin) continue;
        for (XPWidgetID child : w->children)
            if (Widget* c = find(child)) c->parent = nullptr;
        if (Widget* p = find(w->parent))
            p->children.erase(std::remove(p->children.begin(), p->children.end(), id), p->children.end());
        if (gFocus == id) gFocus = nullptr;
        forgetMouseCapture(id);
        forgetRootWindow(*w);  // the window belongs to the plug-in too and goes with it
        gTable.remove(id);
    }
}

void resetAll() {
    gTable.clear();
    gFocus = nullptr;
    gNextSerial = 1;
    gDispatchDepth = 0;
    gMovingSubtree = 0;
    gDeferExposure = 0;
    forgetMouseCapture(nullptr);
}

struct RegisterHooks {
    RegisterHooks() {
        hostapi::LibraryHooks hooks;
        hooks.forgetPlugin = forgetPlugin;
        hooks.reset = resetAll;
        hostapi::addLibraryHooks(hooks);
    }
} gRegisterHooks;

void setGeometry(XPWidgetID id, const Rect& box) {
    Widget* w = find(id);
    if (w->box == box) return;
    ExposureSnapshot before;
    if (!gDeferExposure) before = snapshotExposure(id);
    Rect old = w->box;
    w->box = box;
    if (w->isRoot) syncRootWindow(id);
    // The SDK does not say which edge dx/dy follow when the size changes too; we report
    // the moves of the left and top edges (widgets hang from their top-left corner).
    XPWidgetGeometryChange_t change{box.left - old.left, box.top - old.top,
                                    (box.right - box.left) - (old.right - old.left),
                                    (box.top - box.bottom) - (old.top - old.bottom)};
    dispatch(id, xpMsg_Reshape, xpMode_UpChain, reinterpret_cast<intptr_t>(id), reinterpret_cast<intptr_t>(&change));
    if (!gDeferExposure) notifyExposure(before);
}

}  // namespace

// The geometry getters' out pointers, each of which may be null.
void writeBox(const Rect& r, int* left, int* top, int* right, int* bottom) {
    if (left) *left = r.left;
    if (top) *top = r.top;
    if (right) *right = r.right;
    if (bottom) *bottom = r.bottom;
}

void moveSubtree(XPWidgetID id, int dx, int dy) {
    ExposureSnapshot before = snapshotExposure(id);
    std::vector<XPWidgetID> ids;
    collectSubtree(id, ids);
    ++gMovingSubtree;
    ++gDeferExposure;
    for (XPWidgetID w : ids) {
        Widget* widget = find(w);
        if (!widget) continue;
        Rect r = widget->box;
        setGeometry(w, Rect{r.left + dx, r.top + dy, r.right + dx, r.bottom + dy});
    }
    --gDeferExposure;
    --gMovingSubtree;
    notifyExposure(before);
}

}  // namespace widgets
}  // namespace xpsim

using namespace xpsim::widgets;

extern "C" {

XPWidgetID XPCreateWidget(int inLeft, int inTop, int inRight, int inBottom, int inVisible,
                          const char* inDescriptor, int inIsRoot, XPWidgetID inContainer, XPWidgetClass inClass) {
    XPWidgetFunc_t fn = classFunction(inClass);
    if (!fn) {
        char what[64];
        std::snprintf(what, sizeof what, "unknown widget class %d", inClass);
        report("XPCreateWidget", what);
        return nullptr;
    }
    return create("XPCreateWidget", inLeft, inTop, inRight, inBottom, inVisible, inDescriptor, inIsRoot,
                  inContainer, fn, inClass);
}

XPWidgetID XPCreateCustomWidget(int inLeft, int inTop, int inRight, int inBottom, int inVisible,
                                const char* inDescriptor, int inIsRoot, XPWidgetID inContainer,
                                XPWidgetFunc_t inCallback) {
    if (!inCallback) {
        report("XPCreateCustomWidget", "the widget function is null");
        return nullptr;
    }
    return create("XPCreateCustomWidget", inLeft, inTop, inRight, inBottom, inVisible, inDescriptor, inIsRoot,
                  inContainer, inCallback, kCustomClass);
}

void XPDestroyWidget(XPWidgetID inWidget, int inDestroyChildren) {
    if (!lookup(inWidget, "XPDestroyWidget")) return;
    destroy(inWidget, inDestroyChildren != 0, 0);
}

int XPSendMessageToWidget(XPWidgetID inWidget, XPWidgetMessage inMessage, XPDispatchMode inMode,
                          intptr_t inParam1, intptr_t inParam2) {
    if (!lookup(inWidget, "XPSendMessageToWidget")) return 0;
    if (inMode < xpMode_Direct || inMode > xpMode_Once) {
        char what[64];
        std::snprintf(what, sizeof what, "unknown dispatch mode %d", inMode);
        report("XPSendMessageToWidget", what);
        return 0;
    }
    return dispatch(inWidget, inMessage, inMode, inParam1, inParam2);
}

void XPPlaceWidgetWithin(XPWidgetID inSubWidget, XPWidgetID inContainer) {
    Widget* w = lookup(inSubWidget, "XPPlaceWidgetWithin");
    if (!w) return;
    if (w->isRoot) {
        report("XPPlaceWidgetWithin", "a root widget cannot be placed in a container");
        return;
    }
    if (inContainer) {
        Widget* c = lookup(inContainer, "XPPlaceWidgetWithin");
        if (!c) return;
        if (c->dying) {
            report("XPPlaceWidgetWithin", "the container is being destroyed");
            return;
        }
        if (isWithin(inContainer, inSubWidget)) {
            report("XPPlaceWidgetWithin", "a widget cannot be placed within itself or its own descendant");
            return;
        }
    }
    attach(inSubWidget, inContainer);
}

int XPCountChildWidgets(XPWidgetID inWidget) {
    Widget* w = lookup(inWidget, "XPCountChildWidgets");
    return w ? static_cast<int>(w->children.size()) : 0;
}

XPWidgetID XPGetNthChildWidget(XPWidgetID inWidget, int inIndex) {
    Widget* w = lookup(inWidget, "XPGetNthChildWidget");
    if (!w || inIndex < 0 || inIndex >= static_cast<int>(w->children.size())) return nullptr;
    return w->children[inIndex];
}

XPWidgetID XPGetParentWidget(XPWidgetID inWidget) {
    Widget* w = lookup(inWidget, "XPGetParentWidget");
    return w ? w->parent : nullptr;
}

void XPShowWidget(XPWidgetID inWidget) {
    Widget* w = lookup(inWidget, "XPShowWidget");
    // The SDK sends xpMsg_Shown when the widget's own flag is turned on; showing a shown
    // widget turns nothing on, so it sends nothing.
    if (!w || w->visible) return;
    w->visible = true;
    if (w->isRoot) syncRootWindow(inWidget);
    dispatch(inWidget, xpMsg_Shown, xpMode_UpChain, reinterpret_cast<intptr_t>(inWidget), 0);
}

void XPHideWidget(XPWidgetID inWidget) {
    Widget* w = lookup(inWidget, "XPHideWidget");
    if (!w || !w->visible) return;
    w->visible = false;
    if (w->isRoot) syncRootWindow(inWidget);
    // The SDK does not say what happens to the focus of a widget that can no longer be
    // seen; it returns to X-Plane, so keys never go to a hidden field.
    if (gFocus && isWithin(gFocus, inWidget)) dropFocus(0, true);
    dispatch(inWidget, xpMsg_Hidden, xpMode_UpChain, reinterpret_cast<intptr_t>(inWidget), 0);
}

int XPIsWidgetVisible(XPWidgetID inWidget) {
    if (!lookup(inWidget, "XPIsWidgetVisible")) return 0;
    // The SDK does not say what a shown widget outside any rooted tree answers; it is
    // never drawn, so it answers 0.
    return isShowing(inWidget) ? 1 : 0;
}

XPWidgetID XPFindRootWidget(XPWidgetID inWidget) {
    Widget* w = lookup(inWidget, "XPFindRootWidget");
    if (!w) return nullptr;
    XPWidgetID id = inWidget;
    while (w->parent && find(w->parent)) {
        id = w->parent;
        w = find(id);
    }
    return w->isRoot ? id : nullptr;
}

void XPBringRootWidgetToFront(XPWidgetID inWidget) {
    if (!lookup(inWidget, "XPBringRootWidgetToFront")) return;
    XPWidgetID root = XPFindRootWidget(inWidget);
    Widget* r = find(root);
    if (!r || !r->window) return;
    xpsim::hostapi::CallingPlugin calling(r->owner);
    XPLMBringWindowToFront(r->window);
}

int XPIsWidgetInFront(XPWidgetID inWidget) {
    if (!lookup(inWidget, "XPIsWidgetInFront")) return 0;
    Widget* r = find(XPFindRootWidget(inWidget));
    if (!r || !r->window) return 0;
    xpsim::hostapi::CallingPlugin calling(r->owner);
    return XPLMIsWindowInFront(r->window) ? 1 : 0;
}

void XPGetWidgetGeometry(XPWidgetID inWidget, int* outLeft, int* outTop, int* outRight, int* outBottom) {
    Widget* w = lookup(inWidget, "XPGetWidgetGeometry");
    writeBox(w ? w->box : Rect{}, outLeft, outTop, outRight, outBottom);
}

void XPSetWidgetGeometry(XPWidgetID inWidget, int inLeft, int inTop, int inRight, int inBottom) {
    if (!lookup(inWidget, "XPSetWidgetGeometry")) return;
    setGeometry(inWidget, Rect{inLeft, inTop, inRight, inBottom});
}

XPWidgetID XPGetWidgetForLocation(XPWidgetID inContainer, int inXOffset, int inYOffset, int inRecursive,
                                  int inVisibleOnly) {
    if (!lookup(inContainer, "XPGetWidgetForLocation")) return nullptr;
    return widgetAt(inContainer, inXOffset, inYOffset, inRecursive != 0, inVisibleOnly != 0);
}

void XPGetWidgetExposedGeometry(XPWidgetID inWidgetID, int* outLeft, int* outTop, int* outRight, int* outBottom) {
    Rect r = lookup(inWidgetID, "XPGetWidgetExposedGeometry") ? exposedBox(inWidgetID) : Rect{};
    writeBox(r, outLeft, outTop, outRight, outBottom);
}

void XPSetWidgetDescriptor(XPWidgetID inWidget, const char* inDescriptor) {
    Widget* w = lookup(inWidget, "XPSetWidgetDescriptor");
    if (!w) return;
    w->descriptor = inDescriptor ? inDescriptor : "";
    // The SDK does not say whether setting the same text notifies; every set does.
    dispatch(inWidget, xpMsg_DescriptorChanged, xpMode_Direct, 0, 0);
}

int XPGetWidgetDescriptor(XPWidgetID inWidget, char* outDescriptor, int inMaxDescLength) {
    Widget* w = lookup(inWidget, "XPGetWidgetDescriptor");
    if (!w) {
        if (outDescriptor && inMaxDescLength > 0) outDescriptor[0] = 0;
        return 0;
    }
    int length = static_cast<int>(w->descriptor.size());
    if (outDescriptor && inMaxDescLength > 0)
        std::strncpy(outDescriptor, w->descriptor.c_str(), static_cast<size_t>(inMaxDescLength));
    return length;
}

void XPSetWidgetProperty(XPWidgetID inWidget, XPWidgetPropertyID inProperty, intptr_t inValue) {
    Widget* w = lookup(inWidget, "XPSetWidgetProperty");
    if (!w) return;
    w->properties[inProperty] = inValue;
    // The SDK does not say whether setting an unchanged value notifies; every set does.
    dispatch(inWidget, xpMsg_PropertyChanged, xpMode_Direct, inProperty, inValue);
}

intptr_t XPGetWidgetProperty(XPWidgetID inWidget, XPWidgetPropertyID inProperty, int* inExists) {
    Widget* w = lookup(inWidget, "XPGetWidgetProperty");
    auto it = w ? w->properties.find(inProperty) : std::map<int, intptr_t>::iterator{};
    bool exists = w && it != w->properties.end();
    if (inExists) *inExists = exists ? 1 : 0;
    return exists ? it->second : 0;
}

XPWidgetID XPSetKeyboardFocus(XPWidgetID inWidget) {
    if (!inWidget) {
        dropFocus(0, true);
        return nullptr;
    }
    if (!lookup(inWidget, "XPSetKeyboardFocus")) return nullptr;
    // The SDK does not say whether asking for the current holder sends anything; nothing.
    if (gFocus == inWidget) return inWidget;
    // The SDK leaves the answer to a refusal open; we keep the current holder and answer
    // 0, which is what the SDK's own tab-order helper expects of a refusal.
    if (!dispatch(inWidget, xpMsg_KeyTakeFocus, xpMode_Direct, 0, 0) || !find(inWidget)) return nullptr;
    XPWidgetID old = gFocus;
    gFocus = inWidget;
    takeWindowFocus(inWidget);
    if (old && old != inWidget) dispatch(old, xpMsg_KeyLoseFocus, xpMode_Direct, 1, 0);
    return gFocus;
}

void XPLoseKeyboardFocus(XPWidgetID inWidget) {
    Widget* w = lookup(inWidget, "XPLoseKeyboardFocus");
    if (!w || gFocus != inWidget) return;
    XPWidgetID ancestor = w->parent;
    gFocus = nullptr;
    dispatch(inWidget, xpMsg_KeyLoseFocus, xpMode_Direct, 0, 0);
    if (gFocus) return;  // the loser already gave it to someone
    // Offered up the chain until someone takes it; nobody: X-Plane gets the keys.
    while (Widget* a = find(ancestor)) {
        XPWidgetID next = a->parent;
        if (dispatch(ancestor, xpMsg_KeyTakeFocus, xpMode_Direct, 1, 0) && find(ancestor)) {
            gFocus = ancestor;
            takeWindowFocus(ancestor);
            return;
        }
        ancestor = find(ancestor) ? find(ancestor)->parent : next;
    }
    takeWindowFocus(nullptr);
}

XPWidgetID XPGetWidgetWithFocus(void) { return gFocus; }

void XPAddWidgetCallback(XPWidgetID inWidget, XPWidgetFunc_t inNewCallback) {
    Widget* w = lookup(inWidget, "XPAddWidgetCallback");
    if (!w) return;
    if (!inNewCallback) {
        report("XPAddWidgetCallback", "the widget function is null");
        return;
    }
    int plugin = xpsim::hostapi::currentPlugin();
    w->funcs.push_back(WidgetFunc{inNewCallback, plugin});
    xpsim::hostapi::CallingPlugin calling(plugin);
    inNewCallback(xpMsg_Create, inWidget, 1, 0);
}

XPWidgetFunc_t XPGetWidgetClassFunc(XPWidgetClass inWidgetClass) {
    XPWidgetFunc_t fn = classFunction(inWidgetClass);
    if (!fn) {
        char what[64];
        std::snprintf(what, sizeof what, "unknown widget class %d", inWidgetClass);
        report("XPGetWidgetClassFunc", what);
    }
    return fn;
}

}  // extern "C"

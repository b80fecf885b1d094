// The standard scroll bar and slider: arrows step by one, the track beside the thumb
// pages, the thumb drags; every change by the user is reported up the chain.

#include <algorithm>
#include <cmath>

#include "class_helpers.h"

namespace xpsim {
namespace widgets {

namespace {

enum Part { kNone, kDownButton, kPageDown, kThumb, kPageUp, kUpButton };

struct Layout {
    int vertical = 0, downButton = 0, downPage = 0, thumb = 0, upPage = 0, upButton = 0;
};

XPTrackStyle trackStyle(XPWidgetID id) {
    return prop(id, xpProperty_ScrollBarType) == xpScrollBarTypeSlider ? xpTrack_Slider : xpTrack_ScrollBar;
}

Layout layoutOf(XPWidgetID id) {
    Rect r = boxOf(id);
    Layout l;
    XPGetTrackMetrics(r.left, r.bottom, r.right, r.top, static_cast<int>(prop(id, xpProperty_ScrollBarMin)),
                      static_cast<int>(prop(id, xpProperty_ScrollBarMax)),
                      static_cast<int>(prop(id, xpProperty_ScrollBarSliderPosition)), trackStyle(id), &l.vertical,
                      &l.downButton, &l.downPage, &l.thumb, &l.upPage, &l.upButton);
    return l;
}

// Distance of the mouse from the track's minimum end (left, or bottom when vertical).
int along(XPWidgetID id, const Layout& l, const XPMouseState_t& mouse) {
    Rect r = boxOf(id);
    return l.vertical ? mouse.y - r.bottom : mouse.x - r.left;
}

void setPosition(XPWidgetID id, intptr_t value) {
    intptr_t lo = prop(id, xpProperty_ScrollBarMin), hi = prop(id, xpProperty_ScrollBarMax);
    if (lo > hi) std::swap(lo, hi);
    value = std::max(lo, std::min(hi, value));
    if (value == prop(id, xpProperty_ScrollBarSliderPosition)) return;
    setProp(id, xpProperty_ScrollBarSliderPosition, value);
    // The SDK leaves param2 open; it is 0.
    if (find(id))
        dispatch(id, xpMsg_ScrollBarSliderPositionChanged, xpMode_UpChain, reinterpret_cast<intptr_t>(id), 0);
}

void step(XPWidgetID id, intptr_t delta) {
    setPosition(id, prop(id, xpProperty_ScrollBarSliderPosition) + delta);
}

}  // namespace

int scrollBarFunc(XPWidgetMessage message, XPWidgetID id, intptr_t p1, intptr_t) {
    Widget* w = find(id);
    if (!w) return 0;
    switch (message) {
    case xpMsg_Create:
        // The SDK gives no defaults; a 0..100 range paged by 10.
        w->properties.emplace(xpProperty_ScrollBarSliderPosition, 0);
        w->properties.emplace(xpProperty_ScrollBarMin, 0);
        w->properties.emplace(xpProperty_ScrollBarMax, 100);
        w->properties.emplace(xpProperty_ScrollBarPageAmount, 10);
        w->properties.emplace(xpProperty_ScrollBarType, xpScrollBarTypeScrollBar);
        w->properties.emplace(xpProperty_ScrollBarSlop, 0);
        w->properties.emplace(xpProperty_Enabled, 1);
        return 1;
    case xpMsg_Destroy:
        return 1;
    case xpMsg_Draw:
        XPDrawTrack(w->box.left, w->box.bottom, w->box.right, w->box.top,
                    static_cast<int>(prop(id, xpProperty_ScrollBarMin)), static_cast<int>(prop(id, xpProperty_ScrollBarMax)),
                    static_cast<int>(prop(id, xpProperty_ScrollBarSliderPosition)), trackStyle(id),
                    w->pressedPart == kThumb ? 1 : 0);
        return 1;
    case xpMsg_MouseDown: {
        if (!isEnabled(id)) return 1;
        Layout l = layoutOf(id);
        int a = along(id, l, *mouseOf(p1));
        intptr_t page = prop(id, xpProperty_ScrollBarPageAmount);
        int edge = l.downButton;
        Part part = kUpButton;
        if (a < edge) part = kDownButton;
        else if (a < (edge += l.downPage)) part = kPageDown;
        else if (a < (edge += l.thumb)) part = kThumb;
        else if (a < edge + l.upPage) part = kPageUp;
        w->pressedPart = part;
        switch (part) {
        case kDownButton: step(id, -1); break;
        case kPageDown: step(id, -page); break;
        case kPageUp: step(id, page); break;
        case kUpButton: step(id, 1); break;
        default: setProp(id, xpProperty_ScrollBarSlop, a - (l.downButton + l.downPage)); break;
        }
        return 1;
    }
    case xpMsg_MouseDrag: {
        if (w->pressedPart != kThumb) return 1;
        Layout l = layoutOf(id);
        int travel = l.downPage + l.upPage;
        if (travel <= 0) return 1;
        int thumbStart = along(id, l, *mouseOf(p1)) - static_cast<int>(prop(id, xpProperty_ScrollBarSlop)) - l.downButton;
        intptr_t lo = prop(id, xpProperty_ScrollBarMin), hi = prop(id, xpProperty_ScrollBarMax);
        double fraction = std::max(0.0, std::min(1.0, double(thumbStart) / travel));
        setPosition(id, lo + static_cast<intptr_t>(std::lround(fraction * double(hi - lo))));
        return 1;
    }
    case xpMsg_MouseUp:
        w->pressedPart = kNone;
        return 1;
    case xpMsg_MouseWheel:
        // The SDK does not say whether the wheel moves a scroll bar; it does, one step a click.
        if (!isEnabled(id)) return 1;
        step(id, mouseOf(p1)->delta);
        return 1;
    default:
        return 0;
    }
}

}  // namespace widgets
}  // namespace xpsim

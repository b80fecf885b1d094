// Small helpers the standard widget classes share: property access, geometry of the
// widget being handled, and text drawing in the standard look.
#pragma once

#include <string>

#include "XPLMGraphics.h"
#include "driver.h"
#include "XPStandardWidgets.h"
#include "XPUIGraphics.h"
#include "XPWidgetUtils.h"
#include "XPWidgets.h"
#include "widget_core.h"

namespace xpsim {
namespace widgets {

inline intptr_t prop(XPWidgetID id, int property, intptr_t fallback = 0) {
    Widget* w = find(id);
    if (!w) return fallback;
    auto it = w->properties.find(property);
    return it == w->properties.end() ? fallback : it->second;
}

// Standard controls act unless their xpProperty_Enabled was set to 0.
inline bool isEnabled(XPWidgetID id) { return prop(id, xpProperty_Enabled, 1) != 0; }

// Sets a property the way a plug-in would, so xpMsg_PropertyChanged reaches the widget.
inline void setProp(XPWidgetID id, int property, intptr_t value) { XPSetWidgetProperty(id, property, value); }

inline Rect boxOf(XPWidgetID id) {
    Widget* w = find(id);
    return w ? w->box : Rect{};
}

inline const XPMouseState_t* mouseOf(intptr_t p1) { return reinterpret_cast<const XPMouseState_t*>(p1); }

// Text in the standard look: dark on metal, or light ("lit") on dark screens.
inline void drawLabel(int x, int y, const std::string& text, bool lit, int font = xplmFont_Basic) {
    static float dark[3] = {0.0f, 0.0f, 0.0f};
    static float light[3] = {0.9f, 0.9f, 0.9f};
    std::string copy = text;
    XPLMDrawString(lit ? light : dark, x, y, &copy[0], nullptr, font);
}

// Baseline for text vertically centred in a box, in the basic font.
inline int textBaseline(const Rect& r) {
    int charHeight = 0;
    XPLMGetFontDimensions(xplmFont_Basic, nullptr, &charHeight, nullptr);
    return (r.top + r.bottom) / 2 - charHeight / 2 + 2;
}

int textFieldFunc(XPWidgetMessage, XPWidgetID, intptr_t, intptr_t);  // TextField.cpp
int scrollBarFunc(XPWidgetMessage, XPWidgetID, intptr_t, intptr_t);  // ScrollBar.cpp

}  // namespace widgets
}  // namespace xpsim

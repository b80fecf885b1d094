// The widget tree as text, for scenarios and tests: classes, descriptors, geometry,
// visibility, focus and properties, with the standard properties by name.

#include "widget_driver.h"

#include <cstdio>

#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "widget_core.h"

namespace xpsim {
namespace widgets {

namespace {

const char* className(int widgetClass) {
    static const char* const kNames[] = {"None",   "MainWindow", "SubWindow",       "Button",  "TextField",
                                         "ScrollBar", "Caption", "GeneralGraphics", "Progress"};
    if (widgetClass >= 0 && widgetClass < static_cast<int>(sizeof kNames / sizeof kNames[0])) return kNames[widgetClass];
    return "Custom";
}

struct PropertyName {
    int widgetClass;  // -1: any class
    int id;
    const char* name;
};

// 1200 is both the main window's close-box flag and the sub window's type: the class decides.
const PropertyName kPropertyNames[] = {
    {-1, xpProperty_Refcon, "Refcon"},
    {-1, xpProperty_Dragging, "Dragging"},
    {-1, xpProperty_DragXOff, "DragXOff"},
    {-1, xpProperty_DragYOff, "DragYOff"},
    {-1, xpProperty_Hilited, "Hilited"},
    {-1, xpProperty_Object, "Object"},
    {-1, xpProperty_Clip, "Clip"},
    {-1, xpProperty_Enabled, "Enabled"},
    {xpWidgetClass_MainWindow, xpProperty_MainWindowType, "MainWindowType"},
    {xpWidgetClass_MainWindow, xpProperty_MainWindowHasCloseBoxes, "MainWindowHasCloseBoxes"},
    {xpWidgetClass_SubWindow, xpProperty_SubWindowType, "SubWindowType"},
    {xpWidgetClass_Button, xpProperty_ButtonType, "ButtonType"},
    {xpWidgetClass_Button, xpProperty_ButtonBehavior, "ButtonBehavior"},
    {xpWidgetClass_Button, xpProperty_ButtonState, "ButtonState"},
    {xpWidgetClass_TextField, xpProperty_EditFieldSelStart, "EditFieldSelStart"},
    {xpWidgetClass_TextField, xpProperty_EditFieldSelEnd, "EditFieldSelEnd"},
    {xpWidgetClass_TextField, xpProperty_EditFieldSelDragStart, "EditFieldSelDragStart"},
    {xpWidgetClass_TextField, xpProperty_TextFieldType, "TextFieldType"},
    {xpWidgetClass_TextField, xpProperty_PasswordMode, "PasswordMode"},
    {xpWidgetClass_TextField, xpProperty_MaxCharacters, "MaxCharacters"},
    {xpWidgetClass_TextField, xpProperty_ScrollPosition, "ScrollPosition"},
    {xpWidgetClass_TextField, xpProperty_Font, "Font"},
    {xpWidgetClass_TextField, xpProperty_ActiveEditSide, "ActiveEditSide"},
    {xpWidgetClass_ScrollBar, xpProperty_ScrollBarSliderPosition, "ScrollBarSliderPosition"},
    {xpWidgetClass_ScrollBar, xpProperty_ScrollBarMin, "ScrollBarMin"},
    {xpWidgetClass_ScrollBar, xpProperty_ScrollBarMax, "ScrollBarMax"},
    {xpWidgetClass_ScrollBar, xpProperty_ScrollBarPageAmount, "ScrollBarPageAmount"},
    {xpWidgetClass_ScrollBar, xpProperty_ScrollBarType, "ScrollBarType"},
    {xpWidgetClass_ScrollBar, xpProperty_ScrollBarSlop, "ScrollBarSlop"},
    {xpWidgetClass_Caption, xpProperty_CaptionLit, "CaptionLit"},
    {xpWidgetClass_GeneralGraphics, xpProperty_GeneralGraphicsType, "GeneralGraphicsType"},
    {xpWidgetClass_Progress, xpProperty_ProgressPosition, "ProgressPosition"},
    {xpWidgetClass_Progress, xpProperty_ProgressMin, "ProgressMin"},
    {xpWidgetClass_Progress, xpProperty_ProgressMax, "ProgressMax"},
};

std::string propertyName(int widgetClass, int id) {
    for (const PropertyName& p : kPropertyNames)
        if (p.id == id && (p.widgetClass == -1 || p.widgetClass == widgetClass)) return p.name;
    return std::to_string(id);
}

void describe(XPWidgetID id, int depth, std::vector<std::string>& lines) {
    Widget* w = find(id);
    if (!w) return;
    // What the user would see: a password field's text stays hidden in the listing too.
    std::string text = w->descriptor;
    auto password = w->properties.find(xpProperty_PasswordMode);
    if (w->widgetClass == xpWidgetClass_TextField && password != w->properties.end() && password->second)
        text.assign(text.size(), '*');
    char head[160];
    std::snprintf(head, sizeof head, " (%d,%d,%d,%d) %s%s%s%s owner=%d", w->box.left, w->box.top, w->box.right,
                  w->box.bottom, w->visible ? "shown" : "hidden", w->visible && !isShowing(id) ? " unseen" : "",
                  w->isRoot ? " root" : "", XPGetWidgetWithFocus() == id ? " focus" : "", w->owner);
    std::string line = std::string(2 * depth, ' ') + className(w->widgetClass) + " \"" + text + "\"" + head;
    if (!w->properties.empty()) {
        line += " {";
        bool first = true;
        for (const auto& p : w->properties) {
            line += (first ? "" : ", ") + propertyName(w->widgetClass, p.first) + "=" + std::to_string(p.second);
            first = false;
        }
        line += "}";
    }
    lines.push_back(line);
    std::vector<XPWidgetID> children = w->children;
    for (XPWidgetID child : children) describe(child, depth + 1, lines);
}

}  // namespace

std::vector<std::string> widgetTree() {
    std::vector<std::string> lines;
    for (XPWidgetID id : allWidgets()) {
        Widget* w = find(id);
        if (w && !w->parent) describe(id, 0, lines);
    }
    return lines;
}

}  // namespace widgets
}  // namespace xpsim

// The list box widget function, its item operations, and the interface colours.
// The OpenGL calls are immediate mode into whatever context the simulator has current;
// with none (a host that does not render) libGL's dispatch makes them no-ops.

#include "ui/ListBox.h"

#include <GL/gl.h>

#include <algorithm>
#include <vector>

#include "XPLMDataAccess.h"
#include "XPLMGraphics.h"
#include "XPUIGraphics.h"
#include "XPWidgetUtils.h"
#include "XPWidgets.h"
#include "ui/Layout.h"

namespace vorlith {

namespace {

constexpr int kScrollBarWidth = 20;
constexpr int kLineHeight = 12;
constexpr std::size_t kDescriptorSize = 65536;
constexpr std::size_t kDrawBuffer = 512;

int ScrollBarSlop = 0;  // shared by every list box, as the grab is: one mouse
float gAlphaLevel = 1.0f;

std::string Bounded(const char* text) {
    std::string item = text ? text : "";
    if (item.size() > kVL_ListBoxItemText - 1) item.resize(kVL_ListBoxItemText - 1);
    return item;
}

void DropOldest(VL_ListBoxData_t* data) {
    while (data->items.size() > kVL_ListBoxMaxItems) {
        data->items.pop_front();
        data->lefts.pop_front();
        data->rights.pop_front();
    }
}

std::string Descriptor(XPWidgetID widget, std::size_t size) {
    std::vector<char> buffer(size, '\0');
    XPGetWidgetDescriptor(widget, buffer.data(), static_cast<int>(size - 1));
    buffer[size - 1] = '\0';
    return std::string(buffer.data());
}

intptr_t Property(XPWidgetID widget, int property) { return XPGetWidgetProperty(widget, property, nullptr); }

int Count(const VL_ListBoxData_t* data) { return data ? static_cast<int>(data->items.size()) : 0; }

// The widget's state as the function reads it for every message.
struct ListBox {
    XPWidgetID widget;
    int left = 0, top = 0, right = 0, bottom = 0;
    VL_ScrollState scroll;
    int currentItem = 0;
    int linesThatFit = 0;
    VL_ListBoxData_t* data = nullptr;

    explicit ListBox(XPWidgetID id) : widget(id) {
        XPGetWidgetGeometry(widget, &left, &top, &right, &bottom);
        scroll.position = static_cast<int>(Property(widget, VL_ListBoxProperty_ScrollPosition));
        scroll.minimum = static_cast<int>(Property(widget, VL_ListBoxProperty_ScrollMinimum));
        scroll.maximum = static_cast<int>(Property(widget, VL_ListBoxProperty_ScrollMaximum));
        scroll.pageAmount = static_cast<int>(Property(widget, VL_ListBoxProperty_PageAmount));
        scroll.dragging = static_cast<int>(Property(widget, VL_ListBoxProperty_Dragging));
        scroll.slop = ScrollBarSlop;
        currentItem = static_cast<int>(Property(widget, VL_ListBoxProperty_CurrentItem));
        linesThatFit = static_cast<int>(Property(widget, VL_ListBoxProperty_LinesThatFit));
        data = reinterpret_cast<VL_ListBoxData_t*>(Property(widget, VL_ListBoxProperty_Data));
    }
    int listRight() const { return right - kScrollBarWidth; }
    int width() const { return right - left - kScrollBarWidth; }
    bool inList(int x, int y) const { return x >= left && x <= listRight() && y >= bottom && y <= top; }
    bool inScrollBar(int x, int y) const { return x >= listRight() && x <= right && y >= bottom && y <= top; }
    VL_TrackMetrics metrics() const {
        VL_TrackMetrics m;
        XPGetTrackMetrics(listRight(), bottom, right, top, scroll.minimum, scroll.maximum, scroll.position,
                          xpTrack_ScrollBar, &m.isVertical, &m.downButton, &m.downPage, &m.thumb, &m.upPage,
                          &m.upButton);
        return m;
    }
    // After an add, fill or clear the list shows its first item on the top line.
    void showFromFirst() const {
        XPSetWidgetProperty(widget, VL_ListBoxProperty_ScrollPosition, Count(data));
        XPSetWidgetProperty(widget, VL_ListBoxProperty_ScrollMaximum, Count(data));
    }
};

// A trigger property that is set: cleared before it acts, so that acting may set it again.
bool Take(XPWidgetID widget, int property) {
    if (Property(widget, property) == 0) return false;
    XPSetWidgetProperty(widget, property, 0);
    return true;
}

int OnCreate(ListBox& box) {
    auto* data = new VL_ListBoxData_t;
    VL_ListBoxFillWithData(data, Descriptor(box.widget, kDescriptorSize).c_str(), box.width());
    XPSetWidgetProperty(box.widget, VL_ListBoxProperty_Data, reinterpret_cast<intptr_t>(data));
    XPSetWidgetProperty(box.widget, VL_ListBoxProperty_CurrentItem, 0);
    ScrollBarSlop = 0;
    XPSetWidgetProperty(box.widget, VL_ListBoxProperty_ScrollPosition, Count(data));
    XPSetWidgetProperty(box.widget, VL_ListBoxProperty_ScrollMinimum, 0);
    XPSetWidgetProperty(box.widget, VL_ListBoxProperty_ScrollMaximum, Count(data));
    int lines = (box.top - box.bottom) / kLineHeight;
    XPSetWidgetProperty(box.widget, VL_ListBoxProperty_PageAmount, lines);
    XPSetWidgetProperty(box.widget, VL_ListBoxProperty_LinesThatFit, lines);
    XPSetWidgetProperty(box.widget, VL_ListBoxProperty_Dragging, 0);
    return 1;
}

void FillRect(int left, int top, int right, int bottom) {
    glBegin(GL_QUADS);
    glVertex2i(left, top);
    glVertex2i(right, top);
    glVertex2i(right, bottom);
    glVertex2i(left, bottom);
    glEnd();
}

int OnDraw(const ListBox& box) {
    XPDrawWindow(box.left, box.bottom, box.listRight(), box.top, xpWindow_ListView);
    XPDrawTrack(box.listRight(), box.bottom, box.right, box.top, box.scroll.minimum, box.scroll.maximum,
                box.scroll.position, xpTrack_ScrollBar, box.scroll.dragging);
    XPLMSetGraphicsState(0, 1, 0, 0, 1, 0, 0);
    XPLMBindTexture2d(XPLMGetTexture(xplm_Tex_GeneralInterface), 0);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    XPLMSetGraphicsState(0, 0, 0, 0, 0, 0, 0);

    int charWidth = 0, charHeight = 0;
    XPLMGetFontDimensions(xplmFont_Basic, &charWidth, &charHeight, nullptr);
    const int count = Count(box.data);
    int i = box.scroll.maximum - box.scroll.position;
    for (int row = 0, offset = 0; row < box.linesThatFit; ++row, offset += kLineHeight) {
        if (i >= count) continue;
        if (i < 0) {  // a position above the maximum: nothing to show on this line
            ++i;
            continue;
        }
        const int rowTop = box.top - offset;
        if (i == box.currentItem) {
            SetAlphaLevels(0.25f);
            XPLMSetGraphicsState(0, 0, 0, 0, 1, 0, 0);
            SetupAmbientColor(2, nullptr);
            SetAlphaLevels(1.0f);
            FillRect(box.left, rowTop, box.listRight(), rowTop - kLineHeight);
        }
        float colour[3];
        SetupAmbientColor(10, colour);
        char text[kDrawBuffer];
        std::size_t fits = charWidth > 0 ? static_cast<std::size_t>(std::max(0, box.width() / charWidth)) : 0;
        const std::string& item = box.data->items[static_cast<std::size_t>(i)];
        std::size_t length = std::min({item.size(), fits, kDrawBuffer - 1});
        item.copy(text, length);
        text[length] = '\0';
        XPLMDrawString(colour, box.left, rowTop - 10, text, nullptr, xplmFont_Basic);
        ++i;
    }
    return 1;
}

int OnMouseDown(ListBox& box, const XPMouseState_t* mouse) {
    const int x = mouse->x, y = mouse->y;
    const int count = Count(box.data);
    if (box.inList(x, y) && count > 0) {
        // Only row j can hold the offset; the row's own hit area decides.
        const int offset = box.top - y;
        const int j = offset / kLineHeight;
        if (offset >= 0 && j < count && box.data->lefts[static_cast<std::size_t>(j)] <= x - box.left &&
            x - box.left < box.data->rights[static_cast<std::size_t>(j)]) {
            int index = box.scroll.maximum - box.scroll.position + j;
            if (index >= 0 && index < count) XPSetWidgetProperty(box.widget, VL_ListBoxProperty_CurrentItem, index);
        }
    }
    if (x < box.listRight() || !box.inScrollBar(x, y)) return 1;

    VL_TrackMetrics m = box.metrics();
    VL_ScrollState scroll = box.scroll;
    if (m.isVertical)
        VL_ScrollClick(scroll, m, box.bottom, box.top, y);
    else
        VL_ScrollClick(scroll, m, box.listRight(), box.right, x);
    ScrollBarSlop = scroll.slop;
    XPSetWidgetProperty(box.widget, VL_ListBoxProperty_Dragging, scroll.dragging);
    XPSetWidgetProperty(box.widget, VL_ListBoxProperty_ScrollPosition, scroll.position);
    return 1;
}

int OnMouseDrag(const ListBox& box, const XPMouseState_t* mouse) {
    if (!box.inScrollBar(mouse->x, mouse->y) || !box.scroll.dragging) return 1;
    VL_TrackMetrics m = box.metrics();
    int position = m.isVertical ? VL_ScrollDragPosition(box.scroll, m, box.bottom, box.top, mouse->y)
                                : VL_ScrollDragPosition(box.scroll, m, box.listRight(), box.right, mouse->x);
    XPSetWidgetProperty(box.widget, VL_ListBoxProperty_ScrollPosition, position);
    return 1;
}

int OnMouseUp(const ListBox& box, const XPMouseState_t* mouse) {
    // A release away from the bar leaves the thumb grabbed until one over it.
    if (box.inScrollBar(mouse->x, mouse->y)) XPSetWidgetProperty(box.widget, VL_ListBoxProperty_Dragging, 0);
    const int count = Count(box.data);
    if (box.inList(mouse->x, mouse->y) && count > 0) {
        int current = box.currentItem;
        bool valid = current >= 0 && current < count;
        XPSetWidgetDescriptor(box.widget, valid ? box.data->items[static_cast<std::size_t>(current)].c_str() : "");
        XPSendMessageToWidget(box.widget, VL_Message_ListBoxItemChosen, xpMode_UpChain,
                              reinterpret_cast<intptr_t>(box.widget), current);
    }
    return 1;
}

int OnPropertyChanged(ListBox& box) {
    if (!box.data) return 1;
    const XPWidgetID widget = box.widget;
    if (Take(widget, VL_ListBoxProperty_AddItem)) {
        VL_ListBoxAddItem(box.data, Descriptor(widget, kDescriptorSize).c_str(), box.width());
        box.showFromFirst();
    }
    if (Take(widget, VL_ListBoxProperty_Fill)) {
        VL_ListBoxClear(box.data);
        VL_ListBoxFillWithData(box.data, Descriptor(widget, kDescriptorSize).c_str(), box.width());
        box.showFromFirst();
    }
    if (Take(widget, VL_ListBoxProperty_Clear)) {
        XPSetWidgetProperty(widget, VL_ListBoxProperty_CurrentItem, 0);
        VL_ListBoxClear(box.data);
        box.showFromFirst();
    }
    if (Take(widget, VL_ListBoxProperty_InsertItem)) {
        int current = static_cast<int>(Property(widget, VL_ListBoxProperty_CurrentItem));
        VL_ListBoxInsertItem(box.data, Descriptor(widget, kDescriptorSize).c_str(), box.width(), current);
    }
    if (Take(widget, VL_ListBoxProperty_DeleteItem)) {
        int current = static_cast<int>(Property(widget, VL_ListBoxProperty_CurrentItem));
        if (Count(box.data) > 0 && current >= 0 && current < Count(box.data)) VL_ListBoxDeleteItem(box.data, current);
    }
    return 1;
}

const char* const kColourDataRefs[12] = {
    "sim/graphics/colors/menu_dark_rgb",       "sim/graphics/colors/menu_bkgnd_rgb",
    "sim/graphics/colors/menu_hilite_rgb",     "sim/graphics/colors/menu_lite_rgb",
    "sim/graphics/colors/menu_text_rgb",       "sim/graphics/colors/menu_text_disabled_rgb",
    "sim/graphics/colors/subtitle_text_rgb",   "sim/graphics/colors/tab_front_rgb",
    "sim/graphics/colors/tab_back_rgb",        "sim/graphics/colors/caption_text_rgb",
    "sim/graphics/colors/list_text_rgb",       "sim/graphics/colors/glass_text_rgb",
};
const float kFallBackColours[12][3] = {
    {0.12890625f, 0.16015625f, 0.171875f}, {0.20703125f, 0.25f, 0.265625f},
    {0.25390625f, 0.32421875f, 0.34765625f}, {0.25390625f, 0.32421875f, 0.34765625f},
    {0.8f, 0.8f, 0.8f}, {0.4f, 0.4f, 0.4f}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0},
};

}  // namespace

XPWidgetID VL_CreateListBox(int left, int top, int right, int bottom, int visible, const char* text,
                            XPWidgetID container) {
    return XPCreateCustomWidget(left, top, right, bottom, visible, text, 0, container, VL_ListBoxProc);
}

void VL_ListBoxAddItem(VL_ListBoxData_t* data, const char* text, int width) {
    data->items.push_back(Bounded(text));
    data->lefts.push_back(0);
    data->rights.push_back(width);
    DropOldest(data);
}

void VL_ListBoxInsertItem(VL_ListBoxData_t* data, const char* text, int width, int index) {
    // An index outside the list appends (the SDK's arrays would be written past their end).
    std::size_t at = index >= 0 && static_cast<std::size_t>(index) <= data->items.size()
                         ? static_cast<std::size_t>(index)
                         : data->items.size();
    data->items.insert(data->items.begin() + static_cast<long>(at), Bounded(text));
    data->lefts.insert(data->lefts.begin() + static_cast<long>(at), 0);
    data->rights.insert(data->rights.begin() + static_cast<long>(at), width);
    DropOldest(data);
}

void VL_ListBoxDeleteItem(VL_ListBoxData_t* data, int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= data->items.size()) return;
    data->items.erase(data->items.begin() + index);
    data->lefts.erase(data->lefts.begin() + index);
    data->rights.erase(data->rights.begin() + index);
}

void VL_ListBoxClear(VL_ListBoxData_t* data) {
    data->items.clear();
    data->lefts.clear();
    data->rights.clear();
}

void VL_ListBoxFillWithData(VL_ListBoxData_t* data, const char* text, int width) {
    for (const std::string& piece : VL_SplitItems(text)) VL_ListBoxAddItem(data, piece.c_str(), width);
}

int VL_ListBoxProc(XPWidgetMessage message, XPWidgetID widget, intptr_t param1, intptr_t param2) {
    if (XPUSelectIfNeeded(message, widget, param1, param2, 1)) return 1;
    ListBox box(widget);
    const auto* mouse = reinterpret_cast<const XPMouseState_t*>(param1);
    switch (message) {
    case xpMsg_Create: return OnCreate(box);
    case xpMsg_Draw: return box.data ? OnDraw(box) : 1;
    case xpMsg_MouseDown: return mouse ? OnMouseDown(box, mouse) : 1;
    case xpMsg_MouseDrag: return mouse ? OnMouseDrag(box, mouse) : 1;
    case xpMsg_MouseUp: return mouse ? OnMouseUp(box, mouse) : 1;
    case xpMsg_DescriptorChanged: return 1;  // the items change only through the triggers
    case xpMsg_PropertyChanged: return OnPropertyChanged(box);
    case xpMsg_Destroy:
        // Nothing reads the data after the widget is gone: freed here so that reopened
        // windows do not pile up lists; the message still counts as unhandled.
        delete box.data;
        return 0;
    default: return 0;
    }
}

void SetAlphaLevels(float alpha) { gAlphaLevel = alpha; }

void SetupAmbientColor(int index, float* out) {
    static XPLMDataRef colours[12] = {nullptr};
    static XPLMDataRef lightLevels[3] = {nullptr};
    static bool coloursFound = false, lightFound = false;
    if (index < 0 || index >= 12) index = 0;
    if (!coloursFound) {
        for (int i = 0; i < 12; ++i) colours[i] = XPLMFindDataRef(kColourDataRefs[i]);
        coloursFound = true;
    }
    float colour[4] = {0, 0, 0, gAlphaLevel};
    if (colours[index]) {
        XPLMGetDatavf(colours[index], colour, 0, 3);
    } else {
        if (!lightFound) {
            lightLevels[0] = XPLMFindDataRef("sim/graphics/misc/cockpit_light_level_r");
            lightLevels[1] = XPLMFindDataRef("sim/graphics/misc/cockpit_light_level_g");
            lightLevels[2] = XPLMFindDataRef("sim/graphics/misc/cockpit_light_level_b");
            lightFound = true;
        }
        // A simulator without the light levels gets the colours unscaled.
        for (int c = 0; c < 3; ++c)
            colour[c] = kFallBackColours[index][c] * (lightLevels[c] ? XPLMGetDataf(lightLevels[c]) : 1.0f);
    }
    if (out) {
        std::copy(colour, colour + 3, out);
        return;
    }
    colour[3] = gAlphaLevel;
    glColor4fv(colour);
}

}  // namespace vorlith

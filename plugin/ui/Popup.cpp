// The popup button's widget function and the popup menu's window: layout from
// ui/Layout, drawing with the UI graphics and OpenGL, the choice on mouse-up.

#include "ui/Popup.h"

#include <GL/gl.h>

#include <algorithm>
#include <string>
#include <vector>

#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMUtilities.h"
#include "XPUIGraphics.h"
#include "XPWidgetUtils.h"
#include "XPWidgets.h"
#include "ui/Layout.h"
#include "ui/ListBox.h"

namespace vorlith {

namespace {

constexpr std::size_t kDescriptorSize = 4096;

struct VL_PopupMenu_t {
    XPLMWindowID window = nullptr;
    VL_PopupLayout layout;
    VL_PopupChoice_f callback = nullptr;
    void* refcon = nullptr;
};

// The one open menu: it takes every click, so there is never a second.
VL_PopupMenu_t* gOpenMenu = nullptr;

int SimulatorVersion() {
    int xplane = 0, xplm = 0;
    XPLMHostApplicationID host;
    XPLMGetVersions(&xplane, &xplm, &host);
    return xplane;
}

void Line(int x1, int y1, int x2, int y2) {
    glBegin(GL_LINES);
    glVertex2i(x1, y1);
    glVertex2i(x2, y2);
    glEnd();
}

void DrawText(const std::string& text, int x, int y, float* colour, XPLMFontID font) {
    std::vector<char> buffer(text.begin(), text.end());
    buffer.push_back('\0');
    XPLMDrawString(colour, x, y, buffer.data(), nullptr, font);
}

void VL_PopupDrawWindowCB(XPLMWindowID, void* refcon) {
    auto* menu = static_cast<VL_PopupMenu_t*>(refcon);
    if (menu != gOpenMenu) return;
    static const int version = SimulatorVersion();
    const VL_PopupLayout& layout = menu->layout;
    int mouseX = 0, mouseY = 0;
    XPLMGetMouseLocation(&mouseX, &mouseY);
    const int hovered = VL_PopupItemAt(layout, mouseX, mouseY);
    XPLMSetGraphicsState(0, 0, 0, 0, 0, 0, 0);

    for (int start : layout.columnStarts) {
        SetupAmbientColor(0, nullptr);
        Line(layout.left + start - 1, layout.top, layout.left + start - 1, layout.bottom);
        SetupAmbientColor(3, nullptr);
        Line(layout.left + start, layout.top, layout.left + start, layout.bottom);
    }
    for (std::size_t i = 0; i < layout.items.size(); ++i) {
        const VL_PopupItem& item = layout.items[i];
        const int left = layout.left + item.left, right = layout.left + item.right;
        const int top = layout.top + item.top, bottom = layout.top + item.bottom;
        const bool lit = static_cast<int>(i) == hovered && item.enabled;
        XPDrawElement(left, bottom, right, top, lit ? xpElement_PushButtonLit : xpElement_PushButton, 0);
        if (item.separator) {
            SetupAmbientColor(3, nullptr);
            Line(left, top - 1, right, top - 1);
            SetupAmbientColor(0, nullptr);
            Line(left, top, right, top);
            continue;
        }
        if (lit) {
            SetAlphaLevels(0.25f);
            SetupAmbientColor(2, nullptr);
            SetAlphaLevels(1.0f);
            glBegin(GL_QUADS);
            glVertex2i(left, top);
            glVertex2i(right, top);
            glVertex2i(right, bottom);
            glVertex2i(left, bottom);
            glEnd();
        }
        float colour[3];
        SetupAmbientColor(item.enabled ? 4 : 5, colour);
        DrawText(item.text, left + 18, bottom + (version > 9399 ? 5 : 2), colour, xplmFont_Menus);
    }
}

void VL_PopupHandleKeyCB(XPLMWindowID, char, XPLMKeyFlags, char, void*, int) {}

void FreeMenu(VL_PopupMenu_t* menu) {
    if (menu == gOpenMenu) gOpenMenu = nullptr;
    XPLMDestroyWindow(menu->window);
    delete menu;
}

int VL_PopupHandleMouseClickCB(XPLMWindowID, int x, int y, XPLMMouseStatus status, void* refcon) {
    auto* menu = static_cast<VL_PopupMenu_t*>(refcon);
    if (status != xplm_MouseUp || menu != gOpenMenu) return 1;
    int item = VL_PopupItemAt(menu->layout, x, y);
    if (item >= 0 && !menu->layout.items[static_cast<std::size_t>(item)].enabled) item = -1;
    VL_PopupChoice_f callback = menu->callback;
    void* callbackRefcon = menu->refcon;
    // Gone before the callback runs, which may open the next menu.
    FreeMenu(menu);
    if (callback) callback(item, callbackRefcon);
    return 1;
}

void VL_PopupWidgetProc(int item, void* refcon) {
    auto widget = static_cast<XPWidgetID>(refcon);
    if (item == -1) return;
    XPSetWidgetProperty(widget, VL_PopupProperty_CurrentItem, item);
    XPSendMessageToWidget(widget, VL_Message_PopupItemChosen, xpMode_UpChain, reinterpret_cast<intptr_t>(widget),
                          item);
}

std::string Descriptor(XPWidgetID widget) {
    char text[kDescriptorSize] = {0};
    XPGetWidgetDescriptor(widget, text, static_cast<int>(kDescriptorSize - 1));
    text[kDescriptorSize - 1] = '\0';
    return text;
}

// Where the current item's text lies in the descriptor: skip `current` items.
void LocateCurrentItem(XPWidgetID widget, int current) {
    std::string items = Descriptor(widget);
    std::size_t start = 0;
    for (int k = 0; k < current && start < items.size(); ++k) {
        std::size_t separator = items.find(';', start);
        start = separator == std::string::npos ? items.size() : separator + 1;
    }
    std::size_t end = std::min(items.find(';', start), items.size());
    XPSetWidgetProperty(widget, VL_PopupProperty_ItemStart, static_cast<intptr_t>(start));
    XPSetWidgetProperty(widget, VL_PopupProperty_ItemLength, static_cast<intptr_t>(end - start));
    XPSetWidgetProperty(widget, xpProperty_Enabled, 1);
}

int DrawButton(XPWidgetID widget, int left, int top, int right, int bottom) {
    static int version = 0, charWidth = 0;
    if (version == 0) {
        version = SimulatorVersion();
        XPLMGetFontDimensions(xplmFont_Basic, &charWidth, nullptr, nullptr);
    }
    int charHeight = 0;
    XPLMGetFontDimensions(xplmFont_Basic, nullptr, &charHeight, nullptr);
    const int mid = (top + bottom) / 2;
    if (version < 700)
        XPDrawElement(left + 2, bottom, right - 2, top, xpElement_WindowDragBarSmooth, 0);
    else
        XPDrawElement(left - 4, mid - 13, right + 4, mid + 13, xpElement_PushButton, 0);

    std::string items = Descriptor(widget);
    std::size_t start = static_cast<std::size_t>(std::max<intptr_t>(0, XPGetWidgetProperty(widget, VL_PopupProperty_ItemStart, nullptr)));
    std::size_t length = static_cast<std::size_t>(std::max<intptr_t>(0, XPGetWidgetProperty(widget, VL_PopupProperty_ItemLength, nullptr)));
    std::string text = start < items.size() ? items.substr(start, length) : std::string();
    std::size_t fits = charWidth > 0 ? static_cast<std::size_t>(std::max(0, (right - left - 24) / charWidth)) : 0;
    if (text.size() > fits) text.resize(fits);
    if (!text.empty() && text[0] == '(') text.erase(0, 1);
    float colour[3];
    SetupAmbientColor(XPGetWidgetProperty(widget, xpProperty_Enabled, nullptr) ? 4 : 5, colour);
    DrawText(text, left + 4, mid - charHeight / 2 + 2, colour, xplmFont_Basic);
    return 1;
}

}  // namespace

XPWidgetID VL_CreatePopup(int left, int top, int right, int bottom, int visible, const char* items,
                          XPWidgetID container) {
    return XPCreateCustomWidget(left, top, right, bottom, visible, items, 0, container, VL_PopupButtonProc);
}

void XPPickPopup(int left, int top, const char* items, int current, VL_PopupChoice_f callback, void* refcon) {
    VL_ClosePopupMenu();
    int charWidth = 0;
    XPLMGetFontDimensions(xplmFont_Menus, &charWidth, nullptr, nullptr);
    auto* menu = new VL_PopupMenu_t;
    menu->layout = VL_LayOutPopup(items, current, charWidth, left, top);
    menu->callback = callback;
    menu->refcon = refcon;
    gOpenMenu = menu;
    menu->window = XPLMCreateWindow(0, 768, 1024, 0, 1, VL_PopupDrawWindowCB, VL_PopupHandleKeyCB,
                                    VL_PopupHandleMouseClickCB, menu);
}

void VL_ClosePopupMenu() {
    if (gOpenMenu) FreeMenu(gOpenMenu);
}

int VL_PopupButtonProc(XPWidgetMessage message, XPWidgetID widget, intptr_t param1, intptr_t param2) {
    if (XPUSelectIfNeeded(message, widget, param1, param2, 1)) return 1;
    int left = 0, top = 0, right = 0, bottom = 0;
    XPGetWidgetGeometry(widget, &left, &top, &right, &bottom);
    const int current = static_cast<int>(XPGetWidgetProperty(widget, VL_PopupProperty_CurrentItem, nullptr));
    switch (message) {
    case xpMsg_PropertyChanged:
        if (param1 != VL_PopupProperty_CurrentItem) return 0;
        [[fallthrough]];
    case xpMsg_Create:
    case xpMsg_DescriptorChanged: LocateCurrentItem(widget, current); return 1;
    case xpMsg_Draw: return DrawButton(widget, left, top, right, bottom);
    case xpMsg_MouseDown:
        if (!XPGetWidgetProperty(widget, xpProperty_Enabled, nullptr)) return 0;
        XPPickPopup(left, top, Descriptor(widget).c_str(), current, VL_PopupWidgetProc, widget);
        return 1;
    default: return 0;
    }
}

}  // namespace vorlith

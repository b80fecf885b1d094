// Drawing of the widget library's artwork. X-Plane draws these from its own textures;
// we draw a consistent flat style that keeps every part the mouse handling measures
// (track parts from XPGetTrackMetrics, close boxes, check boxes) where it is.

#include "ui_artwork.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "XPLMGraphics.h"
#include "XPUIGraphics.h"
#include "text.h"

namespace xpsim::render {

namespace {

// The palette.
const Colour kMetal{0.75f, 0.77f, 0.79f};
const Colour kTitle{0.58f, 0.65f, 0.75f};
const Colour kPanel{0.67f, 0.69f, 0.72f};
const Colour kScreen{0.10f, 0.16f, 0.13f};
const Colour kHelp{0.16f, 0.20f, 0.28f};
const Colour kList{0.96f, 0.96f, 0.94f};
const Colour kButton{0.87f, 0.88f, 0.89f};
const Colour kLitBlue{0.45f, 0.65f, 0.95f};
const Colour kField{1.0f, 1.0f, 1.0f};
const Colour kTrough{0.55f, 0.57f, 0.60f};
const Colour kFill{0.20f, 0.50f, 0.90f};
const Colour kInk{0.10f, 0.10f, 0.12f};
const Colour kLight{1.0f, 1.0f, 1.0f, 0.85f};
const Colour kShade{0.0f, 0.0f, 0.0f, 0.45f};
const Colour kBorder{0.22f, 0.23f, 0.26f};

void colour(const Colour& c) { glColor4f(c.r, c.g, c.b, c.a); }

Box boxOf(const DrawItem& item) { return Box{item.x, item.bottom, item.right, item.y}; }

// Lines are drawn as one-pixel fills, so they land on whole pixels in any driver.
void outline(const Box& b, const Colour& c) {
    fillBox({b.left, b.bottom, b.right, b.bottom + 1}, c);
    fillBox({b.left, b.top - 1, b.right, b.top}, c);
    fillBox({b.left, b.bottom, b.left + 1, b.top}, c);
    fillBox({b.right - 1, b.bottom, b.right, b.top}, c);
}

// Light from the top left: raised parts have a light top/left edge, sunken ones a dark.
void bevel(const Box& b, bool raised) {
    const Colour& topLeft = raised ? kLight : kShade;
    const Colour& bottomRight = raised ? kShade : kLight;
    fillBox({b.left, b.top - 1, b.right, b.top}, topLeft);
    fillBox({b.left, b.bottom, b.left + 1, b.top}, topLeft);
    fillBox({b.left, b.bottom, b.right, b.bottom + 1}, bottomRight);
    fillBox({b.right - 1, b.bottom, b.right, b.top}, bottomRight);
}

void panel(const Box& b, const Colour& c, bool raised) {
    fillBox(b, c);
    bevel(b, raised);
}

Box inset(const Box& b, int by) { return Box{b.left + by, b.bottom + by, b.right - by, b.top - by}; }

// A triangle pointing up, down, left or right, centred in the box.
void arrow(const Box& b, char direction, const Colour& c) {
    float cx = (b.left + b.right) / 2.0f, cy = (b.bottom + b.top) / 2.0f;
    float s = std::max(2.0f, std::min(b.right - b.left, b.top - b.bottom) * 0.3f);
    colour(c);
    glBegin(GL_TRIANGLES);
    switch (direction) {
    case 'u': glVertex2f(cx - s, cy - s / 2), glVertex2f(cx + s, cy - s / 2), glVertex2f(cx, cy + s / 2); break;
    case 'd': glVertex2f(cx - s, cy + s / 2), glVertex2f(cx, cy - s / 2), glVertex2f(cx + s, cy + s / 2); break;
    case 'l': glVertex2f(cx + s / 2, cy - s), glVertex2f(cx + s / 2, cy + s), glVertex2f(cx - s / 2, cy); break;
    default: glVertex2f(cx - s / 2, cy - s), glVertex2f(cx + s / 2, cy), glVertex2f(cx - s / 2, cy + s); break;
    }
    glEnd();
}

void disc(float cx, float cy, float radius, const Colour& c) {
    colour(c);
    glBegin(GL_TRIANGLE_FAN);
    glVertex2f(cx, cy);
    for (int i = 0; i <= 32; ++i) {
        double a = i * 2 * M_PI / 32;
        glVertex2f(cx + radius * static_cast<float>(std::cos(a)), cy + radius * static_cast<float>(std::sin(a)));
    }
    glEnd();
}

void cross(const Box& b, const Colour& c) {
    colour(c);
    glLineWidth(2.0f);
    glBegin(GL_LINES);
    glVertex2f(b.left + 3.5f, b.bottom + 3.5f), glVertex2f(b.right - 3.5f, b.top - 3.5f);
    glVertex2f(b.left + 3.5f, b.top - 3.5f), glVertex2f(b.right - 3.5f, b.bottom + 3.5f);
    glEnd();
}

void check(const Box& b, const Colour& c) {
    float w = static_cast<float>(b.right - b.left), h = static_cast<float>(b.top - b.bottom);
    colour(c);
    glLineWidth(2.0f);
    glBegin(GL_LINE_STRIP);
    glVertex2f(b.left + w * 0.22f, b.bottom + h * 0.52f);
    glVertex2f(b.left + w * 0.42f, b.bottom + h * 0.28f);
    glVertex2f(b.left + w * 0.80f, b.bottom + h * 0.78f);
    glEnd();
}

// Map and scenery symbols: a marker disc with a short label.
struct Symbol {
    int style;
    const char* label;
    Colour colour;
};
const Symbol kSymbols[] = {
    {xpElement_OilPlatform, "OIL", {0.55f, 0.45f, 0.30f}},    {xpElement_OilPlatformSmall, "oil", {0.55f, 0.45f, 0.30f}},
    {xpElement_Ship, "SHP", {0.30f, 0.45f, 0.70f}},           {xpElement_ILSGlideScope, "ILS", {0.30f, 0.60f, 0.35f}},
    {xpElement_MarkerLeft, "<", {0.35f, 0.35f, 0.75f}},       {xpElement_Airport, "APT", {0.20f, 0.40f, 0.80f}},
    {xpElement_Waypoint, "WPT", {0.45f, 0.30f, 0.65f}},       {xpElement_NDB, "NDB", {0.65f, 0.35f, 0.55f}},
    {xpElement_VOR, "VOR", {0.20f, 0.55f, 0.55f}},            {xpElement_RadioTower, "TWR", {0.70f, 0.30f, 0.25f}},
    {xpElement_AircraftCarrier, "CV", {0.35f, 0.40f, 0.50f}}, {xpElement_Fire, "FIR", {0.90f, 0.35f, 0.10f}},
    {xpElement_MarkerRight, ">", {0.35f, 0.35f, 0.75f}},      {xpElement_CustomObject, "OBJ", {0.50f, 0.50f, 0.50f}},
    {xpElement_CoolingTower, "CT", {0.55f, 0.55f, 0.60f}},    {xpElement_SmokeStack, "SS", {0.45f, 0.40f, 0.40f}},
    {xpElement_Building, "BLD", {0.60f, 0.50f, 0.40f}},       {xpElement_PowerLine, "PWR", {0.70f, 0.60f, 0.15f}},
    {xpElement_VORWithCompassRose, "VOR", {0.20f, 0.55f, 0.55f}},
};

void symbol(const Box& b, const Symbol& s, TextPainter& text) {
    float cx = (b.left + b.right) / 2.0f, cy = (b.bottom + b.top) / 2.0f;
    float radius = std::min(b.right - b.left, b.top - b.bottom) / 2.0f;
    if (s.style == xpElement_VORWithCompassRose) {
        disc(cx, cy, radius, kInk);
        disc(cx, cy, radius - 1.5f, kList);
    }
    disc(cx, cy, radius * (s.style == xpElement_VORWithCompassRose ? 0.55f : 1.0f), s.colour);
    static const float kWhite[3] = {1, 1, 1};
    float width = XPLMMeasureString(xplmFont_Basic, s.label, static_cast<int>(std::strlen(s.label)));
    text.draw(s.label, static_cast<int>(std::lround(cx - width / 2)), static_cast<int>(cy) - 4, xplmFont_Basic, kWhite);
}

}  // namespace

void fillBox(const Box& b, const Colour& c) {
    colour(c);
    glRecti(b.left, b.bottom, b.right, b.top);
}

void drawUiWindow(const DrawItem& item) {
    Box b = boxOf(item);
    switch (item.style) {
    case xpWindow_MainWindow: {
        // A title strip as tall as the widget library's (18): the title and the
        // close boxes are drawn on it.
        fillBox(b, kMetal);
        fillBox({b.left, std::max(b.bottom, b.top - 18), b.right, b.top}, kTitle);
        fillBox({b.left, std::max(b.bottom, b.top - 19), b.right, std::max(b.bottom, b.top - 18)}, kShade);
        bevel(inset(b, 1), true);
        outline(b, kBorder);
        break;
    }
    case xpWindow_SubWindow: panel(b, kPanel, false); break;
    case xpWindow_Screen:
        panel(b, kScreen, false);
        outline(b, kBorder);
        break;
    case xpWindow_ListView:
        panel(b, kList, false);
        outline(b, kBorder);
        break;
    default:  // xpWindow_Help
        panel(b, kHelp, true);
        outline(b, kBorder);
        break;
    }
}

void drawUiElement(const DrawItem& item, TextPainter& text) {
    Box b = boxOf(item);
    bool lit = item.text.size() > 4 && item.text.compare(item.text.size() - 4, 4, " lit") == 0;
    switch (item.style) {
    case xpElement_TextField:
        panel(b, kField, false);
        outline(inset(b, 1), kTrough);
        return;
    case xpElement_TextFieldMiddle: fillBox(b, kField); return;
    case xpElement_CheckBox:
    case xpElement_CheckBoxLit:
        panel(b, kField, false);
        outline(b, kBorder);
        if (lit || item.style == xpElement_CheckBoxLit) {
            fillBox(inset(b, 2), kLitBlue);
            check(b, kInk);
        }
        return;
    case xpElement_WindowCloseBox:
    case xpElement_WindowCloseBoxPressed: {
        bool pressed = item.style == xpElement_WindowCloseBoxPressed;
        panel(b, pressed ? kTrough : kButton, !pressed);
        outline(b, kBorder);
        cross(b, kInk);
        return;
    }
    case xpElement_PushButton:
    case xpElement_PushButtonLit: {
        bool on = lit || item.style == xpElement_PushButtonLit;
        panel(b, on ? kLitBlue : kButton, !on);
        outline(b, kBorder);
        return;
    }
    case xpElement_LittleDownArrow:
    case xpElement_LittleUpArrow:
        panel(b, kButton, true);
        outline(b, kBorder);
        arrow(b, item.style == xpElement_LittleUpArrow ? 'u' : 'd', kInk);
        return;
    case xpElement_WindowDragBar:
    case xpElement_WindowDragBarSmooth:
        panel(b, kTitle, true);
        if (item.style == xpElement_WindowDragBar)
            for (int y = b.bottom + 4; y + 1 < b.top - 3; y += 3) fillBox({b.left + 4, y, b.right - 4, y + 1}, kShade);
        return;
    case xpElement_ScrollBar:
        panel(b, kTrough, false);
        return;
    case xpElement_EditingGrid:
        fillBox(b, kField);
        for (int x = b.left; x < b.right; x += 8) fillBox({x, b.bottom, x + 1, b.top}, kTrough);
        for (int y = b.bottom; y < b.top; y += 8) fillBox({b.left, y, b.right, y + 1}, kTrough);
        outline(b, kBorder);
        return;
    case xpElement_CopyButtons:
    case xpElement_CopyButtonsWithEditingGrid: {
        int middle = (b.left + b.right) / 2;
        for (Box half : {Box{b.left, b.bottom, middle, b.top}, Box{middle, b.bottom, b.right, b.top}}) {
            panel(half, kButton, true);
            outline(half, kBorder);
        }
        arrow({b.left, b.bottom, middle, b.top}, 'l', kInk);
        arrow({middle, b.bottom, b.right, b.top}, 'r', kInk);
        if (item.style == xpElement_CopyButtonsWithEditingGrid) outline(inset(b, -2), kTrough);
        return;
    }
    case xpElement_Zoomer: {
        int middle = (b.bottom + b.top) / 2;
        panel({b.left, middle, b.right, b.top}, kButton, true);
        panel({b.left, b.bottom, b.right, middle}, kButton, true);
        arrow({b.left, middle, b.right, b.top}, 'u', kInk);
        arrow({b.left, b.bottom, b.right, middle}, 'd', kInk);
        outline(b, kBorder);
        return;
    }
    default:
        for (const Symbol& s : kSymbols)
            if (s.style == item.style) symbol(b, s, text);
        return;
    }
}

void drawUiTrack(const DrawItem& item) {
    Box b = boxOf(item);
    char name[32] = "";
    int min = 0, max = 0, value = 0;
    if (std::sscanf(item.text.c_str(), "%31s %d %d %d", name, &min, &max, &value) != 4) return;
    bool lit = item.text.size() > 4 && item.text.compare(item.text.size() - 4, 4, " lit") == 0;
    int vertical = 0, downButton = 0, downPage = 0, thumb = 0, upPage = 0, upButton = 0;
    XPGetTrackMetrics(b.left, b.bottom, b.right, b.top, min, max, value, item.style, &vertical, &downButton,
                      &downPage, &thumb, &upPage, &upButton);
    // A part of the track from `from` to `to` along it, counted from the minimum end.
    auto part = [&](int from, int to) {
        return vertical ? Box{b.left, b.bottom + from, b.right, b.bottom + to}
                        : Box{b.left + from, b.bottom, b.left + to, b.top};
    };
    int length = vertical ? b.top - b.bottom : b.right - b.left;
    const Colour& thumbColour = lit ? kLitBlue : kButton;
    switch (item.style) {
    case xpTrack_ScrollBar: {
        panel(b, kTrough, false);
        Box down = part(0, downButton), up = part(length - upButton, length);
        panel(down, kButton, true);
        panel(up, kButton, true);
        // The minimum end is at the left, or at the bottom of a vertical bar.
        arrow(down, vertical ? 'd' : 'l', kInk);
        arrow(up, vertical ? 'u' : 'r', kInk);
        Box t = part(downButton + downPage, downButton + downPage + thumb);
        panel(t, thumbColour, true);
        outline(t, kBorder);
        outline(b, kBorder);
        return;
    }
    case xpTrack_Slider: {
        Box groove = vertical ? Box{(b.left + b.right) / 2 - 2, b.bottom, (b.left + b.right) / 2 + 2, b.top}
                              : Box{b.left, (b.bottom + b.top) / 2 - 2, b.right, (b.bottom + b.top) / 2 + 2};
        panel(groove, kTrough, false);
        Box t = part(downPage, downPage + thumb);
        float cx = (t.left + t.right) / 2.0f, cy = (t.bottom + t.top) / 2.0f;
        float radius = std::min(t.right - t.left, t.top - t.bottom) / 2.0f;
        disc(cx, cy, radius, kBorder);
        disc(cx, cy, radius - 1.0f, thumbColour);
        return;
    }
    default:  // xpTrack_Progress: the "down page" is the part done
        panel(b, kTrough, false);
        if (downPage > 0) fillBox(inset(part(0, downPage), 1), kFill);
        outline(b, kBorder);
        return;
    }
}

}  // namespace xpsim::render

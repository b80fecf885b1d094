// XPUIGraphics: the built-in UI artwork. Without a renderer every call is recorded in
// the host's per-frame draw list (kind, style name, box); the size queries answer from
// one table, so drawing and mouse handling agree on every measure.

#include "XPUIGraphics.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "driver.h"
#include "host_api.h"

namespace xpsim {
namespace widgets {

namespace {

// The SDK gives no pixel sizes (they come from X-Plane's artwork); these are ours.
struct Style {
    int id;
    const char* name;
    int width, height;
    int canBeLit;
};

const Style kWindowStyles[] = {
    {xpWindow_Help, "Help", 128, 64, 0},     {xpWindow_MainWindow, "MainWindow", 96, 48, 0},
    {xpWindow_SubWindow, "SubWindow", 16, 16, 0}, {xpWindow_Screen, "Screen", 16, 16, 0},
    {xpWindow_ListView, "ListView", 16, 16, 0},
};

const Style kElementStyles[] = {
    {xpElement_TextField, "TextField", 40, 20, 0},
    {xpElement_CheckBox, "CheckBox", 16, 16, 1},
    {xpElement_CheckBoxLit, "CheckBoxLit", 16, 16, 0},
    {xpElement_WindowCloseBox, "WindowCloseBox", 14, 14, 0},
    {xpElement_WindowCloseBoxPressed, "WindowCloseBoxPressed", 14, 14, 0},
    {xpElement_PushButton, "PushButton", 40, 20, 1},
    {xpElement_PushButtonLit, "PushButtonLit", 40, 20, 0},
    {xpElement_OilPlatform, "OilPlatform", 32, 32, 0},
    {xpElement_OilPlatformSmall, "OilPlatformSmall", 24, 24, 0},
    {xpElement_Ship, "Ship", 32, 32, 0},
    {xpElement_ILSGlideScope, "ILSGlideScope", 32, 32, 0},
    {xpElement_MarkerLeft, "MarkerLeft", 32, 32, 0},
    {xpElement_Airport, "Airport", 32, 32, 0},
    {xpElement_Waypoint, "Waypoint", 32, 32, 0},
    {xpElement_NDB, "NDB", 32, 32, 0},
    {xpElement_VOR, "VOR", 32, 32, 0},
    {xpElement_RadioTower, "RadioTower", 32, 32, 0},
    {xpElement_AircraftCarrier, "AircraftCarrier", 32, 32, 0},
    {xpElement_Fire, "Fire", 32, 32, 0},
    {xpElement_MarkerRight, "MarkerRight", 32, 32, 0},
    {xpElement_CustomObject, "CustomObject", 32, 32, 0},
    {xpElement_CoolingTower, "CoolingTower", 32, 32, 0},
    {xpElement_SmokeStack, "SmokeStack", 32, 32, 0},
    {xpElement_Building, "Building", 32, 32, 0},
    {xpElement_PowerLine, "PowerLine", 32, 32, 0},
    {xpElement_CopyButtons, "CopyButtons", 32, 16, 0},
    {xpElement_CopyButtonsWithEditingGrid, "CopyButtonsWithEditingGrid", 32, 16, 0},
    {xpElement_EditingGrid, "EditingGrid", 16, 16, 0},
    {xpElement_ScrollBar, "ScrollBar", 16, 16, 0},
    {xpElement_VORWithCompassRose, "VORWithCompassRose", 48, 48, 0},
    {xpElement_Zoomer, "Zoomer", 24, 24, 0},
    {xpElement_TextFieldMiddle, "TextFieldMiddle", 16, 16, 0},
    {xpElement_LittleDownArrow, "LittleDownArrow", 12, 12, 0},
    {xpElement_LittleUpArrow, "LittleUpArrow", 12, 12, 0},
    {xpElement_WindowDragBar, "WindowDragBar", 48, 18, 0},
    {xpElement_WindowDragBarSmooth, "WindowDragBarSmooth", 48, 18, 0},
};

// width = across the track; tracks stretch along their long side.
const Style kTrackStyles[] = {
    {xpTrack_ScrollBar, "ScrollBar", 16, 0, 1},
    {xpTrack_Slider, "Slider", 16, 0, 1},
    {xpTrack_Progress, "Progress", 12, 0, 0},
};

template <size_t N>
const Style* findStyle(const Style (&table)[N], int id, const char* function) {
    for (const Style& s : table)
        if (s.id == id) return &s;
    char message[128];
    std::snprintf(message, sizeof message, "%s: unknown style %d", function, id);
    hostapi::reportError(message);
    return nullptr;
}

void record(const char* kind, const std::string& text, int style, int x1, int y1, int x2, int y2) {
    DrawItem item;
    item.kind = kind;
    item.text = text;
    item.style = style;
    // The SDK does not name the corners; (x1, y1) and (x2, y2) are opposite corners in
    // either order, recorded as left/top/right/bottom.
    item.x = std::min(x1, x2);
    item.right = std::max(x1, x2);
    item.y = std::max(y1, y2);
    item.bottom = std::min(y1, y2);
    item.plugin = hostapi::currentPlugin();
    recordDraw(item);
}

void setOut(int* out, int value) {
    if (out) *out = value;
}

}  // namespace

}  // namespace widgets
}  // namespace xpsim

using namespace xpsim::widgets;

extern "C" {

void XPDrawWindow(int inX1, int inY1, int inX2, int inY2, XPWindowStyle inStyle) {
    if (const Style* s = findStyle(kWindowStyles, inStyle, "XPDrawWindow"))
        record("window", s->name, inStyle, inX1, inY1, inX2, inY2);
}

void XPGetWindowDefaultDimensions(XPWindowStyle inStyle, int* outWidth, int* outHeight) {
    const Style* s = findStyle(kWindowStyles, inStyle, "XPGetWindowDefaultDimensions");
    setOut(outWidth, s ? s->width : 0);
    setOut(outHeight, s ? s->height : 0);
}

void XPDrawElement(int inX1, int inY1, int inX2, int inY2, XPElementStyle inStyle, int inLit) {
    const Style* s = findStyle(kElementStyles, inStyle, "XPDrawElement");
    if (!s) return;
    std::string name = s->name;
    if (inLit && s->canBeLit) name += " lit";  // ignored by elements without a lit look
    record("element", name, inStyle, inX1, inY1, inX2, inY2);
}

void XPGetElementDefaultDimensions(XPElementStyle inStyle, int* outWidth, int* outHeight, int* outCanBeLit) {
    const Style* s = findStyle(kElementStyles, inStyle, "XPGetElementDefaultDimensions");
    setOut(outWidth, s ? s->width : 0);
    setOut(outHeight, s ? s->height : 0);
    setOut(outCanBeLit, s ? s->canBeLit : 0);
}

void XPDrawTrack(int inX1, int inY1, int inX2, int inY2, int inMin, int inMax, int inValue,
                 XPTrackStyle inTrackStyle, int inLit) {
    const Style* s = findStyle(kTrackStyles, inTrackStyle, "XPDrawTrack");
    if (!s) return;
    char text[96];
    std::snprintf(text, sizeof text, "%s %d %d %d%s", s->name, inMin, inMax, inValue,
                  inLit && s->canBeLit ? " lit" : "");
    record("track", text, inTrackStyle, inX1, inY1, inX2, inY2);
}

void XPGetTrackDefaultDimensions(XPTrackStyle inStyle, int* outWidth, int* outCanBeLit) {
    const Style* s = findStyle(kTrackStyles, inStyle, "XPGetTrackDefaultDimensions");
    setOut(outWidth, s ? s->width : 0);
    setOut(outCanBeLit, s ? s->canBeLit : 0);
}

void XPGetTrackMetrics(int inX1, int inY1, int inX2, int inY2, int inMin, int inMax, int inValue,
                       XPTrackStyle inTrackStyle, int* outIsVertical, int* outDownBtnSize, int* outDownPageSize,
                       int* outThumbSize, int* outUpPageSize, int* outUpBtnSize) {
    const Style* s = findStyle(kTrackStyles, inTrackStyle, "XPGetTrackMetrics");
    int width = std::abs(inX2 - inX1), height = std::abs(inY2 - inY1);
    bool vertical = s && inTrackStyle != xpTrack_Progress && height > width;
    // The SDK says both that the top button of a vertical track decreases the value and
    // that the minimum is the thumb's lowest position; we keep the minimum at the bottom,
    // so the parts run from the minimum end: left, or bottom when vertical.
    int length = s ? (vertical ? height : width) : 0;
    int across = vertical ? width : height;
    // Scroll bars have square arrow buttons at both ends; sliders and progress bars none.
    int button = s && inTrackStyle == xpTrack_ScrollBar ? std::min(across, length / 2) : 0;
    int free = length - 2 * button;
    // The thumb is square (a ball on sliders); a progress bar has none, its "down page"
    // is the filled part. The five parts always add up to the track's length.
    int thumb = s && inTrackStyle != xpTrack_Progress ? std::min(across, free) : 0;
    int travel = free - thumb;
    double fraction = 0.0;
    if (inMax != inMin) fraction = double(inValue - inMin) / double(inMax - inMin);
    fraction = std::max(0.0, std::min(1.0, fraction));
    int downPage = static_cast<int>(std::lround(travel * fraction));
    setOut(outIsVertical, vertical ? 1 : 0);
    setOut(outDownBtnSize, button);
    setOut(outDownPageSize, downPage);
    setOut(outThumbSize, thumb);
    setOut(outUpPageSize, travel - downPage);
    setOut(outUpBtnSize, button);
}

}  // extern "C"

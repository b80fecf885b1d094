// The control panel's pure rules, free of the SDK and of OpenGL: splitting item texts at
// ";", the 45-character line split of the display and print lists, the popup menu's
// column layout and its screen clamp, and the list box's scroll-bar arithmetic.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vorlith {

// --- item texts ---

// Pieces of text between ";" separators: empty pieces between two separators are kept,
// a trailing ";" adds no empty piece, an empty text gives none.
std::vector<std::string> VL_SplitItems(const char* text);

// A line for the display or print list in at most three parts: the text (cut to
// workSize - 1 bytes) is split after 45 characters, at the last blank before that when
// there is one; the rest is split once more the same way. Each part is cut to
// partSize - 1 bytes; empty parts are returned empty (and not shown).
constexpr std::size_t kVL_LineWidth = 45;
struct VL_LineParts {
    std::string part[3];
};
VL_LineParts VL_SplitLine(const char* text, std::size_t workSize, std::size_t partSize);

// --- the popup menu ---

struct VL_PopupItem {
    std::string text;  // as shown: a disabled item without its leading "("
    bool enabled = true;
    bool separator = false;
    int left = 0, right = 0;   // relative to the menu's left
    int top = 0, bottom = 0;   // relative to the menu's top, 0 and below
};

struct VL_PopupLayout {
    std::vector<VL_PopupItem> items;
    std::vector<int> columnStarts;  // the left of every column after the first
    int left = 0, top = 0, right = 0, bottom = 0;  // on screen
};

constexpr int kVL_PopupItemHeight = 12;
constexpr int kVL_PopupSeparatorHeight = 2;
constexpr int kVL_PopupColumnBottom = -718;  // a column that reaches below starts a new one

// Classifies the items of the ";"-separated text and lays them out in columns so that
// the current item lies at screen point (x, y), then keeps the menu on the 1024 x 768
// screen (VL_ClampPopup).
VL_PopupLayout VL_LayOutPopup(const char* items, int current, int charWidth, int x, int y);
// right at most 1014, left at least 10, bottom at least 10, top at most 738, in this
// order, each moving the whole menu.
void VL_ClampPopup(int& left, int& top, int& right, int& bottom);
// Index of the item at screen point (x, y), -1 when none.
int VL_PopupItemAt(const VL_PopupLayout& menu, int x, int y);

// --- the list box's scroll bar ---

// The parts of a track as the SDK's track metrics give them, from its low end.
struct VL_TrackMetrics {
    int isVertical = 1;
    int downButton = 0, downPage = 0, thumb = 0, upPage = 0, upButton = 0;
};

struct VL_ScrollState {
    int position = 0;
    int minimum = 0;
    int maximum = 0;
    int pageAmount = 0;
    int dragging = 0;
    int slop = 0;  // grab offset of a thumb drag
};

// A mouse-down at `at` (y of a vertical bar, x of a horizontal one) on a bar running from
// `low` to `high` along its axis: page, line or thumb grab, as the list box does it.
void VL_ScrollClick(VL_ScrollState& state, const VL_TrackMetrics& metrics, int low, int high, int at);
// The position a thumb dragged to `at` gives (nearest, within minimum and maximum).
int VL_ScrollDragPosition(const VL_ScrollState& state, const VL_TrackMetrics& metrics, int low, int high, int at);

}  // namespace vorlith

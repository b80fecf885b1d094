// The control panel's pure rules: item and line splitting, the popup menu's columns and
// screen clamp, the list box's scroll bar.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ui/Layout.h"

using namespace vorlith;

namespace {

using Strings = std::vector<std::string>;

TEST(PanelLayout, ItemsSplitAtSeparatorsKeepingInnerEmptyItems) {
    const struct { const char* text; Strings items; } cases[] = {
        {"a;;b;", {"a", "", "b"}}, {"", {}}, {";", {""}}, {"a", {"a"}}, {";a;;", {"", "a", ""}},
        {"No Scripts Found;", {"No Scripts Found"}},
    };
    for (const auto& c : cases) EXPECT_EQ(VL_SplitItems(c.text), c.items) << c.text;
    EXPECT_TRUE(VL_SplitItems(nullptr).empty());
}

TEST(PanelLayout, LinesSplitAfter45CharactersIntoAtMostThreeParts) {
    const std::string x45(45, 'x'), y45(45, 'y');
    const std::string words = std::string(30, 'a') + " " + std::string(30, 'b');  // blank at 30
    const struct { std::string text; std::size_t part; Strings parts; } cases[] = {
        {std::string(100, 'z'), 32768, {std::string(45, 'z'), std::string(45, 'z'), std::string(10, 'z')}},
        // A blank at 45 starts part two, which is then 46 long and split again.
        {x45 + " " + y45, 32768, {x45, " " + std::string(44, 'y'), "y"}},
        {words, 32768, {std::string(30, 'a'), std::string(30, 'b'), ""}},
        {std::string(200, 'z'), 32768, {std::string(45, 'z'), std::string(45, 'z'), std::string(110, 'z')}},
        {std::string(300, 'z'), 256, {std::string(45, 'z'), std::string(45, 'z'), std::string(165, 'z')}},
        {"short", 32768, {"short", "", ""}},
        {"", 32768, {"", "", ""}},
        {std::string(100, 'z'), 8, {std::string(7, 'z'), std::string(7, 'z'), ""}},  // part 2 cut before its split
    };
    for (const auto& c : cases) {
        std::size_t work = c.part == 256 ? 256 : 65536;
        VL_LineParts parts = VL_SplitLine(c.text.c_str(), work, c.part);
        EXPECT_EQ(Strings(parts.part, parts.part + 3), c.parts) << c.text;
    }
    // A blank at position 0 only does not count: the cut falls at 45.
    VL_LineParts parts = VL_SplitLine((" " + std::string(60, 'q')).c_str(), 65536, 32768);
    EXPECT_EQ(parts.part[0], " " + std::string(44, 'q'));
}

TEST(PanelLayout, PopupItemsClassifiedAndLaidOutAroundTheCurrentItem) {
    // Column width: the longest text ("Cc", 2 characters) x 8 + 35 = 51.
    VL_PopupLayout menu = VL_LayOutPopup("A;-;(B;Cc;", 3, 8, 300, 400);
    ASSERT_EQ(menu.items.size(), 4u);
    const struct { const char* text; bool enabled, separator; int top, bottom; } rows[] = {
        {"A", true, false, 0, -12}, {"-", false, true, -12, -14}, {"B", false, false, -14, -26}, {"Cc", true, false, -26, -38},
    };
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(menu.items[i].text, rows[i].text);
        EXPECT_EQ(menu.items[i].enabled, rows[i].enabled) << i;
        EXPECT_EQ(menu.items[i].separator, rows[i].separator) << i;
        EXPECT_EQ(menu.items[i].top, rows[i].top) << i;
        EXPECT_EQ(menu.items[i].bottom, rows[i].bottom) << i;
        EXPECT_EQ(menu.items[i].right - menu.items[i].left, 51) << i;
    }
    // The current item (3) lies at the point: the menu starts 26 pixels above it.
    EXPECT_EQ(menu.left, 300);
    EXPECT_EQ(menu.top, 426);
    EXPECT_EQ(menu.right, 351);
    EXPECT_EQ(menu.bottom, 388);
    EXPECT_EQ(VL_PopupItemAt(menu, 310, 395), 3);
    EXPECT_EQ(VL_PopupItemAt(menu, 310, 400), 2);  // an item's top edge is the one above's
    EXPECT_EQ(VL_PopupItemAt(menu, 310, 413), 1);  // the separator's own box
    EXPECT_EQ(VL_PopupItemAt(menu, 351, 395), -1);  // right edge is outside
    EXPECT_EQ(VL_PopupItemAt(menu, 310, 426), -1);  // so is the top

    // 12-pixel items: the 61st starts a second column; with exactly 60 the empty second
    // column is dropped again.
    std::string items;
    for (int i = 0; i < 61; ++i) items += "i" + std::to_string(i % 10) + ";";
    VL_PopupLayout two = VL_LayOutPopup(items.c_str(), 60, 8, 500, 500);
    EXPECT_EQ(two.columnStarts, std::vector<int>{51});
    EXPECT_EQ(two.items[59].left, 0);
    EXPECT_EQ(two.items[60].left, 51);
    EXPECT_EQ(two.items[60].top, 0);
    EXPECT_EQ(two.left, 500 - 51);
    EXPECT_EQ(two.right, 500 - 51 + 102);
    VL_PopupLayout one = VL_LayOutPopup(items.substr(0, 60 * 3).c_str(), -5, 8, 500, 750);
    EXPECT_TRUE(one.columnStarts.empty());
    EXPECT_EQ(one.right - one.left, 51);
    EXPECT_EQ(one.top, 738);  // current -5 counts as 0, placed at 750, clamped
}

TEST(PanelLayout, PopupKeptOnScreenRightThenLeftThenBottomThenTop) {
    const struct { int left, top, right, bottom; int want[4]; } cases[] = {
        {1000, 400, 1100, 300, {914, 400, 1014, 300}},
        {-30, 400, 70, 300, {10, 400, 110, 300}},
        {100, 50, 200, -20, {100, 80, 200, 10}},
        {100, 800, 200, 700, {100, 738, 200, 638}},
        {-50, 900, 1100, -40, {10, 738, 1160, -202}},  // larger than the screen: top wins
        {100, 500, 200, 400, {100, 500, 200, 400}},
    };
    for (const auto& c : cases) {
        int l = c.left, t = c.top, r = c.right, b = c.bottom;
        VL_ClampPopup(l, t, r, b);
        EXPECT_EQ((std::vector<int>{l, t, r, b}), std::vector<int>(c.want, c.want + 4)) << c.left << "," << c.top;
    }
}

TEST(PanelLayout, ScrollBarClicksPageLineAndGrabTheThumb) {
    // A bar from 100 to 300: buttons of 20, thumb 20, 70 below it and 70 above it.
    VL_TrackMetrics m;
    m.downButton = 20, m.downPage = 70, m.thumb = 20, m.upPage = 70, m.upButton = 20;
    const struct { int at; int position, dragging, slop; } cases[] = {
        {250, 15, 0, 0},   // above the thumb: page up, at most the maximum
        {150, 0, 0, 0},    // below it: page down, at least the minimum
        {295, 11, 0, 0},   // top button: one line up
        {105, 9, 0, 0},    // bottom button: one line down
        {195, 10, 1, 5},   // on the thumb: grabbed 5 pixels below its centre
    };
    for (const auto& c : cases) {
        VL_ScrollState s;
        s.position = 10, s.maximum = 15, s.pageAmount = 12, s.dragging = 0;
        VL_ScrollClick(s, m, 100, 300, c.at);
        EXPECT_EQ(s.position, c.position) << c.at;
        EXPECT_EQ(s.dragging, c.dragging) << c.at;
        if (c.dragging) EXPECT_EQ(s.slop, c.slop);
    }
    VL_ScrollState outside;
    outside.dragging = 1;
    VL_ScrollClick(outside, m, 100, 300, 400);
    EXPECT_EQ(outside.dragging, 0);

    // Dragging: the thumb's centre runs from 130 to 270, mapped on 0..maximum and clamped.
    VL_ScrollState drag;
    drag.maximum = 14, drag.slop = 0, drag.dragging = 1;
    const struct { int at, position; } drags[] = {{130, 0}, {270, 14}, {200, 7}, {205, 8}, {50, 0}, {900, 14}};
    for (const auto& d : drags) EXPECT_EQ(VL_ScrollDragPosition(drag, m, 100, 300, d.at), d.position) << d.at;
    drag.slop = 70;
    EXPECT_EQ(VL_ScrollDragPosition(drag, m, 100, 300, 130), 7);
}

}  // namespace

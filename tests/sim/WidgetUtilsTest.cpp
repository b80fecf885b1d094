// Widget utilities and UI graphics: bulk creation from a table, moving, the fixed
// layout, the select and defocus behaviours, and sizes that agree with the drawing.

#include "widget_driver.h"
#include "widget_test_util.h"

namespace xpsim::test {
namespace {

using Strings = std::vector<std::string>;

class WidgetUtilsTest : public WidgetSimTest {};

TEST_F(WidgetUtilsTest, CreateWidgetsResolvesContainerIndexesAndTheParamParent) {
    XPWidgetID outer = custom("outer", 0, 700, 700, 0, nullptr, true);
    const XPWidgetCreate_t table[] = {
        {10, 600, 300, 300, 1, "Window", 1, NO_PARENT, xpWidgetClass_MainWindow},
        {20, 580, 100, 560, 1, "Button", 0, 0, xpWidgetClass_Button},
        {20, 550, 280, 400, 1, "Panel", 0, 0, xpWidgetClass_SubWindow},
        {30, 540, 100, 520, 1, "Label", 0, 2, xpWidgetClass_Caption},
        {400, 600, 500, 580, 1, "Outside", 0, PARAM_PARENT, xpWidgetClass_TextField},
        {400, 500, 500, 480, 1, "Forward", 0, 6, xpWidgetClass_Caption},
    };
    XPWidgetID ids[WIDGET_COUNT(table)] = {};
    XPUCreateWidgets(table, WIDGET_COUNT(table), outer, ids);
    for (XPWidgetID id : ids) EXPECT_NE(id, nullptr);
    EXPECT_EQ(XPGetParentWidget(ids[0]), nullptr);
    EXPECT_EQ(XPGetParentWidget(ids[1]), ids[0]);
    EXPECT_EQ(XPGetParentWidget(ids[3]), ids[2]);
    EXPECT_EQ(XPGetParentWidget(ids[4]), outer);
    EXPECT_EQ(XPGetParentWidget(ids[5]), nullptr) << "a row not created yet cannot contain";
    EXPECT_EQ(errorsMentioning("row 5 names row 6"), 1);
    char text[16] = {};
    XPGetWidgetDescriptor(ids[3], text, sizeof text - 1);
    EXPECT_STREQ(text, "Label");
}

TEST_F(WidgetUtilsTest, MoveWidgetByMovesOnlyTheWidgetUnlessTheFixedLayoutCarriesTheChildren) {
    XPWidgetID win = custom("win", 100, 500, 400, 200, nullptr, true);
    XPWidgetID child = custom("child", 120, 480, 200, 460, win);
    XPWidgetID grandchild = custom("grandchild", 130, 475, 150, 465, child);
    XPUMoveWidgetBy(win, 10, -20);
    int l, t, r, b;
    XPGetWidgetGeometry(win, &l, &t, &r, &b);
    EXPECT_EQ((std::vector<int>{l, t, r, b}), (std::vector<int>{110, 480, 410, 180}));
    XPGetWidgetGeometry(child, &l, &t, nullptr, nullptr);
    EXPECT_EQ(l, 120);

    XPAddWidgetCallback(win, XPUFixedLayout);
    calls().clear();
    XPUMoveWidgetBy(win, -10, 20);
    XPGetWidgetGeometry(child, &l, &t, nullptr, nullptr);
    EXPECT_EQ((std::vector<int>{l, t}), (std::vector<int>{110, 500}));
    XPGetWidgetGeometry(grandchild, &l, &t, nullptr, nullptr);
    EXPECT_EQ((std::vector<int>{l, t}), (std::vector<int>{120, 495}));
    EXPECT_EQ(callsOf("child Reshape"), (Strings{"child Reshape child", "child Reshape grandchild"}))
        << "each moved once, the grandchild's reshape bubbling up";

    XPSetWidgetGeometry(win, 100, 500, 600, 100);  // resized: children hang from the top-left
    XPGetWidgetGeometry(child, &l, &t, nullptr, nullptr);
    EXPECT_EQ((std::vector<int>{l, t}), (std::vector<int>{110, 500}));
}

int selectingWindow(XPWidgetMessage m, XPWidgetID w, intptr_t p1, intptr_t p2) {
    if (XPUSelectIfNeeded(m, w, p1, p2, 1)) {
        record("selected");
        return 1;
    }
    if (XPUDefocusKeyboard(m, w, p1, p2, 0)) return 1;
    return m == xpMsg_MouseDown ? 1 : 0;
}

TEST_F(WidgetUtilsTest, SelectIfNeededEatsOnlyTheActivatingClickAndDefocusGivesKeysBack) {
    XPWidgetID back = named(XPCreateCustomWidget(100, 500, 400, 200, 1, "back", 1, nullptr, selectingWindow), "back");
    XPWidgetID field = XPCreateWidget(120, 480, 300, 460, 1, "", 0, back, xpWidgetClass_TextField);
    XPWidgetID front = custom("front", 300, 600, 600, 300, nullptr, true);
    XPSetKeyboardFocus(field);
    EXPECT_EQ(XPIsWidgetInFront(back), 0);
    EXPECT_EQ(XPIsWidgetInFront(front), 1);
    calls().clear();
    click(150, 250);
    EXPECT_EQ(calls(), (Strings{"selected"}));
    EXPECT_EQ(XPIsWidgetInFront(back), 1);
    EXPECT_EQ(XPGetWidgetWithFocus(), field) << "the activating click was eaten";
    click(150, 250);
    EXPECT_EQ(XPGetWidgetWithFocus(), nullptr);
}

TEST_F(WidgetUtilsTest, DefaultDimensionsAndTrackMetricsAgreeWithWhatIsDrawn) {
    int w = -1, h = -1, lit = -1;
    XPGetElementDefaultDimensions(xpElement_PushButton, &w, &h, &lit);
    EXPECT_GT(w, 0);
    EXPECT_GT(h, 0);
    EXPECT_EQ(lit, 1);
    XPGetElementDefaultDimensions(xpElement_Ship, nullptr, nullptr, &lit);
    EXPECT_EQ(lit, 0);
    XPGetWindowDefaultDimensions(xpWindow_MainWindow, &w, nullptr);
    EXPECT_GT(w, 0);
    XPGetTrackDefaultDimensions(xpTrack_Progress, &w, &lit);
    EXPECT_EQ(lit, 0);

    // The parts always fill the track, whatever the value.
    for (int style : {xpTrack_ScrollBar, xpTrack_Slider, xpTrack_Progress}) {
        for (int value : {-5, 0, 33, 100, 200}) {
            int vertical, d, dp, th, up, u;
            XPGetTrackMetrics(0, 0, 16, 300, 0, 100, value, style, &vertical, &d, &dp, &th, &up, &u);
            EXPECT_EQ(d + dp + th + up + u, style == xpTrack_Progress ? 16 : 300);
            EXPECT_EQ(vertical, style == xpTrack_Progress ? 0 : 1) << "progress bars do not stand up";
        }
    }
    int vertical, d, dp, th, up, u;
    XPGetTrackMetrics(0, 0, 300, 16, 0, 100, 50, xpTrack_Slider, &vertical, &d, &dp, &th, &up, &u);
    EXPECT_EQ(d, 0);
    EXPECT_EQ(dp, up) << "half way";

    XPDrawElement(10, 20, 50, 40, xpElement_CheckBox, 1);
    XPDrawElement(10, 20, 50, 40, xpElement_Ship, 1);
    XPDrawTrack(300, 10, 100, 30, 0, 10, 4, xpTrack_Slider, 1);
    XPDrawWindow(0, 0, 10, 10, 3);
    EXPECT_EQ(errorsMentioning("XPDrawWindow: unknown style 3"), 1);
    driver::runFrames(1);  // what is drawn outside a frame lands in the next one
    Strings items;
    for (const DrawItem& i : driver::drawList()) {
        if (i.kind != "element" && i.kind != "track") continue;
        items.push_back(i.kind + " " + i.text + " " + std::to_string(i.x) + "," + std::to_string(i.y) + "," +
                        std::to_string(i.right) + "," + std::to_string(i.bottom));
    }
    EXPECT_EQ(items, (Strings{"element CheckBox lit 10,40,50,20", "element Ship 10,40,50,20",
                              "track Slider 0 10 4 lit 100,30,300,10"}));
}

}  // namespace
}  // namespace xpsim::test

namespace xpsim::test {
namespace {

TEST_F(WidgetUtilsTest, TheTreeListingShowsClassesTextGeometryVisibilityFocusAndProperties) {
    XPWidgetID win = XPCreateWidget(10, 300, 300, 10, 1, "Settings", 1, nullptr, xpWidgetClass_MainWindow);
    XPSetWidgetProperty(win, xpProperty_MainWindowHasCloseBoxes, 1);
    XPWidgetID panel = XPCreateWidget(20, 280, 280, 20, 0, "", 0, win, xpWidgetClass_SubWindow);
    XPWidgetID pass = XPCreateWidget(30, 270, 200, 250, 1, "secret", 0, panel, xpWidgetClass_TextField);
    XPSetWidgetProperty(pass, xpProperty_PasswordMode, 1);
    XPCreateCustomWidget(0, 5, 5, 0, 1, "loose", 0, nullptr, loggingFunc);
    XPShowWidget(panel);
    XPSetKeyboardFocus(pass);
    XPHideWidget(panel);
    XPSetKeyboardFocus(pass);
    std::vector<std::string> tree = widgets::widgetTree();
    ASSERT_EQ(tree.size(), 4u);
    EXPECT_EQ(tree[0], "MainWindow \"Settings\" (10,300,300,10) shown root owner=0 {MainWindowHasCloseBoxes=1}");
    EXPECT_EQ(tree[1], "  SubWindow \"\" (20,280,280,20) hidden owner=0");
    EXPECT_EQ(tree[2].substr(0, 58), "    TextField \"******\" (30,270,200,250) shown unseen focus");
    EXPECT_NE(tree[2].find("PasswordMode=1"), std::string::npos);
    EXPECT_NE(tree[2].find("EditFieldSelDragStart=-1"), std::string::npos);
    EXPECT_EQ(tree[3], "Custom \"loose\" (0,5,5,0) shown unseen owner=0");
}

}  // namespace
}  // namespace xpsim::test

// The widget_form test plug-in in the host: a user clicks, drags, types and closes,
// and the messages each widget function received (recorded by the plug-in) are
// checked in order, with focus movement, clipping and the destruction of subtrees.

#include <algorithm>

#include "widget_driver.h"
#include "widget_test_util.h"

namespace xpsim::test {
namespace {

using Strings = std::vector<std::string>;

constexpr int kReport = 0x7FF20001;
constexpr int kDestroyGroup = 0x7FF20002;
constexpr int kHideInner = 0x7FF20003;

class WidgetPluginTest : public WidgetSimTest {
protected:
    void SetUp() override {
        WidgetSimTest::SetUp();
        plugin = loadTestPlugin("widget_form", "WidgetForm");
        driver::enablePluginsAndSendLoadMessages();
        driver::runFrames(1);
        mark();
    }
    std::vector<std::string> allEvents() const {
        return readLines(root + "/Resources/plugins/WidgetForm/events.txt");
    }
    // Events since the last mark, optionally only those starting with one of `prefixes`.
    Strings events(const Strings& prefixes = {}) const {
        Strings all = allEvents(), out;
        for (size_t i = seen; i < all.size(); ++i) {
            bool keep = prefixes.empty();
            for (const std::string& p : prefixes) keep |= all[i].compare(0, p.size(), p) == 0;
            if (keep) out.push_back(all[i]);
        }
        return out;
    }
    void mark() { seen = allEvents().size(); }
    // The plug-in's report lines (after asking for one).
    Strings report() {
        mark();
        driver::sendMessage(plugin, kReport, 0);
        return events();
    }
    static bool contains(const Strings& lines, const std::string& line) {
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }

    int plugin = -1;
    size_t seen = 0;
};

TEST_F(WidgetPluginTest, TheFormIsBuiltAndDrawnInOneWindowOwnedByThePlugin) {
    Strings all = allEvents();
    ASSERT_FALSE(all.empty());
    EXPECT_EQ(all.back(), "built");
    EXPECT_TRUE(contains(all, "Form Create 1"));
    EXPECT_TRUE(contains(all, "Custom Create 1"));
    EXPECT_TRUE(contains(all, "Name DescriptorChanged 0"));

    driver::runFrames(1);
    Strings ui;
    for (const DrawItem& i : driver::drawList()) {
        if (i.kind == "window" || i.kind == "element" || i.kind == "track") ui.push_back(i.text);
        if (i.kind == "string" && i.text == "custom") ui.push_back("custom");
        if (i.kind == "window" || i.kind == "element") {
            EXPECT_EQ(i.plugin, plugin) << i.kind << " " << i.text;
        }
    }
    EXPECT_EQ(ui, (Strings{"", "MainWindow", "WindowCloseBox", "WindowCloseBox", "TextField", "PushButton",
                           "PushButton", "CheckBox", "CheckBox", "SubWindow", "CheckBox", "CheckBox", "CheckBox",
                           "Screen", "custom", "Slider 0 10 0", "Progress 0 100 0"}));
    Strings r = report();
    EXPECT_TRUE(contains(r, "exposed Custom 250 460 290 440 visible 1")) << "clipped by Inner on the right";
}

TEST_F(WidgetPluginTest, TypingGoesToTheClickedFieldAndReturnAndTheOkButtonsPressGoUpToTheWindow) {
    click(190, 560);
    type("Bobby Tables");  // 8 characters at most
    key(XPLM_KEY_DELETE, XPLM_VK_BACK);
    key(XPLM_KEY_RETURN, XPLM_VK_RETURN);
    Strings name = events({"Name KeyTakeFocus", "Name TextFieldChanged", "Form TextFieldChanged", "return"});
    EXPECT_EQ(name.front(), "Name KeyTakeFocus 0");
    EXPECT_EQ(std::count(name.begin(), name.end(), "Form TextFieldChanged Name"), 9) << "8 typed, 1 deleted";
    EXPECT_EQ(name.back(), "return");
    mark();
    click(140, 530);
    EXPECT_EQ(events({"OK", "Form", "ok"}),
              (Strings{"OK MouseDown 140,530", "OK PropertyChanged 4=1", "OK MouseUp 140,530",
                       "OK PropertyChanged 4=0", "OK PushButtonPressed OK", "Form PushButtonPressed OK",
                       "ok name=Bobby T"}));
    EXPECT_TRUE(contains(report(), "focus Name")) << "clicking a button does not take the focus";

    mark();
    click(200, 530);  // Cancel: the plug-in gives the keys back to X-Plane
    EXPECT_EQ(events({"Name KeyLoseFocus"}), (Strings{"Name KeyLoseFocus 0"}));
    EXPECT_TRUE(contains(report(), "focus 0"));
}

TEST_F(WidgetPluginTest, CheckBoxesToggleAndRadioMessagesTravelThroughTheNestedContainerSoTheGroupKeepsOneOn) {
    click(125, 460);  // A
    EXPECT_EQ(events({"A ", "B ", "C ", "Group", "Form"}),
              (Strings{"A MouseDown 125,460", "A PropertyChanged 1302=1", "A ButtonStateChanged A 1",
                       "Group ButtonStateChanged A 1", "Form ButtonStateChanged A 1", "B PropertyChanged 1302=0",
                       "C PropertyChanged 1302=0", "A MouseUp 125,460"}));
    click(115, 500);  // Sound
    click(215, 500);  // Music
    click(115, 500);  // Sound again: off
    click(125, 440);  // B
    Strings r = report();
    for (const char* state : {"state Sound 0", "state Music 1", "state A 0", "state B 1", "state C 0"})
        EXPECT_TRUE(contains(r, state)) << state;
}

TEST_F(WidgetPluginTest, DraggingTheSliderMovesTheProgressBarThroughTheWindowHandler) {
    // Slider 290 long, 16-pixel ball, 274 of travel for 0..10; grab the ball at its centre.
    driver::mouseDown(118, 362);
    driver::mouseMove(118 + 137, 362);
    driver::mouseMove(118 + 274, 362);
    driver::mouseUp(118 + 274, 362);
    driver::runFrames(1);
    EXPECT_TRUE(contains(report(), "volume 10 progress 100"));
    EXPECT_EQ(events({"Form ScrollBar"}).size(), 0u);
    mark();
    click(130, 362);  // left of the ball: pages down by 2
    EXPECT_EQ(events({"Volume ScrollBar", "Form ScrollBar"}),
              (Strings{"Volume ScrollBarSliderPositionChanged Volume", "Form ScrollBarSliderPositionChanged Volume"}));
    EXPECT_TRUE(contains(report(), "volume 8 progress 80"));
}

TEST_F(WidgetPluginTest, TheCustomWidgetTakesClicksAndKeysOnlyWhereItIsExposed) {
    click(300, 450);  // the part sticking out of Inner: Group is a panel, the window takes it
    EXPECT_TRUE(events({"Custom MouseDown"}).empty());
    EXPECT_EQ(events({"Form MouseDown"}), (Strings{"Form MouseDown 300,450"}));

    mark();
    click(260, 450);
    type("hi");
    EXPECT_EQ(events({"Custom", "custom"}),
              (Strings{"Custom MouseDown 260,450", "Custom KeyTakeFocus 0", "Custom MouseUp 260,450",
                       "Custom KeyPress 104", "custom typed h", "Custom KeyPress 105", "custom typed i"}));

    driver::sendMessage(plugin, kHideInner, 0);
    Strings r = report();
    EXPECT_TRUE(contains(r, "focus 0")) << "hiding its container takes the focus away";
    EXPECT_TRUE(contains(r, "exposed Custom 250 460 290 440 visible 0"));
    mark();
    click(260, 450);
    EXPECT_TRUE(events({"Custom"}).empty());
}

TEST_F(WidgetPluginTest, DestroyingTheNestedContainerDestroysItsSubtreeDeepestFirst) {
    click(260, 450);  // the custom widget has the focus
    mark();
    driver::sendMessage(plugin, kDestroyGroup, 0);
    EXPECT_EQ(events({"A ", "B ", "C ", "Inner", "Custom", "Group", "Form"}),
              (Strings{"A Destroy 1", "B Destroy 1", "C Destroy 1", "Custom KeyLoseFocus 0", "Custom Destroy 1",
                       "Inner Destroy 1", "Group Destroy 0", "Form LoseChild Group"}));
    driver::runFrames(1);
    for (const DrawItem& i : drawn("window")) EXPECT_NE(i.text, "Screen");
    EXPECT_TRUE(contains(report(), "focus 0"));
}

TEST_F(WidgetPluginTest, TheCloseBoxLetsThePluginDestroyTheWholeForm) {
    driver::mouseMove(300, 595);
    driver::mouseDown(300, 595);  // the title bar: drag the window 50 right
    driver::mouseMove(350, 595);
    driver::mouseUp(350, 595);
    driver::runFrames(1);
    EXPECT_TRUE(contains(events({"Custom"}), "Custom Reshape Custom"));
    EXPECT_TRUE(contains(report(), "exposed Custom 300 460 340 440 visible 1")) << "moved with the window";

    mark();
    click(150 + 3, 597);  // the left close box, now at 152..166
    Strings e = events();
    ASSERT_GE(e.size(), 4u);
    EXPECT_EQ(Strings(e.begin(), e.begin() + 4),
              (Strings{"Form MouseDown 153,597", "Form MouseUp 153,597", "Form CloseButtonPushed Form", "closing"}));
    EXPECT_EQ(e.back(), "Form Destroy 0");
    EXPECT_EQ(std::count_if(e.begin(), e.end(), [](const std::string& s) { return s.find(" Destroy 1") != std::string::npos; }),
              14);
    driver::runFrames(1);
    EXPECT_TRUE(drawn("window").empty()) << "the root's window went with it";
    EXPECT_EQ(errorsMentioning("invalid"), 0);
}

TEST_F(WidgetPluginTest, UnloadingThePluginForgetsTheWidgetsItLeftBehind) {
    std::ofstream(root + "/Resources/plugins/WidgetForm/keep_widgets") << "";
    click(190, 560);  // its text field has the keyboard
    driver::mouseDown(140, 530);  // and its OK button the mouse
    driver::runFrames(1);
    driver::reloadPlugins();
    driver::mouseUp(140, 530);
    type("x");
    driver::runFrames(2);
    plugin = driver::findPluginBySignature("xpsim.test.WidgetForm");
    EXPECT_TRUE(contains(report(), "focus 0"));
    int windows = 0;
    for (const DrawItem& i : drawn("window")) windows += i.text == "MainWindow";
    EXPECT_EQ(windows, 1) << "the old form is gone, the reloaded plug-in built a new one";
    EXPECT_EQ(widgets::widgetTree().size(), 15u);
    EXPECT_EQ(errorsMentioning("invalid"), 0);
}

}  // namespace
}  // namespace xpsim::test

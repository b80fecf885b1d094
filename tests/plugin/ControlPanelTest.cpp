// The control panel as a user drives it: the Vorlith menu, the control panel's buttons,
// lists and script picker, the enable / disable and information windows, reloads.

#include <algorithm>
#include <cstdlib>

#include "Harness.h"
#include "driver.h"
#include "widget_driver.h"

namespace vorlith::test {
namespace {

using Lines = std::vector<std::string>;

// The control panel at (500, 650), 450 x 550, as the menu builds it.
struct Point {
    int x, y;
};
constexpr Point kStart{615, 184}, kStop{715, 184}, kOutputCheckBox{781, 184};
constexpr Point kReloadScripts{615, 164}, kClearLB{715, 164}, kReloadPlugins{815, 164};
constexpr Point kPicker{675, 144}, kScriptInfo{825, 144}, kPanelClose{509, 641};
// The enable / disable window at (200, 550), 294 x 305; the information window at (290, 680).
constexpr Point kAdminPrevious{306, 277}, kAdminNext{387, 277}, kAdminClose{209, 541};
constexpr Point kInfoNext{538, 234}, kInfoClose{299, 671};
Point AdminCheckBox(int row) { return {467, 479 - 25 * row}; }

class ControlPanelTest : public PluginTest {
protected:
    void Menu(const std::string& item) {
        std::string error;
        ASSERT_TRUE(xpsim::driver::pickMenu("Plugins/Vorlith/" + item, &error)) << error;
        RunSeconds(0.05);
    }
    void Click(Point p) {
        xpsim::driver::mouseDown(p.x, p.y);
        xpsim::driver::runFrames(1);
        xpsim::driver::mouseUp(p.x, p.y);
        xpsim::driver::runFrames(2);
    }
    void Message(int message) {
        xpsim::driver::sendMessage(vorlithId, message, 0);
        xpsim::driver::runFrames(2);
    }
    // The listing line of the first widget whose line holds `what`.
    static std::string Widget(const std::string& what) {
        for (const std::string& line : xpsim::widgets::widgetTree())
            if (line.find(what) != std::string::npos) return line;
        return "";
    }
    static long Property(const std::string& line, const std::string& name) {
        std::size_t at = line.find(" " + name + "=");
        if (at == std::string::npos) at = line.find("{" + name + "=");
        return at == std::string::npos ? -999 : std::strtol(line.c_str() + at + name.size() + 2, nullptr, 10);
    }
    // The texts drawn in the last frame inside a box, top to bottom.
    static Lines Drawn(int left, int top, int right, int bottom) {
        Lines texts;
        for (const xpsim::DrawItem& item : xpsim::driver::drawList())
            if (item.kind == "string" && item.x >= left && item.x <= right && item.y <= top && item.y >= bottom)
                texts.push_back(item.text);
        return texts;
    }
    // A list line is drawn cut to what fits: (310 - 20) / 8 characters.
    static Lines Cut(const Lines& lines) {
        Lines cut;
        for (const std::string& line : lines) cut.push_back(line.substr(0, 36));
        return cut;
    }
    static Lines PrintList() { return Drawn(570, 440, 880, 210); }
    static Lines DisplayList() { return Drawn(570, 600, 880, 450); }
    // Where the last frame drew `text` (an item of the open popup menu).
    static Point DrawnAt(const std::string& text) {
        for (const xpsim::DrawItem& item : xpsim::driver::drawList())
            if (item.kind == "string" && item.text == text) return {item.x + 2, item.y + 2};
        return {-1, -1};
    }
    std::string Name(int i) const { return "VL_Panel" + std::string(i < 10 ? "0" : "") + std::to_string(i); }
};

TEST_F(ControlPanelTest, EveryWindowButtonAndListWorksFromTheMenuThroughFiftyReloads) {
    for (int i = 0; i < 20; ++i) AddScript("VL_PanelScript.py", Name(i) + ".py");
    AddScript("VL_PanelScript.py", "(VL_Disabled.py");  // a picker item written disabled
    AddScript("VL_PanelPrinter.py");
    StartSim();
    RunSeconds(0.1);

    // The panel, built on first use from the lines kept until then.
    Menu("Control Panel");
    std::string title = Widget("MainWindow \"Vorlith 2.67.07 (SDK 2.10) ");
    EXPECT_NE(title.find("(500,650,950,100) shown root"), std::string::npos) << title;
    EXPECT_EQ(Property(Widget("Button \" Start Python\" (570,195,660,173)"), "Enabled"), 0);
    EXPECT_EQ(Property(Widget("Button \" Stop Python\" (670,195,760,173)"), "Enabled"), 1);
    EXPECT_EQ(Property(Widget("Button \"\" (770,195,792,173)"), "ButtonState"), 1);
    EXPECT_NE(Widget("Caption \"Enable Output File\" (793,195,893,173)"), "");
    EXPECT_NE(Widget("Button \" Reload Plugins\" (770,175,860,153)"), "");
    EXPECT_NE(Widget("Button \" Script Info\" (790,155,860,133)"), "");
    Lines display = DisplayList();
    EXPECT_EQ(display, Cut({"early", std::string(45, 'd'), std::string(204, 'd')}));
    Lines printed = PrintList();
    ASSERT_FALSE(printed.empty());
    EXPECT_EQ(printed[0], "(VL_Disabled enable");
    EXPECT_EQ(Drawn(575, 155, 775, 133), Lines{"VL_Disabled"});  // the picker's current item

    // Clear LB, a 100-character line in three list lines, the output switch.
    Click(kClearLB);
    EXPECT_TRUE(PrintList().empty());
    Message(0x7001);
    EXPECT_EQ(PrintList(), Cut({std::string(45, 'p'), std::string(45, 'p'), std::string(10, 'p')}));
    Click(kOutputCheckBox);
    Message(0x7004);
    EXPECT_EQ(PrintList().back(), "standard output");
    EXPECT_EQ(CountOf(Output(), "standard output"), 0);  // the output file is switched off
    Click(kOutputCheckBox);
    Message(0x7004);
    EXPECT_EQ(CountOf(Output(), "standard output"), 1);

    // The picker: open, choose a script, choose the disabled item, click outside.
    Click(kPicker);
    Point third = DrawnAt("VL_Panel02");
    ASSERT_GE(third.x, 0) << "the popup menu is not drawn";
    EXPECT_GE(DrawnAt("VL_PanelPrinter").x, 0);
    Click(third);
    EXPECT_EQ(Drawn(575, 155, 775, 133), Lines{"VL_Panel02"});
    EXPECT_EQ(Property(Widget("Custom \"(VL_Disabled;"), "1800"), 3);
    Click(kPicker);
    Click(DrawnAt("VL_Disabled"));
    Click(kPicker);
    Click({1000, 20});
    EXPECT_EQ(Drawn(575, 155, 775, 133), Lines{"VL_Panel02"});  // neither changed the choice
    Click(kClearLB);
    Click(kScriptInfo);
    printed = PrintList();
    ASSERT_EQ(printed.size(), 6u) << ::testing::PrintToString(printed);  // the empty lines show nothing
    EXPECT_EQ(printed[0], "Script Information");
    EXPECT_EQ(printed[1].rfind("Script Id :- ", 0), 0u);
    EXPECT_EQ(Lines(printed.begin() + 2, printed.end()),
              Cut({"Name :- VL_Panel02", "Signature :- vorlith.test.vl_panel02",
                   "Description :- Panel test script VL_Panel02", "Script Type :- 1"}));

    // Close with the close box, reopen from the menu: the same window again.
    Click(kPanelClose);
    EXPECT_NE(Widget("MainWindow \"Vorlith").find(" hidden root"), std::string::npos);
    Menu("Control Panel");
    EXPECT_NE(Widget("MainWindow \"Vorlith").find(" shown root"), std::string::npos);
    EXPECT_EQ(Drawn(575, 155, 775, 133), Lines{"VL_Panel02"});

    // Enable / disable: 22 scripts on three pages; a check box calls the script once.
    Click(kPanelClose);
    Menu("Script Enable / Disable");
    EXPECT_NE(Widget("TextField \"(VL_Disabled\" (220,489,454,469)"), "");
    EXPECT_EQ(Property(Widget("Button \"Previous\" (272,288,341,266)"), "Enabled"), 0);
    EXPECT_EQ(Property(Widget("Button \"Next\" (352,288,422,266)"), "Enabled"), 1);
    std::string before = Output();
    Click(AdminCheckBox(1));
    Click(AdminCheckBox(1));
    EXPECT_EQ(Output().substr(before.size()), "VL_Panel00 disable\nVL_Panel00 enable\n");
    Click(kAdminNext);
    Click(kAdminNext);
    Click(kAdminNext);  // stays on the last page
    EXPECT_NE(Widget("TextField \"VL_Panel15\" (220,489,454,469)"), "");
    EXPECT_NE(Widget("TextField \"VL_PanelPrinter\" (220,364,454,344)"), "");
    EXPECT_EQ(Property(Widget("TextField \"\" (220,339,454,319)"), "Enabled"), 0);
    EXPECT_EQ(Property(Widget("Button \"Next\" (352,288,422,266)"), "Enabled"), 0);
    EXPECT_EQ(Property(Widget("Button \"Previous\" (272,288,341,266)"), "Enabled"), 1);
    before = Output();
    Click(AdminCheckBox(0));  // VL_Panel15 off
    EXPECT_EQ(Output().substr(before.size()), "VL_Panel15 disable\n");
    Click(kAdminPrevious);
    EXPECT_NE(Widget("TextField \"VL_Panel07\" (220,489,454,469)"), "");
    Click(kAdminClose);
    Menu("Script Enable / Disable");  // a new window, on page 0
    EXPECT_NE(Widget("TextField \"(VL_Disabled\" (220,489,454,469) shown"), "");
    EXPECT_EQ(CountOf(Widget("MainWindow \"Enable / Disable Scripts\""), " shown root"), 1);

    // Information: pages of eight, the disabled script says so.
    Click(kAdminClose);
    Menu("Script Information");
    Click(kInfoNext);
    std::string row = Widget("Caption \"(");
    Click(kInfoNext);
    std::string disabled = Widget("Disabled) [Standard Type Script]");
    EXPECT_NE(disabled.find(") VL_Panel15 (Disabled) [Standard Type Script]\" (320,635,608,615)"), std::string::npos)
        << disabled;
    EXPECT_NE(Widget("Caption \"Signature: vorlith.test.vl_panel16\" (365,578,600,558)"), "");
    Click(kInfoClose);

    // Stop, Start and fifty reloads; scripts leave their flight loops behind every time.
    Menu("Control Panel");
    Click(kStop);
    EXPECT_EQ(Property(Widget("Button \" Start Python\""), "Enabled"), 1);
    EXPECT_EQ(Property(Widget("Button \" Reload Scripts\""), "Enabled"), 0);
    Click(kStart);
    EXPECT_EQ(Property(Widget("Button \" Start Python\""), "Enabled"), 0);
    // The picker shows the first script after a start, as its only item.
    EXPECT_EQ(Drawn(575, 155, 775, 133), Lines{"VL_Disabled"});
    for (int i = 0; i < 50; ++i) Click(kReloadScripts);
    RunSeconds(0.5);
    EXPECT_EQ(CountOf(Log(), "+++ LOGGING STARTED +++"), 52);
    EXPECT_EQ(CountOf(Log(), "Traceback"), 0) << Log();
    EXPECT_EQ(CountOf(Output(), "VL_Panel15 enable"), 52);  // enabled again by every start
    Click(kClearLB);
    Click(kScriptInfo);
    // The picker holds one item now, and the choice made earlier points past it.
    EXPECT_EQ(PrintList(), Lines{"Script Not Loaded"});
    EXPECT_EQ(SimLog().find("error"), std::string::npos) << SimLog();

    // Bad input: a number, bytes, an empty line, 10 MB in one write and 10 MB of lines.
    Message(0x7002);
    printed = PrintList();
    ASSERT_EQ(printed.size(), 19u);
    EXPECT_EQ(Property(Widget("Custom \"last line\""), "1910"), 5000);  // the newest 5000 list lines
    EXPECT_NE(std::find(printed.begin(), printed.end(), "line 098334"), printed.end()) << ::testing::PrintToString(printed);
    EXPECT_EQ(CountOf(Output(), "display refused a number\n"), 1);
    Message(0x7003);
    EXPECT_TRUE(PrintList().empty());
    EXPECT_TRUE(DisplayList().empty());
    Message(0x7005);
    EXPECT_EQ(PrintList(), Lines{"from a thread"});
}

TEST_F(ControlPanelTest, PseudoDisplayExampleShowsOneAltitudeLine) {
    AddExample("VL_PseudoDisplay.py");
    StartSim();
    Menu("Control Panel");
    RunSeconds(2.1);
    Lines display = DisplayList();
    ASSERT_EQ(display.size(), 1u) << Log();
    EXPECT_EQ(display[0].rfind("Altitude ", 0), 0u) << display[0];
    EXPECT_EQ(PrintList(), Lines{"Pseudo display example started"});
    StopSim();
    EXPECT_EQ(Log().find("Error"), std::string::npos) << Log();
}

TEST_F(ControlPanelTest, MissingScriptsFolderIsShownInThePicker) {
    RemoveScriptsFolder();
    StartSim();
    Menu("Control Panel");
    EXPECT_EQ(Drawn(575, 155, 775, 133), Lines{"PythonScripts Director"});  // what fits on the button
    Click(kScriptInfo);
    EXPECT_EQ(PrintList(), Cut({"PythonScripts Directory Error", "Check that the PythonScripts Directory exists"}));

    // Reload Plugins: the plug-in comes back with one menu and a new panel.
    Click(kReloadPlugins);
    RunSeconds(0.1);
    EXPECT_EQ(Widget("MainWindow \"Vorlith"), "");
    Menu("Control Panel");
    EXPECT_NE(Widget("MainWindow \"Vorlith").find(" shown root"), std::string::npos);
    EXPECT_EQ(CountOf(SimLog(), "reloading plug-ins"), 1);
    EXPECT_EQ(SimLog().find("error"), std::string::npos) << SimLog();
}

}  // namespace
}  // namespace vorlith::test

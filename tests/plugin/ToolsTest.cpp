// The script-author tools switched on in Vorlith.ini's [TOOLS]: a script whose calls keep
// raising is disabled, and an edited script file reloads the scripts.

#include <string>
#include <vector>

#include "Harness.h"
#include "XPLMDefs.h"
#include "driver.h"

namespace vorlith::test {
namespace {

// Raises in every frame's drawing and says how often it was called when disabled.
constexpr const char* kFailing = R"(import XPLMDisplay
class Vorlith:
    def XPluginStart(self):
        self.calls = 0
        self.draw = self.Draw
        XPLMDisplay.XPLMRegisterDrawCallback(self, self.draw, XPLMDisplay.xplm_Phase_Window, 0, 0)
        return "Failing", "vl.failing", "raises in every call"
    def Draw(self, phase, before, refcon):
        self.calls += 1
        raise RuntimeError("failing call %d" % self.calls)
    def XPluginStop(self):
        pass
    def XPluginEnable(self):
        return 1
    def XPluginDisable(self):
        print("failing disabled after %d calls" % self.calls)
    def XPluginReceiveMessage(self, sender, message, param):
        pass
)";

// Enables the failing script again at its 20th frame; `version` tells its edits apart.
std::string Edited(int version) {
    return R"(import XPLMProcessing
import PythonScriptMessaging as messaging
class Vorlith:
    def XPluginStart(self):
        self.frames = 0
        self.loop = self.Loop
        XPLMProcessing.XPLMRegisterFlightLoopCallback(self, self.loop, -1.0, 0)
        print("edited version )" + std::to_string(version) + R"(")
        return "Edited", "vl.edited", "re-enables the failing script"
    def Loop(self, since, elapsed, counter, refcon):
        self.frames += 1
        if self.frames == 20:
            failing = messaging.VL_FindScriptBySignature("vl.failing")
            print("failing enabled: %d" % messaging.VL_IsScriptEnabled(failing))
            messaging.VL_EnableScript(failing)
        return -1.0
    def XPluginStop(self):
        pass
    def XPluginEnable(self):
        return 1
    def XPluginDisable(self):
        pass
    def XPluginReceiveMessage(self, sender, message, param):
        pass
)";
}

TEST_F(PluginTest, FailingScriptsAreDisabledAndEditedScriptsReloaded) {
    WriteIni("[TOOLS]\nDisableFailingScripts = 3\nReloadOnChange = 1\n");
    WriteScript("VL_Failing.py", kFailing);
    WriteScript("VL_Edited.py", Edited(1));
    StartSim();
    RunSeconds(1.5);

    std::string log = Log(), out = Output();
    const std::string disabled = "Script 'VL_Failing.py' disabled: 3 calls in a row raised an error\n";
    // Three failures, disabled once; enabled again, it takes three more before the next.
    EXPECT_EQ(CountOf(log, disabled), 2) << log;
    EXPECT_EQ(CountOf(log, "RuntimeError: failing call"), 6) << log;
    EXPECT_EQ(CountOf(out, "failing enabled: 0\n"), 1) << out;
    EXPECT_TRUE(out.find("failing disabled after 3 calls\n") < out.find("failing disabled after 6 calls\n"))
        << out;
    // Nothing in the folder changed yet.
    EXPECT_EQ(CountOf(log, "Reloading scripts: "), 0) << log;

    WriteScript("VL_Edited.py", Edited(2));
    RunSeconds(2.0);
    StopSim();
    log = Log();
    out = Output();
    EXPECT_EQ(CountOf(log, "Reloading scripts: VL_Edited.py was changed\n"), 1) << log;
    EXPECT_EQ(CountOf(out, "edited version 2\n"), 1) << out;
    // The reloaded failing script is a new one with a count of its own: disabled, enabled
    // again by the new edited script, disabled again.
    EXPECT_EQ(CountOf(log, disabled), 4) << log;
}

// A flight loop costing `microseconds` of busy time every frame.
std::string Costly(const std::string& name, int microseconds) {
    return "import time\nimport XPLMProcessing\nclass Vorlith:\n"
           "    def XPluginStart(self):\n"
           "        self.loop = self.Loop\n"
           "        XPLMProcessing.XPLMRegisterFlightLoopCallback(self, self.loop, -1.0, 0)\n"
           "        return '" + name + "', 'vl." + name + "', 'costs time'\n"
           "    def Loop(self, since, elapsed, counter, refcon):\n"
           "        end = time.time() + " + std::to_string(microseconds) + " / 1e6\n"
           "        while time.time() < end:\n"
           "            pass\n"
           "        return -1.0\n"
           "    def XPluginStop(self):\n        pass\n"
           "    def XPluginEnable(self):\n        return 1\n"
           "    def XPluginDisable(self):\n        pass\n"
           "    def XPluginReceiveMessage(self, sender, message, param):\n        pass\n";
}

// The first number after the name on the table line of `script`, -1 when not found.
double TotalOf(const std::vector<std::string>& lines, const std::string& script) {
    for (const std::string& line : lines)
        if (line.rfind(script, 0) == 0) return std::stod(line.substr(line.find_last_of(' ') + 1));
    return -1;
}

TEST_F(PluginTest, PerformanceTableRanksTheCostliestScriptFirst) {
    WriteIni("[TOOLS]\nPerformanceLog = 2\n");
    WriteScript("VL_Cheap.py", Costly("Cheap", 0));
    WriteScript("VL_Slow.py", Costly("Slow", 3000));
    StartSim();
    std::string error;
    ASSERT_TRUE(xpsim::driver::pickMenu("Plugins/Vorlith/Performance", &error)) << error;
    RunSeconds(6.5);

    // The window shows the table as it stood at the last second.
    std::vector<std::string> shown;
    for (const xpsim::DrawItem& item : xpsim::driver::drawList())
        if (item.kind == "string") shown.push_back(item.text);
    std::vector<std::string> rows;
    for (const std::string& text : shown)
        if (text.rfind("VL_", 0) == 0) rows.push_back(text);
    ASSERT_EQ(rows.size(), 2u) << ::testing::PrintToString(shown);
    EXPECT_EQ(rows[0].rfind("VL_Slow.py", 0), 0u) << rows[0];
    // About 3 ms of each frame go to the slow script's flight loop, nearly nothing to the other.
    double slow = TotalOf(rows, "VL_Slow.py"), cheap = TotalOf(rows, "VL_Cheap.py");
    EXPECT_GT(slow, 1500.0) << rows[0];
    EXPECT_LT(slow, 30000.0) << rows[0];
    EXPECT_LT(cheap, slow / 10) << rows[1];
    StopSim();

    // Every second second, the same table in the log.
    std::string log = Log();
    EXPECT_EQ(CountOf(log, "Microseconds per frame, last second ("), 2) << log;
    EXPECT_EQ(CountOf(log, "VL_Slow.py "), 2) << log;
    EXPECT_LT(log.find("VL_Slow.py "), log.find("VL_Cheap.py ")) << log;
}

// Types `text` into the focused widget, then the virtual key `end` (0 for none).
void Type(const std::string& text, int end) {
    for (char c : text) xpsim::driver::keyPress(c, xplm_DownFlag, 0);
    if (end) xpsim::driver::keyPress(end == XPLM_VK_RETURN ? '\r' : 0, xplm_DownFlag, static_cast<char>(end));
    xpsim::driver::runFrames(1);
}

TEST_F(PluginTest, ConsoleRunsLinesInOneNamespaceAndRecallsThem) {
    WriteScript("VL_Edited.py", Edited(1));
    StartSim();
    std::string error;
    ASSERT_TRUE(xpsim::driver::pickMenu("Plugins/Vorlith/Python Console", &error)) << error;
    xpsim::driver::runFrames(1);
    Type("x = 6 * 7", XPLM_VK_RETURN);
    Type("x + 1", XPLM_VK_RETURN);
    Type("print('seen'); 1 / 0", XPLM_VK_RETURN);
    Type("", XPLM_VK_UP);
    Type("", XPLM_VK_UP);
    Type("", XPLM_VK_RETURN);  // x + 1 again

    std::vector<std::string> shown;
    for (const xpsim::DrawItem& item : xpsim::driver::drawList())
        if (item.kind == "string") shown.push_back(item.text);
    auto count = [&](const std::string& text) {
        int n = 0;
        for (const std::string& line : shown) n += line == text;
        return n;
    };
    EXPECT_EQ(count(">>> x = 6 * 7"), 1) << ::testing::PrintToString(shown);
    EXPECT_EQ(count(">>> x + 1"), 2) << ::testing::PrintToString(shown);
    EXPECT_EQ(count("43"), 2) << ::testing::PrintToString(shown);
    EXPECT_EQ(count("seen"), 1) << ::testing::PrintToString(shown);
    EXPECT_EQ(count("ZeroDivisionError: division by zero") + count("ZeroDivisionError: integer division or modulo by zero"), 1)
        << ::testing::PrintToString(shown);
    StopSim();
    // The console's traceback stays out of the log: it is the user's, shown where he typed.
    EXPECT_EQ(CountOf(Log(), "ZeroDivisionError"), 0) << Log();
}

}  // namespace
}  // namespace vorlith::test

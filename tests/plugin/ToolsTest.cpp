// The script-author tools switched on in Vorlith.ini's [TOOLS]: a script whose calls keep
// raising is disabled, and an edited script file reloads the scripts.

#include <string>

#include "Harness.h"

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

}  // namespace
}  // namespace vorlith::test

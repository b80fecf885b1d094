// The command system in the host: built-in and created commands, the begin /
// continue / end phases, before and after handler chains and how a 0 stops them,
// holds left by an unloaded plug-in, and handle validation.

#include <algorithm>
#include <filesystem>

#include "XPLMMenus.h"
#include "XPLMPlugin.h"
#include "XPLMUtilities.h"
#include "plugin_test_util.h"

namespace xpsim::test {
namespace {

constexpr int kBeginOwnCommand = 0x7FF00010;  // util_commands begins its command and keeps it held

std::vector<std::string> gErrors;
void recordError(const char* message) { gErrors.push_back(message); }

// Handler calls as "<refcon text>:<phase>"; a refcon whose text starts with '!' answers 0.
std::vector<std::string> gCalls;
int recordCall(XPLMCommandRef, XPLMCommandPhase phase, void* refcon) {
    const char* tag = static_cast<const char*>(refcon);
    gCalls.push_back(std::string(tag) + ":" + std::to_string(phase));
    return tag[0] == '!' ? 0 : 1;
}

// A before-handler that unregisters the after-handler tagged "late" of the same command.
int unregisterLate(XPLMCommandRef command, XPLMCommandPhase phase, void*) {
    gCalls.push_back("u:" + std::to_string(phase));
    XPLMUnregisterCommandHandler(command, recordCall, 0, const_cast<char*>("late"));
    return 1;
}

// A handler that runs its own command again at every begin.
int runsItself(XPLMCommandRef command, XPLMCommandPhase phase, void*) {
    gCalls.push_back("again:" + std::to_string(phase));
    if (phase == xplm_CommandBegin) XPLMCommandOnce(command);
    return 1;
}

class CommandsTest : public SimRootTest {
protected:
    void SetUp() override {
        SimRootTest::SetUp();
        gErrors.clear();
        gCalls.clear();
        startSim();
        XPLMSetErrorCallback(recordError);
    }
    int logCount(const std::string& text) const {
        const std::string all = log();
        int n = 0;
        for (size_t at = all.find(text); at != std::string::npos; at = all.find(text, at + 1)) ++n;
        return n;
    }
};

TEST_F(CommandsTest, BuiltInCommandsAreFoundAndCreatingAnExistingNameReturnsItsRef) {
    XPLMCommandRef pause = XPLMFindCommand("sim/operation/pause_toggle");
    ASSERT_NE(pause, nullptr);
    EXPECT_NE(XPLMFindCommand("sim/flight_controls/flaps_down"), nullptr);
    EXPECT_NE(XPLMFindCommand("sim/flight_controls/flaps_down"), pause);
    EXPECT_EQ(XPLMFindCommand("sim/no/such_command"), nullptr);
    EXPECT_EQ(XPLMFindCommand("name"), nullptr);  // the table's header is no command
    EXPECT_EQ(XPLMCreateCommand("sim/operation/pause_toggle", "again"), pause);

    XPLMCommandRef mine = XPLMCreateCommand("xpsim/test/mine", "Mine");
    ASSERT_NE(mine, nullptr);
    EXPECT_EQ(XPLMFindCommand("xpsim/test/mine"), mine);
    EXPECT_EQ(XPLMCreateCommand("xpsim/test/mine", "Other text"), mine);
    EXPECT_TRUE(gErrors.empty());
    EXPECT_EQ(XPLMCreateCommand("", "empty"), nullptr);
    EXPECT_EQ(XPLMCreateCommand(nullptr, "null"), nullptr);
    EXPECT_EQ(XPLMFindCommand(nullptr), nullptr);
    EXPECT_EQ(gErrors.size(), 3u);

    // A new run forgets created commands; its refs are not the old ones.
    startSim();
    EXPECT_EQ(XPLMFindCommand("xpsim/test/mine"), nullptr);
    EXPECT_NE(XPLMFindCommand("sim/operation/pause_toggle"), nullptr);
}

TEST_F(CommandsTest, HeldCommandContinuesOncePerFrameUntilEndedAndOnceHasNoContinue) {
    XPLMCommandRef command = XPLMCreateCommand("xpsim/test/hold", "");
    XPLMRegisterCommandHandler(command, recordCall, 1, const_cast<char*>("h"));
    std::string error;
    ASSERT_TRUE(driver::commandBegin("xpsim/test/hold", &error)) << error;
    driver::runFrames(3);
    ASSERT_TRUE(driver::commandEnd("xpsim/test/hold", &error)) << error;
    driver::runFrames(2);
    EXPECT_EQ(gCalls, (std::vector<std::string>{"h:0", "h:1", "h:1", "h:1", "h:2"}));

    gCalls.clear();
    ASSERT_TRUE(driver::commandOnce("xpsim/test/hold", &error)) << error;
    XPLMCommandOnce(command);
    driver::runFrames(1);
    EXPECT_EQ(gCalls, (std::vector<std::string>{"h:0", "h:2", "h:0", "h:2"}));

    // Two sources holding it: continues while either holds, one end each.
    gCalls.clear();
    XPLMCommandBegin(command);
    XPLMCommandBegin(command);
    XPLMCommandEnd(command);
    driver::runFrames(1);
    XPLMCommandEnd(command);
    driver::runFrames(1);
    EXPECT_EQ(gCalls, (std::vector<std::string>{"h:0", "h:0", "h:2", "h:1", "h:2"}));
    EXPECT_TRUE(gErrors.empty());

    EXPECT_FALSE(driver::commandEnd("xpsim/test/hold", &error));
    EXPECT_NE(error.find("not begun"), std::string::npos) << error;
    EXPECT_FALSE(driver::commandOnce("xpsim/no/such", &error));
    EXPECT_NE(error.find("xpsim/no/such"), std::string::npos) << error;
}

TEST_F(CommandsTest, BeforeHandlersRunThenTheSimulatorThenAfterHandlersAndAZeroStopsTheRest) {
    XPLMCommandRef flaps = XPLMFindCommand("sim/flight_controls/flaps_down");
    XPLMRegisterCommandHandler(flaps, recordCall, 0, const_cast<char*>("after1"));
    XPLMRegisterCommandHandler(flaps, recordCall, 1, const_cast<char*>("before1"));
    XPLMRegisterCommandHandler(flaps, recordCall, 1, const_cast<char*>("before2"));
    XPLMRegisterCommandHandler(flaps, recordCall, 0, const_cast<char*>("after2"));
    XPLMCommandOnce(flaps);
    EXPECT_EQ(gCalls, (std::vector<std::string>{"before1:0", "before2:0", "after1:0", "after2:0", "before1:2",
                                                 "before2:2", "after1:2", "after2:2"}));
    EXPECT_EQ(logCount("command sim/flight_controls/flaps_down begin"), 1);
    EXPECT_EQ(logCount("command sim/flight_controls/flaps_down end"), 1);

    // A before-handler answering 0 keeps the simulator and every later handler out.
    gCalls.clear();
    XPLMUnregisterCommandHandler(flaps, recordCall, 1, const_cast<char*>("before1"));
    XPLMRegisterCommandHandler(flaps, recordCall, 1, const_cast<char*>("!stop"));
    XPLMCommandOnce(flaps);
    EXPECT_EQ(gCalls, (std::vector<std::string>{"before2:0", "!stop:0", "before2:2", "!stop:2"}));
    EXPECT_EQ(logCount("command sim/flight_controls/flaps_down begin"), 1);

    // An after-handler answering 0 stops the after-handlers behind it, not the simulator.
    gCalls.clear();
    XPLMUnregisterCommandHandler(flaps, recordCall, 1, const_cast<char*>("!stop"));
    XPLMUnregisterCommandHandler(flaps, recordCall, 0, const_cast<char*>("after2"));
    XPLMRegisterCommandHandler(flaps, recordCall, 0, const_cast<char*>("!late"));
    XPLMRegisterCommandHandler(flaps, recordCall, 0, const_cast<char*>("after3"));
    XPLMCommandBegin(flaps);
    EXPECT_EQ(gCalls, (std::vector<std::string>{"before2:0", "after1:0", "!late:0"}));
    EXPECT_EQ(logCount("command sim/flight_controls/flaps_down begin"), 2);
    XPLMCommandEnd(flaps);
    EXPECT_TRUE(gErrors.empty());
}

TEST_F(CommandsTest, UnregisterRemovesOnlyTheRegistrationMatchingAllFourArguments) {
    XPLMCommandRef command = XPLMCreateCommand("xpsim/test/unregister", "");
    char a[] = "a", b[] = "b";
    XPLMRegisterCommandHandler(command, recordCall, 1, a);
    XPLMRegisterCommandHandler(command, recordCall, 0, a);
    XPLMRegisterCommandHandler(command, recordCall, 1, b);
    XPLMUnregisterCommandHandler(command, recordCall, 1, a);
    XPLMCommandBegin(command);
    EXPECT_EQ(gCalls, (std::vector<std::string>{"b:0", "a:0"}));
    EXPECT_TRUE(gErrors.empty());
    XPLMCommandEnd(command);

    // A handler unregistered by an earlier one in the same chain is not called.
    gCalls.clear();
    XPLMRegisterCommandHandler(command, unregisterLate, 1, nullptr);
    XPLMRegisterCommandHandler(command, recordCall, 0, const_cast<char*>("late"));
    XPLMCommandOnce(command);
    EXPECT_EQ(gCalls, (std::vector<std::string>{"b:0", "u:0", "a:0", "b:2", "u:2", "a:2"}));
    EXPECT_EQ(gErrors.size(), 1u);  // the end phase's unregistering found nothing left
    XPLMUnregisterCommandHandler(command, recordCall, 1, a);  // already gone
    XPLMRegisterCommandHandler(command, nullptr, 1, a);
    EXPECT_EQ(gErrors.size(), 3u);
}

TEST_F(CommandsTest, InvalidOrForeignCommandRefsAreReportedAndIgnored) {
    XPLMCommandRef command = XPLMCreateCommand("xpsim/test/valid", "");
    XPLMRegisterCommandHandler(command, recordCall, 1, const_cast<char*>("h"));
    int notAHandle = 0;
    XPLMCommandOnce(&notAHandle);
    XPLMCommandBegin(nullptr);
    XPLMCommandEnd(XPLMFindPluginsMenu());  // a menu id is not a command
    XPLMRegisterCommandHandler(reinterpret_cast<XPLMCommandRef>(0x1234), recordCall, 1, nullptr);
    XPLMUnregisterCommandHandler(nullptr, recordCall, 1, nullptr);
    XPLMCommandEnd(command);  // valid, but never begun
    EXPECT_EQ(gErrors.size(), 6u);
    EXPECT_TRUE(gCalls.empty());

    // Refs of an earlier run are stale in the next one.
    startSim();
    XPLMSetErrorCallback(recordError);
    gErrors.clear();
    XPLMCommandOnce(command);
    EXPECT_EQ(gErrors.size(), 1u);
    EXPECT_TRUE(gCalls.empty());
}

TEST_F(CommandsTest, AHandlerRunningItsOwnCommandIsStoppedAtABoundedDepth) {
    XPLMCommandRef command = XPLMCreateCommand("xpsim/test/loop", "Runs itself");
    XPLMRegisterCommandHandler(command, runsItself, 1, nullptr);
    XPLMCommandOnce(command);
    ASSERT_EQ(gErrors.size(), 2u);  // the innermost begin and end are dropped
    EXPECT_NE(gErrors[0].find("command xpsim/test/loop: handlers run commands 32 deep; its begin phase"),
              std::string::npos)
        << gErrors[0];
    // Every phase that ran is balanced: as many ends as begins, and nothing is left held.
    EXPECT_EQ(std::count(gCalls.begin(), gCalls.end(), "again:0"), 32);
    EXPECT_EQ(std::count(gCalls.begin(), gCalls.end(), "again:2"), 32);
    gCalls.clear();
    driver::runFrames(1);
    EXPECT_TRUE(gCalls.empty());
}

TEST_F(CommandsTest, PluginHandlersRunAsThePluginOnlyWhileEnabledAndUnloadEndsItsHolds) {
    std::string error;
    const int id = loadTestPlugin("util_commands", "Cmd");
    ASSERT_GT(id, 0);
    driver::enablePluginsAndSendLoadMessages();
    const std::string folder = root + "/Resources/plugins/Cmd";
    clearEvents("Cmd");
    const std::string me = "myid=" + std::to_string(id);

    ASSERT_TRUE(driver::commandOnce("xpsim/test/Cmd", &error)) << error;
    EXPECT_EQ(events("Cmd"),
              (std::vector<std::string>{"before xpsim/test/Cmd phase=0 " + me, "after xpsim/test/Cmd phase=0 " + me,
                                        "before xpsim/test/Cmd phase=2 " + me, "after xpsim/test/Cmd phase=2 " + me}));

    // Its before-handler answering 0 keeps pause_toggle from the simulator.
    clearEvents("Cmd");
    std::ofstream(folder + "/stop_before") << "\n";
    ASSERT_TRUE(driver::commandOnce("sim/operation/pause_toggle", &error)) << error;
    EXPECT_EQ(events("Cmd"),
              (std::vector<std::string>{"before sim/operation/pause_toggle phase=0 " + me,
                                        "before sim/operation/pause_toggle phase=2 " + me}));
    EXPECT_EQ(logCount("command sim/operation/pause_toggle begin"), 0);

    // Disabled, it is skipped and the simulator acts.
    clearEvents("Cmd");
    XPLMDisablePlugin(id);
    ASSERT_TRUE(driver::commandOnce("sim/operation/pause_toggle", &error)) << error;
    EXPECT_TRUE(events("Cmd").empty());
    EXPECT_EQ(logCount("command sim/operation/pause_toggle begin"), 1);

    // A hold the plug-in leaves open is ended when it goes; its handlers are gone first.
    XPLMEnablePlugin(id);
    std::filesystem::remove(folder + "/stop_before");
    XPLMCommandRef own = XPLMFindCommand("xpsim/test/Cmd");
    XPLMRegisterCommandHandler(own, recordCall, 0, const_cast<char*>("sim"));
    driver::sendMessage(id, kBeginOwnCommand, 0);
    driver::runFrames(1);
    clearEvents("Cmd");
    driver::shutdown();
    EXPECT_EQ(gCalls, (std::vector<std::string>{"sim:0", "sim:1", "sim:2"}));
    EXPECT_TRUE(events("Cmd").empty());
}

}  // namespace
}  // namespace xpsim::test

// Start, stop and reload of the interpreter as the simulator drives them, with the
// exact log and debug-output lines, and the relay of the simulator's events to scripts.

#include <algorithm>
#include <filesystem>

#include "Harness.h"
#include "XPLMPlugin.h"
#include "driver.h"

namespace vorlith::test {
namespace {

using Lines = std::vector<std::string>;

// The output lines of the recorder scripts that are not messages.
Lines EventLines(const std::string& output) {
    Lines events;
    for (const std::string& line : SplitLines(output))
        if (line.find(" message ") == std::string::npos) events.push_back(line);
    return events;
}

const char* PlatformName() { return kPythonMajor == 2 ? "linux2" : "linux"; }

TEST_F(PluginTest, StartAndStopWriteEveryLogLineInOrder) {
    AddScript("VL_Recorder.py");
    StartSim();
    StopSim();

    std::string log = Log();
    // The interpreter's version text may span two lines (Python 2 puts the compiler on its own).
    std::size_t versionAt = log.find("Python Version ");
    std::size_t modulesAt = log.find("Before Modules Init\n");
    ASSERT_NE(versionAt, std::string::npos) << log;
    ASSERT_NE(modulesAt, std::string::npos) << log;
    std::string version = log.substr(versionAt, modulesAt - versionAt);
    std::string platform = std::string(" running on the ") + PlatformName() + " platform\n";
    EXPECT_EQ(version.rfind(kPythonMajor == 2 ? "Python Version 2.7." : "Python Version 3.", 0), 0u) << version;
    EXPECT_EQ(version.substr(version.size() - std::min(version.size(), platform.size())), platform) << version;

    Lines before = SplitLines(log.substr(0, versionAt));
    ASSERT_EQ(before.size(), 5u) << log;
    EXPECT_EQ(before[0], "+++ LOGGING STARTED +++");
    EXPECT_EQ(before[1].rfind("Vorlith 2.67.07 (SDK 2.10) ", 0), 0u) << before[1];
    EXPECT_EQ(before[2], "Vorlith.ini file not found");
    EXPECT_EQ(before[3], "Before Py_Initialize()");
    EXPECT_EQ(before[4], "After Py_Initialize()");
    EXPECT_EQ(log.substr(modulesAt), "Before Modules Init\n"
                                     "Using path below for script path\n" +
                                         ScriptsFolder() +
                                         "\n"
                                         "After Modules Init\n"
                                         "Searching for Standard Scripts\n"
                                         "Script 'VL_Recorder.py' successfully loaded.\n"
                                         "Before Py_Finalize()\n"
                                         "After Py_Finalize()\n"
                                         "--- LOGGING STOPPED ---\n\n");

    EXPECT_EQ(EventLines(Output()),
              (Lines{"VL_Recorder start", "VL_Recorder enable", "VL_Recorder disable", "VL_Recorder stop"}));
    EXPECT_NE(SimLog().find("VorlithVersionNumber = 2.67.07\n"), std::string::npos) << SimLog();
}

TEST_F(PluginTest, EventsReachEveryScriptInLoadOrder) {
    AddScript("VL_Recorder.py", "VL_First.py");
    AddScript("VL_Recorder.py", "VL_Second.py");
    StartSim();
    StopSim();
    // Every script is started before any is enabled: all imports come first.
    EXPECT_EQ(EventLines(Output()),
              (Lines{"VL_First start", "VL_Second start", "VL_First enable", "VL_Second enable", "VL_First disable",
                     "VL_Second disable", "VL_First stop", "VL_Second stop"}));
    EXPECT_NE(Log().find("Script 'VL_First.py' successfully loaded.\nScript 'VL_Second.py' successfully loaded.\n"),
              std::string::npos);
}

TEST_F(PluginTest, ReloadStopsAndStartsAFreshInterpreterAndImportsScriptsAgain) {
    AddScript("VL_Fresh.py");
    AddScript("VL_Recorder.py");
    StartSim();
    xpsim::driver::reloadPlugins();
    StopSim();

    std::string log = Log();
    EXPECT_EQ(CountOf(log, "+++ LOGGING STARTED +++\n"), 2) << log;
    EXPECT_EQ(CountOf(log, "After Py_Finalize()\n--- LOGGING STOPPED ---\n\n"), 2) << log;
    EXPECT_EQ(CountOf(log, "Script 'VL_Fresh.py' successfully loaded.\n"), 2);
    // A module-level mark left in sys by the first run is gone in the second.
    std::string output = Output();
    EXPECT_EQ(CountOf(output, "imported; seen before: False\n"), 2) << output;
    EXPECT_EQ(CountOf(output, "seen before: True"), 0);
    EXPECT_EQ(CountOf(output, "VL_Recorder start\n"), 2);
    EXPECT_EQ(CountOf(output, "VL_Recorder stop\n"), 2);
}

TEST_F(PluginTest, MissingScriptsFolderIsReportedOnTheDebugOutputAndNothingLoads) {
    RemoveScriptsFolder();
    StartSim();
    std::string expected = "\n*** VORLITH ERROR ***\nPath :- " + ScriptsFolder() +
                           " does not exist.\nYou will need to create a folder called PythonScripts under the "
                           "plugins folder\n*** VORLITH ERROR ***\n\n";
    EXPECT_NE(SimLog().find(expected), std::string::npos) << SimLog();
    // XPluginStart still succeeded and the empty table enables.
    EXPECT_EQ(XPLMIsPluginEnabled(vorlithId), 1);
    StopSim();
    // The log lives in the missing folder: nothing could be written, nothing was created.
    EXPECT_FALSE(std::filesystem::exists(ScriptsFolder()));
}

TEST_F(PluginTest, EmptyScriptsFolderStartsAndEnables) {
    StartSim();
    EXPECT_EQ(XPLMIsPluginEnabled(vorlithId), 1);
    std::string log = Log();
    EXPECT_NE(log.find("Searching for Standard Scripts\n"), std::string::npos);
    EXPECT_EQ(log.find("successfully loaded"), std::string::npos);
    StopSim();
    EXPECT_NE(Log().find("--- LOGGING STOPPED ---\n\n"), std::string::npos);
}

TEST_F(PluginTest, MessagesFromTheSimulatorAndOtherPluginsReachScriptsWithTheirParameter) {
    AddScript("VL_Recorder.py");
    InstallHelperPlugin("vl_sender");
    StartSim();
    xpsim::driver::sendMessage(XPLM_NO_PLUGIN_ID, 4242, 77);
    int sender = XPLMFindPluginBySignature("vorlith.test.sender");
    ASSERT_GE(sender, 0);
    std::string output = Output();
    // A long on Python 2, where small values would otherwise be plain ints.
    const char* integer = kPythonMajor == 2 ? " long" : " int";
    EXPECT_NE(output.find("VL_Recorder message from " + std::to_string(sender) + ": " + std::to_string(0x7F001) +
                          " " + std::to_string(0xBEEF) + integer),
              std::string::npos)
        << output;
    EXPECT_NE(output.find("VL_Recorder message from 0: 4242 77" + std::string(integer)), std::string::npos) << output;
    EXPECT_NE(output.find("VL_Recorder message from 0: " + std::to_string(XPLM_MSG_PLANE_LOADED) + " 0"),
              std::string::npos);
}

TEST_F(PluginTest, MissingEntryMethodsAreLoggedWhereTheyWouldHaveBeenCalled) {
    WriteScript("VL_StartOnly.py",
                "class Vorlith:\n"
                "    def XPluginStart(self):\n"
                "        return 'Start only', 'vorlith.test.startonly', 'Has no other entry method'\n");
    AddScript("VL_Recorder.py");
    StartSim();
    xpsim::driver::sendMessage(XPLM_NO_PLUGIN_ID, 4242, 77);
    StopSim();
    std::string log = Log();
    // Each relay goes on to the next script: the recorder still sees every event.
    EXPECT_EQ(EventLines(Output()),
              (Lines{"VL_Recorder start", "VL_Recorder enable", "VL_Recorder disable", "VL_Recorder stop"}));
    const char* order[] = {"Script 'VL_StartOnly.py' successfully loaded.\n", "Cannot find method XPluginEnable\n",
                           "Cannot find method XPluginDisable\n", "Cannot find method XPluginStop\n",
                           "Before Py_Finalize()\n"};
    std::size_t at = 0;
    for (const char* line : order) {
        at = log.find(line, at);
        ASSERT_NE(at, std::string::npos) << line << " missing or out of order in:\n" << log;
        EXPECT_EQ(CountOf(log, line), 1) << line;
    }
    // The simulator's own messages come too: one line per message, the test's among them.
    int messages = CountOf(log, "Cannot find method XPluginReceiveMessage\n");
    EXPECT_GE(messages, 1) << log;
    EXPECT_EQ(CountOf(Output(), "VL_Recorder message from"), messages);
    EXPECT_EQ(log.find("Cannot find method XPluginStart\n"), std::string::npos);
    // Each failed lookup is printed, not left pending for the next script.
    EXPECT_EQ(CountOf(log, "AttributeError"), 3 + messages) << log;
}

}  // namespace
}  // namespace vorlith::test

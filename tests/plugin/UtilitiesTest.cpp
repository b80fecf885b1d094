// XPLMUtilities and XPLMPlugin end to end: one script uses paths, listings, commands,
// its error callback, features and other plug-ins in xpsim; the test checks what it
// printed, what the plug-in logged and what the simulator saw.

#include <map>
#include <regex>

#include "Harness.h"
#include "driver.h"

namespace vorlith::test {
namespace {

class UtilitiesTest : public PluginTest {};

std::string Report(const std::string& module, const std::string& function, const std::string& text) {
    return "Module - " + module + ", Function - " + function + ", Error = " + text + "\n";
}

// The command keys and buttons of the SDK header, numbered in their order from 0.
std::map<std::string, int> HeaderKeysAndButtons() {
    std::string header = ReadFile(std::string(VORLITH_TEST_SCRIPTS) + "/../../../sdk/XPLMUtilities.h");
    std::map<std::string, int> constants;
    std::regex entry(R"(^\s*(xplm_(key|joy)_\w+))");
    int next[2] = {0, 0};
    for (const std::string& line : SplitLines(header)) {
        std::smatch m;
        if (std::regex_search(line, m, entry)) constants[m[1]] = next[m[2] == "joy"]++;
    }
    return constants;
}

TEST_F(UtilitiesTest, AScriptUsesPathsListingsCommandsErrorsFeaturesAndPlugins) {
    WriteIni("[DEBUG]\nDebugCallbacks = 1\nCheckCallbacks = 1\n");
    AddScript("VL_Utilities.py");
    StartSim();
    RunSeconds(0.2);
    std::string error;
    ASSERT_TRUE(xpsim::driver::commandBegin("vorlith/test/hello", &error)) << error;
    xpsim::driver::runFrames(2);
    ASSERT_TRUE(xpsim::driver::commandEnd("vorlith/test/hello", &error)) << error;
    xpsim::driver::runFrames(1);
    StopSim();
    std::string out = Output(), log = Log();
    const std::string me = std::to_string(vorlithId);
    const std::string badCommand = "error: XPLMCommandBegin: 0x3039 is not a valid command\n";
    for (const std::string& expected : {
             "system " + root + "/\nsystem NP same True\nprefs " + root + "/Output/preferences/X-Plane.prf\n"
             "separator / NP /\nextract c.txt|a/b argument a/b/c.txt\nextract NP y.txt|/x\n"
             "long extract f.txt 5000\nversions 1051 210 1 language 1 initialized 1\nkey F1 F1\n"
             "debug -> 1 speak -> 1\nkey stroke -> 1 press -> 1 release -> 1\n",
             std::string("create doc Create Commmand.\n"),
             // names are appended, the first name only; counts replace element 0
             std::string("listing 1 names a.txt,a.txt indices a.txt,b.txt,c.txt total [3, 8] returned [3]\n"
                         "indices without counts b.txt,c.txt\nsmall index array 0 a.txt [1]\n"
                         "huge 1 negative 0\nNP indices c.txt\nnot a list raised TypeError\n"),
             std::string("find same True\nregister -> 1\nhello phase 0 refcon 5 same True\n"
                         "hello phase 2 refcon 5 same True\nonce -> 1\nwrong refcon -> 1\n"
                         "once phase 0\nunregister itself -> 1\nhandler short raised TypeError\n"),
             "set -> 1\nset other -> 1\n" + badCommand + "set None -> 1\nset None again -> 1\nremove none -> 1\n",
             std::string("has native 1\nfeature XPLM_WANTS_REFLECTIONS refcon 3\n"
                         "feature XPLM_USE_NATIVE_PATHS refcon 3\nenumerate -> 1\nenumerate again -> 1\n"
                         "remove -> 1\nremove again -> 1\nfeature XPLM_WANTS_REFLECTIONS refcon 4\n"
                         "feature XPLM_USE_NATIVE_PATHS refcon 4\nold enable raised TypeError\n"
                         "enable unknown -> 0\nenable native -> 1\nnative after enable 0\n"),
             // the simulator's feature is on during the call for a script that wants it, and off after
             std::string("native during call 1\n"), std::string("native during call 0\nnative after calls 0\n"),
             "me " + me + " count 1 found " + me + "\ninfo -> 1\ninfo Vorlith|tembrook.projects.vorlith|"
             "Python Script Interface Plugin\nby path 1 NP 1\ninfo None -> 1 NP -> 1\nenabled 1\n"
             "message 7f002 from " + me + " param set\nparam is 0xBEEF\nsend long -> 1\n"
             "message 7f003 from " + me + " param set\nsend text -> 1\nsend float -> 0\n",
             std::string(kPythonMajor == 2 ? "send int -> 0\n" : "message 7f005 from " + me +
                                                                      " param zero\nsend int -> 1\n"),
             std::string("reload doc Extract File and Path.\n"),
             std::string("hello phase 0 refcon 5 same True\nhello phase 1 refcon 5 same True\n"
                         "hello phase 1 refcon 5 same True\nhello phase 2 refcon 5 same True\n"),
         })
        EXPECT_NE(out.find(expected), std::string::npos) << expected << "\n---\n" << out;
    EXPECT_EQ(CountOf(out, "once phase"), 1) << out;
    EXPECT_EQ(CountOf(out, "OTHER ERROR CALLBACK"), 0) << out;
    EXPECT_EQ(CountOf(out, "raised nothing"), 0) << out;

    std::map<std::string, int> sdk = HeaderKeysAndButtons();
    ASSERT_EQ(sdk.size(), 190u);
    EXPECT_EQ(sdk["xplm_key_max"], 94);
    EXPECT_EQ(sdk["xplm_joy_max"], 94);
    std::regex constant(R"(constant (\w+)=(\d+))");
    std::map<std::string, int> module;
    for (const std::string& line : SplitLines(out)) {
        std::smatch m;
        if (std::regex_match(line, m, constant)) module[m[1]] = std::stoi(m[2]);
    }
    EXPECT_EQ(module, sdk);

    std::string sim = SimLog();
    EXPECT_NE(sim.find("VL_Utilities debug line\n"), std::string::npos) << sim;
    EXPECT_NE(sim.find("xpsim: speak: hello"), std::string::npos) << sim;

    const std::string refconMismatch = "' was unregistering a callback and refcon that does not exist, check "
                                       "refcon matches the one that was used in registering.";
    for (const std::string& report : {
             Report("XPLMUtilities", "XPLMUnregisterCommandHandler", "Script 'VL_Utilities.py" + refconMismatch),
             Report("XPLMUtilities", "XPLMSetErrorCallback",
                    "Script 'VL_Utilities.py' was unregistering a callback that does not exist."),
             Report("XPLMUtilities", "VL_RemoveErrorCallback", "Script 'VL_Utilities.py" + refconMismatch),
             Report("XPLMPlugin", "VL_RemoveEnumerateFeatures", "Script 'VL_Utilities.py" + refconMismatch),
             Report("XPLMPlugin", "XPLMEnableFeature", "Feature [XPLM_NO_SUCH_FEATURE] not supported"),
         })
        EXPECT_EQ(CountOf(log, report), 1) << report << log;
    // A float is refused; so is a plain int, which only Python 2 has.
    EXPECT_EQ(CountOf(log, Report("XPLMPlugin", "XPLMSendMessageToPlugin", "Parameter Error")),
              kPythonMajor == 2 ? 2 : 1);

    const std::string rule(115, '-');
    std::vector<std::string> usage = LinesFrom(log, rule, 8);
    ASSERT_EQ(usage.size(), 8u) << log;
    EXPECT_EQ(usage[1], "Module - XPLMPlugin, Function - XPLMEnableFeature, Error = Wrong number of parameters Error");
    EXPECT_EQ(usage[3], "This has changed from Version 2.0.0.1 as it has to handle native paths on a per script basis.");
    EXPECT_EQ(usage[4], "Usage Syntax :- XPLMEnableFeature(self, inFeature, inEnable)");
    EXPECT_EQ(usage[5], "Usage Example :- XPLMEnableFeature(self, \"XPLM_WANTS_REFLECTIONS\", 1)");
    EXPECT_EQ(usage[6], "Usage Example :- XPLMEnableFeature(self, \"XPLM_USE_NATIVE_PATHS\", 1)");
    EXPECT_EQ(usage[7], rule);

    // Trace blocks: the function, its line, the list's size, the function again.
    for (const char* trace :
         {"XPLMRegisterCommandHandler\npScriptId = [0-9a-f]+, inCommand = -?\\d+, inBefore = 1, inRefcon = 5\n"
          "CommandCallbackList size = 1\nXPLMRegisterCommandHandler\n",
          "XPLMSetErrorCallback\npScriptId = [0-9a-f]+, Script Name = Utilities, TempCallback = [0-9a-f]+\n"
          "ErrorCallbackList size = 1\nXPLMSetErrorCallback\n",
          "VL_RemoveEnumerateFeatures\npScriptId = [0-9a-f]+, Script Name = Utilities, inRefcon = 3\n"
          "FeatureEnumeratorCallbackList size = 0\nVL_RemoveEnumerateFeatures\n"})
        EXPECT_TRUE(std::regex_search(log, std::regex(trace))) << trace << log;

    // What the script left behind is reported at stop; its command handler is gone.
    for (const char* list : {"FeatureEnumeratorCallbackList", "ErrorCallbackList"})
        EXPECT_NE(log.find(std::string(list) + " size = 1\nScript 'Utilities.py.'\n"
                                               "Mismatch of callback creation and destruction.\n"),
                  std::string::npos)
            << list << log;
    EXPECT_EQ(log.find("CommandCallbackList size = 1\nScript"), std::string::npos) << log;
}

TEST_F(UtilitiesTest, NewerSdkFunctionsAnswerZeroOnSdk102) {
    AddScript("VL_OldSdk.py");
    StartSim("1.02");
    std::string out = Output(), log = Log();
    EXPECT_NE(out.find("results [0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0]\nsystem NP True\n"),
              std::string::npos)
        << out << log;
    for (const char* function : {"XPLMFindSymbol", "XPLMLoadDataFile", "XPLMSaveDataFile", "XPLMFindCommand",
                                 "XPLMCommandBegin", "XPLMCommandEnd", "XPLMCommandOnce", "XPLMCreateCommand",
                                 "XPLMRegisterCommandHandler", "XPLMUnregisterCommandHandler"})
        EXPECT_EQ(CountOf(log, Report("XPLMUtilities", function, "Not supported in SDK 1.02")), 1) << function;
    for (const char* function : {"XPLMHasFeature", "XPLMIsFeatureEnabled", "XPLMEnableFeature",
                                 "XPLMEnumerateFeatures"})
        EXPECT_EQ(CountOf(log, Report("XPLMPlugin", function, "Not supported in SDK 1.02")), 1) << function;
}

}  // namespace
}  // namespace vorlith::test

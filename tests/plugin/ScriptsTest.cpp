// Finding and loading scripts: the listing rules, the 256-name bound, every way a
// script can fail and the log lines that say so, and the relays that skip or report.

#include <unistd.h>

#include <set>

#include "Harness.h"

namespace vorlith::test {
namespace {

using Lines = std::vector<std::string>;

Lines Loaded(const std::string& log) {
    Lines loaded;
    const std::string prefix = "Script '";
    const std::string suffix = ".py' successfully loaded.";
    for (const std::string& line : SplitLines(log))
        if (line.rfind(prefix, 0) == 0 && line.size() > suffix.size() &&
            line.compare(line.size() - suffix.size(), suffix.size(), suffix) == 0)
            loaded.push_back(line.substr(prefix.size(), line.size() - prefix.size() - suffix.size()));
    return loaded;
}

TEST_F(PluginTest, ListingTakesMarkedSourcesThenCompiledFilesWhoseNameIsNotTaken) {
    AddScript("VL_Listed.py", "VL_a.py");
    AddCompiledScript("VL_Listed.py", "VL_a");
    AddCompiledScript("VL_Listed.py", "VL_b");
    AddScript("VL_Listed.py", "vl_d.py");
    AddScript("VL_Listed.py", "Vl_e.py");
    AddScript("VL_Listed.py", "notes.py");
    AddScript("VL_Listed.py", "MyVL_x.py");
    AddScript("VL_Listed.py", "VL_c.old.py");
    AddScript("VL_Listed.py", "VL_f.py.txt");
    StartSim();

    std::string log = Log();
    Lines loaded = Loaded(log);
    EXPECT_EQ(std::set<std::string>(loaded.begin(), loaded.end()),
              (std::set<std::string>{"VL_a", "vl_d", "MyVL_x", "VL_b"}))
        << log;
    EXPECT_EQ(loaded.back(), "VL_b");  // compiled files come after every source file
    // VL_c.old is listed (cut at its last dot), and its import fails.
    EXPECT_NE(log.find("'VL_c.old' failed to load\n"), std::string::npos) << log;
    std::string output = Output();
    EXPECT_EQ(CountOf(output, "imported VL_a\n"), 1) << output;
    EXPECT_EQ(CountOf(output, "imported VL_b\n"), 1);
    EXPECT_EQ(CountOf(output, "Vl_e"), 0);
    EXPECT_EQ(CountOf(output, "notes"), 0);
}

TEST_F(PluginTest, FileNamesThatAreNotUtf8LoadAndKeepTheirBytes) {
    // Latin-1 "caf\xe9": under Python 3 the name crosses as str with a surrogate escape.
    AddScript("VL_Listed.py", "VL_caf\xe9.py");
    StartSim();
    EXPECT_NE(Log().find("Script 'VL_caf\xe9.py' successfully loaded.\n"), std::string::npos) << Log();
    EXPECT_NE(Output().find("imported VL_caf\xe9\n"), std::string::npos) << Output();
}

// 300 scripts whose names, with a compiled file beside each, fill the SDK's 4096-byte
// listing several times over: the first 256 load and one line says what was left out.
TEST_F(PluginTest, TheWholeFolderIsListedAndAtMost256ScriptsLoadWithALineForTheRest) {
    for (int i = 0; i < 300; ++i) {
        std::string name = "VL_Listed_with_a_longer_name_" + std::to_string(1000 + i);
        AddScript("VL_Listed.py", name + ".py");
        WriteScript(name + ".pyc", "");  // left out: its source is listed
    }
    StartSim();
    Lines loaded = Loaded(Log());
    EXPECT_EQ(loaded.size(), 256u);
    EXPECT_EQ(std::set<std::string>(loaded.begin(), loaded.end()).size(), 256u);
    EXPECT_EQ(CountOf(Log(), "44 script files left out: at most 256 scripts are loaded\n"), 1) << Log();
}

TEST_F(PluginTest, BrokenScriptsAreLoggedAndSkippedWhileTheOthersRun) {
    AddScript("VL_ImportError.py");
    AddScript("VL_SyntaxError.py");
    AddScript("VL_NoClass.py");
    AddScript("VL_CtorRaises.py");
    AddScript("VL_Recorder.py");
    StartSim();

    std::string log = Log();
    EXPECT_NE(log.find("RuntimeError: broken at import\n'VL_ImportError' failed to load\n"), std::string::npos) << log;
    EXPECT_NE(log.find("SyntaxError"), std::string::npos);
    EXPECT_NE(log.find("'VL_SyntaxError' failed to load\n"), std::string::npos);
    EXPECT_NE(log.find("Vorlith Class Missing\n"), std::string::npos);
    EXPECT_EQ(log.find("AttributeError"), std::string::npos) << "a missing class is not printed";
    EXPECT_NE(log.find("ValueError: no instance today\nVorlith Call failed\n"), std::string::npos);
    EXPECT_EQ(Loaded(log), (Lines{"VL_Recorder"}));
    EXPECT_NE(Output().find("VL_NoClass imported\n"), std::string::npos);
    EXPECT_NE(Output().find("VL_Recorder enable\n"), std::string::npos);
}

TEST_F(PluginTest, ScriptWhoseStartReturnsNoThreeStringsIsReportedAndStillStopped) {
    AddScript("VL_BadStart.py", "VL_BadStartList.py");
    AddScript("VL_BadStart.py", "VL_BadStartTwo.py");
    AddScript("VL_BadStart.py", "VL_BadStartNumber.py");
    AddScript("VL_Recorder.py");
    StartSim();
    StopSim();
    std::string output = Output();
    for (const char* name : {"VL_BadStartList", "VL_BadStartTwo", "VL_BadStartNumber"}) {
        EXPECT_NE(output.find(std::string(name) + " start\n"), std::string::npos) << name;
        EXPECT_NE(output.find(std::string(name) + " stop\n"), std::string::npos) << name;
    }
    EXPECT_NE(output.find("VL_Recorder enable\n"), std::string::npos);
    EXPECT_EQ(CountOf(Log(), "TypeError"), 3) << Log();
}

TEST_F(PluginTest, ExceptionsInScriptMethodsAreLoggedAndTheRelayGoesOn) {
    AddScript("VL_Raises.py");
    AddScript("VL_Recorder.py", "VL_Zulu.py");  // after VL_Raises in every listing
    StartSim();
    StopSim();
    std::string log = Log();
    for (const char* what : {"start failed", "enable failed", "disable failed", "stop failed", "message failed"})
        EXPECT_NE(log.find(std::string("KeyError: '") + what + "'"), std::string::npos) << what << "\n" << log;
    // A start that raised returns no result and still counts as started: the script is enabled.
    std::string output = Output();
    EXPECT_NE(output.find("VL_Raises enable\n"), std::string::npos) << output;
    for (const char* event : {"start", "enable", "disable", "stop"})
        EXPECT_NE(output.find(std::string("VL_Zulu ") + event + "\n"), std::string::npos) << event;
}

TEST_F(PluginTest, MissingMethodsAreLoggedByName) {
    AddScript("VL_OnlyStart.py");
    StartSim();
    StopSim();
    std::string log = Log();
    for (const char* method : {"XPluginEnable", "XPluginReceiveMessage", "XPluginDisable", "XPluginStop"})
        EXPECT_NE(log.find(std::string("Cannot find method ") + method + "\n"), std::string::npos) << method;
    EXPECT_NE(log.find("AttributeError"), std::string::npos);
    EXPECT_EQ(log.find("Cannot find method XPluginStart"), std::string::npos);
}

TEST_F(PluginTest, EmbeddedInterpreterHasItsStandardLibraryNoSignalHandlersAndRunsThreadsBetweenCalls) {
    AddScript("VL_Embedding.py");
    StartSim();
    std::string output = Output();
    EXPECT_NE(output.find("stdlib 4.0 [1] True\n"), std::string::npos) << output << Log();
    EXPECT_NE(output.find("SIGPIPE left as it was: True\n"), std::string::npos) << output;
    // The script's thread runs only if the plug-in let go of the interpreter lock.
    std::string marker = ScriptsFolder() + "/thread_ran.txt";
    for (int i = 0; i < 200 && ReadFile(marker).empty(); ++i) {
        RunSeconds(1.0 / 60);
        usleep(50 * 1000);
    }
    EXPECT_EQ(ReadFile(marker), "ran");
    EXPECT_NE(Output().find("printed from a thread\n"), std::string::npos) << Output();
}

}  // namespace
}  // namespace vorlith::test

// The output and log files as scripts fill them through the capture of stdout and
// stderr, the cuts of long texts, and Vorlith.ini with every kind of line end.

#include "Harness.h"

namespace vorlith::test {
namespace {

TEST_F(PluginTest, StdoutGoesToTheOutputFileAndStderrToTheLogCutAt4095Bytes) {
    AddScript("VL_Output.py");
    StartSim();
    std::string output = Output();
    std::string log = Log();
    EXPECT_NE(output.find("hello from a script\n"), std::string::npos) << output;
    EXPECT_EQ(log.find("hello from a script"), std::string::npos);
    EXPECT_NE(log.find("to the log\n"), std::string::npos) << log;
    EXPECT_EQ(output.find("to the log"), std::string::npos);

    // One write of 10000 bytes keeps 4095 of them; the next write comes right after.
    EXPECT_NE(output.find("\n" + std::string(4095, 'x') + "\n"), std::string::npos);
    EXPECT_EQ(output.find(std::string(4096, 'x')), std::string::npos);
    // 5001 bytes to the log: 4095 kept, so the line end was cut too.
    EXPECT_NE(log.find(std::string(4095, 'y') + "after the long one\n"), std::string::npos) << log.size();

    EXPECT_NE(output.find("caf\xc3\xa9\n"), std::string::npos) << "text is written as UTF-8";
    EXPECT_NE(output.find("raw \xff\xfe bytes\n"), std::string::npos) << "bytes are written as they are";
}

TEST_F(PluginTest, BindingReportsAreCutAt1023Bytes) {
    AddScript("VL_LongReport.py");
    StartSim();
    StopSim();
    std::string log = Log();
    const std::string start = "Module - XPLMDataAccess, Function - XPLMFindDataRef, Error = DataRef [no/such/zzz";
    std::size_t at = log.find(start);
    ASSERT_NE(at, std::string::npos) << log;
    // The report's buffer holds 1023 bytes: its line end was cut with the rest.
    std::size_t end = log.find("Before Py_Finalize()\n", at);
    ASSERT_NE(end, std::string::npos);
    EXPECT_EQ(end - at, 1023u);
    EXPECT_NE(Output().find("found: None\n"), std::string::npos) << Output();
}

TEST_F(PluginTest, IniSwitchesTakeEffectWithEveryKindOfLineEnd) {
    AddScript("VL_LeavesFlightLoop.py");
    for (const char* end : {"\n", "\r", "\r\n", "\n\r"}) {
        SCOPED_TRACE(testing::Message() << "line end " << (end[0] == '\n' ? "LF" : "CR") << (end[1] ? "+" : ""));
        WriteIni(std::string("[DEBUG]") + end + "DebugCallbacks = 1" + end + "CheckCallbacks = 1" + end);
        StartSim();
        StopSim();
        std::string log = Log();
        EXPECT_EQ(CountOf(log, "Vorlith.ini file found\n"), 1) << log;
        // DebugCallbacks traces the registration, CheckCallbacks reports what was left.
        EXPECT_NE(log.find("XPLMRegisterFlightLoopCallback\n"), std::string::npos) << log;
        std::size_t finalized = log.find("After Py_Finalize()\n");
        EXPECT_NE(log.find("FlightLoopCallbackList size = 1\n"
                           "Script 'Leaves a flight loop.py.'\n"
                           "Mismatch of callback creation and destruction.\n",
                           finalized),
                  std::string::npos)
            << log;
        std::remove((ScriptsFolder() + "/VorlithLog.txt").c_str());
    }
}

TEST_F(PluginTest, IniSwitchesOffOrMissingFileTraceAndCheckNothing) {
    AddScript("VL_LeavesFlightLoop.py");
    WriteIni("[DEBUG]\rDebugCallbacks = 0\rCheckCallbacks = 0\r");
    StartSim();
    StopSim();
    std::string log = Log();
    EXPECT_NE(log.find("Vorlith.ini file found\n"), std::string::npos) << log;
    EXPECT_EQ(log.find("XPLMRegisterFlightLoopCallback"), std::string::npos) << log;
    EXPECT_EQ(log.find("Mismatch"), std::string::npos) << log;

    std::remove((root + "/Resources/plugins/Vorlith/Vorlith.ini").c_str());
    std::remove((ScriptsFolder() + "/VorlithLog.txt").c_str());
    StartSim();
    StopSim();
    log = Log();
    EXPECT_NE(log.find("Vorlith.ini file not found\n"), std::string::npos) << log;
    EXPECT_EQ(log.find("Mismatch"), std::string::npos) << log;
}

}  // namespace
}  // namespace vorlith::test

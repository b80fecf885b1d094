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

TEST_F(PluginTest, IniFileIsFoundWithEveryKindOfLineEnd) {
    for (const char* end : {"\n", "\r", "\r\n", "\n\r"}) {
        SCOPED_TRACE(testing::Message() << "line end " << (end[0] == '\n' ? "LF" : "CR") << (end[1] ? "+" : ""));
        std::string ini = std::string("[DEBUG]") + end + "DebugCallbacks = 1" + end + "CheckCallbacks = 0" + end;
        WriteIni(ini);
        StartSim();
        StopSim();
        std::string log = Log();
        EXPECT_EQ(CountOf(log, "Vorlith.ini file found\n"), 1) << log;
        std::remove((ScriptsFolder() + "/VorlithLog.txt").c_str());
    }
}

}  // namespace
}  // namespace vorlith::test

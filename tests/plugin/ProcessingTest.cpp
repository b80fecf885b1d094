// XPLMProcessing end to end: flight loops registered, rescheduled, created and removed
// by Python scripts in xpsim, with their reports, usage text and trace lines.

#include <cstdio>
#include <regex>

#include "Harness.h"

namespace vorlith::test {
namespace {

class ProcessingTest : public PluginTest {};

// "Module - XPLMProcessing, Function - <function>, Error = <text>" as PrintException logs it.
std::string Report(const std::string& function, const std::string& text) {
    return "Module - XPLMProcessing, Function - " + function + ", Error = " + text + "\n";
}

std::string Mismatch(const std::string& script) {
    return "Script '" + script +
           ".py' was unregistering a callback and refcon that does not exist, check refcon matches "
           "the one that was used in registering.";
}

TEST_F(ProcessingTest, FlightLoopRunsAtTheIntervalItReturnsAndGetsItsRefcon) {
    AddScript("VL_Loop.py");
    StartSim();
    RunSeconds(2.05);
    std::vector<double> times;
    std::vector<int> cycles;
    std::regex line(R"(loop (\d+) at ([0-9.]+) since ([0-9.]+) refcon 7 types float int int cycle (\d+))");
    for (const std::string& text : SplitLines(Output())) {
        std::smatch m;
        if (!std::regex_match(text, m, line)) continue;
        times.push_back(std::stod(m[2]));
        cycles.push_back(std::stoi(m[4]));
    }
    // Registered at 1 s, then every 0.5 s as the callable asks: 1.0, 1.5, 2.0.
    ASSERT_EQ(times.size(), 3u) << Output();
    EXPECT_NEAR(times[0], 1.0, 0.02);
    EXPECT_NEAR(times[1] - times[0], 0.5, 0.02);
    EXPECT_NEAR(times[2] - times[1], 0.5, 0.02);
    EXPECT_LT(cycles[0], cycles[1]);
    EXPECT_EQ(CountOf(Log(), "Cannot find method"), 0);
}

TEST_F(ProcessingTest, OnlyTheRegisteredObjectAndRefconRemoveAFlightLoop) {
    AddScript("VL_LoopRemoval.py");
    StartSim();
    RunSeconds(0.5);
    std::string out = Output();
    // Calls 2 and 3 miss and the loop goes on; call 4 removes it, so there is no call 5.
    EXPECT_NE(out.find("wrong refcon -> 1\n"), std::string::npos) << out;
    EXPECT_NE(out.find("fresh method -> 1\n"), std::string::npos) << out;
    EXPECT_NE(out.find("call 4\nregistered -> 1\n"), std::string::npos) << out;
    EXPECT_EQ(out.find("call 5\n"), std::string::npos) << out;
    EXPECT_EQ(CountOf(Log(), Report("XPLMUnregisterFlightLoopCallback", Mismatch("VL_LoopRemoval"))), 2)
        << Log();
}

TEST_F(ProcessingTest, ABoundMethodMadeAtTheCallKeepsRunning) {
    AddScript("VL_FreshLoop.py");
    StartSim();
    RunSeconds(1.0);
    EXPECT_NE(Output().find("fresh loop 50\n"), std::string::npos) << Output() << Log();
}

TEST_F(ProcessingTest, SetIntervalSchedulesTheLoopAndTheOldFormLogsItsUsage) {
    AddScript("VL_LoopInterval.py");
    StartSim();
    RunSeconds(1.0);
    std::string out = Output();
    EXPECT_NE(out.find("set -> 1\nset unknown -> 1\nold form raised TypeError\n"), std::string::npos) << out;
    EXPECT_EQ(CountOf(out, "interval loop at"), 4) << out;
    std::string log = Log();
    EXPECT_NE(log.find(Report("XPLMSetFlightLoopCallbackInterval",
                              "Script 'VL_LoopInterval.py' was trying to set a callback and refcon that "
                              "does not exist, check refcon matches the one that was used in registering.")),
              std::string::npos)
        << log;
    const std::string rule(115, '-');
    std::vector<std::string> usage = LinesFrom(log, rule, 7);
    ASSERT_EQ(usage.size(), 7u) << log;
    EXPECT_EQ(usage[1], "Module - XPLMProcessing, Function - XPLMSetFlightLoopCallbackInterval, "
                        "Error = Wrong number of parameters Error");
    EXPECT_EQ(usage[2], rule);
    EXPECT_EQ(usage[3], "This changed from Version 2.66.01 onwards as the original syntax was incorrect.");
    EXPECT_EQ(usage[4], "Usage Syntax :- XPLMSetFlightLoopCallbackInterval(self, FlightLoopCallbackPointer, "
                        "Interval, RelativeToNow, RefCon)");
    EXPECT_EQ(usage[5], "Usage Example :- XPLMSetFlightLoopCallbackInterval(self, self.ExampleFlightLoopCB, "
                        "3.0, 1, 0)");
    EXPECT_EQ(usage[6], rule);
}

TEST_F(ProcessingTest, CreatedFlightLoopsRunUntilDestroyedAndPlainFunctionsHaveNoRecord) {
    AddScript("VL_LoopCreate.py");
    StartSim();
    RunSeconds(1.3);
    StopSim();
    std::string out = Output();
    EXPECT_NE(out.find("created True\nschedule -> 1\nplain created True\nschedule plain -> 1\n"
                       "number raised TypeError\nshort raised TypeError\ntext phase raised TypeError\n"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find("created loop 1 refcon 9 at 0.5"), std::string::npos) << out;
    EXPECT_NE(out.find("created loop 2 refcon 9 at 1.0"), std::string::npos) << out;
    EXPECT_EQ(out.find("created loop 3"), std::string::npos) << out;
    EXPECT_EQ(out.find("PLAIN FUNCTION CALLED"), std::string::npos) << out;
    EXPECT_NE(out.find("destroy plain -> 1\ndestroy -> 1\ndestroy again -> 1\n"), std::string::npos) << out;
    // The plain function's loop and the second destroy find no record.
    EXPECT_EQ(CountOf(Log(), Report("XPLMDestroyFlightLoop",
                                    "Script 'VL_LoopCreate.py' was unregistering a callback that does not exist.")),
              2)
        << Log();
}

TEST_F(ProcessingTest, FlightLoopsOfSdk210AreReportedAsMissingOnOlderSimulators) {
    AddScript("VL_LoopLate.py");
    StartSim("2.00");
    std::string out = Output();
    EXPECT_NE(out.find("create -> 0\nschedule -> 0\ndestroy -> 0\n"), std::string::npos) << out;
    for (const char* function : {"XPLMCreateFlightLoop", "XPLMScheduleFlightLoop", "XPLMDestroyFlightLoop"})
        EXPECT_EQ(CountOf(Log(), Report(function, "Not supported in SDK 1.02 or SDK 2.00")), 1) << function;
}

TEST_F(ProcessingTest, WrongArgumentsRaiseTypeErrorAndBadValuesDoNoHarm) {
    AddScript("VL_LoopArgs.py");
    StartSim();
    RunSeconds(0.1);
    StopSim();
    std::string out = Output();
    for (const char* label : {"text interval", "missing refcon", "unregister alone", "schedule text",
                              "destroy too many"})
        EXPECT_NE(out.find(std::string(label) + " raised TypeError\n"), std::string::npos) << label << out;
    // A refcon that is no integer is 0 and leaves no error behind; the loop runs with it.
    EXPECT_NE(out.find("text refcon -> 1\n"), std::string::npos) << out;
    EXPECT_NE(out.find("loop refcon 0\n"), std::string::npos) << out;
    EXPECT_NE(out.find("schedule garbage -> 1\n"), std::string::npos) << out;
    EXPECT_NE(out.find("destroy garbage -> 1\n"), std::string::npos) << out;
    EXPECT_NE(out.find("elapsed -> 'float'\ncycle -> 'int'\n"), std::string::npos) << out;
    // Stopping with the same text refcon finds the record registered with it.
    EXPECT_EQ(CountOf(Log(), "was unregistering a callback and refcon"), 0) << Log();
}

TEST_F(ProcessingTest, DebugCallbacksTracesRegistrationAndRemoval) {
    WriteIni("[DEBUG]\nDebugCallbacks = 1\n");
    AddScript("VL_Loop.py");
    StartSim();
    StopSim();
    std::string log = Log();
    std::vector<std::string> added = LinesFrom(log, "XPLMRegisterFlightLoopCallback", 4);
    ASSERT_EQ(added.size(), 4u) << log;
    EXPECT_TRUE(std::regex_match(added[1], std::regex("pScriptId = [0-9a-f]+, Interval = 1.000000, inRefcon = 7")))
        << added[1];
    EXPECT_EQ(added[2], "FlightLoopCallbackList size = 1");
    EXPECT_EQ(added[3], "XPLMRegisterFlightLoopCallback");
    std::vector<std::string> removed = LinesFrom(log, "XPLMUnregisterFlightLoopCallback", 4);
    ASSERT_EQ(removed.size(), 4u) << log;
    EXPECT_TRUE(std::regex_match(removed[1], std::regex("pScriptId = [0-9a-f]+, Script Name = VL_Loop, inRefcon = 7")))
        << removed[1];
    EXPECT_EQ(removed[2], "FlightLoopCallbackList size = 0");
    EXPECT_EQ(removed[3], "XPLMUnregisterFlightLoopCallback");
    // The script id printed is the same object both times.
    EXPECT_EQ(added[1].substr(0, added[1].find(',')), removed[1].substr(0, removed[1].find(',')));
}

TEST_F(ProcessingTest, NoTraceWithoutDebugCallbacks) {
    AddScript("VL_Loop.py");
    StartSim();
    StopSim();
    EXPECT_EQ(CountOf(Log(), "FlightLoopCallbackList size"), 0) << Log();
}

}  // namespace
}  // namespace vorlith::test

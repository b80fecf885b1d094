// The integrity check of the callback lists at stop, end to end: what a script left
// registered is reported list by list with its script, only with DEBUG:CheckCallbacks.

#include "Harness.h"

namespace vorlith::test {
namespace {

class CallbackRegistryTest : public PluginTest {};

TEST_F(CallbackRegistryTest, CheckCallbacksReportsEveryRegistrationAScriptLeftBehind) {
    WriteIni("[DEBUG]\nCheckCallbacks = 1\n");
    AddScript("VL_Leaky.py");
    AddScript("VL_Loop.py");  // cleans up after itself: never named in the report
    StartSim();
    StopSim();
    std::string log = Log();
    std::vector<std::string> report = LinesFrom(log, "*** Checking Integrity of Callbacks Started. ***", 20);
    std::vector<std::string> expected = {
        "*** Checking Integrity of Callbacks Started. ***",
        "SharedDataCallbackList size = 1",
        "Script 'LeakyName.py.'",
        "Mismatch of callback creation and destruction.",
        "GetDataiCallbackList size = 1",
        "Script 'LeakyName.py.'",
        "Mismatch of callback creation and destruction.",
        "GetDataMemoryPointerList size = 1",
        "Mismatch of GetDataMemoryPointerList creation and destruction.",
        "SetDataMemoryPointerList size = 1",
        "Mismatch of SetDataMemoryPointerList creation and destruction.",
        "FlightLoopCallbackList size = 1",
        "Script 'LeakyName.py.'",
        "Mismatch of callback creation and destruction.",
        "*** Checking Integrity of Callbacks Finished. ***",
        "",
        "--- LOGGING STOPPED ---",
    };
    ASSERT_GE(report.size(), expected.size()) << log;
    report.resize(expected.size());
    EXPECT_EQ(report, expected) << log;
    // The report follows Py_Finalize, after an empty line.
    EXPECT_NE(log.find("After Py_Finalize()\n\n*** Checking Integrity of Callbacks Started. ***\n"), std::string::npos);
}

TEST_F(CallbackRegistryTest, NothingIsCheckedWithoutCheckCallbacksOrReportedForTidyScripts) {
    AddScript("VL_Leaky.py");
    StartSim();
    StopSim();
    EXPECT_EQ(CountOf(Log(), "Checking Integrity"), 0) << Log();

    WriteIni("[DEBUG]\nCheckCallbacks = 1\n");
    std::remove((ScriptsFolder() + "/VL_Leaky.py").c_str());
    AddScript("VL_Loop.py");
    StartSim();
    StopSim();
    std::vector<std::string> report = LinesFrom(Log(), "*** Checking Integrity of Callbacks Started. ***", 2);
    ASSERT_EQ(report.size(), 2u) << Log();
    EXPECT_EQ(report[1], "*** Checking Integrity of Callbacks Finished. ***");
}

}  // namespace
}  // namespace vorlith::test

// XPLMDataAccess end to end: Python scripts read and write the simulator's datarefs of
// every type, make mistakes, publish datarefs through accessors and share data.

#include <string>

#include "Harness.h"
#include "driver.h"

namespace vorlith::test {
namespace {

class DataAccessTest : public PluginTest {
protected:
    std::string Dataref(const std::string& name) {
        std::string value, error;
        EXPECT_TRUE(xpsim::driver::getDataref(name, &value, &error)) << error;
        return value;
    }
    bool Has(const std::string& text, const std::string& line) {
        return text.find(line) != std::string::npos;
    }
};

std::string Report(const std::string& function, const std::string& text) {
    return "Module - XPLMDataAccess, Function - " + function + ", Error = " + text + "\n";
}

TEST_F(DataAccessTest, ScriptsReadAndWriteDatarefsOfEveryType) {
    AddScript("VL_DataReadWrite.py");
    StartSim();
    std::string out = Output();
    EXPECT_TRUE(Has(out, "types list [1, 2, 4, 16, 8, 32]\n")) << out;
    EXPECT_TRUE(Has(out, "writable list [1, 0]\n")) << out;
    EXPECT_TRUE(Has(out, "set int int 1\nint int 11030\n")) << out;
    EXPECT_TRUE(Has(out, "float float 4500.5\n")) << out;
    EXPECT_TRUE(Has(out, "double float 1234.125\n")) << out;
    // Written at offset 2; the list gets all eight, the size query touches no list.
    EXPECT_TRUE(Has(out, "set ints int 1\nread ints int 8\nints list [0, 0, 1, 0, 1, 0, 0, 0]\nsize ints int 8\n"))
        << out;
    // Reads append after what the list holds; an offset starts further in.
    EXPECT_TRUE(Has(out, "floats list [9.0, 9.0, 9.0, 2.0, 3.5, 4.25, ")) << out;
    EXPECT_TRUE(Has(out, "read floats at 1 int 2\nfloats at 1 list [3.5, 4.25]\n")) << out;
    // The text and its zero are written; max clamps to the dataref's 40 bytes.
    EXPECT_TRUE(Has(out, "set bytes int 1\nread bytes int 40\nbytes list ['N12345']\n")) << out;
    EXPECT_TRUE(Has(out, "two bytes list ['N9']\nsize bytes int 40\n")) << out;
    // What the script wrote is what the simulator holds.
    EXPECT_EQ(Dataref("sim/cockpit/radios/nav1_freq_hz"), "11030");
    EXPECT_EQ(Dataref("sim/cockpit/autopilot/altitude"), "4500.5");
    EXPECT_EQ(Dataref("sim/flightmodel/position/local_x"), "1234.125");
    EXPECT_EQ(Dataref("sim/cockpit/electrical/battery_array_on"), "0,0,1,0,1,0,0,0");
}

TEST_F(DataAccessTest, MistakesRaiseTypeErrorOrAreReportedAndNothingBreaks) {
    AddScript("VL_DataErrors.py");
    StartSim();
    std::string out = Output();
    for (const char* label : {"no args", "too many", "text int", "text float", "number name"})
        EXPECT_TRUE(Has(out, std::string(label) + " raised TypeError")) << label << "\n" << out;
    // A wrong count gets the argument parser's own message, as in every other binding.
    EXPECT_TRUE(Has(out, "no args raised TypeError: function takes exactly 1 argument (0 given)\n")) << out;
    EXPECT_TRUE(Has(out, "too many raised TypeError: function takes exactly 1 argument (2 given)\n")) << out;
    EXPECT_TRUE(Has(out, "not a sequence raised TypeError: expected sequence\n")) << out;
    EXPECT_TRUE(Has(out, "float in ints raised TypeError: expected sequence of integers\n")) << out;
    EXPECT_TRUE(Has(out, "int in floats raised TypeError: expected sequence of floats\n")) << out;
    EXPECT_TRUE(Has(out, "empty bytes raised TypeError: expected sequence of bytes\n")) << out;
    EXPECT_TRUE(Has(out, "bytes not a sequence raised TypeError: expected sequence\n")) << out;
    EXPECT_TRUE(Has(out, "out not a list raised TypeError")) << out;
    EXPECT_TRUE(Has(out, "out a tuple raised TypeError")) << out;
    EXPECT_TRUE(Has(out, "unknown name -> None\nhuge name -> None\n")) << out;
    // A text of 100000 bytes is cut at the 40 the dataref holds; max clamps to them too.
    EXPECT_TRUE(Has(out, "count past the values -> 1\nhuge text -> 1\nhuge max -> 40\n"
                         "huge max read 40 characters\nmany bytes -> 1\n"))
        << out;
    EXPECT_TRUE(Has(out, "negative max -> 0\n")) << out;
    EXPECT_TRUE(Has(out, "garbage handle -> 0\ntext handle -> 0\nafter text handle -> ")) << out;
    EXPECT_FALSE(Has(out, "after text handle raised")) << out;
    EXPECT_TRUE(Has(out, "unregister garbage -> 1\n")) << out;
    std::string log = Log();
    EXPECT_TRUE(Has(log, Report("XPLMFindDataRef",
                                "DataRef [vorlith/no/such/dataref] not found, check that DataRef string is correct")))
        << log;
    // The report of the huge name is cut to PrintException's 1024 bytes.
    std::size_t huge = log.find("Error = DataRef [nnnn");
    ASSERT_NE(huge, std::string::npos) << log;
    std::size_t name = huge + std::string("Error = DataRef [").size();
    std::size_t length = log.find_first_not_of('n', name) - name;
    EXPECT_GT(length, 900u);
    EXPECT_LT(length, 1024u);
    EXPECT_EQ(CountOf(log, Report("XPLMUnregisterDataAccessor", "GetData List Empty Error")), 2) << log;
    EXPECT_EQ(CountOf(log, "Parameter Error"), 0) << log;
}

TEST_F(DataAccessTest, AccessorsServeTheirDatarefsFromPython) {
    AddScript("VL_Accessors.py");
    StartSim();
    RunSeconds(0.1);
    std::string out = Output();
    EXPECT_TRUE(Has(out, "get float refcon 11\nfloat reads 1.5\n")) << out;
    EXPECT_TRUE(Has(out, "set float refcon 12 value 2.75\n")) << out;
    EXPECT_TRUE(Has(out, "float after write 2.75\n")) << out;
    EXPECT_TRUE(Has(out, "get ints refcon 21 list NoneType offset 0 max 0\n")) << out;
    EXPECT_TRUE(Has(out, "ints size 4\n")) << out;
    EXPECT_TRUE(Has(out, "get ints refcon 21 list list offset 1 max 2\nints read 2 [20, 30]\n")) << out;
    EXPECT_TRUE(Has(out, "set ints refcon 22 values [7, 8] offset 2 count 2\n")) << out;
    EXPECT_TRUE(Has(out, "ints after write [10, 20, 7, 8]\n")) << out;
    EXPECT_TRUE(Has(out, "text read 5 ['hello']\n")) << out;
    EXPECT_TRUE(Has(out, "text cut 3 ['hel']\n")) << out;
    // Bytes reach the setter as signed values.
    EXPECT_TRUE(Has(out, "set bytes refcon 32 values [65, -56, 7] offset 0 count 3\n")) << out;
    EXPECT_TRUE(Has(out, "double reads 0.125\n")) << out;

    // Other plug-ins (here the simulator itself) reach the same Python accessors.
    EXPECT_EQ(Dataref("vorlith/test/float"), "2.75");
    std::string error;
    EXPECT_TRUE(xpsim::driver::setDataref("vorlith/test/float", "3.5", &error)) << error;
    EXPECT_EQ(Dataref("vorlith/test/float"), "3.5");
    EXPECT_EQ(Dataref("vorlith/test/ints"), "10,20,7,8");
    EXPECT_EQ(Dataref("vorlith/test/double"), "0.125");

    StopSim();
    EXPECT_EQ(CountOf(Output(), "unregister -> 1\n"), 4) << Output();
    EXPECT_EQ(CountOf(Log(), "GetData List Empty Error"), 0) << Log();
    EXPECT_EQ(CountOf(Log(), "Cannot find method"), 0) << Log();
}

// One pair of bound methods serves three datarefs and one method two kinds of flight
// loop: every registration is found and removed by its own call, a null handle names no
// legacy flight loop, nothing is left at the stop, and a reload publishes them again.
TEST_F(DataAccessTest, RegistrationsSharingACallableAreEachRemovedByTheirOwnCall) {
    WriteIni("[DEBUG]\nCheckCallbacks = 1\n");
    AddScript("VL_Reuse.py");
    StartSim();
    RunSeconds(0.2);
    xpsim::driver::reloadPlugins();
    RunSeconds(0.2);
    EXPECT_EQ(Dataref("vorlith/test/reuse3"), "3.5");
    StopSim();
    std::string out = Output();
    const std::string run = "reads [1.5, 8.25, 3.5]\nunregister 2 -> 1\nafter [1.5, 0.0, 3.5]\ndestroy 0 -> 1\n";
    EXPECT_EQ(CountOf(out, run), 2) << out;
    EXPECT_EQ(CountOf(out, "unregister 1 -> 1\nunregister 3 -> 1\nlegacy ran True created ran True\n"), 2) << out;
    std::string log = Log();
    EXPECT_EQ(CountOf(log, "Module - XPLMProcessing, Function - XPLMDestroyFlightLoop, Error = Script "
                           "'VL_Reuse.py' was unregistering a callback that does not exist.\n"), 2) << log;
    EXPECT_EQ(CountOf(log, "*** Checking Integrity of Callbacks Started. ***\n"
                           "*** Checking Integrity of Callbacks Finished. ***\n"), 2) << log;
    EXPECT_EQ(CountOf(log, "Error"), 2) << log;
}

TEST_F(DataAccessTest, SharedDataNotifiesWhenAnotherPluginWrites) {
    AddScript("VL_Shared.py");
    StartSim();
    std::string error;
    ASSERT_TRUE(xpsim::driver::setDataref("vorlith/test/shared", "2.5", &error)) << error;
    StopSim();
    std::string out = Output();
    EXPECT_TRUE(Has(out, "share -> 1\nconflict -> 0\n")) << out;
    EXPECT_TRUE(Has(out, "changed refcon 4 value 2.5\n")) << out;
    EXPECT_EQ(CountOf(out, "changed refcon"), 1) << out;
    EXPECT_TRUE(Has(out, "unshare wrong refcon -> 1\nunshare fresh method -> 1\nunshare -> 1\n")) << out;
    EXPECT_EQ(CountOf(Log(), Report("XPLMUnshareData",
                                    "Script 'VL_Shared.py' was unregistering a callback and refcon that does "
                                    "not exist, check refcon matches the one that was used in registering.")),
              2)
        << Log();
}

TEST_F(DataAccessTest, DebugCallbacksTracesAccessorsAndSharedData) {
    WriteIni("[DEBUG]\nDebugCallbacks = 1\n");
    AddScript("VL_Shared.py");
    AddScript("VL_Accessors.py");
    StartSim();
    RunSeconds(0.1);
    StopSim();
    std::string log = Log();
    std::vector<std::string> lines = LinesFrom(log, "XPLMRegisterDataAccessor", 17);
    ASSERT_EQ(lines.size(), 17u) << log;
    EXPECT_NE(lines[1].find("inDataName = vorlith/test/float, inDataType = 2, inIsWritable = 1, "
                            "inReadRefcon = 11, inWriteRefcon = 12, DataRef = "),
              std::string::npos)
        << lines[1];
    EXPECT_EQ(lines[2].rfind("pDataAccessorGetCB = ", 0), 0u);
    EXPECT_EQ(lines[3].rfind("pDataAccessorSetCB = ", 0), 0u);
    EXPECT_EQ(lines[4], "GetDataiCallbackList size = 0");
    EXPECT_EQ(lines[6], "GetDatafCallbackList size = 1");
    EXPECT_EQ(lines[7], "SetDatafCallbackList size = 1");
    EXPECT_EQ(lines[15], "SetDatabCallbackList size = 0");
    EXPECT_EQ(lines[16], "XPLMRegisterDataAccessor");
    std::vector<std::string> shared = LinesFrom(log, "XPLMShareData", 4);
    ASSERT_EQ(shared.size(), 4u) << log;
    EXPECT_NE(shared[1].find("inDataName = vorlith/test/shared, inDataType = 2, inNotificationRefcon = 4"),
              std::string::npos);
    EXPECT_EQ(shared[2], "SharedDataCallbackList size = 1");
    std::vector<std::string> removed = LinesFrom(log, "XPLMUnregisterDataAccessor", 17);
    ASSERT_EQ(removed.size(), 17u) << log;
    EXPECT_NE(removed[1].find("Script Name = VL_Accessors, inDataRef = "), std::string::npos) << removed[1];
    EXPECT_EQ(removed[6], "GetDatafCallbackList size = 0");
    std::vector<std::string> unshared = LinesFrom(log, "XPLMUnshareData", 4);
    ASSERT_EQ(unshared.size(), 4u) << log;
    EXPECT_NE(unshared[1].find("Script Name = VL_Shared, inDataName = vorlith/test/shared, inDataType = 2, "
                               "inNotificationRefcon = 6"),
              std::string::npos)
        << unshared[1];
}

}  // namespace
}  // namespace vorlith::test

// The XPLMDefs module as a script sees it: every constant of the SDK header with the
// SDK's value, XPLM_VK_F20 excepted (it has always carried F10's code).

#include <map>
#include <regex>

#include "Harness.h"

namespace vorlith::test {
namespace {

class DefsTest : public PluginTest {};

// name -> value of every "#define NAME value" and "name = value" in the SDK header.
std::map<std::string, long> HeaderConstants() {
    std::string header = ReadFile(std::string(VORLITH_TEST_SCRIPTS) + "/../../../sdk/XPLMDefs.h");
    std::map<std::string, long> constants;
    std::regex define(R"(#define\s+(\w+)\s+\(?(-?(?:0x[0-9A-Fa-f]+|\d+))\)?)");
    std::regex enumerator(R"((xplm_\w+Flag)\s*=\s*(\d+))");
    for (const std::string& line : SplitLines(header)) {
        std::smatch m;
        if (std::regex_search(line, m, define) || std::regex_search(line, m, enumerator))
            constants[m[1]] = std::stol(m[2], nullptr, 0);
    }
    return constants;
}

TEST_F(DefsTest, EveryConstantHasTheSdkValueExceptF20) {
    AddScript("VL_Defs.py");
    StartSim();
    std::map<std::string, long> sdk = HeaderConstants();
    ASSERT_GT(sdk.size(), 130u);
    std::string out = Output();
    EXPECT_NE(out.find("count 138\n"), std::string::npos) << out;
    std::regex line(R"((\w+)=(-?\d+))");
    std::map<std::string, long> module;
    for (const std::string& text : SplitLines(out)) {
        std::smatch m;
        if (std::regex_match(text, m, line)) module[m[1]] = std::stol(m[2]);
    }
    ASSERT_EQ(module.size(), 138u);
    for (const auto& [name, value] : module) {
        ASSERT_EQ(sdk.count(name), 1u) << name << " is not in the SDK header";
        if (name == "XPLM_VK_F20") continue;
        EXPECT_EQ(value, sdk[name]) << name;
    }
    EXPECT_EQ(module["XPLM_VK_F20"], 121);
    EXPECT_EQ(module["XPLM_VK_F20"], module["XPLM_VK_F10"]);
    EXPECT_EQ(sdk["XPLM_VK_F20"], 131);
    // Every virtual key code of the header is in the module.
    for (const auto& [name, value] : sdk) {
        if (name.rfind("XPLM_VK_", 0) == 0) {
            EXPECT_EQ(module.count(name), 1u) << name;
        }
    }
}

// Every module function a script can call, by its SDK name, with its one-line doc string.
TEST_F(DefsTest, ModulesOfferExactlyTheirFunctionsWithTheirDocStrings) {
    AddScript("VL_DocStrings.py");
    StartSim();
    std::vector<std::string> lines = SplitLines(Output());
    std::vector<std::string> expected = {
        "TembrookInternalModule has 2",
        "TembrookInternalModule.PrintStderr: Prints to stderr",
        "TembrookInternalModule.PrintStdout: Prints to stdout",
        "XPLMDataAccess has 19",
        "XPLMDataAccess.XPLMCanWriteDataRef: Test for writable Dataref.",
        "XPLMDataAccess.XPLMFindDataRef: Find Dataref.",
        "XPLMDataAccess.XPLMGetDataRefTypes: Get the Dataref Type.",
        "XPLMDataAccess.XPLMGetDatab: Get Byte Array Dataref.",
        "XPLMDataAccess.XPLMGetDatad: Get Double Dataref.",
        "XPLMDataAccess.XPLMGetDataf: Get Float Dataref.",
        "XPLMDataAccess.XPLMGetDatai: Get Integer Dataref.",
        "XPLMDataAccess.XPLMGetDatavf: Get Float Array Dataref.",
        "XPLMDataAccess.XPLMGetDatavi: Get Integer Array Dataref.",
        "XPLMDataAccess.XPLMRegisterDataAccessor: Register data accessor.",
        "XPLMDataAccess.XPLMSetDatab: Set Byte Array Dataref.",
        "XPLMDataAccess.XPLMSetDatad: Set Double Dataref.",
        "XPLMDataAccess.XPLMSetDataf: Set Float Dataref.",
        "XPLMDataAccess.XPLMSetDatai: Set Integer Dataref.",
        "XPLMDataAccess.XPLMSetDatavf: Set Float Array Dataref.",
        "XPLMDataAccess.XPLMSetDatavi: Set Integer Array Dataref.",
        "XPLMDataAccess.XPLMShareData: Share Data.",
        "XPLMDataAccess.XPLMUnregisterDataAccessor: Unregister data accessor.",
        "XPLMDataAccess.XPLMUnshareData: Unshare Data.",
        "XPLMDefs has 0",
        "XPLMProcessing has 8",
        "XPLMProcessing.XPLMCreateFlightLoop: Create Flight Loop Callback.",
        "XPLMProcessing.XPLMDestroyFlightLoop: Destroy Flight Loop Callback.",
        "XPLMProcessing.XPLMGetCycleNumber: Get Cycle Number.",
        "XPLMProcessing.XPLMGetElapsedTime: Get Elapsed Time.",
        "XPLMProcessing.XPLMRegisterFlightLoopCallback: Register Flight Loop Callback.",
        "XPLMProcessing.XPLMScheduleFlightLoop: Schedule Flight Loop Callback.",
        "XPLMProcessing.XPLMSetFlightLoopCallbackInterval: Set Flight Loop Callback Interval.",
        "XPLMProcessing.XPLMUnregisterFlightLoopCallback: Unregister Flight Loop Callback.",
    };
    EXPECT_EQ(lines, expected) << Output();
}

}  // namespace
}  // namespace vorlith::test

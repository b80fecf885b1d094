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

}  // namespace
}  // namespace vorlith::test

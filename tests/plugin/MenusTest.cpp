// XPLMMenus end to end: a script's menus picked by path in xpsim, a menu another script
// cannot destroy, the trace blocks and the integrity check; the late functions of
// XPLMDisplay and XPLMMenus on an older simulator.

#include <regex>

#include "Harness.h"
#include "driver.h"

namespace vorlith::test {
namespace {

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

std::string Report(const std::string& module, const std::string& function, const std::string& text) {
    return "Module - " + module + ", Function - " + function + ", Error = " + text + "\n";
}

TEST_F(PluginTest, MenusArePickedByPathAndDestroyedOnlyByTheirScript) {
    WriteIni("[DEBUG]\nDebugCallbacks = 1\nCheckCallbacks = 1\n");
    AddScript("VL_Menus.py");
    AddScript("VL_Other.py");
    StartSim();
    std::string error;
    for (const char* path : {"Plugins/VL Menus/Alpha", "Plugins/VL Menus/Beta renamed", "Plugins/VL Menus/Alpha",
                             "VL Plain/Plain item"})
        EXPECT_TRUE(xpsim::driver::pickMenu(path, &error)) << path << ": " << error;
    EXPECT_FALSE(xpsim::driver::pickMenu("Plugins/VL Menus/Gamma", &error));  // greyed out
    EXPECT_FALSE(xpsim::driver::pickMenu("Plugins/VL Menus/Gone", &error));   // removed
    StopSim();

    std::string out = Output();
    EXPECT_TRUE(Has(out, "window ex raised TypeError\nremove item raised TypeError\n")) << out;
    EXPECT_TRUE(Has(out, "append -> [0, 1]\nseparator -> 1\nappend -> [3, 4]\nremove -> 1\ncheck -> 1\n"
                         "rename -> 1\ngrey -> 1\nstates [1, 0]\ndestroy plugins menu -> 1\n"))
        << out;
    // The other script's attempt left the menu working; item references come back as given.
    EXPECT_TRUE(Has(out, "other destroy -> 1\n")) << out;
    EXPECT_TRUE(Has(out, "picked 1 menu ref 40 now 2\npicked 2 menu ref 40 now 2\npicked 1 menu ref 40 now 1\n"
                         "plain handler 50 item 7\ndestroy -> 1\n"))
        << out;

    std::string log = Log();
    const std::string missing = "' was unregistering a callback that does not exist.";
    EXPECT_EQ(CountOf(log, Report("XPLMMenus", "XPLMDestroyMenu", "Script 'VL_Menus.py" + missing)), 1) << log;
    EXPECT_EQ(CountOf(log, Report("XPLMMenus", "XPLMDestroyMenu", "Script 'VL_Other.py" + missing)), 1) << log;
    EXPECT_TRUE(std::regex_search(log, std::regex("\nXPLMCreateMenu\npScriptId = [0-9a-f]+, inName = VL Plain, "
                                                  "inParentMenu = 0, inParentItem = 0, inMenuRef = 50\n"
                                                  "MenuCallbackList size = 2\nXPLMCreateMenu\n")))
        << log;
    EXPECT_TRUE(std::regex_search(log, std::regex("\nXPLMDestroyMenu\npScriptId = [0-9a-f]+, Script Name = VL_Menus, "
                                                  "inMenuID = [0-9a-f]+\nMenuCallbackList size = 1\nXPLMDestroyMenu\n")))
        << log;
    EXPECT_TRUE(Has(log, "*** Checking Integrity of Callbacks Started. ***\nMenuCallbackList size = 1\n"
                         "Script 'VL_Menus.py.'\nMismatch of callback creation and destruction.\n"
                         "*** Checking Integrity of Callbacks Finished. ***\n"))
        << log;
}

TEST_F(PluginTest, LateDisplayAndMenuFunctionsAreReportedOnAnOlderSimulator) {
    AddScript("VL_Other.py");
    StartSim("1.02");
    EXPECT_TRUE(Has(Output(), "window ex -> 0\nremove item -> 0\n")) << Output();
    std::string log = Log();
    EXPECT_TRUE(Has(log, Report("XPLMDisplay", "XPLMCreateWindowEx", "Not supported in SDK 1.02"))) << log;
    EXPECT_TRUE(Has(log, Report("XPLMMenus", "XPLMRemoveMenuItem", "Not supported in SDK 1.02 or SDK 2.00"))) << log;
}

}  // namespace
}  // namespace vorlith::test

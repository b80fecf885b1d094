// The example scripts users start from, run as the demo runs them.

#include <cstdlib>

#include "Harness.h"
#include "XPLMDataAccess.h"
#include "XPLMDefs.h"
#include "driver.h"

namespace vorlith::test {
namespace {

TEST_F(PluginTest, FlightMonitorExamplePrintsOneLineEverySecond) {
    AddExample("VL_FlightMonitor.py");
    StartSim();
    RunSeconds(3);
    std::vector<std::string> lines = SplitLines(Output());
    ASSERT_EQ(lines.size(), 3u) << Output() << Log();
    EXPECT_EQ(lines[0].rfind("t=  1.0 s  lat ", 0), 0u) << lines[0];
    EXPECT_EQ(lines[2].rfind("t=  3.0 s  lat ", 0), 0u) << lines[2];
    EXPECT_NE(lines[0].find(" IAS "), std::string::npos);
    EXPECT_EQ(Log().find("Error"), std::string::npos) << Log();
}

TEST_F(PluginTest, OwnDatarefExamplePublishesACounterOthersCanReadAndWrite) {
    AddExample("VL_OwnDataref.py");
    StartSim();
    RunSeconds(2);
    EXPECT_EQ(Output(), "vorlith/examples/counter reads 1\nvorlith/examples/counter reads 2\n") << Log();
    // Another plug-in (here the test itself) sees the script's value and can change it.
    XPLMDataRef counter = XPLMFindDataRef("vorlith/examples/counter");
    ASSERT_NE(counter, nullptr);
    EXPECT_EQ(XPLMGetDatai(counter), 2);
    XPLMSetDatai(counter, 40);
    RunSeconds(1);
    EXPECT_NE(Output().find("vorlith/examples/counter reads 41\n"), std::string::npos) << Output();
    StopSim();
    EXPECT_EQ(Log().find("Error"), std::string::npos) << Log();
}

TEST_F(PluginTest, CommandHandlerExampleAnswersItsCommand) {
    AddExample("VL_CommandHandler.py");
    StartSim();
    std::string error;
    ASSERT_TRUE(xpsim::driver::commandOnce("vorlith/examples/say_hello", &error)) << error;
    RunSeconds(0.1);
    StopSim();
    EXPECT_EQ(Output(), "Hello! (command pressed)\nGoodbye! (command released)\n") << Log();
    EXPECT_EQ(Log().find("Error"), std::string::npos) << Log();
}

TEST_F(PluginTest, PingAndPongExamplesTalkThroughMessaging) {
    AddExample("VL_Ping.py");
    AddExample("VL_Pong.py");
    StartSim();
    RunSeconds(2);
    EXPECT_EQ(Output(), "Ping got pong 1\nPing got pong 2\n") << Log();
    EXPECT_EQ(Log().find("Error"), std::string::npos) << Log();
}

TEST_F(PluginTest, WindowAndMenuExamplesAnswerClicksKeysTheHotKeyAndPicks) {
    AddExample("VL_HelloWindow.py");
    AddExample("VL_CheckedMenu.py");
    StartSim();
    xpsim::driver::mouseDown(100, 550);
    xpsim::driver::mouseUp(100, 550);
    xpsim::driver::keyPress('x', xplm_DownFlag, XPLM_VK_X);
    xpsim::driver::keyPress(27, xplm_DownFlag, XPLM_VK_ESCAPE);
    xpsim::driver::runFrames(1);
    std::string shown;
    for (const xpsim::DrawItem& item : xpsim::driver::drawList())
        if (item.kind == "string") shown = item.text;
    EXPECT_EQ(shown, "Clicks: 1  Last key: x");
    xpsim::driver::keyPress(0, xplm_DownFlag, XPLM_VK_F8);
    xpsim::driver::runFrames(1);
    std::string error;
    for (const char* item : {"Taxi lights", "Strobes", "Taxi lights"})
        EXPECT_TRUE(xpsim::driver::pickMenu(std::string("Plugins/Checked Menu/") + item, &error)) << error;
    StopSim();
    EXPECT_EQ(Output(), "hello window clicked 1 times\nhello window got key x\nhello window hidden\n"
                        "Taxi lights on\nStrobes on\nTaxi lights off\n");
    EXPECT_EQ(Log().find("Error"), std::string::npos) << Log();
}

TEST_F(PluginTest, TerrainHeightExamplePrintsTheHeightAboveTheGroundEverySecond) {
    AddExample("VL_TerrainHeight.py");
    StartSim();
    RunSeconds(2);
    StopSim();
    std::vector<std::string> lines = SplitLines(Output());
    ASSERT_EQ(lines.size(), 2u) << Output() << Log();
    // Parked at the airport: the ground under the aircraft is the field's elevation.
    EXPECT_EQ(lines[0].rfind("height above ground ", 0), 0u) << lines[0];
    EXPECT_NE(lines[0].find(" m (ground at 131.0 m)"), std::string::npos) << lines[0];
    EXPECT_EQ(Log().find("Error"), std::string::npos) << Log();
}

TEST_F(PluginTest, NearestAirportExampleLabelsTheAirportTheAircraftIsAt) {
    AddExample("VL_NearestAirport.py");
    StartSim();
    RunSeconds(1);
    std::string label, box;
    for (const xpsim::DrawItem& item : xpsim::driver::drawList()) {
        if (item.kind == "string") label = item.text;
        if (item.kind == "darkbox") box = std::to_string(item.right - item.x);
    }
    EXPECT_EQ(label.rfind("KSEA  Seattle Tacoma Intl  0.", 0), 0u) << label;
    EXPECT_EQ(box, std::to_string(10 + 8 * static_cast<int>(label.size()))) << label;
    StopSim();
    EXPECT_EQ(Log().find("Error"), std::string::npos) << Log();
}

#ifdef VORLITH_TEST_RUNNER
TEST_F(PluginTest, ExamplesRunInTheXpsimRunnerAsTheDemoRunsThem) {
    AddExample("VL_FlightMonitor.py");
    AddExample("VL_OwnDataref.py");
    std::string command = std::string("'") + VORLITH_TEST_RUNNER + "' --root '" + root + "' --seconds 3 >/dev/null 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
    std::string output = Output();
    EXPECT_EQ(CountOf(output, "  lat "), 3) << output;
    EXPECT_NE(output.find("vorlith/examples/counter reads 3\n"), std::string::npos) << output;
    std::string log = Log();
    EXPECT_NE(log.find("Script 'VL_FlightMonitor.py' successfully loaded.\n"
                       "Script 'VL_OwnDataref.py' successfully loaded.\n"),
              std::string::npos)
        << log;
    EXPECT_NE(log.find("--- LOGGING STOPPED ---\n\n"), std::string::npos) << log;
}
#endif

}  // namespace
}  // namespace vorlith::test

// The runner's "widgets" command: a scenario drives the widget_form plug-in and finds
// its tree, with the state the user's actions left, in Log.txt.

#include <sstream>

#include "plugin_test_util.h"
#include "scenario.h"

namespace xpsim::test {
namespace {

class WidgetRunnerTest : public SimRootTest {};

TEST_F(WidgetRunnerTest, TheWidgetsCommandListsTheTreeWithWhatTheUserChangedInTheLog) {
    startSim();
    ASSERT_GT(loadTestPlugin("widget_form", "WidgetForm"), 0);
    driver::enablePluginsAndSendLoadMessages();
    std::ostringstream out;
    runner::ScenarioContext context{root, &out};
    const char* scenario =
        "run 1 frames\n"
        "mouse click 190 560\n"
        "key a A\n"
        "mouse click 125 440\n"
        "widgets\n"
        "expect log \"xpsim: widgets: 15\"\n"
        "expect log \"xpsim: widget MainWindow \\\"Form\\\" (100,600,500,200) shown root owner=\"\n"
        "expect log \"xpsim: widget   TextField \\\"a\\\" (180,570,380,550) shown focus owner=\"\n"
        "expect log \"xpsim: widget     Button \\\"B\\\" (120,450,200,435) shown owner=\"\n"
        "expect log \"ButtonState=1\"\n"
        "expect log \"xpsim: widget       Custom \\\"Custom\\\" (250,460,340,440) shown owner=\"\n";
    std::string error;
    EXPECT_TRUE(runner::playScenario(scenario, "widgets.txt", context, &error)) << error;
}

}  // namespace
}  // namespace xpsim::test

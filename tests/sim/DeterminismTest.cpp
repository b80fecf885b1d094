// Determinism: the same plug-ins and the same scenario give the same Log.txt and the
// same plug-in output, run after run.

#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>

#include "plugin_test_util.h"

namespace xpsim::test {
namespace {

struct RunOutput {
    int status = -1;
    std::string log, events;
};

// Runs xpsim twice on the same root (paths in the log are the same) and keeps what each run wrote.
std::vector<RunOutput> runTwice(const std::string& root, const std::string& scenario, const std::string& more = "") {
    std::vector<RunOutput> runs;
    for (int i = 0; i < 2; ++i) {
        std::string command = std::string(XPSIM_RUNNER) + " --root '" + root + "' --scenario '" + scenario +
                              "' --frames 7 " + more + " > /dev/null 2>&1";
        RunOutput run;
        int status = std::system(command.c_str());
        run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        run.log = readFile(root + "/Log.txt");
        run.events = readFile(eventsFile(root, "Alpha"));
        std::remove(eventsFile(root, "Alpha").c_str());
        runs.push_back(run);
    }
    return runs;
}

TEST(DeterminismTest, SameScenarioTwiceGivesTheSameLogAndPluginOutput) {
    std::string root = freshRoot();
    installPlugin(root, "plug_recorder", "Alpha");
    installPlugin(root, "plug_recorder", "Beta");
    std::string scenario = root + "/scenario.txt";
    std::ofstream(scenario) << "run 0.25 seconds\n"
                               "message xpsim.test.Alpha 0x7FF00001 -1   # Alpha broadcasts\n"
                               "message xpsim.test.Beta 0x7FF00003       # Beta asks for a reload\n"
                               "run 2 frames\n"
                               "expect log \"reloading plug-ins\"\n"
                               "reload\n"
                               "run 1 seconds\n";
    std::vector<RunOutput> runs = runTwice(root, scenario);
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(runs[0].status, 0);
    EXPECT_EQ(runs[1].status, 0);
    EXPECT_NE(runs[0].log.find("loaded plug-in 6 'Beta'"), std::string::npos) << runs[0].log;
    EXPECT_EQ(runs[0].log, runs[1].log);
    EXPECT_FALSE(runs[0].events.empty());
    EXPECT_EQ(runs[0].events, runs[1].events);
}

// Every kind of callback, driven by the scenario that checks each of them.
TEST(DeterminismTest, EverythingScenarioPassesAndLogsTheSameTwice) {
    std::string root = freshRoot();
    std::string plugin = std::string(XPSIM_TEST_PLUGIN_DIR) + "/everything.xpl";
    std::string scenario = std::string(XPSIM_SOURCE_DIR) + "/tests/sim/scenarios/everything.txt";
    std::vector<RunOutput> runs = runTwice(root, scenario, "--plugin '" + plugin + "'");
    ASSERT_EQ(runs.size(), 2u);
    EXPECT_EQ(runs[0].status, 0) << runs[0].log;
    EXPECT_EQ(runs[1].status, 0) << runs[1].log;
    EXPECT_NE(runs[0].log.find("everything: start, my id 2"), std::string::npos) << runs[0].log;
    EXPECT_EQ(runs[0].log, runs[1].log);
}

}  // namespace
}  // namespace xpsim::test

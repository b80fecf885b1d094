// The xpsim runner: the scenario language (words, lines, usage errors), the player on
// the driver API, and the executable's command line and exit status.

#include <sys/wait.h>

#include <cstdio>
#include <sstream>

#include "XPLMPlugin.h"
#include "plugin_test_util.h"
#include "scenario.h"

namespace xpsim::test {
namespace {

using runner::ScenarioContext;

struct Outcome {
    int status = -1;
    std::string output;  // stdout and stderr
};

// Runs the xpsim executable; arguments are passed through the shell, quoted.
Outcome runXpsim(const std::vector<std::string>& args) {
    std::string command = XPSIM_RUNNER;
    for (const std::string& a : args) command += " '" + a + "'";
    command += " 2>&1";
    Outcome outcome;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return outcome;
    char buffer[4096];
    size_t n;
    while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0) outcome.output.append(buffer, n);
    int status = pclose(pipe);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

std::string writeScenario(const std::string& root, const std::string& text) {
    std::string path = root + "/scenario.txt";
    std::ofstream(path) << text;
    return path;
}

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(ScenarioWordsTest, QuotesGroupWordsAndHashStartsACommentOutsideQuotes) {
    std::vector<std::string> words;
    std::string error;
    ASSERT_TRUE(runner::splitWords("  expect log \"a # b \\\"c\\\"\"  # trailing", &words, &error));
    EXPECT_EQ(words, (std::vector<std::string>{"expect", "log", "a # b \"c\""}));
    ASSERT_TRUE(runner::splitWords("menu \"Plugins/My Plug-in/Item\"\r", &words, &error));
    EXPECT_EQ(words, (std::vector<std::string>{"menu", "Plugins/My Plug-in/Item"}));
    ASSERT_TRUE(runner::splitWords("\t# only a comment", &words, &error));
    EXPECT_TRUE(words.empty());
    EXPECT_FALSE(runner::splitWords("print \"open", &words, &error));
    EXPECT_EQ(error, "missing closing quote");
}

TEST(ScenarioParseTest, BadLinesAreReportedWithTheirLineBeforeAnythingRuns) {
    std::vector<runner::ScenarioStep> steps;
    std::string error;
    struct Case {
        std::string text, error;
    } cases[] = {
        {"run 1 frames\n\nfly to the moon\n", "s.txt:3: unknown command 'fly'"},
        {"# comment\nmouse click 1\n", "s.txt:2: usage: mouse click <x> <y>"},
        {"reload now\n", "s.txt:1: usage: reload"},
        {"expect log \"unterminated\n", "s.txt:1: missing closing quote"},
    };
    for (const Case& c : cases) {
        EXPECT_FALSE(runner::parseScenario(c.text, "s.txt", &steps, &error)) << c.text;
        EXPECT_EQ(error, c.error);
    }
    // The longest command name wins: "mouse click" is not "mouse" + arguments.
    ASSERT_TRUE(runner::parseScenario("mouse click 3 4\nexpect no log x\nexpect log y\n", "s.txt", &steps, &error))
        << error;
    ASSERT_EQ(steps.size(), 3u);
    EXPECT_STREQ(steps[0].command->name, "mouse click");
    EXPECT_EQ(steps[0].args, (std::vector<std::string>{"3", "4"}));
    EXPECT_STREQ(steps[1].command->name, "expect no log");
    EXPECT_EQ(steps[2].line, 3);
}

class RunnerTest : public SimRootTest {
protected:
    bool play(const std::string& text, std::string* error) {
        ScenarioContext context{root, &out};
        return runner::playScenario(text, "test.txt", context, error);
    }
    std::ostringstream out;
};

TEST_F(RunnerTest, PlayerDrivesFramesMessagesReloadAndChecksFiles) {
    startSim();
    ASSERT_GT(loadTestPlugin("plug_recorder", "Alpha"), 0);
    std::string error;
    driver::enablePluginsAndSendLoadMessages();
    std::string scenario =
        "run 3 frames\n"
        "run 0.5 seconds   # 30 more at 60 fps\n"
        "message xpsim.test.Alpha 0x7FF00002 -3\n"
        "message 1 XPLM_MSG_PLANE_CRASHED\n"
        "message all 0x80000001 9\n"
        "expect file Resources/plugins/Alpha/events.txt \"msg=2146435074 param=-3\"\n"
        "expect file Resources/plugins/Alpha/events.txt \"msg=101 param=0\"\n"
        "expect file Resources/plugins/Alpha/events.txt \"msg=-2147483647 param=9\"\n"
        "expect plugin xpsim.test.Alpha enabled\n"
        "expect plugin xpsim.test.Nobody absent\n"
        "reload\n"
        "expect log \"loaded plug-in 2 'Alpha'\"\n"
        "expect no log \"loaded plug-in 3\"\n"
        "print \"done\"\n";
    ASSERT_TRUE(play(scenario, &error)) << error;
    EXPECT_EQ(driver::cycleNumber(), 33);
    EXPECT_EQ(out.str(), "done\n");
    EXPECT_EQ(driver::findPluginBySignature("xpsim.test.Alpha"), 2);
}

TEST_F(RunnerTest, FailedChecksNameTheLineAndWhatWasFound) {
    startSim();
    ASSERT_GT(loadTestPlugin("plug_recorder", "Alpha"), 0);
    std::string error;
    driver::enablePluginsAndSendLoadMessages();
    struct Case {
        std::string text, error;
    } cases[] = {
        {"run 1 frames\nexpect log \"never logged\"\n",
         "test.txt:2: expect log: \"never logged\" not found in Log.txt; its last lines:\n"},
        {"expect no log \"loaded plug-in 1\"\n", "test.txt:1: expect no log: \"loaded plug-in 1\" found in Log.txt"},
        {"expect file ../outside.txt x\n", "test.txt:1: expect file: '../outside.txt' is not a path under the simulator root"},
        {"expect file missing.txt x\n", "test.txt:1: expect file: cannot read " + root + "/missing.txt"},
        {"message xpsim.test.Nobody 5\n", "test.txt:1: message: no plug-in with signature 'xpsim.test.Nobody'"},
        {"message 7 5\n", "test.txt:1: message: no plug-in with id 7"},
        {"message all XPLM_MSG_NOTHING\n", "test.txt:1: message: message 'XPLM_MSG_NOTHING' is neither"},
        {"run 2 weeks\n", "test.txt:1: run: unit 'weeks' is neither frames nor seconds"},
        {"run 1.5 frames\n", "test.txt:1: run: a number of frames must be whole"},
        {"key a NOKEY\n", "test.txt:1: key: unknown virtual key 'NOKEY'"},
        {"key a A hyper\n", "test.txt:1: key: unknown key flag 'hyper'"},
        {"expect plugin xpsim.test.Alpha disabled\n",
         "test.txt:1: expect plugin: plug-in 'xpsim.test.Alpha' is enabled, expected disabled"},
    };
    for (const Case& c : cases) {
        EXPECT_FALSE(play(c.text, &error)) << c.text;
        EXPECT_EQ(error.substr(0, c.error.size()), c.error);
    }
    // The last log lines come with a failed log check, to show what happened instead.
    EXPECT_FALSE(play("expect log \"never logged\"\n", &error));
    EXPECT_TRUE(contains(error, "loaded plug-in 1 'Alpha'")) << error;
    // A failing line stops the scenario: later lines do not run.
    int cycles = driver::cycleNumber();
    EXPECT_FALSE(play("expect plugin xpsim.test.Alpha absent\nrun 5 frames\n", &error));
    EXPECT_EQ(driver::cycleNumber(), cycles);
}

TEST_F(RunnerTest, ExecutableExitsZeroAfterStoppingEveryFoundPlugin) {
    installPlugin(root, "plug_recorder", "Alpha");
    installPlugin(root, "plug_recorder", "Beta");
    std::string scenario = writeScenario(root, "expect plugin xpsim.test.Beta enabled\nprint \"checked\"\n");
    Outcome o = runXpsim({"--root", root, "--frames", "10", "--scenario", scenario});
    EXPECT_EQ(o.status, 0) << o.output;
    EXPECT_EQ(o.output, "checked\n");
    for (const char* name : {"Alpha", "Beta"}) {
        std::vector<std::string> heard = events(name);
        ASSERT_FALSE(heard.empty()) << name;
        EXPECT_EQ(heard.back(), std::string("stop id=") + (name[0] == 'A' ? "1" : "2"));
    }
    EXPECT_TRUE(contains(readFile(root + "/Log.txt"), "loaded plug-in 2 'Beta'"));

    // --plugin loads only what it names; --verbose echoes the log.
    o = runXpsim({"--root", root, "--plugin", root + "/Resources/plugins/Beta/64/lin.xpl", "--seconds", "0.1",
                  "--verbose"});
    EXPECT_EQ(o.status, 0) << o.output;
    EXPECT_TRUE(contains(o.output, "loaded plug-in 1 'Beta'")) << o.output;
    EXPECT_FALSE(contains(o.output, "'Alpha'")) << o.output;
}

#ifdef XPSIM_EXAMPLE_PLUGIN
TEST_F(RunnerTest, CExamplePluginPassesItsDemoScenario) {
    Outcome o = runXpsim({"--root", root, "--plugin", XPSIM_EXAMPLE_PLUGIN, "--scenario",
                          std::string(XPSIM_SOURCE_DIR) + "/examples/c/demo.txt"});
    EXPECT_EQ(o.status, 0) << o.output;
}
#endif

TEST_F(RunnerTest, ExecutableFailsWithAClearMessage) {
    std::string good = installPlugin(root, "plug_recorder", "Alpha");
    std::string notPlugin = std::string(XPSIM_TEST_PLUGIN_DIR) + "/plug_not_a_plugin.xpl";
    struct Case {
        std::vector<std::string> args;
        int status;
        std::string message;
    } cases[] = {
        {{"--frames", "1"}, 2, "xpsim: --root is required"},
        {{"--root", root, "--frames", "1", "--seconds", "1"}, 2, "xpsim: give --seconds or --frames, not both"},
        {{"--root", root, "--fps", "0"}, 2, "xpsim: --fps needs a positive number"},
        {{"--root", root, "--fly"}, 2, "xpsim: unknown option '--fly'"},
        {{"--root"}, 2, "xpsim: --root needs a value"},
        {{"--root", root, "--sdk", "3.00"}, 2, "xpsim: unknown SDK generation '3.00' (1.02, 2.00 or 2.10)"},
        {{"--root", root, "--plugin", good, "--plugin", notPlugin}, 1,
         "xpsim: cannot load plug-in " + notPlugin + ": not an X-Plane plug-in"},
        {{"--root", root, "--scenario", root + "/none.txt"}, 1, "xpsim: cannot read scenario " + root + "/none.txt"},
        {{"--root", root, "--scenario", writeScenario(root, "run 1 frames\nexpect plugin xpsim.test.Alpha absent\n")},
         1, "xpsim: " + root + "/scenario.txt:2: expect plugin: plug-in 'xpsim.test.Alpha' is enabled"},
    };
    for (const Case& c : cases) {
        Outcome o = runXpsim(c.args);
        EXPECT_EQ(o.status, c.status) << c.message << "\n" << o.output;
        EXPECT_EQ(o.output.substr(0, c.message.size()), c.message) << o.output;
        // A usage error is one line and a pointer to the help, nothing more.
        if (c.status == 2) {
            EXPECT_EQ(o.output, c.message + "\nTry 'xpsim --help'.\n");
        }
    }
    Outcome help = runXpsim({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_FALSE(contains(help.output, " \n")) << "trailing blank in --help";
    // Even a failed run stops the plug-ins it started.
    EXPECT_EQ(events("Alpha").back(), "stop id=1");
}

}  // namespace
}  // namespace xpsim::test

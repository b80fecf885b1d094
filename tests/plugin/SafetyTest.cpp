// What a hostile or careless script does never ends, hangs or crashes the simulator:
// exit requests, lists that change while they are copied, sequences of absurd length,
// unencodable exception texts, threads left running over a Reload and a plug-in reload.

#include <string>

#include "Harness.h"
#include "driver.h"

namespace vorlith::test {
namespace {

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

// The one log line that starts with `start`.
std::string LineStarting(const std::string& text, const std::string& start) {
    for (const std::string& line : SplitLines(text))
        if (line.rfind(start, 0) == 0) return line;
    return "";
}

TEST_F(PluginTest, HostileScriptsNeverTakeTheSimulatorDown) {
    AddScript("VL_Hostile.py");
    WriteScript("VL_ExitAtImport.py", "import sys\nsys.exit(4)\n");
    StartSim();
    RunSeconds(1.5);
    xpsim::driver::reloadPlugins();  // XPluginStop, then the same binary loaded again
    RunSeconds(0.1);
    StopSim();

    std::string out = Output();
    // The values were read from the items the list held when the getter returned.
    EXPECT_TRUE(Has(out, "emptied ints 4 [7, 7, 7, 7]\n")) << out;
    EXPECT_TRUE(Has(out, "emptied floats 4 [2.5, 2.5, 2.5, 2.5]\n")) << out;
    EXPECT_TRUE(Has(out, "emptied bytes 3 [3]\n")) << out;
    // Only the elements the SDK takes are fetched, one by one, whatever __len__ says.
    EXPECT_TRUE(Has(out, "endless ints -> 1\nendless ints past the ints raised TypeError\n"
                         "endless ints all of them raised ValueError\n"
                         "endless floats raised TypeError\nendless bytes -> 1\n"
                         "negative count -> 1\nnegative max -> 0\n"))
        << out;
    EXPECT_EQ(CountOf(out, "hostile start\n"), 2) << out;
    EXPECT_EQ(CountOf(out, "hostile stop\n"), 2) << out;

    std::string log = Log();
    // Exit requests are tracebacks naming the script, and everything goes on.
    EXPECT_TRUE(Has(log, "VL_ExitAtImport.py\", line 2, in <module>")) << log;
    EXPECT_TRUE(Has(log, "SystemExit: 4\n'VL_ExitAtImport' failed to load\n")) << log;
    EXPECT_TRUE(Has(log, "VL_Hostile.py\", line ")) << log;
    EXPECT_TRUE(Has(log, "Error in sys.excepthook:\n")) << log;
    EXPECT_TRUE(Has(log, "\nSystemExit: 5\n\nOriginal exception was:\n")) << log;
    EXPECT_GE(CountOf(log, "\nSystemExit: 3\n"), 1) << log;
    // A text Python cannot encode still reaches the log, escaped.
    // (Python 2 prints the line without the text it cannot make into str.)
    EXPECT_TRUE(Has(log, kPythonMajor == 3 ? "ValueError: unencodable \\ud800 text\n" : "\nValueError"))
        << log;
    // Both stops waited for the threads, named the stubborn ones and went on; the polite
    // one was joined by the script, the looping one ended when told to exit.
    EXPECT_EQ(CountOf(log, "--- LOGGING STOPPED ---\n"), 2) << log;
    std::string told = LineStarting(log, "Python threads still running at stop, told to exit: ");
    EXPECT_TRUE(Has(told, "Sleeper") && Has(told, "Looper") && !Has(told, "Polite")) << log;
    std::string kept = LineStarting(log, "Python threads still running, the interpreter is kept for them: ");
    EXPECT_TRUE(Has(kept, "Sleeper") && !Has(kept, "Looper")) << log;
    EXPECT_EQ(CountOf(log, "Internal error"), 0) << log;
}

TEST_F(PluginTest, AnExitRequestFromAnAtexitHandlerDoesNotEndTheSimulator) {
    WriteScript("VL_AtExit.py",
                "import atexit, sys\n"
                "atexit.register(sys.exit, 6)\n"
                "class Vorlith:\n"
                "    def XPluginStart(self):\n"
                "        return 'At exit', 'vorlith.test.atexit', 'exits at exit'\n");
    StartSim();
    StopSim();
    EXPECT_TRUE(Has(Log(), "After Py_Finalize()\n--- LOGGING STOPPED ---\n")) << Log();
}

}  // namespace
}  // namespace vorlith::test

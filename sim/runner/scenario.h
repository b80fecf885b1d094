// The scenario language of xpsim: one command a line, '#' starts a comment, words
// separated by blanks, "double quotes" around words with blanks. The player is a
// library so that tests drive the simulator with the same code as xpsim.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace xpsim::runner {

// What a command may use besides the driver API.
struct ScenarioContext {
    std::string root;  // the simulator root (Options::root)
    std::ostream* out; // where commands print what they show (xpsim: stdout)
    std::string screenshot = "";  // PNG of the last frame, taken after the last step (--screenshot)
};

using ScenarioArgs = std::vector<std::string>;
// Returns false with *error set when the command fails (a failed check stops the scenario).
using ScenarioCommandFn = bool (*)(ScenarioContext& context, const ScenarioArgs& args, std::string* error);

struct ScenarioCommand {
    const char* name;   // one or more words, e.g. "run" or "mouse click"
    const char* usage;  // the arguments, for error messages and --help
    int minArgs;
    int maxArgs;        // -1: no limit
    ScenarioCommandFn run;
};

// The command table (scenario_commands.cpp).
const std::vector<ScenarioCommand>& scenarioCommands();

// One parsed line.
struct ScenarioStep {
    int line = 0;
    const ScenarioCommand* command = nullptr;
    ScenarioArgs args;
};

// Parses a whole scenario; false with *error ("<source>:<line>: ...") at the first bad line,
// so nothing runs when the file has a mistake.
bool parseScenario(const std::string& text, const std::string& source, std::vector<ScenarioStep>* steps,
                   std::string* error);

// Parses and plays a scenario on the running simulator, stopping at the first failure.
bool playScenario(const std::string& text, const std::string& source, ScenarioContext& context, std::string* error);
bool playScenarioFile(const std::string& path, ScenarioContext& context, std::string* error);

// Splits a line into words (quotes group, '#' outside quotes ends the line).
// False with *error on an unterminated quote.
bool splitWords(const std::string& line, std::vector<std::string>* words, std::string* error);

}  // namespace xpsim::runner

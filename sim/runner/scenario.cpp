// Reading and playing scenarios: words, lines, matching a line to the command table,
// and running the steps in order.

#include "scenario.h"

#include "screenshots.h"

#include <fstream>
#include <sstream>

namespace xpsim::runner {

namespace {

int wordCount(const char* name) {
    std::istringstream in(name);
    int n = 0;
    for (std::string w; in >> w;) ++n;
    return n;
}

bool startsWith(const std::vector<std::string>& words, const char* name) {
    std::istringstream in(name);
    size_t i = 0;
    for (std::string w; in >> w; ++i) {
        if (i >= words.size() || words[i] != w) return false;
    }
    return true;
}

// The command whose name is the longest prefix of the words ("mouse click" before "mouse").
const ScenarioCommand* matchCommand(const std::vector<std::string>& words) {
    const ScenarioCommand* best = nullptr;
    for (const ScenarioCommand& c : scenarioCommands()) {
        if (startsWith(words, c.name) && (!best || wordCount(c.name) > wordCount(best->name))) best = &c;
    }
    return best;
}

std::string usageOf(const ScenarioCommand& c) {
    return std::string(c.name) + (*c.usage ? " " : "") + c.usage;
}

}  // namespace

bool splitWords(const std::string& line, std::vector<std::string>* words, std::string* error) {
    words->clear();
    size_t i = 0;
    while (i < line.size()) {
        char c = line[i];
        if (c == ' ' || c == '\t' || c == '\r') {
            ++i;
        } else if (c == '#') {
            break;
        } else if (c == '"') {
            std::string word;
            ++i;
            bool closed = false;
            while (i < line.size()) {
                if (line[i] == '\\' && i + 1 < line.size() && (line[i + 1] == '"' || line[i + 1] == '\\')) {
                    word += line[i + 1];
                    i += 2;
                } else if (line[i] == '"') {
                    closed = true;
                    ++i;
                    break;
                } else {
                    word += line[i++];
                }
            }
            if (!closed) {
                if (error) *error = "missing closing quote";
                return false;
            }
            words->push_back(word);
        } else {
            size_t end = line.find_first_of(" \t\r\"#", i);
            if (end == std::string::npos) end = line.size();
            words->push_back(line.substr(i, end - i));
            i = end;
        }
    }
    return true;
}

bool parseScenario(const std::string& text, const std::string& source, std::vector<ScenarioStep>* steps,
                   std::string* error) {
    steps->clear();
    std::istringstream in(text);
    int lineNumber = 0;
    for (std::string line; std::getline(in, line);) {
        ++lineNumber;
        auto fail = [&](const std::string& message) {
            if (error) *error = source + ":" + std::to_string(lineNumber) + ": " + message;
            return false;
        };
        std::vector<std::string> words;
        std::string why;
        if (!splitWords(line, &words, &why)) return fail(why);
        if (words.empty()) continue;
        const ScenarioCommand* command = matchCommand(words);
        if (!command) return fail("unknown command '" + words[0] + "'");
        ScenarioStep step;
        step.line = lineNumber;
        step.command = command;
        step.args.assign(words.begin() + wordCount(command->name), words.end());
        int n = static_cast<int>(step.args.size());
        if (n < command->minArgs || (command->maxArgs >= 0 && n > command->maxArgs)) {
            return fail("usage: " + usageOf(*command));
        }
        steps->push_back(std::move(step));
    }
    return true;
}

bool playScenario(const std::string& text, const std::string& source, ScenarioContext& context, std::string* error) {
    std::vector<ScenarioStep> steps;
    if (!parseScenario(text, source, &steps, error)) return false;
    bool finalShot = !context.screenshot.empty();
    for (size_t i = 0; i < steps.size(); ++i) {
        const ScenarioStep& step = steps[i];
        // Only the frames a screenshot will show are drawn.
        captureFrames(screenshotAhead(steps, i, finalShot));
        std::string why;
        if (!step.command->run(context, step.args, &why)) {
            captureFrames(false);
            if (error) *error = source + ":" + std::to_string(step.line) + ": " + step.command->name + ": " + why;
            return false;
        }
    }
    captureFrames(false);
    std::string why;
    if (finalShot && !takeScreenshot(context.screenshot, &why)) {
        if (error) *error = "--screenshot: " + why;
        return false;
    }
    return true;
}

bool playScenarioFile(const std::string& path, ScenarioContext& context, std::string* error) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        if (error) *error = "cannot read scenario " + path;
        return false;
    }
    std::stringstream text;
    text << in.rdbuf();
    return playScenario(text.str(), path, context, error);
}

}  // namespace xpsim::runner

// xpsim: the headless simulator. Lays out a simulator root, loads plug-in binaries
// the way X-Plane does, runs frames and a scenario, then stops every plug-in.
// Exit status: 0 success, 1 a plug-in failed to load or a scenario check failed, 2 bad usage.

#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "driver.h"
#include "scenario.h"

namespace {

using namespace xpsim;

const char kUsage[] =
    "usage: xpsim --root DIR [--plugin PATH]... [--seconds S | --frames N] [--fps F]\n"
    "             [--sdk 1.02|2.00|2.10] [--scenario FILE] [--verbose]\n"
    "\n"
    "  --root DIR       simulator root, laid out when missing (Resources/plugins, Output, Log.txt)\n"
    "  --plugin PATH    plug-in binary to load (repeatable); without it, every plug-in in\n"
    "                   DIR/Resources/plugins/*/64/lin.xpl and */lin_x64/*.xpl\n"
    "  --seconds S      simulated seconds to run before the scenario\n"
    "  --frames N       frames to run before the scenario (default: 1 second without a scenario,\n"
    "                   none with one)\n"
    "  --fps F          frames per simulated second (default 60)\n"
    "  --sdk G          SDK generation of the simulator (default 2.10)\n"
    "  --scenario FILE  commands to play, one a line, '#' starts a comment\n"
    "  --verbose        echo Log.txt on stderr\n";

struct CommandLine {
    Options options;
    std::vector<std::string> plugins;
    std::string scenario;
    int frames = -1;
    double seconds = -1;
};

void printUsage(std::ostream& out) {
    out << kUsage << "\nscenario commands:\n";
    for (const runner::ScenarioCommand& c : runner::scenarioCommands()) {
        out << "  " << c.name;
        if (c.usage[0] != '\0') out << " " << c.usage;  // no trailing blank
        out << "\n";
    }
}

bool parseNumber(const std::string& text, double* out) {
    char* end = nullptr;
    *out = std::strtod(text.c_str(), &end);
    return !text.empty() && *end == '\0';
}

// False with *error on a bad command line.
bool parseCommandLine(int argc, char** argv, CommandLine* cl, std::string* error) {
    for (int i = 1; i < argc; ++i) {
        std::string arg = argv[i];
        if (arg == "--verbose") {
            cl->options.verbose = true;
            continue;
        }
        static const std::string kValued[] = {"--root", "--plugin", "--scenario", "--sdk", "--fps", "--seconds", "--frames"};
        if (std::find(std::begin(kValued), std::end(kValued), arg) == std::end(kValued)) {
            *error = "unknown option '" + arg + "'";
            return false;
        }
        if (i + 1 >= argc) {
            *error = arg + " needs a value";
            return false;
        }
        std::string value = argv[++i];
        double number;
        if (arg == "--root") {
            cl->options.root = value;
        } else if (arg == "--plugin") {
            cl->plugins.push_back(value);
        } else if (arg == "--scenario") {
            cl->scenario = value;
        } else if (arg == "--sdk") {
            if (value != "1.02" && value != "2.00" && value != "2.10") {
                *error = "unknown SDK generation '" + value + "' (1.02, 2.00 or 2.10)";
                return false;
            }
            cl->options.sdk = value;
        } else if (arg == "--fps") {
            if (!parseNumber(value, &number) || number <= 0) {
                *error = "--fps needs a positive number";
                return false;
            }
            cl->options.fps = number;
        } else if (arg == "--seconds") {
            if (!parseNumber(value, &number) || number < 0) {
                *error = "--seconds needs a non-negative number";
                return false;
            }
            cl->seconds = number;
        } else if (arg == "--frames") {
            if (!parseNumber(value, &number) || number < 0 || number > INT_MAX || number != static_cast<int>(number)) {
                *error = "--frames needs a whole non-negative number";
                return false;
            }
            cl->frames = static_cast<int>(number);
        }
    }
    if (cl->options.root.empty()) {
        *error = "--root is required";
        return false;
    }
    if (cl->frames >= 0 && cl->seconds >= 0) {
        *error = "give --seconds or --frames, not both";
        return false;
    }
    if (cl->options.root[0] != '/') {
        char cwd[PATH_MAX];
        if (!getcwd(cwd, sizeof cwd)) {
            *error = "cannot find the current folder";
            return false;
        }
        cl->options.root = std::string(cwd) + "/" + cl->options.root;
    }
    while (cl->options.root.size() > 1 && cl->options.root.back() == '/') cl->options.root.pop_back();
    return true;
}

int fail(const std::string& message) {
    std::cerr << "xpsim: " << message << "\n";
    driver::shutdown();
    return 1;
}

int run(const CommandLine& cl) {
    std::string error;
    if (!driver::start(cl.options, &error)) {
        std::cerr << "xpsim: " << error << "\n";
        return 1;
    }
    std::vector<std::string> plugins = cl.plugins.empty() ? driver::findPlugins() : cl.plugins;
    if (plugins.empty()) std::cerr << "xpsim: no plug-ins in " << cl.options.root << "/Resources/plugins\n";
    for (const std::string& path : plugins) {
        if (driver::loadPlugin(path, &error) < 0) return fail(error);
    }
    driver::enablePluginsAndSendLoadMessages();

    if (cl.seconds >= 0) {
        driver::runSeconds(cl.seconds);
    } else if (cl.frames >= 0) {
        driver::runFrames(cl.frames);
    } else if (cl.scenario.empty()) {
        driver::runSeconds(1.0);
    }
    if (!cl.scenario.empty()) {
        runner::ScenarioContext context{cl.options.root, &std::cout};
        if (!runner::playScenarioFile(cl.scenario, context, &error)) return fail(error);
    }
    driver::shutdown();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (std::string(argv[i]) == "--help" || std::string(argv[i]) == "-h") {
            printUsage(std::cout);
            return 0;
        }
    }
    CommandLine cl;
    std::string error;
    if (!parseCommandLine(argc, argv, &cl, &error)) {
        std::cerr << "xpsim: " << error << "\nTry 'xpsim --help'.\n";
        return 2;
    }
    return run(cl);
}

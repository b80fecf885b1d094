// The host's glue: settings, clock, Log.txt, error reporting and the order of a frame.

#include "host.h"

#include <cerrno>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>

#include "graphics_internal.h"

namespace xpsim {

namespace {

FILE* gLog = nullptr;

bool makeDirs(const std::string& path, std::string* error) {
    std::string partial;
    for (size_t i = 0; i <= path.size(); ++i) {
        if (i == path.size() || path[i] == '/') {
            if (!partial.empty() && mkdir(partial.c_str(), 0755) != 0 && errno != EEXIST) {
                if (error) *error = "cannot create folder " + partial + ": " + std::strerror(errno);
                return false;
            }
        }
        if (i < path.size()) partial += path[i];
    }
    return true;
}

}  // namespace

Host& Host::get() {
    static Host host;
    return host;
}

void Host::log(const std::string& line) {
    logText(line.empty() || line.back() != '\n' ? line + '\n' : line);
}

void Host::logText(const std::string& text) {
    if (!gLog) {
        std::string path = rootPath("Log.txt");
        gLog = std::fopen(path.c_str(), "a");
        if (!gLog) return;
    }
    std::fputs(text.c_str(), gLog);
    std::fflush(gLog);  // tests and scenarios read the log while the run goes on
    if (options.verbose) std::fputs(text.c_str(), stderr);
}

void Host::reportError(const char* fmt, ...) {
    char message[1024];
    va_list args;
    va_start(args, fmt);
    std::vsnprintf(message, sizeof message, fmt, args);
    va_end(args);
    log("xpsim: SDK error by plug-in " + std::to_string(currentPlugin) + ": " + message);
    callErrorCallback(currentPlugin, message);
}

std::string Host::rootPath(const std::string& relative) const {
    return options.root + "/" + relative;
}

void Host::frame() {
    inputFrame();
    elapsedSeconds = (cycleNumber + 1) / options.fps;  // from the count, so no drift
    commandFrame();
    flightLoopFrame();
    sceneryFrame();
    cameraFrame();
    drawFrame();
    ++cycleNumber;
    pluginFrame();
}

void Host::reset() {
    resetPlugins();
    resetDataAccess();
    resetProcessing();
    resetDisplay();
    resetGraphics();
    resetMenus();
    resetUtilities();
    resetWorld();
    resetLibraries();
    elapsedSeconds = 0.0;
    cycleNumber = 0;
    currentPlugin = 0;
    if (gLog) {
        std::fclose(gLog);
        gLog = nullptr;
    }
}

namespace driver {

bool start(const Options& options, std::string* error) {
    Host& host = Host::get();
    if (options.root.empty() || options.root[0] != '/') {
        if (error) *error = "the simulator root must be an absolute path";
        return false;
    }
    if (options.fps <= 0) {
        if (error) *error = "frames per second must be positive";
        return false;
    }
    if (options.sdk != "1.02" && options.sdk != "2.00" && options.sdk != "2.10") {
        if (error) *error = "unknown SDK generation '" + options.sdk + "' (1.02, 2.00 or 2.10)";
        return false;
    }
    host.reset();
    host.options = options;
    while (host.options.root.size() > 1 && host.options.root.back() == '/') host.options.root.pop_back();
    if (!makeDirs(host.rootPath("Resources/plugins"), error)) return false;
    if (!makeDirs(host.rootPath("Output"), error)) return false;
    if (!placeSdkLibraries(error)) return false;
    FILE* f = std::fopen(host.rootPath("Log.txt").c_str(), "w");
    if (!f) {
        if (error) *error = "cannot write " + host.rootPath("Log.txt");
        return false;
    }
    std::fclose(f);
    host.log("xpsim: simulator root " + host.options.root + ", SDK " + host.options.sdk);
    return true;
}

void runFrames(int frames) {
    for (int i = 0; i < frames; ++i) {
        beginDrawFrame(i == frames - 1);
        Host::get().frame();
    }
}

void runSeconds(double seconds) {
    runFrames(static_cast<int>(std::ceil(seconds * Host::get().options.fps - 1e-9)));
}

double elapsedSeconds() { return Host::get().elapsedSeconds; }
int cycleNumber() { return Host::get().cycleNumber; }

void shutdown() {
    unloadAllPlugins();
    Host::get().reset();
}

}  // namespace driver
}  // namespace xpsim

// The simulator's shared state that every SDK area needs: settings, the clock, the
// plug-in currently being called, error reporting and the host's Log.txt.
// Each SDK area keeps its own world model in its own file; this is only the glue.
#pragma once

#include <string>

#include "driver.h"

namespace xpsim {

class Host {
public:
    static Host& get();

    Options options;

    // --- clock (advanced only by frame()) ---
    double elapsedSeconds = 0.0;  // sim time since start, what XPLMGetElapsedTime answers
    int cycleNumber = 0;          // frames completed
    double frameSeconds() const { return 1.0 / options.fps; }

    // --- the plug-in on whose behalf the host is running ---
    int currentPlugin = 0;  // XPLM_PLUGIN_XPLANE when the simulator itself runs

    // Reports a programming error of the current plug-in: Log.txt, then that plug-in's
    // error callback (printf-style message).
    void reportError(const char* fmt, ...) __attribute__((format(printf, 2, 3)));
    // Appends one line (a '\n' is added when missing) to <root>/Log.txt.
    void log(const std::string& line);
    // Appends text as it stands, no newline added (XPLMDebugString's contract).
    void logText(const std::string& text);
    // Absolute path of a file under the simulator root ("" = the root, with trailing '/').
    std::string rootPath(const std::string& relative = "") const;

    // Runs one simulated frame; see host.cpp for the order.
    void frame();

    // Forgets the state of the whole run: every area's reset hook runs (driver::shutdown).
    void reset();

private:
    Host() = default;
};

// Makes `plugin` the current plug-in for the scope and restores the previous one after,
// so nested calls (a plug-in calling the SDK, which calls another plug-in) attribute
// errors and XPLMGetMyID correctly.
class CallingPlugin {
public:
    explicit CallingPlugin(int plugin) : saved_(Host::get().currentPlugin) { Host::get().currentPlugin = plugin; }
    ~CallingPlugin() { Host::get().currentPlugin = saved_; }
    CallingPlugin(const CallingPlugin&) = delete;
    CallingPlugin& operator=(const CallingPlugin&) = delete;

private:
    int saved_;
};

// Bounds how deeply plug-in callbacks may re-enter one host operation (a command handler
// running its own command, two windows taking the focus back from each other): within
// `limit` nested entries the guard is true; past it the caller reports the error and
// stops, instead of recursing until the stack overflows.
class NestingGuard {
public:
    NestingGuard(int& depth, int limit) : depth_(depth), entered_(depth < limit) {
        if (entered_) ++depth_;
    }
    ~NestingGuard() {
        if (entered_) --depth_;
    }
    NestingGuard(const NestingGuard&) = delete;
    NestingGuard& operator=(const NestingGuard&) = delete;
    explicit operator bool() const { return entered_; }

private:
    int& depth_;
    bool entered_;
};

// Plugin.cpp: a disabled plug-in gets no callbacks; check before calling one.
bool isPluginEnabled(int plugin);  // false for unknown ids
// Utilities.cpp: the plug-in's XPLMSetErrorCallback callback; no-op when none installed.
void callErrorCallback(int plugin, const char* message);

// Each SDK area's share of a frame, called by Host::frame in this order.
void inputFrame();       // Display.cpp: deliver queued mouse and key events
void commandFrame();     // Utilities.cpp: continue phase of held commands
void flightLoopFrame();  // Processing.cpp: due flight loops
void cameraFrame();      // Camera.cpp: the camera controller's callback
void drawFrame();        // Display.cpp: draw phases and windows, in the simulator's order
void sceneryFrame();     // world_hooks.cpp: asynchronous object loads
void pluginFrame();      // Plugin.cpp: deferred reload requested during the frame

// Plugin.cpp: disables, stops and unloads every plug-in (driver::shutdown).
void unloadAllPlugins();
// Plugin.cpp: puts the SDK libraries where plug-ins look for them in the root
// (Resources/plugins/XPLM_64.so, as links to the loaded ones), or removes them under SDK 1.02.
bool placeSdkLibraries(std::string* error);

// Called when a plug-in is unloaded (stop or reload): each area drops what that
// plug-in registered, so no stale callback into an unloaded binary remains.
void forgetPluginDataAccess(int plugin);
void forgetPluginProcessing(int plugin);
void forgetPluginDisplay(int plugin);
void forgetPluginMenus(int plugin);
void forgetPluginUtilities(int plugin);
void forgetPluginWorld(int plugin);  // camera, planes, scenery
void forgetPluginLibraries(int plugin);  // host_api.cpp: the widget library's hooks

// Called by Host::reset: each area returns to its start-of-run state.
void resetDataAccess();
void resetProcessing();
void resetDisplay();
void resetGraphics();
void resetMenus();
void resetUtilities();
void resetPlugins();
void resetWorld();  // camera, planes, navigation, scenery
void resetLibraries();  // host_api.cpp: the widget library's hooks

}  // namespace xpsim

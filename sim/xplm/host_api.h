// Host services for the SDK libraries that sit on XPLM_64.so (the widget library):
// the calling plug-in, error reporting and lifecycle hooks. Exported from XPLM_64.so,
// because host.h is internal to it.
#pragma once

#include <string>

#include "driver.h"

namespace xpsim {
namespace hostapi {

XPSIM_API int currentPlugin();
// Makes `plugin` the current one and returns the previous one.
XPSIM_API int swapCurrentPlugin(int plugin);
// Host::reportError on behalf of the current plug-in (message taken as is).
XPSIM_API void reportError(const char* message);
// Host::log: one line into <root>/Log.txt.
XPSIM_API void log(const std::string& line);

// A key that the library's focused window got but nobody in it wanted goes on to the
// simulator, as if no window had the keyboard: its hot keys.
XPSIM_API void passKeyToSimulator(char key, int flags, char virtualKey);

// A library's share of the host's lifecycle: forgetPlugin runs when a plug-in is
// unloaded, reset when the run is reset (driver::start, driver::shutdown).
struct LibraryHooks {
    void (*forgetPlugin)(int plugin) = nullptr;
    void (*reset)() = nullptr;
};
XPSIM_API void addLibraryHooks(const LibraryHooks& hooks);

// CallingPlugin for code outside XPLM_64.so.
class CallingPlugin {
public:
    explicit CallingPlugin(int plugin) : saved_(swapCurrentPlugin(plugin)) {}
    ~CallingPlugin() { swapCurrentPlugin(saved_); }
    CallingPlugin(const CallingPlugin&) = delete;
    CallingPlugin& operator=(const CallingPlugin&) = delete;

private:
    int saved_;
};

}  // namespace hostapi
}  // namespace xpsim

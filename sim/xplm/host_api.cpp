// The exported face of the host for libraries built on XPLM_64.so, and the hooks
// those libraries register for plug-in unloads and resets.

#include "host_api.h"

#include <vector>

#include "display_state.h"
#include "host.h"

namespace xpsim {

namespace {
std::vector<hostapi::LibraryHooks>& libraryHooks() {
    static std::vector<hostapi::LibraryHooks> hooks;
    return hooks;
}
}  // namespace

namespace hostapi {

int currentPlugin() { return Host::get().currentPlugin; }

int swapCurrentPlugin(int plugin) {
    int previous = Host::get().currentPlugin;
    Host::get().currentPlugin = plugin;
    return previous;
}

void reportError(const char* message) { Host::get().reportError("%s", message ? message : ""); }

void log(const std::string& line) { Host::get().log(line); }

void passKeyToSimulator(char, int flags, char virtualKey) { display::callHotKeys(virtualKey, flags); }

void addLibraryHooks(const LibraryHooks& hooks) { libraryHooks().push_back(hooks); }

}  // namespace hostapi

void forgetPluginLibraries(int plugin) {
    for (const auto& h : libraryHooks())
        if (h.forgetPlugin) h.forgetPlugin(plugin);
}

void resetLibraries() {
    for (const auto& h : libraryHooks())
        if (h.reset) h.reset();
}

}  // namespace xpsim

// XPLMPlugin: the table of loaded plug-ins as plug-ins see it (lookups, info,
// enable/disable, reload requests), messages between plug-ins, and features.
// Loading and unloading binaries lives in plugin_loader.cpp.

#include <cstdio>
#include <cstring>
#include <iterator>
#include <vector>

#include "XPLMPlugin.h"
#include "host.h"
#include "plugin_internal.h"
#include "world_internal.h"

namespace xpsim {

namespace {

// The SDK's buffer size for plug-in names, paths, signatures and descriptions.
constexpr size_t kInfoSize = 256;

void copyInfo(char* out, const std::string& value) {
    if (out) std::snprintf(out, kInfoSize, "%s", value.c_str());
}

struct Feature {
    const char* name;
    const char* sinceSdk;  // first SDK generation whose simulator knows it
};
const Feature kFeatures[] = {
    {"XPLM_WANTS_REFLECTIONS", "2.00"},
    {"XPLM_USE_NATIVE_PATHS", "2.10"},
};

bool hasFeature(const char* name) {
    if (!name) return false;
    for (const Feature& f : kFeatures) {
        // Generations compare as text: "1.02" < "2.00" < "2.10".
        if (std::strcmp(f.name, name) == 0) return Host::get().options.sdk >= f.sinceSdk;
    }
    return false;
}

// Feature state of the calling plug-in; id 0 is the test process calling the SDK itself.
std::set<std::string>* featuresOf(int plugin) {
    if (plugin == XPLM_PLUGIN_XPLANE) return &pluginTable().simulatorFeatures;
    PluginEntry* p = findPlugin(plugin);
    return p ? &p->features : nullptr;
}

std::vector<int> enabledIdsInLoadOrder() {
    std::vector<int> ids;
    for (auto& [id, p] : pluginTable().plugins) {
        if (p.enabled) ids.push_back(id);
    }
    return ids;
}

}  // namespace

PluginTable& pluginTable() {
    static PluginTable table;
    return table;
}

PluginEntry* findPlugin(int id) {
    auto& plugins = pluginTable().plugins;
    auto it = plugins.find(id);
    return it == plugins.end() ? nullptr : &it->second;
}

int findPluginWhere(std::string PluginEntry::*field, const std::string& value) {
    for (auto& [id, p] : pluginTable().plugins) {
        if (p.*field == value) return id;
    }
    return XPLM_NO_PLUGIN_ID;
}

// The simulator itself never gets disabled; registrations made by the test process
// (id 0) therefore keep getting called.
bool isPluginEnabled(int plugin) {
    if (plugin == XPLM_PLUGIN_XPLANE) return true;
    PluginEntry* p = findPlugin(plugin);
    return p && p->enabled;
}

bool enablePlugin(PluginEntry& plugin) {
    if (plugin.enabled || plugin.changing) return plugin.enabled;
    int id = plugin.id;
    plugin.changing = true;
    int ok;
    {
        CallingPlugin calling(id);
        ok = plugin.enable();
    }
    // The entry may not move while its callback runs (std::map), but look it up again
    // in case the table was cleared meanwhile.
    PluginEntry* p = findPlugin(id);
    if (!p) return false;
    p->changing = false;
    p->enabled = ok != 0;
    if (!p->enabled) {
        Host::get().log("xpsim: plug-in " + std::to_string(id) + " '" + p->name + "' refused to enable");
        releasePlanesOfDisabled(id);  // taken in XPluginEnable, perhaps
    }
    return p->enabled;
}

void disablePlugin(PluginEntry& plugin) {
    if (!plugin.enabled || plugin.changing) return;
    int id = plugin.id;
    // Disabled before its XPluginDisable runs: from then on it gets no callbacks or messages.
    plugin.enabled = false;
    plugin.changing = true;
    {
        CallingPlugin calling(id);
        plugin.disable();
    }
    if (PluginEntry* p = findPlugin(id)) p->changing = false;
    releasePlanesOfDisabled(id);
}

// Messages sent from message handlers, nested. The SDK does not say how deeply that
// may go; two plug-ins answering each other's message would otherwise recurse until the
// stack overflows, so past this depth a message is dropped.
namespace {
int gMessageDepth = 0;
constexpr int kMaxMessageDepth = 32;
}  // namespace

void deliverMessage(int target, int sender, int message, void* param) {
    PluginEntry* p = findPlugin(target);
    if (!p || !p->enabled || !p->receive) return;
    NestingGuard nesting(gMessageDepth, kMaxMessageDepth);
    if (!nesting) {
        Host::get().reportError("message %d to plug-in %d dropped: messages sent from message handlers nest %d deep",
                                message, target, kMaxMessageDepth);
        return;
    }
    XPluginReceiveMessage_f receive = p->receive;
    CallingPlugin calling(target);
    receive(sender, message, param);
}

// The SDK does not say whether a broadcast reaches its sender; "every plug-in" is
// addressed, so the sender gets it too.
void broadcastMessage(int sender, int message, void* param) {
    // Ids first: a receiver may disable others (they are then skipped).
    for (int id : enabledIdsInLoadOrder()) deliverMessage(id, sender, message, param);
}

bool isFeatureEnabled(int plugin, const std::string& feature) {
    std::set<std::string>* features = featuresOf(plugin);
    return features && features->count(feature) != 0;
}

}  // namespace xpsim

using namespace xpsim;

extern "C" {

XPLM_API XPLMPluginID XPLMGetMyID(void) { return Host::get().currentPlugin; }

// The SDK does not say whether the simulator (id 0) is counted; it is not a loaded
// binary, so it is not.
XPLM_API int XPLMCountPlugins(void) { return static_cast<int>(pluginTable().plugins.size()); }

XPLM_API XPLMPluginID XPLMGetNthPlugin(int inIndex) {
    auto& plugins = pluginTable().plugins;
    if (inIndex < 0 || inIndex >= static_cast<int>(plugins.size())) {
        Host::get().reportError("XPLMGetNthPlugin: index %d out of range (%d plug-ins)", inIndex,
                                static_cast<int>(plugins.size()));
        return XPLM_NO_PLUGIN_ID;
    }
    auto it = plugins.begin();
    std::advance(it, inIndex);
    return it->first;
}

// On Linux native and legacy paths are the same text, so the path mode changes nothing.
XPLM_API XPLMPluginID XPLMFindPluginByPath(const char* inPath) {
    if (!inPath) {
        Host::get().reportError("XPLMFindPluginByPath: NULL path");
        return XPLM_NO_PLUGIN_ID;
    }
    return findPluginWhere(&PluginEntry::path, inPath);
}

// The SDK does not say whether signatures compare case-sensitively; exact match.
XPLM_API XPLMPluginID XPLMFindPluginBySignature(const char* inSignature) {
    if (!inSignature) {
        Host::get().reportError("XPLMFindPluginBySignature: NULL signature");
        return XPLM_NO_PLUGIN_ID;
    }
    return findPluginWhere(&PluginEntry::signature, inSignature);
}

XPLM_API void XPLMGetPluginInfo(XPLMPluginID inPlugin, char* outName, char* outFilePath,
                                char* outSignature, char* outDescription) {
    if (inPlugin == XPLM_PLUGIN_XPLANE) {
        // The SDK does not describe the simulator's own entry; we answer like a plug-in
        // whose binary is the simulator executable in the root.
        copyInfo(outName, "X-Plane");
        copyInfo(outFilePath, Host::get().rootPath("X-Plane-x86_64"));
        copyInfo(outSignature, "xplane");
        copyInfo(outDescription, "The simulator (xpsim)");
        return;
    }
    PluginEntry* p = findPlugin(inPlugin);
    if (!p) {
        Host::get().reportError("XPLMGetPluginInfo: unknown plug-in id %d", inPlugin);
        for (char* out : {outName, outFilePath, outSignature, outDescription}) copyInfo(out, "");
        return;
    }
    copyInfo(outName, p->name);
    copyInfo(outFilePath, p->path);
    copyInfo(outSignature, p->signature);
    copyInfo(outDescription, p->description);
}

XPLM_API int XPLMIsPluginEnabled(XPLMPluginID inPluginID) {
    if (inPluginID != XPLM_PLUGIN_XPLANE && !findPlugin(inPluginID)) {
        Host::get().reportError("XPLMIsPluginEnabled: unknown plug-in id %d", inPluginID);
        return 0;
    }
    return isPluginEnabled(inPluginID) ? 1 : 0;
}

XPLM_API int XPLMEnablePlugin(XPLMPluginID inPluginID) {
    if (inPluginID == XPLM_PLUGIN_XPLANE) return 1;
    PluginEntry* p = findPlugin(inPluginID);
    if (!p) {
        Host::get().reportError("XPLMEnablePlugin: unknown plug-in id %d", inPluginID);
        return 0;
    }
    return enablePlugin(*p) ? 1 : 0;
}

XPLM_API void XPLMDisablePlugin(XPLMPluginID inPluginID) {
    PluginEntry* p = findPlugin(inPluginID);
    if (!p) {
        Host::get().reportError("XPLMDisablePlugin: %s plug-in id %d",
                                inPluginID == XPLM_PLUGIN_XPLANE ? "cannot disable the simulator," : "unknown",
                                inPluginID);
        return;
    }
    disablePlugin(*p);
}

// Unloading now would pull the binary out from under the running callback; the
// reload happens at the end of the frame (pluginFrame).
XPLM_API void XPLMReloadPlugins(void) {
    pluginTable().reloadPending = true;
    Host::get().log("xpsim: plug-in " + std::to_string(Host::get().currentPlugin) + " requested a plug-in reload");
}

XPLM_API void XPLMSendMessageToPlugin(XPLMPluginID inPlugin, int inMessage, void* inParam) {
    int sender = Host::get().currentPlugin;
    if (inPlugin == XPLM_NO_PLUGIN_ID) {
        broadcastMessage(sender, inMessage, inParam);
    } else if (inPlugin == XPLM_PLUGIN_XPLANE) {
        // The simulator has no use for plug-in messages.
    } else if (!findPlugin(inPlugin)) {
        Host::get().reportError("XPLMSendMessageToPlugin: unknown plug-in id %d", inPlugin);
    } else {
        deliverMessage(inPlugin, sender, inMessage, inParam);
    }
}

XPLM_API int XPLMHasFeature(const char* inFeature) { return hasFeature(inFeature) ? 1 : 0; }

// The SDK calls an unknown feature name an error without saying what happens; we
// report it to the error callback and answer 0 / change nothing.
XPLM_API int XPLMIsFeatureEnabled(const char* inFeature) {
    if (!hasFeature(inFeature)) {
        Host::get().reportError("XPLMIsFeatureEnabled: unknown feature '%s'", inFeature ? inFeature : "(null)");
        return 0;
    }
    return isFeatureEnabled(Host::get().currentPlugin, inFeature) ? 1 : 0;
}

XPLM_API void XPLMEnableFeature(const char* inFeature, int inEnable) {
    if (!hasFeature(inFeature)) {
        Host::get().reportError("XPLMEnableFeature: unknown feature '%s'", inFeature ? inFeature : "(null)");
        return;
    }
    std::set<std::string>* features = featuresOf(Host::get().currentPlugin);
    if (!features) return;
    if (inEnable) {
        features->insert(inFeature);
    } else {
        features->erase(inFeature);
    }
}

XPLM_API void XPLMEnumerateFeatures(XPLMFeatureEnumerator_f inEnumerator, void* inRef) {
    if (!inEnumerator) {
        Host::get().reportError("XPLMEnumerateFeatures: NULL enumerator");
        return;
    }
    for (const Feature& f : kFeatures) {
        if (hasFeature(f.name)) inEnumerator(f.name, inRef);
    }
}

}  // extern "C"

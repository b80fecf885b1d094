// The table of loaded plug-ins, shared by the SDK functions (Plugin.cpp) and the
// loader (plugin_loader.cpp). Other areas ask about plug-ins only through host.h
// and the feature query below.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "XPLMDefs.h"

namespace xpsim {

using XPluginStart_f = int (*)(char*, char*, char*);
using XPluginStop_f = void (*)();
using XPluginEnable_f = int (*)();
using XPluginDisable_f = void (*)();
using XPluginReceiveMessage_f = void (*)(XPLMPluginID, int, void*);

struct PluginEntry {
    int id = 0;
    void* library = nullptr;  // dlopen handle
    std::string path;         // absolute path of the binary
    std::string name, signature, description;
    bool enabled = false;
    bool changing = false;    // inside its XPluginEnable/XPluginDisable: no re-entry
    XPluginStart_f start = nullptr;
    XPluginStop_f stop = nullptr;
    XPluginEnable_f enable = nullptr;
    XPluginDisable_f disable = nullptr;
    XPluginReceiveMessage_f receive = nullptr;  // optional
    std::set<std::string> features;             // enabled features
};

struct PluginTable {
    std::map<int, PluginEntry> plugins;  // by id; ids grow with load order
    int nextId = 1;
    std::vector<std::string> startupPaths;  // what a reload loads again, in order
    bool reloadPending = false;
    std::set<std::string> simulatorFeatures;  // features "enabled" by id 0 (tests)
};

PluginTable& pluginTable();
PluginEntry* findPlugin(int id);  // null for unknown ids and for 0
// The first loaded plug-in whose `field` (path, signature...) is `value`, or XPLM_NO_PLUGIN_ID.
int findPluginWhere(std::string PluginEntry::*field, const std::string& value);

// Calls the plug-in's XPluginEnable unless it is enabled; true when it is enabled after.
bool enablePlugin(PluginEntry& plugin);
// Calls XPluginDisable when it is enabled.
void disablePlugin(PluginEntry& plugin);
// Delivers to one plug-in (ignored when disabled or without a receive function).
void deliverMessage(int target, int sender, int message, void* param);
// Delivers to every enabled plug-in, in load order.
void broadcastMessage(int sender, int message, void* param);

// Whether `feature` is enabled for `plugin` (XPLM_USE_NATIVE_PATHS, XPLM_WANTS_REFLECTIONS).
bool isFeatureEnabled(int plugin, const std::string& feature);

}  // namespace xpsim

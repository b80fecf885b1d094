// Loading plug-in binaries the way X-Plane does (dlopen with local scope, the five
// entry points, start/enable/load messages), unloading and reloading them, and
// placing the SDK libraries in the simulator root.

#include <dirent.h>
#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "XPLMPlugin.h"
#include "host.h"
#include "plugin_internal.h"

namespace xpsim {

namespace {

constexpr size_t kStartBufferSize = 256;

std::string absolutePath(const std::string& path) {
    char resolved[PATH_MAX];
    if (realpath(path.c_str(), resolved)) return resolved;
    return "";
}

template <class F>
F entryPoint(void* library, const char* name) {
    return reinterpret_cast<F>(dlsym(library, name));
}

void forgetEverything(int plugin) {
    forgetPluginLibraries(plugin);
    forgetPluginDataAccess(plugin);
    forgetPluginProcessing(plugin);
    forgetPluginDisplay(plugin);
    forgetPluginMenus(plugin);
    forgetPluginUtilities(plugin);
    forgetPluginWorld(plugin);
}

// Stops one disabled plug-in, drops what it left registered and unloads its binary.
void stopAndUnload(int id) {
    PluginEntry* p = findPlugin(id);
    if (!p) return;
    // A plug-in stopped before may have enabled this one again from its XPluginStop;
    // XPluginStop always comes after XPluginDisable.
    disablePlugin(*p);
    p = findPlugin(id);
    if (!p) return;
    XPluginStop_f stop = p->stop;
    {
        CallingPlugin calling(id);
        stop();
    }
    forgetEverything(id);
    p = findPlugin(id);
    if (!p) return;
    void* library = p->library;
    Host::get().log("xpsim: unloaded plug-in " + std::to_string(id) + " '" + p->name + "'");
    pluginTable().plugins.erase(id);
    dlclose(library);
}

// Disables every plug-in first, then stops and unloads them, both in load order, so
// no plug-in gets a message while another one is half torn down.
void unloadPlugins() {
    std::vector<int> ids;
    for (auto& [id, p] : pluginTable().plugins) ids.push_back(id);
    for (int id : ids) {
        if (PluginEntry* p = findPlugin(id)) disablePlugin(*p);
    }
    for (int id : ids) stopAndUnload(id);
}

bool placeLink(const std::string& link, const void* symbolInLibrary, std::string* error) {
    Dl_info info;
    if (!dladdr(symbolInLibrary, &info) || !info.dli_fname) {
        if (error) *error = "cannot find the file of the loaded SDK library for " + link;
        return false;
    }
    std::string target = absolutePath(info.dli_fname);
    if (target.empty()) target = info.dli_fname;
    if (unlink(link.c_str()) != 0 && errno != ENOENT) {
        if (error) *error = "cannot replace " + link + ": " + std::strerror(errno);
        return false;
    }
    if (symlink(target.c_str(), link.c_str()) != 0) {
        if (error) *error = "cannot link " + link + " to " + target + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

bool isFile(const std::string& path) {
    struct stat st;
    return stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

std::vector<std::string> sortedEntries(const std::string& folder) {
    std::vector<std::string> names;
    if (DIR* dir = opendir(folder.c_str())) {
        while (dirent* e = readdir(dir)) {
            if (e->d_name[0] != '.') names.push_back(e->d_name);
        }
        closedir(dir);
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool endsWith(const std::string& s, const std::string& suffix) {
    return s.size() >= suffix.size() && s.compare(s.size() - suffix.size(), suffix.size(), suffix) == 0;
}

int loadBinary(const std::string& path, std::string* error) {
    auto fail = [&](const std::string& message) {
        if (error) *error = message;
        Host::get().log("xpsim: " + message);
        return -1;
    };
    std::string absolute = absolutePath(path);
    if (absolute.empty()) return fail("cannot load plug-in " + path + ": " + std::strerror(errno));
    if (int loaded = findPluginWhere(&PluginEntry::path, absolute); loaded != XPLM_NO_PLUGIN_ID) {
        return fail("cannot load plug-in " + absolute + ": already loaded as plug-in " + std::to_string(loaded));
    }
    // Local scope like X-Plane: the plug-in's own symbols never satisfy another plug-in,
    // while its SDK references bind to the libraries the process already has.
    void* library = dlopen(absolute.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        const char* why = dlerror();
        return fail("cannot load plug-in " + absolute + ": " + (why ? why : "unknown loader error"));
    }
    PluginEntry entry;
    entry.library = library;
    entry.path = absolute;
    entry.start = entryPoint<XPluginStart_f>(library, "XPluginStart");
    entry.stop = entryPoint<XPluginStop_f>(library, "XPluginStop");
    entry.enable = entryPoint<XPluginEnable_f>(library, "XPluginEnable");
    entry.disable = entryPoint<XPluginDisable_f>(library, "XPluginDisable");
    entry.receive = entryPoint<XPluginReceiveMessage_f>(library, "XPluginReceiveMessage");
    // The SDK calls all five required without saying what X-Plane does without one.
    // Without start/stop/enable/disable the host cannot run the life cycle, so such a
    // binary is refused; a missing receive function only means no messages are delivered.
    std::string missing;
    if (!entry.start) missing += " XPluginStart";
    if (!entry.stop) missing += " XPluginStop";
    if (!entry.enable) missing += " XPluginEnable";
    if (!entry.disable) missing += " XPluginDisable";
    if (!missing.empty()) {
        dlclose(library);
        return fail("cannot load plug-in " + absolute + ": not an X-Plane plug-in (missing" + missing + ")");
    }

    PluginTable& table = pluginTable();
    int id = table.nextId++;
    entry.id = id;
    XPluginStart_f start = entry.start;
    table.plugins.emplace(id, std::move(entry));  // listed while it starts, for XPLMGetMyID & co.

    char name[kStartBufferSize] = {}, signature[kStartBufferSize] = {}, description[kStartBufferSize] = {};
    int started;
    {
        CallingPlugin calling(id);
        started = start(name, signature, description);
    }
    name[kStartBufferSize - 1] = signature[kStartBufferSize - 1] = description[kStartBufferSize - 1] = '\0';
    PluginEntry* p = findPlugin(id);
    if (!p) return fail("plug-in " + absolute + " vanished while starting");
    p->name = name;
    p->signature = signature;
    p->description = description;
    if (!started) {
        // The SDK does not say what X-Plane does when XPluginStart returns 0; we treat
        // the plug-in as not loaded: whatever it registered is dropped and it is unloaded.
        forgetEverything(id);
        table.plugins.erase(id);
        dlclose(library);
        return fail("plug-in " + absolute + " failed to start (XPluginStart returned 0)");
    }
    for (auto& [other, q] : table.plugins) {
        if (other != id && q.signature == p->signature) {
            Host::get().log("xpsim: warning: plug-in " + std::to_string(id) + " has the same signature '" +
                            p->signature + "' as plug-in " + std::to_string(other));
        }
    }
    Host::get().log("xpsim: loaded plug-in " + std::to_string(id) + " '" + p->name + "' (" + p->signature +
                    ") from " + absolute);
    return id;
}

// What X-Plane sends once the plug-ins are enabled: the user's aircraft, its livery
// (a 2.1 simulator only), the airport it is placed at, then the scenery around it.
// The aircraft index travels in the pointer itself.
void sendLoadMessages() {
    broadcastMessage(XPLM_PLUGIN_XPLANE, XPLM_MSG_PLANE_LOADED, nullptr);
    if (Host::get().options.sdk >= "2.10") broadcastMessage(XPLM_PLUGIN_XPLANE, XPLM_MSG_LIVERY_LOADED, nullptr);
    broadcastMessage(XPLM_PLUGIN_XPLANE, XPLM_MSG_AIRPORT_LOADED, nullptr);
    broadcastMessage(XPLM_PLUGIN_XPLANE, XPLM_MSG_SCENERY_LOADED, nullptr);
}

void reloadNow() {
    PluginTable& table = pluginTable();
    table.reloadPending = false;
    Host::get().log("xpsim: reloading plug-ins");
    unloadPlugins();
    // Loading starts over as at start-up; a failure is logged and the others still load.
    for (const std::string& path : table.startupPaths) loadBinary(path, nullptr);
    driver::enablePluginsAndSendLoadMessages();
}

}  // namespace

void pluginFrame() {
    if (pluginTable().reloadPending) reloadNow();
}

// The last thing the simulator tells plug-ins when it quits is that it writes its
// preferences (a 2.1 simulator only); then they are disabled and stopped.
void unloadAllPlugins() {
    PluginTable& table = pluginTable();
    if (!table.plugins.empty() && Host::get().options.sdk >= "2.10") {
        broadcastMessage(XPLM_PLUGIN_XPLANE, XPLM_MSG_WILL_WRITE_PREFS, nullptr);
    }
    unloadPlugins();
    table.reloadPending = false;
}

void resetPlugins() {
    unloadPlugins();  // normally none left: driver::shutdown unloads them first
    PluginTable& table = pluginTable();
    table = PluginTable{};
}

// A copy of the library would be loaded as a second instance with its own state, so
// the root gets symbolic links to the very files this process loaded.
bool placeSdkLibraries(std::string* error) {
    std::string xplm = Host::get().rootPath("Resources/plugins/XPLM_64.so");
    std::string widgets = Host::get().rootPath("Resources/plugins/XPWidgets_64.so");
    if (Host::get().options.sdk == "1.02") {
        // A 1.02 simulator has no SDK library where a plug-in would look for one.
        for (const std::string& link : {xplm, widgets}) {
            if (unlink(link.c_str()) != 0 && errno != ENOENT) {
                if (error) *error = "cannot remove " + link + ": " + std::strerror(errno);
                return false;
            }
        }
        return true;
    }
    if (!placeLink(xplm, reinterpret_cast<const void*>(&XPLMGetMyID), error)) return false;
    if (const void* widgetSymbol = dlsym(RTLD_DEFAULT, "XPCreateWidget")) {
        if (!placeLink(widgets, widgetSymbol, error)) return false;
    } else if (unlink(widgets.c_str()) != 0 && errno != ENOENT) {
        if (error) *error = "cannot remove " + widgets + ": " + std::strerror(errno);
        return false;
    }
    return true;
}

namespace driver {

int loadPlugin(const std::string& path, std::string* error) {
    pluginTable().startupPaths.push_back(path);
    return loadBinary(path, error);
}

std::vector<std::string> findPlugins() {
    std::string folder = Host::get().rootPath("Resources/plugins");
    std::vector<std::string> found;
    for (const std::string& name : sortedEntries(folder)) {
        std::string dir = folder + "/" + name;
        std::string fat = dir + "/64/lin.xpl";
        if (isFile(fat)) found.push_back(fat);
        for (const std::string& binary : sortedEntries(dir + "/lin_x64")) {
            std::string path = dir + "/lin_x64/" + binary;
            if (endsWith(binary, ".xpl") && isFile(path)) found.push_back(path);
        }
    }
    return found;
}

void enablePluginsAndSendLoadMessages() {
    std::vector<int> ids;
    for (auto& [id, p] : pluginTable().plugins) ids.push_back(id);
    for (int id : ids) {
        if (PluginEntry* p = findPlugin(id)) enablePlugin(*p);
    }
    sendLoadMessages();
}

void reloadPlugins() { reloadNow(); }

void sendMessage(int plugin, int message, long param) {
    void* payload = reinterpret_cast<void*>(static_cast<intptr_t>(param));
    CallingPlugin calling(XPLM_PLUGIN_XPLANE);
    if (plugin == XPLM_NO_PLUGIN_ID) {
        broadcastMessage(XPLM_PLUGIN_XPLANE, message, payload);
    } else {
        deliverMessage(plugin, XPLM_PLUGIN_XPLANE, message, payload);
    }
}

int findPluginBySignature(const std::string& signature) {
    return findPluginWhere(&PluginEntry::signature, signature);
}

int pluginCount() { return static_cast<int>(pluginTable().plugins.size()); }

}  // namespace driver
}  // namespace xpsim

#include "tools/ReloadWatch.h"

#include <map>
#include <string>
#include <utility>

#include "core/Log.h"
#include "core/PythonGuard.h"
#include "platform/FileTimes.h"
#include "platform/Paths.h"
#include "ui/ControlPanel.h"

namespace vorlith {

namespace {

std::map<std::string, long long> gStamps;  // the script sources at the last look
bool gWatching = false;                    // gStamps holds a look to compare with

// The source files the loader takes: ".py" names holding "VL_" or "vl_". Compiled files
// are left out: Python 2 writes them beside the sources at every import.
bool IsScriptSource(const std::string& name) {
    return name.size() > 3 && name.compare(name.size() - 3, 3, ".py") == 0 &&
           (name.find("VL_") != std::string::npos || name.find("vl_") != std::string::npos);
}

std::map<std::string, long long> ScriptStamps() {
    char folder[2048];
    std::map<std::string, long long> sources;
    if (VL_ConvertPath(VL_SimPath({"Resources", "plugins", "PythonScripts"}).c_str(), folder, sizeof folder) != 0)
        return sources;
    for (const auto& file : VL_FileStamps(folder))
        if (IsScriptSource(file.first)) sources.insert(file);
    return sources;
}

// The first difference between two looks, as "<file> was added|changed|removed".
std::string FirstChange(const std::map<std::string, long long>& before,
                        const std::map<std::string, long long>& now) {
    for (const auto& file : now) {
        auto old = before.find(file.first);
        if (old == before.end()) return file.first + " was added";
        if (old->second != file.second) return file.first + " was changed";
    }
    for (const auto& file : before)
        if (!now.count(file.first)) return file.first + " was removed";
    return std::string();
}

}  // namespace

void VL_LookForChanges() {
    if (!gVL_ReloadOnChange) {
        gWatching = false;
        return;
    }
    std::map<std::string, long long> now = ScriptStamps();
    std::string change = gWatching ? FirstChange(gStamps, now) : std::string();
    gStamps = std::move(now);
    gWatching = true;
    // A script that runs Python from a C thread could hold the interpreter here; the
    // next look tries again.
    if (change.empty() || PythonGuard::inside()) return;
    VL_WriteToLogf("Reloading scripts: %s\n", change.c_str());
    VL_ReloadScripts();
}

void VL_ForgetScriptFiles() {
    gWatching = false;
    gStamps.clear();
}

}  // namespace vorlith

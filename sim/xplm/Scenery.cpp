// XPLMScenery: terrain probes over the world's terrain, objects (loaded, shared by
// reference count, drawn into the draw list, loaded asynchronously) and the library.

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "XPLMScenery.h"
#include "handles.h"
#include "host.h"
#include "world.h"
#include "world_internal.h"

namespace xpsim {

namespace {

// The library that ships with the simulator: virtual path -> object file (relative to
// the root), with the area where a scenery package allows it. These files count as
// present even though a headless root has no default scenery on disk.
struct LibraryItem {
    const char* virtualPath;
    const char* realPath;
    double latMin, latMax, lonMin, lonMax;
};
constexpr LibraryItem kLibrary[] = {
    {"lib/airport/vehicles/pushback/tug.obj",
     "Resources/default scenery/sim objects/apt_vehicles/pushback/tug_GT110.obj", -90, 90, -180, 180},
    {"lib/airport/vehicles/baggage_train.obj",
     "Resources/default scenery/sim objects/apt_vehicles/baggage_train_1.obj", -90, 90, -180, 180},
    {"lib/airport/vehicles/baggage_train.obj",
     "Resources/default scenery/sim objects/apt_vehicles/baggage_train_2.obj", -90, 90, -180, 180},
    {"lib/airport/landscape/windsock.obj",
     "Resources/default scenery/sim objects/apt_lights/windsock.obj", -90, 90, -180, 180},
    {"lib/airport/aircraft/regional_jet.obj",
     "Resources/default scenery/sim objects/apt_aircraft/crj200.obj", -90, 90, -180, 180},
    // Only in the Pacific Northwest package's area.
    {"lib/airport/aircraft/regional_jet.obj",
     "Resources/default scenery/pacific northwest/objects/q400_horizon.obj", 42, 49, -125, -116},
};

struct Probe {
    XPLMProbeType type;
    int plugin;
};

struct LoadedObject {
    std::string path;         // as resolved under the root
    std::vector<int> owners;  // one plug-in id per reference
};

struct PendingLoad {
    int plugin;
    std::string path;
    XPLMObjectLoaded_f callback;
    void* refcon;
    int dueCycle;
    bool loaded = false;
    XPLMObjectRef object = nullptr;
};

struct Scenery {
    HandleTable<Probe> probes{HandleKind::Probe};
    HandleTable<LoadedObject> objects{HandleKind::Object};
    std::map<std::string, XPLMObjectRef> objectByPath;
    std::vector<PendingLoad> pending;
};
Scenery gScenery;

bool isLibraryFile(const std::string& relative) {
    return std::any_of(std::begin(kLibrary), std::end(kLibrary),
                       [&](const LibraryItem& item) { return relative == item.realPath; });
}

// An OBJ file starts with "A" or "I", a version line and "OBJ".
bool isObjectFile(const std::string& path, std::string* why) {
    std::ifstream in(path);
    if (!in) {
        *why = "no such file";
        return false;
    }
    std::string lines[3];
    for (std::string& line : lines) {
        std::getline(in, line);
        while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.pop_back();
    }
    if ((lines[0] != "A" && lines[0] != "I") || lines[1].empty() || !std::isdigit(static_cast<unsigned char>(lines[1][0])) ||
        lines[2].compare(0, 3, "OBJ") != 0) {
        *why = "not an OBJ file (expected A or I, a version and OBJ)";
        return false;
    }
    return true;
}

// One more reference to the object at `path` (relative to the root), or null.
XPLMObjectRef loadObject(const std::string& path, int plugin) {
    std::string relative = path.compare(0, 2, "./") == 0 ? path.substr(2) : path;
    auto known = gScenery.objectByPath.find(relative);
    if (known != gScenery.objectByPath.end()) {
        gScenery.objects.get(known->second)->owners.push_back(plugin);
        return known->second;
    }
    std::string why;
    if (!isLibraryFile(relative) && !isObjectFile(Host::get().rootPath(relative), &why)) {
        Host::get().log("xpsim: cannot load object " + path + ": " + why);
        return nullptr;
    }
    XPLMObjectRef handle = gScenery.objects.add(LoadedObject{relative, {plugin}});
    gScenery.objectByPath[relative] = handle;
    return handle;
}

void dropReference(XPLMObjectRef handle, LoadedObject& object, int plugin) {
    auto mine = std::find(object.owners.begin(), object.owners.end(), plugin);
    object.owners.erase(mine != object.owners.end() ? mine : object.owners.begin());
    if (object.owners.empty()) {
        gScenery.objectByPath.erase(object.path);
        gScenery.objects.remove(handle);
    }
}

float terrainAtLocal(double x, double z) {
    double lat, lon, alt;
    world::localToWorld(x, 0.0, z, &lat, &lon, &alt);
    return static_cast<float>(world::terrainElevation(lat, lon));
}

}  // namespace

// Loads that are due complete now; their callbacks wait while the plug-in is disabled.
void completeObjectLoads() {
    int now = Host::get().cycleNumber;
    std::vector<PendingLoad> due;
    for (size_t i = 0; i < gScenery.pending.size(); ++i) {
        PendingLoad& load = gScenery.pending[i];
        if (load.dueCycle > now) continue;
        if (!load.loaded) {
            load.object = loadObject(load.path, load.plugin);
            load.loaded = true;
        }
        if (isPluginEnabled(load.plugin)) {
            due.push_back(load);
            gScenery.pending.erase(gScenery.pending.begin() + i--);
        }
    }
    // Callbacks may start new loads, or disable a plug-in whose load is due next: that
    // one waits, like any load of a disabled plug-in.
    for (const PendingLoad& load : due) {
        if (!isPluginEnabled(load.plugin)) {
            gScenery.pending.push_back(load);
            continue;
        }
        CallingPlugin calling(load.plugin);
        load.callback(load.object, load.refcon);
    }
}

void forgetPluginScenery(int plugin) {
    // A load still on its way is released by the host; so is every reference the plug-in held.
    auto& pending = gScenery.pending;
    pending.erase(std::remove_if(pending.begin(), pending.end(),
                                 [&](const PendingLoad& load) { return load.plugin == plugin; }),
                  pending.end());
    gScenery.objects.forEach([&](void* handle, LoadedObject& object) {
        object.owners.erase(std::remove(object.owners.begin(), object.owners.end(), plugin), object.owners.end());
        if (object.owners.empty()) {
            gScenery.objectByPath.erase(object.path);
            gScenery.objects.remove(handle);
        }
    });
    std::vector<void*> probes;
    gScenery.probes.forEach([&](void* handle, Probe& probe) {
        if (probe.plugin == plugin) probes.push_back(handle);
    });
    for (void* handle : probes) gScenery.probes.remove(handle);
}

void resetScenery() {
    gScenery.probes.clear();
    gScenery.objects.clear();
    gScenery.objectByPath.clear();
    gScenery.pending.clear();
}

}  // namespace xpsim

using namespace xpsim;

extern "C" {

XPLM_API XPLMProbeRef XPLMCreateProbe(XPLMProbeType inProbeType) {
    if (inProbeType != xplm_ProbeY) {
        Host::get().reportError("XPLMCreateProbe: %d is not a probe type", inProbeType);
        return nullptr;
    }
    return gScenery.probes.add(Probe{inProbeType, Host::get().currentPlugin});
}

XPLM_API void XPLMDestroyProbe(XPLMProbeRef inProbe) {
    if (!gScenery.probes.remove(inProbe)) {
        Host::get().reportError("XPLMDestroyProbe: %p is not a probe (never created or already destroyed)", inProbe);
    }
}

XPLM_API XPLMProbeResult XPLMProbeTerrainXYZ(XPLMProbeRef inProbe, float inX, float inY, float inZ,
                                             XPLMProbeInfo_t* outInfo) {
    if (!gScenery.probes.get(inProbe)) {
        Host::get().reportError("XPLMProbeTerrainXYZ: %p is not a probe (never created or already destroyed)",
                                inProbe);
        return xplm_ProbeError;
    }
    if (!outInfo) {
        Host::get().reportError("XPLMProbeTerrainXYZ: the info pointer must not be NULL");
        return xplm_ProbeError;
    }
    if (outInfo->structSize != static_cast<int>(sizeof(XPLMProbeInfo_t))) {
        Host::get().reportError("XPLMProbeTerrainXYZ: structSize is %d, expected %d", outInfo->structSize,
                                static_cast<int>(sizeof(XPLMProbeInfo_t)));
        return xplm_ProbeError;
    }
    double lat, lon, alt;
    world::localToWorld(inX, inY, inZ, &lat, &lon, &alt);
    // A Y probe finds the highest surface on the vertical line, whatever inY is.
    float height = 0.0f, nx = 0.0f, ny = 1.0f, nz = 0.0f;
    int wet = 0;
    if (!inLoadedScenery(lat, lon)) {
        // Outside the loaded scenery the sim sees a sphere at 0 m MSL. The SDK does not
        // say what surface that is; we call it water.
        wet = 1;
    } else {
        height = terrainAtLocal(inX, inZ);
        double dx = (terrainAtLocal(inX + 1.0, inZ) - terrainAtLocal(inX - 1.0, inZ)) / 2.0;
        double dz = (terrainAtLocal(inX, inZ + 1.0) - terrainAtLocal(inX, inZ - 1.0)) / 2.0;
        double length = std::sqrt(dx * dx + 1.0 + dz * dz);
        nx = static_cast<float>(-dx / length);
        ny = static_cast<float>(1.0 / length);
        nz = static_cast<float>(-dz / length);
    }
    outInfo->locationX = inX;
    outInfo->locationY = height;
    outInfo->locationZ = inZ;
    outInfo->normalX = nx;
    outInfo->normalY = ny;
    outInfo->normalZ = nz;
    outInfo->velocityX = outInfo->velocityY = outInfo->velocityZ = 0.0f;
    outInfo->is_wet = wet;
    return xplm_ProbeHitTerrain;
}

XPLM_API XPLMObjectRef XPLMLoadObject(const char* inPath) {
    if (!inPath || !*inPath) {
        Host::get().reportError("XPLMLoadObject: no path given");
        return nullptr;
    }
    return loadObject(inPath, Host::get().currentPlugin);
}

XPLM_API void XPLMLoadObjectAsync(const char* inPath, XPLMObjectLoaded_f inCallback, void* inRefcon) {
    if (!inPath || !*inPath || !inCallback) {
        Host::get().reportError("XPLMLoadObjectAsync: a path and a callback are required");
        return;
    }
    // Never within the frame that asked: the earliest is the next frame's scenery step.
    gScenery.pending.push_back(
        PendingLoad{Host::get().currentPlugin, inPath, inCallback, inRefcon, Host::get().cycleNumber + 1});
}

XPLM_API void XPLMDrawObjects(XPLMObjectRef inObject, int inCount, XPLMDrawInfo_t* inLocations, int lighting,
                              int earth_relative) {
    LoadedObject* object = gScenery.objects.get(inObject);
    if (!object) {
        Host::get().reportError("XPLMDrawObjects: %p is not a loaded object", inObject);
        return;
    }
    if (inCount < 0 || (inCount > 0 && !inLocations)) {
        Host::get().reportError("XPLMDrawObjects: %d locations at %p", inCount, static_cast<void*>(inLocations));
        return;
    }
    for (int i = 0; i < inCount; ++i) {
        const XPLMDrawInfo_t& at = inLocations[i];
        if (at.structSize != static_cast<int>(sizeof(XPLMDrawInfo_t))) {
            Host::get().reportError("XPLMDrawObjects: location %d has structSize %d, expected %d", i, at.structSize,
                                    static_cast<int>(sizeof(XPLMDrawInfo_t)));
            return;
        }
    }
    for (int i = 0; i < inCount; ++i) {
        const XPLMDrawInfo_t& at = inLocations[i];
        char text[640];
        std::snprintf(text, sizeof text, "%s at %.1f,%.1f,%.1f pitch %.1f heading %.1f roll %.1f%s%s",
                      object->path.c_str(), at.x, at.y, at.z, at.pitch, at.heading, at.roll,
                      lighting ? " lit" : "", earth_relative ? " earth-relative" : "");
        DrawItem item;
        item.kind = "object";
        item.text = text;
        item.plugin = Host::get().currentPlugin;
        recordDraw(item);
    }
}

XPLM_API void XPLMUnloadObject(XPLMObjectRef inObject) {
    LoadedObject* object = gScenery.objects.get(inObject);
    if (!object) {
        Host::get().reportError("XPLMUnloadObject: %p is not a loaded object (never loaded or already unloaded)",
                                inObject);
        return;
    }
    dropReference(inObject, *object, Host::get().currentPlugin);
}

XPLM_API int XPLMLookupObjects(const char* inPath, float inLatitude, float inLongitude,
                               XPLMLibraryEnumerator_f enumerator, void* ref) {
    if (!inPath) {
        Host::get().reportError("XPLMLookupObjects: no path given");
        return 0;
    }
    int count = 0;
    for (const LibraryItem& item : kLibrary) {
        if (std::string(inPath) != item.virtualPath) continue;
        if (inLatitude < item.latMin || inLatitude > item.latMax || inLongitude < item.lonMin ||
            inLongitude > item.lonMax) {
            continue;
        }
        ++count;
        // The SDK does not say whether the enumerator may be NULL; we then only count.
        if (enumerator) enumerator(item.realPath, ref);
    }
    return count;
}

}  // extern "C"

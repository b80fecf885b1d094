// XPLMPlanes: the user's aircraft and where it is parked, the aircraft slots and their
// models, exclusive access to the AI planes with the planes-available callbacks.

#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

#include "XPLMNavigation.h"
#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "dataaccess_internal.h"
#include "host.h"
#include "nav_database.h"
#include "world.h"
#include "world_internal.h"

namespace xpsim {

namespace {

// X-Plane 9 and 10 fly up to 20 aircraft, the user's included.
constexpr int kTotalAircraft = 20;
constexpr int kDefaultActiveAircraft = 4;
constexpr const char* kUserModel = "Aircraft/General Aviation/Cessna 172SP/Cessna_172SP.acf";
constexpr const char* kAIModels[] = {
    "Aircraft/Airliners/Boeing 737-800/b738.acf",
    "Aircraft/General Aviation/Baron 58/Baron_58.acf",
    "Aircraft/Regional/King Air C90B/C90B.acf",
};

struct Waiter {
    int plugin;
    XPLMPlanesAvailable_f callback;
    void* refcon;
};

struct Planes {
    std::vector<std::string> models;  // absolute .acf paths, slot 0 = the user
    std::vector<bool> aiDisabled;
    int active = kDefaultActiveAircraft;
    int holder = XPLM_NO_PLUGIN_ID;
    std::vector<Waiter> waiters;  // in the order they asked
    std::string userAirport = world::kAirportId;
    bool initialised = false;
};
Planes gPlanes;

// The default models live under the simulator root, which is known only after start.
Planes& planes() {
    if (!gPlanes.initialised) {
        gPlanes.models.clear();
        gPlanes.models.push_back(Host::get().rootPath(kUserModel));
        for (int i = 1; i < kTotalAircraft; ++i) {
            gPlanes.models.push_back(Host::get().rootPath(kAIModels[(i - 1) % std::size(kAIModels)]));
        }
        gPlanes.aiDisabled.assign(kTotalAircraft, false);
        gPlanes.initialised = true;
    }
    return gPlanes;
}

void announce(int message, int index) { driver::sendMessage(XPLM_NO_PLUGIN_ID, message, index); }

void loadModel(int index, const std::string& path) {
    planes().models[index] = path;
    Host::get().log("xpsim: aircraft " + std::to_string(index) + " loaded from " + path);
    announce(XPLM_MSG_PLANE_UNLOADED, index);
    announce(XPLM_MSG_PLANE_LOADED, index);
}

// Gives up exclusive access and tells every waiting, enabled plug-in; the disabled ones
// keep waiting. A callback usually asks again: the first one wins, the others wait anew.
void releasePlanes() {
    Planes& p = planes();
    p.holder = XPLM_NO_PLUGIN_ID;
    std::vector<Waiter> waiting;
    waiting.swap(p.waiters);
    for (const Waiter& w : waiting) {
        if (!isPluginEnabled(w.plugin)) {
            p.waiters.push_back(w);
            continue;
        }
        CallingPlugin calling(w.plugin);
        w.callback(w.refcon);
    }
}

bool checkHolder(const char* function) {
    Planes& p = planes();
    if (p.holder != Host::get().currentPlugin) {
        Host::get().reportError("%s: the plug-in does not have exclusive access to the planes "
                                "(XPLMAcquirePlanes first)", function);
        return false;
    }
    return true;
}

bool checkAISlot(const char* function, int index) {
    if (index < 1 || index >= kTotalAircraft) {
        Host::get().reportError("%s: %d is not an AI aircraft index (1 to %d)", function, index, kTotalAircraft - 1);
        return false;
    }
    return true;
}

std::string fileName(const std::string& path) {
    size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

void copyBounded(char* out, const std::string& text, size_t size) {
    std::snprintf(out, size, "%s", text.c_str());
}

}  // namespace

const std::string& userAirportId() { return planes().userAirport; }

void releasePlanesOfDisabled(int plugin) {
    if (planes().holder == plugin) releasePlanes();
}

void forgetPluginPlanes(int plugin) {
    Planes& p = planes();
    std::vector<Waiter> kept;
    for (const Waiter& w : p.waiters) {
        if (w.plugin != plugin) kept.push_back(w);
    }
    p.waiters.swap(kept);
    if (p.holder == plugin) releasePlanes();
}

void resetPlanes() { gPlanes = Planes{}; }

}  // namespace xpsim

using namespace xpsim;

extern "C" {

XPLM_API void XPLMSetUsersAircraft(const char* inAircraftPath) {
    if (!inAircraftPath || !*inAircraftPath) {
        Host::get().reportError("XPLMSetUsersAircraft: no aircraft path given");
        return;
    }
    // Re-initialised on the nearest airport's first runway: where it already is.
    loadModel(XPLM_USER_AIRCRAFT, inAircraftPath);
}

XPLM_API void XPLMPlaceUserAtAirport(const char* inAirportCode) {
    int ref = inAirportCode ? findAirport(inAirportCode) : XPLM_NAV_NOT_FOUND;
    const NavAid* airport = navAid(ref);
    if (!airport) {
        Host::get().reportError("XPLMPlaceUserAtAirport: no airport '%s' in the navigation data",
                                inAirportCode ? inAirportCode : "(null)");
        return;
    }
    // The aircraft keeps its heading; the flight model's datarefs hold where it is.
    placeUserAircraft(AircraftPose{airport->lat, airport->lon, airport->heightM, userAircraftPose().headingDeg});
    planes().userAirport = airport->id;
    Host::get().log("xpsim: user placed at airport " + airport->id);
    announce(XPLM_MSG_AIRPORT_LOADED, 0);
}

XPLM_API void XPLMCountAircraft(int* outTotalAircraft, int* outActiveAircraft, XPLMPluginID* outController) {
    Planes& p = planes();
    if (outTotalAircraft) *outTotalAircraft = kTotalAircraft;
    if (outActiveAircraft) *outActiveAircraft = p.active;
    if (outController) *outController = p.holder;
}

XPLM_API void XPLMGetNthAircraftModel(int inIndex, char* outFileName, char* outPath) {
    Planes& p = planes();
    std::string path;
    if (inIndex < 0 || inIndex >= kTotalAircraft) {
        Host::get().reportError("XPLMGetNthAircraftModel: %d is not an aircraft index (0 to %d)", inIndex,
                                kTotalAircraft - 1);
    } else {
        path = p.models[inIndex];
    }
    if (outFileName) copyBounded(outFileName, fileName(path), 256);
    if (outPath) copyBounded(outPath, path, 512);
}

XPLM_API int XPLMAcquirePlanes(char** inAircraft, XPLMPlanesAvailable_f inCallback, void* inRefcon) {
    Planes& p = planes();
    int me = Host::get().currentPlugin;
    if (p.holder != XPLM_NO_PLUGIN_ID && p.holder != me) {
        if (inCallback) {
            for (Waiter& w : p.waiters) {
                if (w.plugin == me) {  // one wish per plug-in: the latest
                    w = Waiter{me, inCallback, inRefcon};
                    return 0;
                }
            }
            p.waiters.push_back(Waiter{me, inCallback, inRefcon});
        }
        return 0;
    }
    p.holder = me;
    for (size_t i = 0; i < p.waiters.size(); ++i) {
        if (p.waiters[i].plugin == me) p.waiters.erase(p.waiters.begin() + i--);
    }
    // The SDK does not say which slot the first name goes to; slot 0 is the user's, so
    // the list fills the AI slots from 1. Names beyond the last slot are ignored.
    for (int i = 0; inAircraft && inAircraft[i] && i + 1 < kTotalAircraft; ++i) {
        if (*inAircraft[i]) loadModel(i + 1, inAircraft[i]);
    }
    return 1;
}

XPLM_API void XPLMReleasePlanes(void) {
    // Only the holder has something to give up; for anyone else this is a no-op.
    if (planes().holder == Host::get().currentPlugin) releasePlanes();
}

XPLM_API void XPLMSetActiveAircraftCount(int inCount) {
    if (!checkHolder("XPLMSetActiveAircraftCount")) return;
    planes().active = inCount < 1 ? 1 : (inCount > kTotalAircraft ? kTotalAircraft : inCount);
}

XPLM_API void XPLMSetAircraftModel(int inIndex, const char* inAircraftPath) {
    if (!checkHolder("XPLMSetAircraftModel") || !checkAISlot("XPLMSetAircraftModel", inIndex)) return;
    if (!inAircraftPath || !*inAircraftPath) {
        Host::get().reportError("XPLMSetAircraftModel: no aircraft path given");
        return;
    }
    loadModel(inIndex, inAircraftPath);
}

XPLM_API void XPLMDisableAIForPlane(int inPlaneIndex) {
    if (!checkAISlot("XPLMDisableAIForPlane", inPlaneIndex)) return;
    // Nothing flies the AI planes here; the log tells the plug-in's author it took effect.
    if (planes().aiDisabled[inPlaneIndex]) return;
    planes().aiDisabled[inPlaneIndex] = true;
    Host::get().log("xpsim: AI disabled for aircraft " + std::to_string(inPlaneIndex));
}

XPLM_API void XPLMDrawAircraft(int inPlaneIndex, float inX, float inY, float inZ, float inPitch, float inRoll,
                               float inYaw, int inFullDraw, XPLMPlaneDrawState_t* inDrawStateInfo) {
    if (inPlaneIndex < 0 || inPlaneIndex >= kTotalAircraft) {
        Host::get().reportError("XPLMDrawAircraft: %d is not an aircraft index (0 to %d)", inPlaneIndex,
                                kTotalAircraft - 1);
        return;
    }
    if (inDrawStateInfo && (inDrawStateInfo->structSize <= 0 ||
                            inDrawStateInfo->structSize > static_cast<int>(sizeof(XPLMPlaneDrawState_t)))) {
        Host::get().reportError("XPLMDrawAircraft: draw state structSize %d is not a size of "
                                "XPLMPlaneDrawState_t", inDrawStateInfo->structSize);
        return;
    }
    char text[512];
    std::snprintf(text, sizeof text, "%d %s at %.1f,%.1f,%.1f pitch %.1f roll %.1f yaw %.1f%s", inPlaneIndex,
                  fileName(planes().models[inPlaneIndex]).c_str(), inX, inY, inZ, inPitch, inRoll, inYaw,
                  inFullDraw ? "" : " lights only");
    DrawItem item;
    item.kind = "aircraft";
    item.text = text;
    item.style = inFullDraw;
    item.plugin = Host::get().currentPlugin;
    recordDraw(item);
}

XPLM_API void XPLMReinitUsersPlane(void) {
    Host::get().log("xpsim: user aircraft re-initialised from " + planes().models[XPLM_USER_AIRCRAFT]);
}

}  // extern "C"

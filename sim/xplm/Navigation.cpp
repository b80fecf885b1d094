// XPLMNavigation: iteration and search over the navigation database, navaid info,
// the FMS flight plan and the GPS destination.

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "XPLMNavigation.h"
#include "host.h"
#include "nav_database.h"
#include "world.h"
#include "world_internal.h"

namespace xpsim {

namespace {

constexpr int kMaxFMSEntries = 100;

struct FMSEntry {
    int type = xplm_Nav_Unknown;
    int ref = XPLM_NAV_NOT_FOUND;
    std::string id;
    int altitude = 0;  // feet
    float lat = 0.0f, lon = 0.0f;
};

struct FMS {
    std::vector<FMSEntry> entries;
    int displayed = 0;
    int destination = 0;
} gFMS;

bool containsNoCase(const std::string& haystack, const char* needle) {
    auto it = std::search(haystack.begin(), haystack.end(), needle, needle + std::strlen(needle),
                          [](char a, char b) {
                              return std::toupper(static_cast<unsigned char>(a)) ==
                                     std::toupper(static_cast<unsigned char>(b));
                          });
    return it != haystack.end();
}

double distanceRad(double lat1, double lon1, double lat2, double lon2) {
    const double r = world::kPi / 180.0;
    double dlat = (lat2 - lat1) * r, dlon = (lon2 - lon1) * r;
    double a = std::sin(dlat / 2) * std::sin(dlat / 2) +
               std::cos(lat1 * r) * std::cos(lat2 * r) * std::sin(dlon / 2) * std::sin(dlon / 2);
    return 2 * std::atan2(std::sqrt(a), std::sqrt(1 - a));
}

// Copies at most `limit` characters and the NUL: the buffer sizes the SDK promises.
void copyBounded(char* out, const std::string& text, size_t limit) {
    size_t n = std::min(text.size(), limit);
    std::memcpy(out, text.data(), n);
    out[n] = '\0';
}

bool isSingleType(int type) { return type > 0 && (type & (type - 1)) == 0; }

void clampFMSIndices() {
    int last = std::max(0, static_cast<int>(gFMS.entries.size()) - 1);
    gFMS.displayed = std::min(gFMS.displayed, last);
    gFMS.destination = std::min(gFMS.destination, last);
}

// Only an entry of the plan can be displayed or flown to.
bool checkFMSEntry(const char* function, int index) {
    if (index < 0 || index >= static_cast<int>(gFMS.entries.size())) {
        Host::get().reportError("%s: entry %d is not in the flight plan (%d entries)", function, index,
                                static_cast<int>(gFMS.entries.size()));
        return false;
    }
    return true;
}

// An entry may be replaced or appended; the plan stays contiguous.
bool checkFMSSetIndex(const char* function, int index) {
    if (index < 0 || index >= kMaxFMSEntries || index > static_cast<int>(gFMS.entries.size())) {
        Host::get().reportError("%s: entry %d is not in the flight plan or right after its last entry "
                                "(%d entries, at most %d)",
                                function, index, static_cast<int>(gFMS.entries.size()), kMaxFMSEntries);
        return false;
    }
    return true;
}

void storeFMSEntry(int index, FMSEntry entry) {
    if (index == static_cast<int>(gFMS.entries.size())) {
        gFMS.entries.push_back(std::move(entry));
    } else {
        gFMS.entries[index] = std::move(entry);
    }
}

}  // namespace

void resetNavigation() { gFMS = FMS{}; }

}  // namespace xpsim

using namespace xpsim;

extern "C" {

XPLM_API XPLMNavRef XPLMGetFirstNavAid(void) {
    return navaids().empty() ? XPLM_NAV_NOT_FOUND : 0;
}

XPLM_API XPLMNavRef XPLMGetNextNavAid(XPLMNavRef inNavAidRef) {
    if (!navAid(inNavAidRef) || !navAid(inNavAidRef + 1)) return XPLM_NAV_NOT_FOUND;
    return inNavAidRef + 1;
}

XPLM_API XPLMNavRef XPLMFindFirstNavAidOfType(XPLMNavType inType) {
    if (!isSingleType(inType)) return XPLM_NAV_NOT_FOUND;
    const auto& all = navaids();
    for (size_t i = 0; i < all.size(); ++i) {
        if (all[i].type == inType) return static_cast<XPLMNavRef>(i);
    }
    return XPLM_NAV_NOT_FOUND;
}

XPLM_API XPLMNavRef XPLMFindLastNavAidOfType(XPLMNavType inType) {
    if (!isSingleType(inType)) return XPLM_NAV_NOT_FOUND;
    const auto& all = navaids();
    for (size_t i = all.size(); i-- > 0;) {
        if (all[i].type == inType) return static_cast<XPLMNavRef>(i);
    }
    return XPLM_NAV_NOT_FOUND;
}

XPLM_API XPLMNavRef XPLMFindNavAid(const char* inNameFragment, const char* inIDFragment, float* inLat,
                                   float* inLon, int* inFrequency, XPLMNavType inType) {
    const auto& all = navaids();
    // The SDK does not say what one coordinate alone means; we ignore it and return the
    // last match, as when neither is given.
    bool nearest = inLat && inLon;
    XPLMNavRef found = XPLM_NAV_NOT_FOUND;
    double best = 0.0;
    for (size_t i = 0; i < all.size(); ++i) {
        const NavAid& nav = all[i];
        if (!(nav.type & inType)) continue;
        // The SDK does not say whether fragments match case; we ignore case.
        if (inNameFragment && !containsNoCase(nav.name, inNameFragment)) continue;
        if (inIDFragment && !containsNoCase(nav.id, inIDFragment)) continue;
        if (inFrequency && nav.type != xplm_Nav_Airport && nav.type != xplm_Nav_Fix &&
            (nav.frequency == 0 || nav.frequency != *inFrequency)) {
            continue;
        }
        if (nearest) {
            double d = distanceRad(*inLat, *inLon, nav.lat, nav.lon);
            if (found != XPLM_NAV_NOT_FOUND && d >= best) continue;
            best = d;
        }
        found = static_cast<XPLMNavRef>(i);
    }
    return found;
}

XPLM_API void XPLMGetNavAidInfo(XPLMNavRef inRef, XPLMNavType* outType, float* outLatitude,
                                float* outLongitude, float* outHeight, int* outFrequency,
                                float* outHeading, char* outID, char* outName, char* outReg) {
    const NavAid* found = navAid(inRef);
    // An invalid reference reads as an empty navaid of unknown type, so no output is
    // left holding whatever the caller's buffer held before.
    const NavAid none;  // its type is 0, xplm_Nav_Unknown
    if (!found) Host::get().reportError("XPLMGetNavAidInfo: %d is not a navaid reference", inRef);
    const NavAid* nav = found ? found : &none;
    if (outType) *outType = nav->type;
    if (outLatitude) *outLatitude = static_cast<float>(nav->lat);
    if (outLongitude) *outLongitude = static_cast<float>(nav->lon);
    // The SDK does not give the unit of the height; we answer metres, like the local frame.
    if (outHeight) *outHeight = nav->heightM;
    if (outFrequency) *outFrequency = nav->frequency;
    if (outHeading) *outHeading = nav->heading;
    if (outID) copyBounded(outID, nav->id, kMaxNavIdLength);
    if (outName) copyBounded(outName, nav->name, kMaxNavNameLength);
    if (outReg) *outReg = found && inLoadedScenery(nav->lat, nav->lon) ? 1 : 0;
}

XPLM_API int XPLMCountFMSEntries(void) { return static_cast<int>(gFMS.entries.size()); }
XPLM_API int XPLMGetDisplayedFMSEntry(void) { return gFMS.displayed; }
XPLM_API int XPLMGetDestinationFMSEntry(void) { return gFMS.destination; }

XPLM_API void XPLMSetDisplayedFMSEntry(int inIndex) {
    if (checkFMSEntry("XPLMSetDisplayedFMSEntry", inIndex)) gFMS.displayed = inIndex;
}

XPLM_API void XPLMSetDestinationFMSEntry(int inIndex) {
    if (checkFMSEntry("XPLMSetDestinationFMSEntry", inIndex)) gFMS.destination = inIndex;
}

XPLM_API void XPLMGetFMSEntryInfo(int inIndex, XPLMNavType* outType, char* outID, XPLMNavRef* outRef,
                                  int* outAltitude, float* outLat, float* outLon) {
    FMSEntry entry;  // the empty slot
    if (inIndex < 0 || inIndex >= kMaxFMSEntries) {
        Host::get().reportError("XPLMGetFMSEntryInfo: entry %d is outside the flight plan (0 to %d)", inIndex,
                                kMaxFMSEntries - 1);
    } else if (inIndex < static_cast<int>(gFMS.entries.size())) {
        entry = gFMS.entries[inIndex];
    }
    if (outType) *outType = entry.type;
    if (outID) copyBounded(outID, entry.id, 255);
    if (outRef) *outRef = entry.ref;
    if (outAltitude) *outAltitude = entry.altitude;
    if (outLat) *outLat = entry.lat;
    if (outLon) *outLon = entry.lon;
}

XPLM_API void XPLMSetFMSEntryInfo(int inIndex, XPLMNavRef inRef, int inAltitude) {
    const NavAid* nav = navAid(inRef);
    if (!nav) {
        Host::get().reportError("XPLMSetFMSEntryInfo: %d is not a navaid reference", inRef);
        return;
    }
    if (!(nav->type & (xplm_Nav_Airport | xplm_Nav_Fix | xplm_Nav_VOR | xplm_Nav_NDB))) {
        Host::get().reportError("XPLMSetFMSEntryInfo: navaid %s is of type %d; the FMS takes airports, "
                                "fixes, VORs and NDBs only", nav->id.c_str(), nav->type);
        return;
    }
    if (!checkFMSSetIndex("XPLMSetFMSEntryInfo", inIndex)) return;
    storeFMSEntry(inIndex, FMSEntry{nav->type, inRef, nav->id, inAltitude, static_cast<float>(nav->lat),
                                    static_cast<float>(nav->lon)});
}

XPLM_API void XPLMSetFMSEntryLatLon(int inIndex, float inLat, float inLon, int inAltitude) {
    if (!(inLat >= -90.0f && inLat <= 90.0f && inLon >= -180.0f && inLon <= 180.0f)) {
        Host::get().reportError("XPLMSetFMSEntryLatLon: %f, %f is not a latitude and longitude", inLat, inLon);
        return;
    }
    if (!checkFMSSetIndex("XPLMSetFMSEntryLatLon", inIndex)) return;
    // The SDK does not name a lat/lon entry; its ID reads back empty.
    storeFMSEntry(inIndex, FMSEntry{xplm_Nav_LatLon, XPLM_NAV_NOT_FOUND, "", inAltitude, inLat, inLon});
}

XPLM_API void XPLMClearFMSEntry(int inIndex) {
    if (inIndex < 0 || inIndex >= kMaxFMSEntries) {
        Host::get().reportError("XPLMClearFMSEntry: entry %d is outside the flight plan (0 to %d)", inIndex,
                                kMaxFMSEntries - 1);
        return;
    }
    // Clearing an entry past the end is a no-op; one in the middle closes the gap,
    // since the plan's entries are contiguous.
    if (inIndex >= static_cast<int>(gFMS.entries.size())) return;
    gFMS.entries.erase(gFMS.entries.begin() + inIndex);
    clampFMSIndices();
}

// The GPS flies to the FMS destination entry; with an empty plan it points at the
// airport the user is parked at. (The SDK does not say what an idle GPS selects.)
XPLM_API XPLMNavType XPLMGetGPSDestinationType(void) {
    if (!gFMS.entries.empty()) return gFMS.entries[gFMS.destination].type;
    const NavAid* nav = navAid(findAirport(userAirportId()));
    return nav ? nav->type : xplm_Nav_Unknown;
}

XPLM_API XPLMNavRef XPLMGetGPSDestination(void) {
    if (!gFMS.entries.empty()) return gFMS.entries[gFMS.destination].ref;
    return findAirport(userAirportId());
}

}  // extern "C"

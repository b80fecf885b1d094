// The navigation database: its text format, the built-in default set and loading.
// Every consumer (XPLMNavigation, XPLMPlaceUserAtAirport, the GPS) reads it from here.
//
// File format of <root>/Resources/default data/xpsim_navaids.txt, one navaid a line:
//     TYPE  LAT  LON  HEIGHT_M  FREQUENCY  HEADING  ID  NAME...
// TYPE is one of AIRPORT NDB VOR ILS LOC GS OM MM IM FIX DME; LAT/LON in degrees;
// HEIGHT_M metres above sea level; FREQUENCY in the nav.dat convention (NDB kHz, others
// MHz x 100, 0 when the beacon has none); HEADING degrees true; ID up to 5 characters;
// NAME the rest of the line (up to 40 characters, longer ones are cut). '#' starts a comment
// line. When the file exists it replaces the built-in set entirely.

#include "nav_database.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <sstream>

#include "XPLMNavigation.h"
#include "host.h"
#include "world.h"

namespace xpsim {

namespace {

struct TypeName {
    const char* keyword;
    int type;
};
constexpr TypeName kTypeNames[] = {
    {"AIRPORT", xplm_Nav_Airport}, {"NDB", xplm_Nav_NDB},   {"VOR", xplm_Nav_VOR},
    {"ILS", xplm_Nav_ILS},         {"LOC", xplm_Nav_Localizer},
    {"GS", xplm_Nav_GlideSlope},   {"OM", xplm_Nav_OuterMarker},
    {"MM", xplm_Nav_MiddleMarker}, {"IM", xplm_Nav_InnerMarker},
    {"FIX", xplm_Nav_Fix},         {"DME", xplm_Nav_DME},
};

// Around the airport of world.h: the user's field, its neighbours, their radio aids and
// a few fixes. KSEA's values come from world.h so the database agrees with the datarefs.
std::string builtInText() {
    std::ostringstream s;
    s.precision(10);
    s << "AIRPORT " << world::kAirportLat << ' ' << world::kAirportLon << ' '
      << world::kAirportElevationM << " 0 0 " << world::kAirportId << ' ' << world::kAirportName << '\n';
    s << R"(AIRPORT 47.5300 -122.3020 6 0 0 KBFI Boeing Field King Co Intl
AIRPORT 47.9063 -122.2816 185 0 0 KPAE Snohomish Co Paine Fld
AIRPORT 47.4931 -122.2157 9 0 0 KRNT Renton Muni
AIRPORT 46.9694 -122.9025 63 0 0 KOLM Olympia Rgnl
NDB 47.3906 -122.2958 0 362 0 SZ Seattle Tacoma NDB
NDB 47.0772 -122.5811 0 400 0 GRF Gray NDB
VOR 47.4353 -122.3096 109 11680 0 SEA Seattle VORTAC
VOR 47.9199 -122.2780 185 11020 0 PAE Paine VOR/DME
VOR 46.9716 -122.9021 63 11340 0 OLM Olympia VORTAC
ILS 47.4314 -122.3079 131 11090 180.0 ISNQ KSEA 16L ILS-cat-III
LOC 47.5148 -122.2934 6 11150 134.0 IBFI KBFI 14R LOC
GS 47.4630 -122.3110 131 11090 180.0 ISNQ KSEA 16L GS
OM 47.5939 -122.3121 0 0 180.0 SNQO KSEA 16L OM
MM 47.4842 -122.3104 0 0 180.0 SNQM KSEA 16L MM
IM 47.4704 -122.3101 0 0 180.0 SNQI KSEA 16L IM
FIX 47.1539 -122.2553 0 0 0 SUMMA SUMMA
FIX 47.6833 -122.3117 0 0 0 HAWKZ HAWKZ
FIX 47.3456 -122.8450 0 0 0 ELMAA ELMAA
FIX 47.5906 -122.0383 0 0 0 NRVNA NRVNA
DME 47.4353 -122.3096 109 11680 0 SEA Seattle VORTAC DME
DME 47.4314 -122.3079 131 11090 0 ISNQ KSEA 16L DME-ILS
)";
    return s.str();
}

std::vector<NavAid> gNavAids;
bool gLoaded = false;

void load() {
    std::string path = Host::get().rootPath("Resources/default data/xpsim_navaids.txt");
    std::ifstream in(path);
    if (in) {
        std::stringstream text;
        text << in.rdbuf();
        gNavAids = parseNavAids(text.str(), path);
        Host::get().log("xpsim: navigation data: " + std::to_string(gNavAids.size()) + " navaids from " + path);
    } else {
        gNavAids = parseNavAids(builtInText(), "built-in navaids");
    }
    gLoaded = true;
}

std::string upper(std::string s) {
    for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return s;
}

}  // namespace

std::vector<NavAid> parseNavAids(const std::string& text, const std::string& source) {
    std::vector<NavAid> result;
    std::istringstream lines(text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        size_t first = line.find_first_not_of(" \t\r");
        if (first == std::string::npos || line[first] == '#') continue;
        auto bad = [&](const std::string& why) {
            Host::get().log("xpsim: " + source + " line " + std::to_string(number) + ": " + why + ", line skipped");
        };
        std::istringstream fields(line);
        std::string keyword;
        NavAid nav;
        fields >> keyword >> nav.lat >> nav.lon >> nav.heightM >> nav.frequency >> nav.heading >> nav.id;
        if (!fields) {
            bad("expected TYPE LAT LON HEIGHT_M FREQUENCY HEADING ID NAME");
            continue;
        }
        for (const TypeName& t : kTypeNames) {
            if (upper(keyword) == t.keyword) nav.type = t.type;
        }
        if (nav.type == 0) {
            bad("unknown navaid type '" + keyword + "'");
            continue;
        }
        if (nav.lat < -90 || nav.lat > 90 || nav.lon < -180 || nav.lon > 180) {
            bad("latitude or longitude out of range");
            continue;
        }
        if (nav.id.size() > kMaxNavIdLength) {
            bad("identifier '" + nav.id + "' longer than 5 characters");
            continue;
        }
        std::getline(fields, nav.name);
        size_t start = nav.name.find_first_not_of(" \t");
        size_t end = nav.name.find_last_not_of(" \t\r");
        nav.name = start == std::string::npos ? nav.id : nav.name.substr(start, end - start + 1);
        if (nav.name.size() > kMaxNavNameLength) nav.name.resize(kMaxNavNameLength);
        result.push_back(std::move(nav));
    }
    // The SDK's one ordering promise: navaids of a type are contiguous.
    std::stable_sort(result.begin(), result.end(),
                     [](const NavAid& a, const NavAid& b) { return a.type < b.type; });
    return result;
}

const std::vector<NavAid>& navaids() {
    if (!gLoaded) load();
    return gNavAids;
}

const NavAid* navAid(int ref) {
    const auto& all = navaids();
    if (ref < 0 || static_cast<size_t>(ref) >= all.size()) return nullptr;
    return &all[ref];
}

int findAirport(const std::string& id) {
    const auto& all = navaids();
    std::string wanted = upper(id);
    for (size_t i = 0; i < all.size(); ++i) {
        if (all[i].type == xplm_Nav_Airport && upper(all[i].id) == wanted) return static_cast<int>(i);
    }
    return -1;
}

void resetNavDatabase() {
    gNavAids.clear();
    gLoaded = false;
}

}  // namespace xpsim

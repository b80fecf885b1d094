// The navigation database: iteration grouped by type, the search rules of
// XPLMFindNavAid, navaid info within the documented buffers, the data file, the FMS
// flight plan and the GPS destination.

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>

#include "XPLMNavigation.h"
#include "world_test_util.h"
#include "world.h"

namespace xpsim::test {
namespace {

constexpr int kAllTypes = 0xFFF;

class NavigationTest : public WorldTest {
protected:
    void writeNavData(const std::string& text) {
        std::filesystem::create_directories(root + "/Resources/default data");
        std::ofstream(root + "/Resources/default data/xpsim_navaids.txt") << text;
    }
    static XPLMNavRef byId(const char* id, XPLMNavType type) {
        return XPLMFindNavAid(nullptr, id, nullptr, nullptr, nullptr, type);
    }
    static std::string idOf(XPLMNavRef ref) {
        char id[32] = "";
        XPLMGetNavAidInfo(ref, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, id, nullptr, nullptr);
        return id;
    }
    static XPLMNavType typeOf(XPLMNavRef ref) {
        XPLMNavType type = -1;
        XPLMGetNavAidInfo(ref, &type, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
        return type;
    }
};

TEST_F(NavigationTest, IterationVisitsEveryNavaidWithEachTypeContiguous) {
    std::vector<XPLMNavRef> refs;
    for (XPLMNavRef r = XPLMGetFirstNavAid(); r != XPLM_NAV_NOT_FOUND; r = XPLMGetNextNavAid(r)) {
        refs.push_back(r);
        ASSERT_LT(refs.size(), 100000u);
    }
    ASSERT_GT(refs.size(), 10u);
    const int kinds[] = {xplm_Nav_Airport,      xplm_Nav_NDB,          xplm_Nav_VOR,         xplm_Nav_ILS,
                         xplm_Nav_Localizer,    xplm_Nav_GlideSlope,   xplm_Nav_OuterMarker, xplm_Nav_MiddleMarker,
                         xplm_Nav_InnerMarker,  xplm_Nav_Fix,          xplm_Nav_DME};
    size_t covered = 0;
    for (int kind : kinds) {
        XPLMNavRef first = XPLMFindFirstNavAidOfType(kind), last = XPLMFindLastNavAidOfType(kind);
        ASSERT_NE(first, XPLM_NAV_NOT_FOUND) << "no navaid of type " << kind;
        ASSERT_LE(first, last);
        // Everything from first to last, and nothing else, is of that type.
        for (XPLMNavRef r : refs) EXPECT_EQ(typeOf(r) == kind, r >= first && r <= last) << r;
        covered += static_cast<size_t>(last - first + 1);
    }
    EXPECT_EQ(covered, refs.size());
    EXPECT_EQ(XPLMGetNextNavAid(refs.back()), XPLM_NAV_NOT_FOUND);
    EXPECT_EQ(XPLMGetNextNavAid(XPLM_NAV_NOT_FOUND), XPLM_NAV_NOT_FOUND);
    EXPECT_EQ(XPLMGetNextNavAid(refs.back() + 50), XPLM_NAV_NOT_FOUND);
    EXPECT_EQ(XPLMFindFirstNavAidOfType(xplm_Nav_VOR | xplm_Nav_NDB), XPLM_NAV_NOT_FOUND);  // one type only
    EXPECT_EQ(XPLMFindLastNavAidOfType(xplm_Nav_LatLon), XPLM_NAV_NOT_FOUND);
    EXPECT_EQ(XPLMFindFirstNavAidOfType(xplm_Nav_Unknown), XPLM_NAV_NOT_FOUND);
}

TEST_F(NavigationTest, FindNavAidAppliesEveryFilterAndPicksNearestOrLast) {
    // The world's airport is in the database, where world.h puts it.
    XPLMNavRef sea = byId(world::kAirportId, xplm_Nav_Airport);
    ASSERT_NE(sea, XPLM_NAV_NOT_FOUND);
    float lat = 0, lon = 0, height = 0;
    XPLMGetNavAidInfo(sea, nullptr, &lat, &lon, &height, nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_FLOAT_EQ(lat, static_cast<float>(world::kAirportLat));
    EXPECT_FLOAT_EQ(lon, static_cast<float>(world::kAirportLon));
    EXPECT_FLOAT_EQ(height, static_cast<float>(world::kAirportElevationM));

    // Fragments are substrings, of any case; the type set limits the search.
    EXPECT_EQ(XPLMFindNavAid("tacoma intl", nullptr, nullptr, nullptr, nullptr, xplm_Nav_Airport), sea);
    EXPECT_EQ(XPLMFindNavAid("Tacoma", "KSE", nullptr, nullptr, nullptr, xplm_Nav_Airport), sea);
    EXPECT_EQ(XPLMFindNavAid("Tacoma", "KBFI", nullptr, nullptr, nullptr, xplm_Nav_Airport), XPLM_NAV_NOT_FOUND);
    EXPECT_EQ(typeOf(byId("SEA", xplm_Nav_VOR)), xplm_Nav_VOR);
    EXPECT_EQ(byId("SEA", xplm_Nav_NDB), XPLM_NAV_NOT_FOUND);
    EXPECT_EQ(byId("SEA", 0), XPLM_NAV_NOT_FOUND);

    // Without a position the last match wins; with one, the nearest.
    XPLMNavRef lastAirport = XPLMFindLastNavAidOfType(xplm_Nav_Airport);
    EXPECT_EQ(XPLMFindNavAid(nullptr, nullptr, nullptr, nullptr, nullptr, xplm_Nav_Airport), lastAirport);
    EXPECT_EQ(XPLMFindNavAid("", "", nullptr, nullptr, nullptr, xplm_Nav_Airport), lastAirport);
    float olmLat = 46.97f, olmLon = -122.90f;
    EXPECT_EQ(idOf(XPLMFindNavAid(nullptr, nullptr, &olmLat, &olmLon, nullptr, xplm_Nav_Airport)), "KOLM");
    float seaLat = static_cast<float>(world::kAirportLat), seaLon = static_cast<float>(world::kAirportLon);
    EXPECT_EQ(XPLMFindNavAid(nullptr, nullptr, &seaLat, &seaLon, nullptr, xplm_Nav_Airport), sea);
    // One coordinate alone is not a position.
    EXPECT_EQ(XPLMFindNavAid(nullptr, nullptr, &seaLat, nullptr, nullptr, xplm_Nav_Airport), lastAirport);

    // Frequency: the nearest radio aid on 110.90, whatever kind it is.
    int ils = 11090;
    XPLMNavRef onFreq =
        XPLMFindNavAid(nullptr, nullptr, &seaLat, &seaLon, &ils, kAllTypes & ~(xplm_Nav_Airport | xplm_Nav_Fix));
    ASSERT_NE(onFreq, XPLM_NAV_NOT_FOUND);
    int freq = 0;
    XPLMGetNavAidInfo(onFreq, nullptr, nullptr, nullptr, nullptr, &freq, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(freq, 11090);
    EXPECT_EQ(typeOf(XPLMFindNavAid(nullptr, nullptr, nullptr, nullptr, &ils, xplm_Nav_GlideSlope)),
              xplm_Nav_GlideSlope);
    int none = 0;  // markers have no frequency and never match one...
    EXPECT_EQ(XPLMFindNavAid(nullptr, nullptr, nullptr, nullptr, &none, xplm_Nav_InnerMarker), XPLM_NAV_NOT_FOUND);
    int nowhere = 12345;  // ...but airports and fixes are not filtered by it
    EXPECT_EQ(XPLMFindNavAid(nullptr, "KSEA", nullptr, nullptr, &nowhere, xplm_Nav_Airport), sea);
    EXPECT_EQ(typeOf(XPLMFindNavAid(nullptr, nullptr, nullptr, nullptr, &nowhere, xplm_Nav_Fix)), xplm_Nav_Fix);
    EXPECT_EQ(XPLMFindNavAid(nullptr, nullptr, nullptr, nullptr, &nowhere, xplm_Nav_VOR), XPLM_NAV_NOT_FOUND);
    EXPECT_EQ(errors(), 0);
}

TEST_F(NavigationTest, NavAidInfoWritesOnlyRequestedFieldsWithinTheDocumentedBuffers) {
    std::string longName(60, 'N');
    writeNavData("# test data\n"
                 "VOR 47.4353 -122.3096 109 11680 12.5 SEA Seattle VORTAC\n"
                 "AIRPORT 47.4490 -122.3093 131 0 0 KSEA " + longName + "\n"
                 "NDB 51.4700 -0.4543 25 339 0 LON London NDB\n"
                 "FIX 47.1 -122.2 0 0 0 SUMMA\n");
    startSim();
    XPLMNavRef vor = XPLMFindNavAid(nullptr, "SEA", nullptr, nullptr, nullptr, xplm_Nav_VOR);
    XPLMNavType type = 0;
    float lat = 0, lon = 0, height = 0, heading = 0;
    int freq = 0;
    char id[6 + 4], name[41 + 4], reg[2] = {'x', 'x'};
    std::memset(id, '#', sizeof id);
    std::memset(name, '#', sizeof name);
    XPLMGetNavAidInfo(vor, &type, &lat, &lon, &height, &freq, &heading, id, name, reg);
    EXPECT_EQ(type, xplm_Nav_VOR);
    EXPECT_FLOAT_EQ(lat, 47.4353f);
    EXPECT_FLOAT_EQ(lon, -122.3096f);
    EXPECT_FLOAT_EQ(height, 109.0f);
    EXPECT_EQ(freq, 11680);
    EXPECT_FLOAT_EQ(heading, 12.5f);
    EXPECT_STREQ(id, "SEA");
    EXPECT_STREQ(name, "Seattle VORTAC");
    EXPECT_EQ(reg[0], 1);    // in the loaded scenery
    EXPECT_EQ(reg[1], 'x');  // one byte, not a string

    // The longest name fits the smallest buffer the SDK allows (41 bytes).
    XPLMGetNavAidInfo(XPLMFindFirstNavAidOfType(xplm_Nav_Airport), nullptr, nullptr, nullptr, nullptr, nullptr,
                      nullptr, id, name, nullptr);
    EXPECT_EQ(std::string(name), longName.substr(0, 40));
    EXPECT_EQ(std::string(name + 41, 4), "####");
    EXPECT_EQ(std::string(id + 6, 4), "####");

    XPLMGetNavAidInfo(XPLMFindFirstNavAidOfType(xplm_Nav_NDB), nullptr, nullptr, nullptr, nullptr, &freq, nullptr,
                      nullptr, nullptr, reg);
    EXPECT_EQ(freq, 339);  // NDBs in kHz
    EXPECT_EQ(reg[0], 0);  // London is far outside the loaded scenery
    XPLMGetNavAidInfo(XPLMFindFirstNavAidOfType(xplm_Nav_Fix), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                      nullptr, name, nullptr);
    EXPECT_STREQ(name, "SUMMA");  // a fix without a name is called by its ID

    EXPECT_EQ(errors(), 0);
    // An invalid reference fills every output with the empty navaid, not stale data.
    type = 77;
    lat = lon = height = heading = 7.0f;
    freq = 7;
    reg[0] = 7;
    XPLMGetNavAidInfo(XPLM_NAV_NOT_FOUND, &type, &lat, &lon, &height, &freq, &heading, id, name, reg);
    XPLMGetNavAidInfo(4, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(type, xplm_Nav_Unknown);
    EXPECT_EQ(lat, 0.0f);
    EXPECT_EQ(lon, 0.0f);
    EXPECT_EQ(height, 0.0f);
    EXPECT_EQ(heading, 0.0f);
    EXPECT_EQ(freq, 0);
    EXPECT_STREQ(id, "");
    EXPECT_STREQ(name, "");
    EXPECT_EQ(reg[0], 0);
    EXPECT_EQ(errors(), 2);
}

TEST_F(NavigationTest, DataFileReplacesTheBuiltInSetAndBadLinesAreLoggedAndSkipped) {
    writeNavData("VOR 10 20 0 11000 0 VVV A VOR\n"
                 "\n"
                 "AIRPORT 11 21 5 0 0 AAAA An airport\n"
                 "BEACON 1 2 0 0 0 X bad type\n"
                 "VOR 95 20 0 11000 0 BAD latitude out of range\n"
                 "NDB 1 2 three 0 0 X not a number\n"
                 "FIX 1 2 0 0 0 TOOLONG identifier too long\n"
                 "AIRPORT 12 22 5 0 0 BBBB Another airport\n");
    startSim();
    std::vector<std::string> ids;
    for (XPLMNavRef r = XPLMGetFirstNavAid(); r != XPLM_NAV_NOT_FOUND; r = XPLMGetNextNavAid(r)) ids.push_back(idOf(r));
    // Grouped by type, airports first, file order kept within a type.
    EXPECT_EQ(ids, (std::vector<std::string>{"AAAA", "BBBB", "VVV"}));
    std::string text = log();
    for (int line : {4, 5, 6, 7}) {
        EXPECT_NE(text.find("xpsim_navaids.txt line " + std::to_string(line) + ":"), std::string::npos) << line;
    }
    EXPECT_EQ(text.find("line 3:"), std::string::npos);
    EXPECT_EQ(XPLMFindNavAid(nullptr, world::kAirportId, nullptr, nullptr, nullptr, kAllTypes), XPLM_NAV_NOT_FOUND);
}

TEST_F(NavigationTest, FMSPlanStaysContiguousAndTracksDisplayedAndDestinationEntries) {
    EXPECT_EQ(XPLMCountFMSEntries(), 0);
    XPLMNavRef sea = XPLMFindNavAid(nullptr, "KSEA", nullptr, nullptr, nullptr, xplm_Nav_Airport);
    XPLMNavRef summa = XPLMFindNavAid(nullptr, "SUMMA", nullptr, nullptr, nullptr, xplm_Nav_Fix);
    XPLMNavRef ils = XPLMFindFirstNavAidOfType(xplm_Nav_ILS);
    XPLMSetFMSEntryInfo(0, sea, 430);
    XPLMSetFMSEntryLatLon(1, 47.0f, -122.5f, 5000);
    XPLMSetFMSEntryInfo(2, summa, 9000);
    EXPECT_EQ(XPLMCountFMSEntries(), 3);
    EXPECT_EQ(errors(), 0);

    XPLMSetFMSEntryInfo(4, summa, 1);      // would leave a gap
    XPLMSetFMSEntryInfo(3, ils, 1);        // the FMS takes no ILS
    XPLMSetFMSEntryInfo(3, 9999, 1);       // no such navaid
    XPLMSetFMSEntryLatLon(3, 91.0f, 0.0f, 1);
    XPLMSetFMSEntryLatLon(100, 1.0f, 1.0f, 1);
    EXPECT_EQ(errors(), 5);
    EXPECT_EQ(XPLMCountFMSEntries(), 3);

    XPLMNavType type = 0;
    char id[256];
    XPLMNavRef ref = 0;
    int altitude = 0;
    float lat = 0, lon = 0;
    XPLMGetFMSEntryInfo(0, &type, id, &ref, &altitude, &lat, &lon);
    EXPECT_EQ(type, xplm_Nav_Airport);
    EXPECT_STREQ(id, "KSEA");
    EXPECT_EQ(ref, sea);
    EXPECT_EQ(altitude, 430);
    EXPECT_FLOAT_EQ(lat, static_cast<float>(world::kAirportLat));
    XPLMGetFMSEntryInfo(1, &type, id, &ref, &altitude, &lat, &lon);
    EXPECT_EQ(type, xplm_Nav_LatLon);
    EXPECT_EQ(ref, XPLM_NAV_NOT_FOUND);
    EXPECT_FLOAT_EQ(lat, 47.0f);
    EXPECT_FLOAT_EQ(lon, -122.5f);
    EXPECT_EQ(altitude, 5000);
    XPLMGetFMSEntryInfo(50, &type, nullptr, &ref, nullptr, nullptr, nullptr);  // an empty slot
    EXPECT_EQ(type, xplm_Nav_Unknown);
    EXPECT_EQ(ref, XPLM_NAV_NOT_FOUND);
    EXPECT_EQ(errors(), 5);
    XPLMGetFMSEntryInfo(100, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(errors(), 6);

    XPLMSetDestinationFMSEntry(2);
    XPLMSetDisplayedFMSEntry(1);
    EXPECT_EQ(XPLMGetDestinationFMSEntry(), 2);
    EXPECT_EQ(XPLMGetDisplayedFMSEntry(), 1);
    XPLMSetDestinationFMSEntry(3);
    XPLMSetDisplayedFMSEntry(-1);
    EXPECT_EQ(errors(), 8);
    EXPECT_EQ(XPLMGetDestinationFMSEntry(), 2);

    // Clearing closes the gap; indices that fell off the end follow the plan's end.
    XPLMClearFMSEntry(0);
    EXPECT_EQ(XPLMCountFMSEntries(), 2);
    XPLMGetFMSEntryInfo(0, &type, nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(type, xplm_Nav_LatLon);
    EXPECT_EQ(XPLMGetDestinationFMSEntry(), 1);
    XPLMClearFMSEntry(1);
    XPLMClearFMSEntry(7);  // past the end: nothing to clear
    EXPECT_EQ(XPLMCountFMSEntries(), 1);
    XPLMSetFMSEntryInfo(1, summa, 0);  // appending right after the end is fine
    EXPECT_EQ(XPLMCountFMSEntries(), 2);
    EXPECT_EQ(errors(), 8);
}

TEST_F(NavigationTest, GPSDestinationIsTheFMSDestinationOrTheUsersAirport) {
    XPLMNavRef sea = XPLMFindNavAid(nullptr, "KSEA", nullptr, nullptr, nullptr, xplm_Nav_Airport);
    EXPECT_EQ(XPLMGetGPSDestination(), sea);
    EXPECT_EQ(XPLMGetGPSDestinationType(), xplm_Nav_Airport);
    XPLMNavRef vor = XPLMFindNavAid(nullptr, "OLM", nullptr, nullptr, nullptr, xplm_Nav_VOR);
    XPLMNavRef ndb = XPLMFindFirstNavAidOfType(xplm_Nav_NDB);
    XPLMSetFMSEntryInfo(0, vor, 3000);
    XPLMSetFMSEntryInfo(1, ndb, 3000);
    EXPECT_EQ(XPLMGetGPSDestination(), vor);
    XPLMSetDestinationFMSEntry(1);
    EXPECT_EQ(XPLMGetGPSDestination(), ndb);
    EXPECT_EQ(XPLMGetGPSDestinationType(), xplm_Nav_NDB);
}

}  // namespace
}  // namespace xpsim::test

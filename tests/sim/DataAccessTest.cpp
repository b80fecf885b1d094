// Datarefs: the simulator's own (start values, types, size queries, offsets, write
// protection, typed reads), accessor datarefs of plug-ins, shared data, handle
// validation and the driver's text access.

#include <cmath>
#include <cstdint>
#include <cstring>

#include "XPLMDataAccess.h"
#include "XPLMPlugin.h"
#include "plugin_test_util.h"
#include "world.h"

namespace xpsim::test {
namespace {

constexpr int kUnregister = 0x7FF10001;
constexpr int kRegister = 0x7FF10002;
constexpr int kShare = 0x7FF20001;
constexpr int kUnshare = 0x7FF20002;
constexpr int kWrite = 0x7FF20003;

class DataAccessTest : public SimRootTest {
protected:
    void SetUp() override {
        SimRootTest::SetUp();
        startSim();
    }

    XPLMDataRef find(const std::string& name) {
        XPLMDataRef ref = XPLMFindDataRef(name.c_str());
        EXPECT_NE(ref, nullptr) << name;
        return ref;
    }
    int readInt(const std::string& name) { return XPLMGetDatai(find(name)); }

    int loadEnabled(const std::string& binary, const std::string& name) {
        int id = loadTestPlugin(binary, name);
        driver::enablePluginsAndSendLoadMessages();
        return id;
    }

    std::string text(const std::string& name) {
        std::string value, error;
        EXPECT_TRUE(driver::getDataref(name, &value, &error)) << error;
        return value;
    }
};

TEST_F(DataAccessTest, AircraftStartsParkedAtTheAirportWithEnginesOff) {
    EXPECT_DOUBLE_EQ(XPLMGetDatad(find("sim/flightmodel/position/latitude")), world::kAirportLat);
    EXPECT_DOUBLE_EQ(XPLMGetDatad(find("sim/flightmodel/position/longitude")), world::kAirportLon);
    EXPECT_DOUBLE_EQ(XPLMGetDatad(find("sim/flightmodel/position/elevation")), world::kAirportElevationM);
    double x, y, z;
    world::worldToLocal(world::kAirportLat, world::kAirportLon, world::kAirportElevationM, &x, &y, &z);
    EXPECT_DOUBLE_EQ(XPLMGetDatad(find("sim/flightmodel/position/local_x")), x);
    EXPECT_DOUBLE_EQ(XPLMGetDatad(find("sim/flightmodel/position/local_y")), y);
    EXPECT_DOUBLE_EQ(XPLMGetDatad(find("sim/flightmodel/position/local_z")), z);
    EXPECT_FLOAT_EQ(XPLMGetDataf(find("sim/flightmodel/position/psi")), float(world::kAircraftHeadingDeg));
    EXPECT_EQ(readInt("sim/flightmodel/failures/onground_any"), 1);
    EXPECT_FLOAT_EQ(XPLMGetDataf(find("sim/flightmodel/position/groundspeed")), 0.0f);

    int running[8];
    std::fill(std::begin(running), std::end(running), -1);
    XPLMDataRef engines = find("sim/flightmodel/engine/ENGN_running");
    ASSERT_EQ(XPLMGetDatavi(engines, running, 0, 8), 8);
    for (int r : running) EXPECT_EQ(r, 0);

    char tail[41] = {};
    EXPECT_EQ(XPLMGetDatab(find("sim/aircraft/view/acf_tailnum"), tail, 0, 40), 40);
    EXPECT_GT(std::strlen(tail), 0u);
    EXPECT_EQ(text("sim/aircraft/view/acf_tailnum"), tail);
}

TEST_F(DataAccessTest, TypesAndWritabilityComeFromTheDatarefTable) {
    struct Case {
        const char* name;
        XPLMDataTypeID types;
        int writable;
    } cases[] = {
        {"sim/flightmodel/position/latitude", xplmType_Double, 0},
        {"sim/flightmodel/position/local_x", xplmType_Double, 1},
        {"sim/flightmodel/position/psi", xplmType_Float, 1},
        {"sim/cockpit/radios/com1_freq_hz", xplmType_Int, 1},
        {"sim/time/paused", xplmType_Int, 0},
        {"sim/flightmodel/engine/ENGN_running", xplmType_IntArray, 1},
        {"sim/flightmodel/weight/m_fuel", xplmType_FloatArray, 1},
        {"sim/aircraft/view/acf_tailnum", xplmType_Data, 1},
    };
    for (const Case& c : cases) {
        XPLMDataRef ref = find(c.name);
        EXPECT_EQ(XPLMGetDataRefTypes(ref), c.types) << c.name;
        EXPECT_EQ(XPLMCanWriteDataRef(ref), c.writable) << c.name;
        EXPECT_EQ(XPLMIsDataRefGood(ref), 1) << c.name;
    }
    EXPECT_EQ(XPLMFindDataRef("sim/no/such/dataref"), nullptr);
    EXPECT_EQ(XPLMFindDataRef("sim/flightmodel/position"), nullptr);
    // Lookups hand out the same handle every time.
    EXPECT_EQ(XPLMFindDataRef("sim/flightmodel/position/psi"), XPLMFindDataRef("sim/flightmodel/position/psi"));
}

TEST_F(DataAccessTest, ArrayReadsAnswerSizeQueriesAndCopyFromTheOffsetWithinBounds) {
    XPLMDataRef engines = find("sim/flightmodel/engine/ENGN_running");  // int[8]
    // Null buffer: the total size, whatever offset and max say.
    EXPECT_EQ(XPLMGetDatavi(engines, nullptr, 0, 0), 8);
    EXPECT_EQ(XPLMGetDatavi(engines, nullptr, 5, 1), 8);

    int in[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    XPLMSetDatavi(engines, in, 0, 8);
    int out[10];
    std::fill(std::begin(out), std::end(out), -1);
    EXPECT_EQ(XPLMGetDatavi(engines, out, 6, 10), 2);  // only two left after offset 6
    EXPECT_EQ(out[0], 7);
    EXPECT_EQ(out[1], 8);
    EXPECT_EQ(out[2], -1);  // nothing past what was copied
    EXPECT_EQ(XPLMGetDatavi(engines, out, 2, 3), 3);
    EXPECT_EQ(out[0], 3);
    EXPECT_EQ(out[2], 5);
    EXPECT_EQ(XPLMGetDatavi(engines, out, 8, 4), 0);

    // Writes past the end are dropped, the rest lands.
    int tail[4] = {70, 80, 90, 100};
    XPLMSetDatavi(engines, tail, 6, 4);
    EXPECT_EQ(text("sim/flightmodel/engine/ENGN_running"), "1,2,3,4,5,6,70,80");

    XPLMDataRef fuel = find("sim/flightmodel/weight/m_fuel");  // float[9]
    EXPECT_EQ(XPLMGetDatavf(fuel, nullptr, 3, 3), 9);
    float f[2] = {1.25f, 2.5f};
    XPLMSetDatavf(fuel, f, 7, 2);
    float back[9];
    EXPECT_EQ(XPLMGetDatavf(fuel, back, 0, 9), 9);
    EXPECT_EQ(back[7], 1.25f);
    EXPECT_EQ(back[8], 2.5f);

    XPLMDataRef tailnum = find("sim/aircraft/view/acf_tailnum");  // byte[40]
    EXPECT_EQ(XPLMGetDatab(tailnum, nullptr, 10, 2), 40);
    char name[] = "D-EXYZ";
    XPLMSetDatab(tailnum, name, 0, sizeof name);
    char part[8] = {};
    EXPECT_EQ(XPLMGetDatab(tailnum, part, 2, 3), 3);
    EXPECT_STREQ(part, "EXY");
    EXPECT_EQ(XPLMGetDatab(tailnum, part, 38, 8), 2);

    // Negative offsets and counts copy nothing and are reported.
    const int before = errors();
    EXPECT_EQ(XPLMGetDatavi(engines, out, -1, 2), 0);
    EXPECT_EQ(XPLMGetDatavf(fuel, back, 0, -3), 0);
    XPLMSetDatavi(engines, in, -2, 3);
    EXPECT_EQ(text("sim/flightmodel/engine/ENGN_running"), "1,2,3,4,5,6,70,80");
    EXPECT_EQ(errors(), before + 3);
}

TEST_F(DataAccessTest, WritesToReadOnlyOrMissingTypesAreIgnoredAndReadsOfMissingTypesAnswerZero) {
    XPLMDataRef latitude = find("sim/flightmodel/position/latitude");
    XPLMSetDatad(latitude, 10.0);
    EXPECT_DOUBLE_EQ(XPLMGetDatad(latitude), world::kAirportLat);
    XPLMDataRef paused = find("sim/time/paused");
    XPLMSetDatai(paused, 1);
    EXPECT_EQ(XPLMGetDatai(paused), 0);
    XPLMDataRef livery = find("sim/aircraft/view/acf_livery_path");
    char path[] = "x";
    XPLMSetDatab(livery, path, 0, 2);
    EXPECT_EQ(text("sim/aircraft/view/acf_livery_path"), "");

    std::string error;
    ASSERT_TRUE(driver::setDataref("sim/flightmodel/position/latitude", "12.5", &error)) << error;
    EXPECT_DOUBLE_EQ(XPLMGetDatad(latitude), 12.5);

    // Reads of a type the dataref lacks answer zero, such writes are ignored.
    EXPECT_EQ(XPLMGetDataf(latitude), 0.0f);  // double only
    EXPECT_EQ(XPLMGetDatai(latitude), 0);
    EXPECT_EQ(XPLMGetDatavf(latitude, nullptr, 0, 0), 0);
    EXPECT_EQ(XPLMGetDatab(latitude, nullptr, 0, 0), 0);
    XPLMDataRef psi = find("sim/flightmodel/position/psi");  // float only
    XPLMSetDataf(psi, 45.0f);
    XPLMSetDatai(psi, 7);
    XPLMSetDatad(psi, 8.0);
    EXPECT_EQ(XPLMGetDataf(psi), 45.0f);
    EXPECT_EQ(XPLMGetDatad(psi), 0.0);

    XPLMDataRef com1 = find("sim/cockpit/radios/com1_freq_hz");  // int only
    XPLMSetDatai(com1, 12345);
    XPLMSetDataf(com1, 1.5f);
    EXPECT_EQ(XPLMGetDatai(com1), 12345);
    EXPECT_EQ(XPLMGetDataf(com1), 0.0f);
    int values[2] = {1, 2};
    XPLMSetDatavi(com1, values, 0, 2);
    EXPECT_EQ(XPLMGetDatai(com1), 12345);

    // NULL is what a failed lookup gives: neutral answers, and not an error.
    const int before = errors();
    EXPECT_EQ(XPLMGetDatai(nullptr), 0);
    EXPECT_EQ(XPLMGetDatad(nullptr), 0.0);
    EXPECT_EQ(XPLMGetDatavi(nullptr, nullptr, 0, 0), 0);
    XPLMSetDataf(nullptr, 1.0f);
    EXPECT_EQ(XPLMIsDataRefGood(nullptr), 0);
    EXPECT_EQ(XPLMGetDataRefTypes(nullptr), xplmType_Unknown);
    EXPECT_EQ(errors(), before);
}

TEST_F(DataAccessTest, GarbageAndStaleHandlesAreReportedAndAnsweredNeutrally) {
    XPLMDataRef psi = find("sim/flightmodel/position/psi");
    int dummy = 0;
    XPLMDataRef garbage[] = {reinterpret_cast<XPLMDataRef>(0x1234), &dummy,
                             reinterpret_cast<XPLMDataRef>(reinterpret_cast<uintptr_t>(psi) ^ (uintptr_t(1) << 40)),
                             reinterpret_cast<XPLMDataRef>(~uintptr_t(0))};
    int before = errors();
    for (XPLMDataRef bad : garbage) {
        EXPECT_EQ(XPLMGetDataf(bad), 0.0f);
        XPLMSetDataf(bad, 1.0f);
        EXPECT_EQ(XPLMGetDatavf(bad, nullptr, 0, 0), 0);
        EXPECT_EQ(XPLMIsDataRefGood(bad), 0);
        EXPECT_EQ(XPLMCanWriteDataRef(bad), 0);
        XPLMUnregisterDataAccessor(bad);
    }
    EXPECT_EQ(errors(), before + 6 * 4);

    // A handle from an earlier run no longer resolves, even though the name exists again.
    XPLMSetDataf(psi, 33.0f);
    driver::shutdown();
    startSim();
    before = errors();
    EXPECT_EQ(XPLMGetDataf(psi), 0.0f);
    EXPECT_EQ(errors(), before + 1);
    EXPECT_FLOAT_EQ(XPLMGetDataf(find("sim/flightmodel/position/psi")), float(world::kAircraftHeadingDeg));
}

TEST_F(DataAccessTest, DriverReadsAndWritesValuesAsText) {
    std::string error;
    EXPECT_TRUE(driver::setDataref("sim/cockpit/radios/com1_freq_hz", "12255", &error)) << error;
    EXPECT_EQ(readInt("sim/cockpit/radios/com1_freq_hz"), 12255);
    EXPECT_TRUE(driver::setDataref("sim/flightmodel/position/psi", "271.25", &error)) << error;
    EXPECT_EQ(text("sim/flightmodel/position/psi"), "271.25");
    EXPECT_TRUE(driver::setDataref("sim/flightmodel/weight/m_fuel", "1.5,2,3", &error)) << error;
    EXPECT_EQ(text("sim/flightmodel/weight/m_fuel"), "1.5,2,3,0,0,0,0,0,0");
    EXPECT_TRUE(driver::setDataref("sim/aircraft/view/acf_ICAO", "B738", &error)) << error;
    EXPECT_EQ(text("sim/aircraft/view/acf_ICAO"), "B738");
    char icao[40];
    EXPECT_EQ(XPLMGetDatab(find("sim/aircraft/view/acf_ICAO"), icao, 0, 40), 40);
    EXPECT_EQ(icao[4], '\0');

    EXPECT_FALSE(driver::setDataref("sim/no/such", "1", &error));
    EXPECT_NE(error.find("sim/no/such"), std::string::npos);
    EXPECT_FALSE(driver::setDataref("sim/cockpit/radios/com1_freq_hz", "abc", &error));
    EXPECT_FALSE(driver::setDataref("sim/cockpit/radios/com1_freq_hz", "1,2", &error));
    EXPECT_FALSE(driver::setDataref("sim/cockpit/radios/com1_freq_hz", "1e12", &error));
    EXPECT_FALSE(driver::setDataref("sim/flightmodel/engine/ENGN_running", "1,1,1,1,1,1,1,1,1", &error));
    EXPECT_FALSE(driver::setDataref("sim/aircraft/view/acf_ICAO", std::string(41, 'x'), &error));
    EXPECT_EQ(readInt("sim/cockpit/radios/com1_freq_hz"), 12255);
    std::string value;
    EXPECT_FALSE(driver::getDataref("sim/no/such", &value, &error));
}

TEST_F(DataAccessTest, TimeDatarefsAdvanceWithTheFrames) {
    XPLMDataRef running = find("sim/time/total_running_time_sec");
    XPLMDataRef zulu = find("sim/time/zulu_time_sec");
    XPLMDataRef local = find("sim/time/local_time_sec");
    const float zuluStart = XPLMGetDataf(zulu);
    driver::runFrames(120);  // two seconds at 60 fps
    EXPECT_NEAR(XPLMGetDataf(running), 2.0f, 1e-4);
    EXPECT_NEAR(XPLMGetDataf(zulu) - zuluStart, 2.0f, 1e-2);
    // Local time follows zulu by the same offset, also after a plug-in moves zulu.
    const float offset = XPLMGetDataf(local) - XPLMGetDataf(zulu);
    XPLMSetDataf(zulu, 1000.0f);
    driver::runFrames(60);
    EXPECT_NEAR(XPLMGetDataf(zulu), 1001.0f, 1e-2);
    EXPECT_NEAR(std::fmod(XPLMGetDataf(local) - XPLMGetDataf(zulu) + 86400.0f, 86400.0f),
                std::fmod(offset + 86400.0f, 86400.0f), 1e-2);
}

TEST_F(DataAccessTest, WritingLocalCoordinatesMovesTheAircraftAtTheNextFrame) {
    XPLMDataRef x = find("sim/flightmodel/position/local_x");
    XPLMDataRef y = find("sim/flightmodel/position/local_y");
    XPLMDataRef z = find("sim/flightmodel/position/local_z");
    XPLMSetDatad(x, 1000.0);
    XPLMSetDatad(y, world::kAirportElevationM + 300.0);
    XPLMSetDatad(z, -2000.0);  // north
    XPLMSetDataf(find("sim/flightmodel/position/psi"), 90.0f);
    driver::runFrames(1);
    double lat, lon, elevation;
    world::localToWorld(1000.0, world::kAirportElevationM + 300.0, -2000.0, &lat, &lon, &elevation);
    EXPECT_DOUBLE_EQ(XPLMGetDatad(find("sim/flightmodel/position/latitude")), lat);
    EXPECT_DOUBLE_EQ(XPLMGetDatad(find("sim/flightmodel/position/longitude")), lon);
    EXPECT_GT(lat, world::kAirportLat);
    EXPECT_GT(lon, world::kAirportLon);
    EXPECT_DOUBLE_EQ(XPLMGetDatad(find("sim/flightmodel/position/elevation")), world::kAirportElevationM + 300.0);
    EXPECT_NEAR(XPLMGetDataf(find("sim/flightmodel/position/y_agl")), 300.0f, 1e-3);
    EXPECT_EQ(readInt("sim/flightmodel/failures/onground_any"), 0);
    EXPECT_EQ(XPLMGetDataf(find("sim/flightmodel/position/true_psi")), 90.0f);
    float q[4];
    ASSERT_EQ(XPLMGetDatavf(find("sim/flightmodel/position/q"), q, 0, 4), 4);
    EXPECT_NEAR(q[0], std::cos(world::kPi / 4), 1e-6);  // a quarter turn about the vertical
    EXPECT_NEAR(q[3], std::sin(world::kPi / 4), 1e-6);
}

TEST_F(DataAccessTest, AccessorDatarefsCallTheirProviderWithItsIdAndRefcons) {
    const int provider = loadEnabled("data_provider", "Provider");
    XPLMDataRef values = find("xpsim/test/Provider/values");
    const XPLMDataTypeID all = xplmType_Int | xplmType_Float | xplmType_Double | xplmType_IntArray |
                               xplmType_FloatArray | xplmType_Data;
    EXPECT_EQ(XPLMGetDataRefTypes(values), all);
    EXPECT_EQ(XPLMCanWriteDataRef(values), 1);

    EXPECT_EQ(XPLMGetDatai(values), 7);
    EXPECT_EQ(readInt("xpsim/test/Provider/seen_id"), provider);
    EXPECT_EQ(readInt("xpsim/test/Provider/seen_refcon"), 11);
    EXPECT_EQ(XPLMGetDataf(values), 2.5f);
    EXPECT_EQ(XPLMGetDatad(values), 1234.5678);
    XPLMSetDatai(values, 42);
    EXPECT_EQ(readInt("xpsim/test/Provider/seen_refcon"), 22);
    EXPECT_EQ(XPLMGetDatai(values), 42);

    // Array arguments reach the provider unchanged; it answers the size query itself.
    EXPECT_EQ(XPLMGetDatavi(values, nullptr, 0, 0), 4);
    int ints[4] = {};
    EXPECT_EQ(XPLMGetDatavi(values, ints, 1, 8), 3);
    EXPECT_EQ(ints[0], 20);
    float floats[2] = {9.0f, 8.0f};
    XPLMSetDatavf(values, floats, 2, 2);
    EXPECT_EQ(text("xpsim/test/Provider/values"), "1234.5678");  // the widest type wins
    float back[4];
    EXPECT_EQ(XPLMGetDatavf(values, back, 0, 4), 4);
    EXPECT_EQ(back[3], 8.0f);
    char data[8] = {};
    EXPECT_EQ(XPLMGetDatab(values, data, 0, 8), 8);
    EXPECT_STREQ(data, "abcdefg");

    // Read-only: the host does not even call a writer.
    XPLMDataRef readOnly = find("xpsim/test/Provider/read_only");
    EXPECT_EQ(XPLMCanWriteDataRef(readOnly), 0);
    const int calls = readInt("xpsim/test/Provider/calls");
    XPLMSetDatai(readOnly, 5);
    XPLMSetDataf(values, 1.0f);  // the writable one is called
    EXPECT_EQ(readInt("xpsim/test/Provider/calls"), calls + 1);
    EXPECT_EQ(XPLMGetDatai(readOnly), 99);

    // The driver writes through the provider too, and says when it cannot.
    std::string error;
    EXPECT_TRUE(driver::setDataref("xpsim/test/Provider/values", "3.25", &error)) << error;
    EXPECT_EQ(XPLMGetDatad(values), 3.25);
    EXPECT_FALSE(driver::setDataref("xpsim/test/Provider/read_only", "5", &error));
    EXPECT_NE(error.find("read-only"), std::string::npos);
    XPLMDisablePlugin(provider);
    EXPECT_FALSE(driver::setDataref("xpsim/test/Provider/values", "1", &error));
    EXPECT_NE(error.find("disabled"), std::string::npos);
}

TEST_F(DataAccessTest, ADisabledProviderIsNotCalledAndUnregisteredDatarefsBecomeOrphans) {
    const int provider = loadEnabled("data_provider", "Provider");
    XPLMDataRef values = find("xpsim/test/Provider/values");
    XPLMDataRef calls = find("xpsim/test/Provider/calls");
    XPLMDisablePlugin(provider);
    EXPECT_EQ(XPLMGetDatai(values), 0);
    XPLMSetDatai(values, 5);
    EXPECT_EQ(XPLMGetDatavi(values, nullptr, 0, 0), 0);
    EXPECT_EQ(XPLMIsDataRefGood(values), 0);
    ASSERT_EQ(XPLMEnablePlugin(provider), 1);
    EXPECT_EQ(XPLMIsDataRefGood(values), 1);
    EXPECT_EQ(XPLMGetDatai(calls), 0);  // nothing reached it while disabled
    EXPECT_EQ(XPLMGetDatai(values), 7);

    // Unregistered: reads give 0 without an error, the name is gone, the handle stays safe.
    const int before = errors();
    driver::sendMessage(provider, kUnregister, 0);
    EXPECT_EQ(XPLMIsDataRefGood(values), 0);
    EXPECT_EQ(XPLMGetDatai(values), 0);
    EXPECT_EQ(XPLMGetDataRefTypes(values), xplmType_Unknown);
    EXPECT_EQ(XPLMGetDatai(calls), 0);
    EXPECT_EQ(XPLMFindDataRef("xpsim/test/Provider/values"), nullptr);
    EXPECT_EQ(errors(), before);
    // Registering the name again brings the cached handle back.
    driver::sendMessage(provider, kRegister, 0);
    EXPECT_EQ(XPLMFindDataRef("xpsim/test/Provider/values"), values);
    EXPECT_EQ(XPLMGetDatai(values), 7);

    // A reload unloads the provider and loads it again: the cached handle serves the
    // new instance (fresh state).
    XPLMSetDatai(values, 42);
    driver::reloadPlugins();
    EXPECT_EQ(XPLMGetDatai(values), 7);
}

TEST_F(DataAccessTest, RegisteringAnExistingNameIsRefused) {
    loadEnabled("data_provider", "Provider");
    const int before = errors();
    XPLMDataRef again = XPLMRegisterDataAccessor("xpsim/test/Provider/values", xplmType_Int, 0, nullptr, nullptr,
                                                 nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                 nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(again, nullptr);
    XPLMDataRef simulator = XPLMRegisterDataAccessor("sim/flightmodel/position/psi", xplmType_Int, 0, nullptr,
                                                     nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                     nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(simulator, nullptr);
    EXPECT_EQ(errors(), before + 2);
    // Someone else's dataref cannot be unregistered.
    XPLMUnregisterDataAccessor(find("xpsim/test/Provider/values"));
    EXPECT_EQ(errors(), before + 3);
    EXPECT_EQ(readInt("xpsim/test/Provider/values"), 7);
}

TEST_F(DataAccessTest, SharedDataNotifiesTheOtherSharersOfChanges) {
    const int a = loadEnabled("data_sharer", "SharerA");
    const int b = loadEnabled("data_sharer", "SharerB");
    EXPECT_EQ(readInt("xpsim/test/SharerA/last_result"), 1);  // created it
    EXPECT_EQ(readInt("xpsim/test/SharerB/last_result"), 1);  // same type: attached
    XPLMDataRef shared = find("xpsim/test/shared");
    EXPECT_EQ(XPLMGetDataRefTypes(shared), xplmType_Int);
    EXPECT_EQ(XPLMCanWriteDataRef(shared), 1);

    // A's write notifies B, not A; B reads the new value in its callback.
    driver::sendMessage(a, kWrite, 17);
    EXPECT_EQ(XPLMGetDatai(shared), 17);
    EXPECT_EQ(readInt("xpsim/test/SharerA/notified"), 0);
    EXPECT_EQ(readInt("xpsim/test/SharerB/notified"), 1);
    EXPECT_EQ(readInt("xpsim/test/SharerB/notified_value"), 17);
    EXPECT_EQ(readInt("xpsim/test/SharerB/notified_id"), b);

    // The simulator's (test process's) writes reach both.
    XPLMSetDatai(shared, 3);
    EXPECT_EQ(readInt("xpsim/test/SharerA/notified"), 1);
    EXPECT_EQ(readInt("xpsim/test/SharerB/notified"), 2);
    EXPECT_EQ(readInt("xpsim/test/SharerA/notified_value"), 3);

    // After unsharing, B hears nothing; the value stays for A.
    driver::sendMessage(b, kUnshare, xplmType_Int);
    EXPECT_EQ(readInt("xpsim/test/SharerB/last_result"), 1);
    driver::sendMessage(b, kUnshare, xplmType_Int);
    EXPECT_EQ(readInt("xpsim/test/SharerB/last_result"), 0);  // nothing left to remove
    driver::sendMessage(a, kWrite, 4);
    EXPECT_EQ(readInt("xpsim/test/SharerB/notified"), 2);
    EXPECT_EQ(XPLMGetDatai(shared), 4);

    // A disabled sharer is not notified.
    XPLMDisablePlugin(a);
    XPLMSetDatai(shared, 5);
    ASSERT_EQ(XPLMEnablePlugin(a), 1);
    EXPECT_EQ(readInt("xpsim/test/SharerA/notified"), 1);

    // Unloading drops the sharers' registrations: after a reload only the new
    // instances hear about a change, once each.
    driver::reloadPlugins();
    XPLMSetDatai(shared, 6);
    EXPECT_EQ(readInt("xpsim/test/SharerA/notified"), 1);
    EXPECT_EQ(readInt("xpsim/test/SharerB/notified"), 1);
    EXPECT_EQ(readInt("xpsim/test/SharerB/notified_value"), 6);
}

TEST_F(DataAccessTest, SharingWithAnotherTypeIsAConflict) {
    const int a = loadEnabled("data_sharer", "SharerA");
    driver::sendMessage(a, kShare, xplmType_Float);
    EXPECT_EQ(readInt("xpsim/test/SharerA/last_result"), 0);
    EXPECT_EQ(XPLMGetDataRefTypes(find("xpsim/test/shared")), xplmType_Int);
    driver::sendMessage(a, kUnshare, xplmType_Float);
    EXPECT_EQ(readInt("xpsim/test/SharerA/last_result"), 0);
    driver::sendMessage(a, kShare, xplmType_Int);
    EXPECT_EQ(readInt("xpsim/test/SharerA/last_result"), 1);

    // Names of simulator and accessor datarefs cannot be shared.
    EXPECT_EQ(XPLMShareData("sim/flightmodel/position/psi", xplmType_Float, nullptr, nullptr), 0);
    EXPECT_EQ(XPLMShareData("xpsim/test/SharerA/notified", xplmType_Int, nullptr, nullptr), 0);
    EXPECT_EQ(XPLMShareData("xpsim/test/shared", xplmType_Int, nullptr, nullptr), 1);
    const int before = errors();
    EXPECT_EQ(XPLMShareData(nullptr, xplmType_Int, nullptr, nullptr), 0);
    EXPECT_EQ(XPLMShareData("xpsim/test/other", 0x400, nullptr, nullptr), 0);
    EXPECT_EQ(errors(), before + 2);
}

TEST_F(DataAccessTest, SharedArraysGrowToWhatIsWritten) {
    ASSERT_EQ(XPLMShareData("xpsim/test/floats", xplmType_FloatArray, nullptr, nullptr), 1);
    XPLMDataRef floats = find("xpsim/test/floats");
    EXPECT_EQ(XPLMGetDatavf(floats, nullptr, 0, 0), 0);
    float values[3] = {1.0f, 2.0f, 3.0f};
    XPLMSetDatavf(floats, values, 2, 3);
    EXPECT_EQ(XPLMGetDatavf(floats, nullptr, 0, 0), 5);
    EXPECT_EQ(text("xpsim/test/floats"), "0,0,1,2,3");

    ASSERT_EQ(XPLMShareData("xpsim/test/text", xplmType_Data, nullptr, nullptr), 1);
    std::string error;
    ASSERT_TRUE(driver::setDataref("xpsim/test/text", "hello", &error)) << error;
    EXPECT_EQ(XPLMGetDatab(find("xpsim/test/text"), nullptr, 0, 0), 5);
    EXPECT_EQ(text("xpsim/test/text"), "hello");
}

}  // namespace
}  // namespace xpsim::test

// Scenery: terrain probes over the world's terrain, struct-size and handle checks,
// objects shared by reference count, asynchronous loads and the library.

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>

#include "XPLMDisplay.h"
#include "XPLMPlugin.h"
#include "XPLMScenery.h"
#include "world_test_util.h"
#include "world.h"

namespace xpsim::test {
namespace {

class SceneryTest : public WorldTest {
protected:
    void writeFile(const std::string& relative, const std::string& text) {
        std::filesystem::path path = root + "/" + relative;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << text;
    }
    static XPLMProbeInfo_t probeAt(XPLMProbeRef probe, float x, float z, XPLMProbeResult* result) {
        XPLMProbeInfo_t info{};
        info.structSize = sizeof info;
        *result = XPLMProbeTerrainXYZ(probe, x, 1000.0f, z, &info);
        return info;
    }
};

TEST_F(SceneryTest, ProbeFindsTheTerrainUnderThePointWithItsNormal) {
    XPLMProbeRef probe = XPLMCreateProbe(xplm_ProbeY);
    ASSERT_NE(probe, nullptr);
    XPLMProbeResult result = -1;
    // At the airport: flat ground at the airport's elevation, whatever height we ask from.
    XPLMProbeInfo_t info = probeAt(probe, 120.0f, -340.0f, &result);
    EXPECT_EQ(result, xplm_ProbeHitTerrain);
    EXPECT_FLOAT_EQ(info.locationX, 120.0f);
    EXPECT_FLOAT_EQ(info.locationY, static_cast<float>(world::kAirportElevationM));
    EXPECT_FLOAT_EQ(info.locationZ, -340.0f);
    EXPECT_FLOAT_EQ(info.normalY, 1.0f);
    EXPECT_FLOAT_EQ(info.velocityX + info.velocityY + info.velocityZ, 0.0f);
    EXPECT_EQ(info.is_wet, 0);

    // In the hills the height is the terrain's at that lat/lon, and the normal leans
    // away from the uphill side.
    double lat, lon, alt;
    world::localToWorld(9000.0, 0.0, 2000.0, &lat, &lon, &alt);
    info = probeAt(probe, 9000.0f, 2000.0f, &result);
    EXPECT_EQ(result, xplm_ProbeHitTerrain);
    EXPECT_NEAR(info.locationY, world::terrainElevation(lat, lon), 0.01);
    EXPECT_NE(info.locationY, static_cast<float>(world::kAirportElevationM));
    XPLMProbeInfo_t east = probeAt(probe, 9010.0f, 2000.0f, &result);
    float n = std::sqrt(info.normalX * info.normalX + info.normalY * info.normalY + info.normalZ * info.normalZ);
    EXPECT_NEAR(n, 1.0f, 1e-4);
    EXPECT_LT(info.normalY, 1.0f);
    EXPECT_EQ(east.locationY > info.locationY, info.normalX < 0.0f);

    // Far outside the loaded scenery: the sea-level sphere.
    info = probeAt(probe, 400000.0f, 0.0f, &result);
    EXPECT_EQ(result, xplm_ProbeHitTerrain);
    EXPECT_FLOAT_EQ(info.locationY, 0.0f);
    EXPECT_EQ(info.is_wet, 1);
    XPLMDestroyProbe(probe);
    EXPECT_EQ(errors(), 0);
}

TEST_F(SceneryTest, ProbeRejectsBadStructSizeAndHandlesItDidNotHandOut) {
    XPLMProbeRef probe = XPLMCreateProbe(xplm_ProbeY);
    XPLMProbeInfo_t info{};
    info.structSize = sizeof info - 4;
    info.locationY = 12345.0f;
    EXPECT_EQ(XPLMProbeTerrainXYZ(probe, 0, 0, 0, &info), xplm_ProbeError);
    EXPECT_FLOAT_EQ(info.locationY, 12345.0f);  // nothing written
    EXPECT_EQ(XPLMProbeTerrainXYZ(probe, 0, 0, 0, nullptr), xplm_ProbeError);
    EXPECT_EQ(errors(), 2);

    info.structSize = sizeof info;
    XPLMDestroyProbe(probe);
    EXPECT_EQ(XPLMProbeTerrainXYZ(probe, 0, 0, 0, &info), xplm_ProbeError);
    XPLMDestroyProbe(probe);
    int local = 0;
    EXPECT_EQ(XPLMProbeTerrainXYZ(&local, 0, 0, 0, &info), xplm_ProbeError);
    EXPECT_EQ(XPLMProbeTerrainXYZ(nullptr, 0, 0, 0, &info), xplm_ProbeError);
    EXPECT_EQ(XPLMCreateProbe(1), nullptr);
    EXPECT_EQ(errors(), 7);

    // An object handle is not a probe, nor a probe an object.
    XPLMObjectRef object = XPLMLoadObject("Resources/default scenery/sim objects/apt_lights/windsock.obj");
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(XPLMProbeTerrainXYZ(object, 0, 0, 0, &info), xplm_ProbeError);
    XPLMProbeRef live = XPLMCreateProbe(xplm_ProbeY);
    XPLMUnloadObject(live);
    EXPECT_EQ(errors(), 9);
    EXPECT_EQ(XPLMProbeTerrainXYZ(live, 0, 0, 0, &info), xplm_ProbeHitTerrain);
}

TEST_F(SceneryTest, ObjectsAreSharedByReferenceAndPurgedAfterTheLastUnload) {
    writeFile("objects/box.obj", "A\n800\nOBJ\n\nPOINT_COUNTS 0 0 0 0\n");
    writeFile("in_root.obj", "I\r\n800\r\nOBJ\r\n");
    writeFile("objects/broken.obj", "this is not an object\n");
    XPLMObjectRef a = XPLMLoadObject("objects/box.obj");
    XPLMObjectRef b = XPLMLoadObject("objects/box.obj");
    ASSERT_NE(a, nullptr);
    ASSERT_NE(b, nullptr);
    EXPECT_NE(XPLMLoadObject("./in_root.obj"), nullptr);
    EXPECT_EQ(XPLMLoadObject("objects/broken.obj"), nullptr);
    EXPECT_EQ(XPLMLoadObject("objects/missing.obj"), nullptr);
    EXPECT_EQ(XPLMLoadObject(nullptr), nullptr);
    EXPECT_EQ(errors(), 1);  // a NULL path is a mistake; a missing file only fails
    EXPECT_NE(log().find("cannot load object objects/broken.obj: not an OBJ file"), std::string::npos);

    XPLMDrawInfo_t at[2] = {{sizeof(XPLMDrawInfo_t), 1, 2, 3, 0, 90, 0}, {sizeof(XPLMDrawInfo_t), 4, 5, 6, 0, 0, 0}};
    XPLMUnloadObject(a);
    XPLMDrawObjects(b, 2, at, 0, 1);  // still loaded: one reference left
    EXPECT_EQ(errors(), 1);
    XPLMUnloadObject(b);
    XPLMDrawObjects(b, 2, at, 0, 1);
    XPLMUnloadObject(b);
    EXPECT_EQ(errors(), 3);
    XPLMObjectRef c = XPLMLoadObject("objects/box.obj");
    ASSERT_NE(c, nullptr);
    XPLMDrawObjects(c, -1, at, 0, 0);
    XPLMDrawObjects(c, 1, nullptr, 0, 0);
    at[1].structSize = 12;
    XPLMDrawObjects(c, 2, at, 0, 0);
    EXPECT_EQ(errors(), 6);
    XPLMDrawObjects(c, 0, nullptr, 0, 0);
    EXPECT_EQ(errors(), 6);
}

TEST_F(SceneryTest, AsyncLoadCallsBackOnALaterFrameAsTheRequestingPlugin) {
    int a = loadActor("Alpha");
    driver::enablePluginsAndSendLoadMessages();
    driver::sendMessage(a, kLoadAsync, 0);
    driver::sendMessage(a, kLoadAsync, 1);
    EXPECT_TRUE(events("Alpha").empty());  // never before the call returns
    driver::runFrames(2);
    std::string id = std::to_string(a);
    EXPECT_EQ(events("Alpha"), (std::vector<std::string>{"object loaded nonnull=1 refcon=7 myid=" + id,
                                                          "object loaded nonnull=0 refcon=7 myid=" + id}));
    EXPECT_EQ(errors(), 0);

    XPLMLoadObjectAsync("objects/x.obj", nullptr, nullptr);
    XPLMLoadObjectAsync(nullptr, [](XPLMObjectRef, void*) {}, nullptr);
    EXPECT_EQ(errors(), 2);
}

TEST_F(SceneryTest, AsyncLoadOfAPluginDisabledByAnEarlierLoadsCallbackWaitsUntilItIsEnabled) {
    int a = loadActor("Alpha");
    driver::enablePluginsAndSendLoadMessages();
    // Due in the same frame: the simulator's load first, whose callback disables Alpha.
    auto disableAlpha = [](XPLMObjectRef object, void* refcon) {
        XPLMDisablePlugin(*static_cast<int*>(refcon));
        XPLMUnloadObject(object);
    };
    XPLMLoadObjectAsync("Resources/default scenery/sim objects/apt_lights/windsock.obj", disableAlpha, &a);
    driver::sendMessage(a, kLoadAsync, 0);
    driver::runFrames(2);
    EXPECT_EQ(XPLMIsPluginEnabled(a), 0);
    EXPECT_EQ(events("Alpha"), (std::vector<std::string>{"disable"}));
    ASSERT_EQ(XPLMEnablePlugin(a), 1);
    driver::runFrames(1);
    EXPECT_EQ(events("Alpha"), (std::vector<std::string>{"disable", "object loaded nonnull=1 refcon=7 myid=" +
                                                                        std::to_string(a)}));
    driver::sendMessage(a, kUnload, 0);
    EXPECT_EQ(errors(), 0);
}

struct Drawing {
    XPLMObjectRef object;
    XPLMDrawInfo_t at[2];
};

int drawTwice(XPLMDrawingPhase, int, void* refcon) {
    Drawing& d = *static_cast<Drawing*>(refcon);
    XPLMDrawObjects(d.object, 2, d.at, 1, 0);
    return 1;
}

TEST_F(SceneryTest, DrawObjectsRecordsEachInstanceInTheFramesDrawList) {
    Drawing d{XPLMLoadObject("Resources/default scenery/sim objects/apt_lights/windsock.obj"),
              {{sizeof(XPLMDrawInfo_t), 1, 2, 3, 0, 90, 0}, {sizeof(XPLMDrawInfo_t), 4, 5, 6, 10, 0, 5}}};
    ASSERT_NE(d.object, nullptr);
    XPLMRegisterDrawCallback(drawTwice, xplm_Phase_Objects, 0, &d);
    driver::runFrames(1);
    std::vector<std::string> drawn;
    for (const DrawItem& item : driver::drawList()) {
        if (item.kind == "object") drawn.push_back(item.text);
    }
    EXPECT_EQ(drawn, (std::vector<std::string>{
                         "Resources/default scenery/sim objects/apt_lights/windsock.obj at 1.0,2.0,3.0 "
                         "pitch 0.0 heading 90.0 roll 0.0 lit",
                         "Resources/default scenery/sim objects/apt_lights/windsock.obj at 4.0,5.0,6.0 "
                         "pitch 10.0 heading 0.0 roll 5.0 lit"}));
    XPLMUnregisterDrawCallback(drawTwice, xplm_Phase_Objects, 0, &d);
    XPLMUnloadObject(d.object);
    EXPECT_EQ(errors(), 0);
}

TEST_F(SceneryTest, UnloadingAPluginReleasesItsObjectsAndDropsItsPendingLoads) {
    int a = loadActor("Alpha");
    driver::enablePluginsAndSendLoadMessages();
    driver::sendMessage(a, kLoadAsync, 0);
    driver::runFrames(2);
    ASSERT_EQ(count("Alpha", "object loaded nonnull=1 refcon=7 myid=" + std::to_string(a)), 1);
    // Our own reference to the same object; Alpha still holds one.
    XPLMObjectRef tug = XPLMLoadObject("Resources/default scenery/sim objects/apt_vehicles/pushback/tug_GT110.obj");
    ASSERT_NE(tug, nullptr);
    driver::sendMessage(a, kLoadAsync, 0);  // still on its way when Alpha goes
    driver::reloadPlugins();
    driver::runFrames(3);  // nothing may call into the unloaded binary
    EXPECT_EQ(count("Alpha", "object loaded nonnull=1 refcon=7 myid=" + std::to_string(a)), 1);
    XPLMUnloadObject(tug);  // our reference was the last one
    XPLMDrawInfo_t at{sizeof(XPLMDrawInfo_t), 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(errors(), 0);
    XPLMDrawObjects(tug, 1, &at, 0, 0);
    EXPECT_EQ(errors(), 1);
}

struct AsyncRequest {
    int requestedIn = -1;
    int deliveredIn = -1;
    XPLMObjectRef object = nullptr;
};

int requestOnKey(char, XPLMKeyFlags, char, void* refcon) {
    auto* request = static_cast<AsyncRequest*>(refcon);
    request->requestedIn = driver::cycleNumber();
    XPLMLoadObjectAsync("Resources/default scenery/sim objects/apt_lights/windsock.obj",
                        [](XPLMObjectRef object, void* ref) {
                            auto* r = static_cast<AsyncRequest*>(ref);
                            r->deliveredIn = driver::cycleNumber();
                            r->object = object;
                        },
                        request);
    return 1;
}

TEST_F(SceneryTest, AsyncLoadAskedEarlyInAFrameIsDeliveredInALaterOne) {
    AsyncRequest request;
    // Keys are delivered at the start of a frame, before the scenery's share of it.
    XPLMRegisterKeySniffer(requestOnKey, 1, &request);
    driver::keyPress('a', 0, 'A');
    driver::runFrames(3);
    ASSERT_GE(request.requestedIn, 0);
    EXPECT_GT(request.deliveredIn, request.requestedIn);
    EXPECT_NE(request.object, nullptr);
    XPLMUnloadObject(request.object);
    XPLMUnregisterKeySniffer(requestOnKey, 1, &request);
    EXPECT_EQ(errors(), 0);
}

struct Found {
    std::vector<std::string> paths;
};

void collect(const char* path, void* ref) { static_cast<Found*>(ref)->paths.push_back(path); }

TEST_F(SceneryTest, LibraryLookupEnumeratesTheFilesAllowedAtTheLocation) {
    Found here;
    int n = XPLMLookupObjects("lib/airport/aircraft/regional_jet.obj", static_cast<float>(world::kAirportLat),
                              static_cast<float>(world::kAirportLon), collect, &here);
    EXPECT_EQ(n, 2);
    ASSERT_EQ(here.paths.size(), 2u);
    Found elsewhere;
    EXPECT_EQ(XPLMLookupObjects("lib/airport/aircraft/regional_jet.obj", 0.0f, 0.0f, collect, &elsewhere), 1);
    ASSERT_EQ(elsewhere.paths.size(), 1u);
    EXPECT_NE(std::find(here.paths.begin(), here.paths.end(), elsewhere.paths[0]), here.paths.end());
    // What the library names can be loaded, relative to the root.
    for (const std::string& path : here.paths) {
        XPLMObjectRef object = XPLMLoadObject(path.c_str());
        EXPECT_NE(object, nullptr) << path;
        XPLMUnloadObject(object);
    }
    Found nothing;
    EXPECT_EQ(XPLMLookupObjects("lib/no/such/thing.obj", 0.0f, 0.0f, collect, &nothing), 0);
    EXPECT_TRUE(nothing.paths.empty());
    EXPECT_EQ(XPLMLookupObjects("lib/airport/vehicles/baggage_train.obj", 0.0f, 0.0f, nullptr, nullptr), 2);
    EXPECT_EQ(XPLMLookupObjects(nullptr, 0.0f, 0.0f, collect, &nothing), 0);
    EXPECT_EQ(errors(), 1);
}

}  // namespace
}  // namespace xpsim::test

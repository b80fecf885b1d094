// The planes: aircraft slots and models, exclusive access with the planes-available
// callbacks, release when the holder goes away, and placing the user at an airport.

#include <algorithm>
#include <cstring>
#include <fstream>

#include "XPLMCamera.h"
#include "XPLMDisplay.h"
#include "XPLMNavigation.h"
#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "world_test_util.h"

namespace xpsim::test {
namespace {

int drawPlanes(XPLMDrawingPhase, int, void*) {
    XPLMPlaneDrawState_t state{};
    state.structSize = sizeof state;
    XPLMDrawAircraft(1, 10.0f, 20.0f, -30.0f, 2.0f, 0.0f, 270.0f, 1, &state);
    XPLMDrawAircraft(2, 500.0f, 20.0f, -30.0f, 0.0f, 0.0f, 90.0f, 0, nullptr);
    state.structSize = 1000;
    XPLMDrawAircraft(1, 0, 0, 0, 0, 0, 0, 1, &state);  // not a size of the struct
    XPLMDrawAircraft(99, 0, 0, 0, 0, 0, 0, 1, nullptr);
    return 1;
}

class PlanesTest : public WorldTest {
protected:
    int controller() {
        XPLMPluginID id = 12345;
        XPLMCountAircraft(nullptr, nullptr, &id);
        return id;
    }
    std::string model(int index) {
        char file[256], path[512];
        XPLMGetNthAircraftModel(index, file, path);
        return path;
    }
};

TEST_F(PlanesTest, UserAndAISlotsHaveModelsUnderTheRoot) {
    int total = 0, active = 0;
    XPLMPluginID holder = 0;
    XPLMCountAircraft(&total, &active, &holder);
    EXPECT_GT(total, 1);
    EXPECT_GE(active, 1);
    EXPECT_LE(active, total);
    EXPECT_EQ(holder, XPLM_NO_PLUGIN_ID);
    for (int i = 0; i < total; ++i) {
        char file[256], path[512];
        XPLMGetNthAircraftModel(i, file, path);
        std::string p = path;
        EXPECT_EQ(p.rfind(root + "/Aircraft/", 0), 0u) << p;
        EXPECT_GT(std::strlen(file), 4u);
        EXPECT_EQ(p.substr(p.size() - std::strlen(file)), file);  // the path ends with the file name
        EXPECT_EQ(p.substr(p.size() - 4), ".acf");
    }
    EXPECT_EQ(errors(), 0);
    char file[256] = "x", path[512] = "y";
    XPLMGetNthAircraftModel(total, file, path);
    XPLMGetNthAircraftModel(-1, nullptr, nullptr);
    EXPECT_EQ(errors(), 2);
    EXPECT_STREQ(file, "");
    EXPECT_STREQ(path, "");
}

TEST_F(PlanesTest, AccessIsExclusiveAndReleasingCallsTheWaitingPlugins) {
    int a = loadActor("Alpha");
    int b = loadActor("Beta");
    int c = loadActor("Gamma");
    driver::enablePluginsAndSendLoadMessages();
    driver::sendMessage(a, kPlanesAcquire, 0);
    driver::sendMessage(b, kPlanesAcquire, 1);
    driver::sendMessage(c, kPlanesAcquire, 1);
    EXPECT_EQ(count("Alpha", "acquire=1"), 1);
    EXPECT_EQ(count("Beta", "acquire=0"), 1);
    EXPECT_EQ(count("Gamma", "acquire=0"), 1);
    EXPECT_EQ(controller(), a);
    driver::sendMessage(a, kPlanesAcquire, 0);  // the holder asking again keeps access
    EXPECT_EQ(count("Alpha", "acquire=1"), 2);

    driver::sendMessage(b, kPlanesRelease, 0);  // not the holder: nothing to give up
    EXPECT_EQ(controller(), a);
    driver::sendMessage(a, kPlanesRelease, 0);
    // Both waiters hear it, in the order they asked; the first to ask again wins.
    EXPECT_EQ(count("Beta", "planes available refcon=" + std::to_string(100 + b) + " myid=" + std::to_string(b)), 1);
    EXPECT_EQ(count("Beta", "acquire again=1"), 1);
    EXPECT_EQ(count("Gamma", "planes available refcon=" + std::to_string(100 + c) + " myid=" + std::to_string(c)), 1);
    EXPECT_EQ(count("Gamma", "acquire again=0"), 1);
    EXPECT_EQ(controller(), b);
    EXPECT_FALSE(heardPrefix("Alpha", "planes available"));

    // Gamma waits again; disabling Beta ends its access at once, handing over.
    driver::sendMessage(b, kDisableMe, 0);
    EXPECT_EQ(count("Gamma", "acquire again=1"), 1);
    EXPECT_EQ(controller(), c);
    driver::reloadPlugins();  // unloading the holder releases too
    EXPECT_EQ(controller(), XPLM_NO_PLUGIN_ID);
    EXPECT_EQ(errors(), 0);
}

TEST_F(PlanesTest, ADisabledWaiterIsCalledOnlyAtAReleaseAfterItIsEnabledAgain) {
    int a = loadActor("Alpha");
    int b = loadActor("Beta");
    driver::enablePluginsAndSendLoadMessages();
    driver::sendMessage(a, kPlanesAcquire, 0);
    driver::sendMessage(b, kPlanesAcquire, 1);
    driver::sendMessage(b, kDisableMe, 0);
    driver::sendMessage(a, kPlanesRelease, 0);
    EXPECT_EQ(count("Beta", "acquire again=1"), 0);
    EXPECT_EQ(controller(), XPLM_NO_PLUGIN_ID);
    ASSERT_EQ(XPLMEnablePlugin(b), 1);
    driver::sendMessage(a, kPlanesAcquire, 0);
    driver::sendMessage(a, kPlanesRelease, 0);
    EXPECT_EQ(count("Beta", "acquire again=1"), 1);
    EXPECT_EQ(controller(), b);
}

TEST_F(PlanesTest, ModelsAndActiveCountNeedExclusiveAccess) {
    int total = 0, active = 0;
    XPLMCountAircraft(&total, &active, nullptr);
    std::string before1 = model(1);
    XPLMSetActiveAircraftCount(2);
    XPLMSetAircraftModel(1, "/elsewhere/a.acf");
    EXPECT_EQ(errors(), 2);
    EXPECT_EQ(model(1), before1);

    std::string jet = root + "/Aircraft/Jets/jet.acf";
    char empty[] = "";
    char* list[] = {empty, const_cast<char*>(jet.c_str()), nullptr};
    ASSERT_EQ(XPLMAcquirePlanes(list, nullptr, nullptr), 1);
    EXPECT_EQ(model(1), before1);  // "" leaves the slot alone
    EXPECT_EQ(model(2), jet);      // the list starts at the first AI slot
    XPLMSetActiveAircraftCount(total + 5);
    XPLMCountAircraft(nullptr, &active, nullptr);
    EXPECT_EQ(active, total);
    XPLMSetActiveAircraftCount(2);
    XPLMCountAircraft(nullptr, &active, nullptr);
    EXPECT_EQ(active, 2);
    XPLMSetAircraftModel(3, "/x/y/z.acf");
    EXPECT_EQ(model(3), "/x/y/z.acf");
    EXPECT_EQ(errors(), 2);
    XPLMSetAircraftModel(0, "/x/user.acf");  // the user's slot has its own function
    XPLMSetAircraftModel(total, "/x/y/z.acf");
    XPLMSetAircraftModel(4, nullptr);
    XPLMDisableAIForPlane(0);
    EXPECT_EQ(errors(), 6);
    XPLMDisableAIForPlane(1);
    XPLMDisableAIForPlane(1);
    EXPECT_NE(log().find("AI disabled for aircraft 1\n"), std::string::npos);
    EXPECT_EQ(log().find("AI disabled for aircraft 1\n"), log().rfind("AI disabled for aircraft 1\n"));
    XPLMReleasePlanes();
    EXPECT_EQ(controller(), XPLM_NO_PLUGIN_ID);

    XPLMSetUsersAircraft("/x/user.acf");
    EXPECT_EQ(model(0), "/x/user.acf");
    XPLMSetUsersAircraft("");
    EXPECT_EQ(errors(), 7);
    EXPECT_NE(log().find("aircraft 0 loaded from /x/user.acf"), std::string::npos);
}

TEST_F(PlanesTest, LoadingModelsAndMovingTheUserAreAnnouncedToPlugins) {
    loadActor("Alpha");
    std::ofstream(root + "/Resources/plugins/Alpha/record_messages") << "\n";
    driver::enablePluginsAndSendLoadMessages();
    auto message = [](int msg, long param) {
        return "message from=0 msg=" + std::to_string(msg) + " param=" + std::to_string(param);
    };
    size_t before = events("Alpha").size();
    ASSERT_EQ(XPLMAcquirePlanes(nullptr, nullptr, nullptr), 1);
    XPLMSetAircraftModel(5, "/x/five.acf");
    XPLMSetUsersAircraft("/x/user.acf");
    XPLMPlaceUserAtAirport("KBFI");
    std::vector<std::string> heard = events("Alpha");
    heard.erase(heard.begin(), heard.begin() + static_cast<long>(before));
    EXPECT_EQ(heard, (std::vector<std::string>{message(XPLM_MSG_PLANE_UNLOADED, 5), message(XPLM_MSG_PLANE_LOADED, 5),
                                               message(XPLM_MSG_PLANE_UNLOADED, 0), message(XPLM_MSG_PLANE_LOADED, 0),
                                               message(XPLM_MSG_AIRPORT_LOADED, 0)}));
}

TEST_F(PlanesTest, DrawAircraftRecordsTheSlotsModelAndPoseInTheDrawList) {
    std::string jet = root + "/Aircraft/Jets/jet.acf";
    char* list[] = {const_cast<char*>(jet.c_str()), nullptr};
    ASSERT_EQ(XPLMAcquirePlanes(list, nullptr, nullptr), 1);
    XPLMRegisterDrawCallback(drawPlanes, xplm_Phase_Airplanes, 0, nullptr);
    driver::runFrames(1);
    std::vector<std::string> drawn;
    for (const DrawItem& item : driver::drawList()) {
        if (item.kind == "aircraft") drawn.push_back(item.text);
    }
    char file2[256], path2[512];
    XPLMGetNthAircraftModel(2, file2, path2);
    EXPECT_EQ(drawn, (std::vector<std::string>{
                         "1 jet.acf at 10.0,20.0,-30.0 pitch 2.0 roll 0.0 yaw 270.0",
                         "2 " + std::string(file2) + " at 500.0,20.0,-30.0 pitch 0.0 roll 0.0 yaw 90.0 lights only"}));
    EXPECT_EQ(errors(), 2);
    XPLMUnregisterDrawCallback(drawPlanes, xplm_Phase_Airplanes, 0, nullptr);
}

TEST_F(PlanesTest, PlacingTheUserAtAnAirportMovesTheAircraftAndItsView) {
    XPLMCameraPosition_t atSea{};
    XPLMReadCameraPosition(&atSea);
    XPLMPlaceUserAtAirport("KOLM");
    XPLMCameraPosition_t atOlympia{};
    XPLMReadCameraPosition(&atOlympia);
    // Olympia is about 55 km south-west of Seattle: -z is north, +x east.
    EXPECT_GT(atOlympia.z - atSea.z, 40000.0f);
    EXPECT_LT(atOlympia.x - atSea.x, -30000.0f);
    EXPECT_EQ(XPLMGetGPSDestination(), XPLMFindNavAid(nullptr, "KOLM", nullptr, nullptr, nullptr, xplm_Nav_Airport));
    EXPECT_NE(log().find("user placed at airport KOLM"), std::string::npos);
    // The aircraft's position datarefs agree with the navigation data.
    float lat = 0, lon = 0, height = 0;
    XPLMGetNavAidInfo(XPLMGetGPSDestination(), nullptr, &lat, &lon, &height, nullptr, nullptr, nullptr, nullptr,
                      nullptr);
    EXPECT_NEAR(datarefNumber("sim/flightmodel/position/latitude"), lat, 1e-4);
    EXPECT_NEAR(datarefNumber("sim/flightmodel/position/longitude"), lon, 1e-4);
    EXPECT_NEAR(datarefNumber("sim/flightmodel/position/local_y"), height, 1e-3);
    EXPECT_NEAR(datarefNumber("sim/flightmodel/position/local_z"), atOlympia.z, 5.0);
    XPLMPlaceUserAtAirport("NOPE");
    XPLMPlaceUserAtAirport(nullptr);
    EXPECT_EQ(errors(), 2);
}

}  // namespace
}  // namespace xpsim::test

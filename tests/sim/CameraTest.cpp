// The camera: the controller's callback every frame, giving up and losing control,
// the position it sets, and the simulator's own view near the parked aircraft.

#include <algorithm>
#include <cmath>

#include "XPLMCamera.h"
#include "XPLMPlugin.h"
#include "plugin_test_util.h"
#include "world.h"

namespace xpsim::test {
namespace {

constexpr int kCameraTake = 0x7FF10001;
constexpr int kCameraRelease = 0x7FF10002;
constexpr int kCameraGiveUp = 0x7FF10003;
constexpr int kDisableMe = 0x7FF10008;

struct Calls {
    int frames = 0;
    int losing = 0;
    int losingWithPosition = 0;
    int giveUpAt = -1;  // the call that returns 0
};

int control(XPLMCameraPosition_t* position, int losing, void* refcon) {
    Calls& calls = *static_cast<Calls*>(refcon);
    if (losing) {
        ++calls.losing;
        if (position) ++calls.losingWithPosition;
        return 0;
    }
    ++calls.frames;
    *position = XPLMCameraPosition_t{10.0f, 20.0f + calls.frames, 30.0f, 5.0f, 45.0f, 1.0f, 3.0f};
    return calls.frames == calls.giveUpAt ? 0 : 1;
}

Calls gSuccessor;

// Hands the camera to a successor from inside its own call, then gives up.
int handOver(XPLMCameraPosition_t*, int losing, void* refcon) {
    if (losing) {
        ++static_cast<Calls*>(refcon)->losing;
        return 0;
    }
    ++static_cast<Calls*>(refcon)->frames;
    XPLMControlCamera(xplm_ControlCameraForever, control, &gSuccessor);
    return 0;
}

class CameraTest : public SimRootTest {
protected:
    int errors() const {
        std::string text = log();
        int n = 0;
        for (size_t at = 0; (at = text.find("SDK error", at)) != std::string::npos; ++at) ++n;
        return n;
    }
    int load(const std::string& name) {
        std::string error;
        int id = driver::loadPlugin(installPlugin(root, "world_actor", name), &error);
        EXPECT_GT(id, 0) << error;
        return id;
    }
    std::vector<std::string> events(const std::string& name) {
        return readLines(root + "/Resources/plugins/" + name + "/events.txt");
    }
    static int count(const std::vector<std::string>& lines, const std::string& line) {
        return static_cast<int>(std::count(lines.begin(), lines.end(), line));
    }
};

TEST_F(CameraTest, ByDefaultTheCameraIsThePilotsViewOfTheParkedAircraft) {
    startSim();
    XPLMCameraControlDuration duration = 99;
    EXPECT_EQ(XPLMIsCameraBeingControlled(&duration), 0);
    EXPECT_EQ(duration, 99);  // untouched when nobody controls the camera
    XPLMCameraPosition_t p{};
    XPLMReadCameraPosition(&p);
    // The aircraft sits at the local origin, on the airport's elevation.
    EXPECT_LT(std::fabs(p.x), 5.0f);
    EXPECT_LT(std::fabs(p.z), 5.0f);
    EXPECT_GT(p.y, world::kAirportElevationM);
    EXPECT_LT(p.y, world::kAirportElevationM + 10.0);
    EXPECT_FLOAT_EQ(p.heading, static_cast<float>(world::kAircraftHeadingDeg));
    EXPECT_FLOAT_EQ(p.zoom, 1.0f);
}

TEST_F(CameraTest, ControllerIsCalledEveryFrameAndItsPositionIsTheCamera) {
    startSim();
    Calls calls;
    XPLMControlCamera(xplm_ControlCameraUntilViewChanges, control, &calls);
    EXPECT_EQ(calls.frames, 0);  // from the next drawn frame on
    XPLMCameraControlDuration duration = 0;
    EXPECT_EQ(XPLMIsCameraBeingControlled(&duration), 1);
    EXPECT_EQ(duration, xplm_ControlCameraUntilViewChanges);
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 1);
    driver::runFrames(3);
    EXPECT_EQ(calls.frames, 3);
    EXPECT_EQ(calls.losing, 0);
    XPLMCameraPosition_t p{};
    XPLMReadCameraPosition(&p);
    EXPECT_FLOAT_EQ(p.y, 23.0f);  // written by the third call
    EXPECT_FLOAT_EQ(p.heading, 45.0f);
    EXPECT_FLOAT_EQ(p.zoom, 3.0f);
}

TEST_F(CameraTest, ReturningZeroOrDontControlCameraEndsControlWithoutALosingCall) {
    startSim();
    Calls calls;
    calls.giveUpAt = 2;
    XPLMControlCamera(xplm_ControlCameraForever, control, &calls);
    driver::runFrames(4);
    EXPECT_EQ(calls.frames, 2);  // not called again after giving up
    EXPECT_EQ(calls.losing, 0);
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 0);
    XPLMCameraPosition_t p{};
    XPLMReadCameraPosition(&p);
    EXPECT_FLOAT_EQ(p.zoom, 1.0f);  // the simulator's view for that very frame

    Calls again;
    XPLMControlCamera(xplm_ControlCameraForever, control, &again);
    driver::runFrames(1);
    XPLMDontControlCamera();
    driver::runFrames(2);
    EXPECT_EQ(again.frames, 1);
    EXPECT_EQ(again.losing, 0);
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 0);
    EXPECT_EQ(errors(), 0);
}

TEST_F(CameraTest, ControlHandedOverDuringTheCallbackStaysWithTheNewController) {
    startSim();
    Calls first;
    gSuccessor = Calls{};
    XPLMControlCamera(xplm_ControlCameraForever, handOver, &first);
    driver::runFrames(3);
    EXPECT_EQ(first.frames, 1);
    EXPECT_EQ(first.losing, 1);  // its own result no longer matters
    EXPECT_EQ(gSuccessor.frames, 2);
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 1);
}

TEST_F(CameraTest, TakingControlGivesThePreviousControllerItsLosingCall) {
    startSim();
    Calls mine;
    XPLMControlCamera(xplm_ControlCameraForever, control, &mine);
    driver::runFrames(1);
    int a = load("Alpha");
    int b = load("Beta");
    driver::enablePluginsAndSendLoadMessages();
    driver::sendMessage(a, kCameraTake, xplm_ControlCameraForever);
    EXPECT_EQ(mine.losing, 1);
    EXPECT_EQ(mine.losingWithPosition, 0);
    driver::runFrames(2);
    EXPECT_EQ(mine.frames, 1);
    EXPECT_EQ(count(events("Alpha"), "camera frame"), 2);

    driver::sendMessage(b, kCameraTake, xplm_ControlCameraUntilViewChanges);
    EXPECT_EQ(count(events("Alpha"), "camera losing null_position=1 refcon=" + std::to_string(a)), 1);
    driver::runFrames(3);
    EXPECT_EQ(count(events("Alpha"), "camera frame"), 2);
    EXPECT_EQ(count(events("Beta"), "camera frame"), 3);
    XPLMCameraPosition_t p{};
    XPLMReadCameraPosition(&p);
    EXPECT_FLOAT_EQ(p.x, static_cast<float>(b));  // Beta's position, not Alpha's

    // Only the controller may let go; Alpha's request changes nothing.
    driver::sendMessage(a, kCameraRelease, 0);
    EXPECT_EQ(errors(), 1);
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 1);
    driver::sendMessage(b, kCameraGiveUp, 0);
    driver::runFrames(2);
    EXPECT_EQ(count(events("Beta"), "camera gives up"), 1);
    EXPECT_EQ(count(events("Beta"), "camera frame"), 3);
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 0);
    std::vector<std::string> beta = events("Beta");
    EXPECT_TRUE(std::none_of(beta.begin(), beta.end(),
                             [](const std::string& e) { return e.rfind("camera losing", 0) == 0; }));
}

TEST_F(CameraTest, DisabledOrUnloadedControllerLosesTheCameraAndIsNotCalled) {
    startSim();
    int a = load("Alpha");
    driver::enablePluginsAndSendLoadMessages();
    driver::sendMessage(a, kCameraTake, xplm_ControlCameraForever);
    driver::runFrames(1);
    driver::sendMessage(a, kDisableMe, 0);
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 0);
    driver::runFrames(2);
    EXPECT_EQ(XPLMEnablePlugin(a), 1);
    driver::runFrames(2);
    EXPECT_EQ(count(events("Alpha"), "camera frame"), 1);  // control did not come back

    driver::sendMessage(a, kCameraTake, xplm_ControlCameraForever);
    driver::reloadPlugins();  // unloads Alpha: nothing may call into its old binary
    driver::runFrames(2);
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 0);
}

TEST_F(CameraTest, InvalidArgumentsAreReportedAndChangeNothing) {
    startSim();
    XPLMControlCamera(xplm_ControlCameraForever, nullptr, nullptr);
    Calls calls;
    XPLMControlCamera(7, control, &calls);
    XPLMReadCameraPosition(nullptr);
    EXPECT_EQ(errors(), 3);
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 0);
    driver::runFrames(1);
    EXPECT_EQ(calls.frames, 0);
}

}  // namespace
}  // namespace xpsim::test

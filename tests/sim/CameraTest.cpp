// The camera: the controller's callback every frame, giving up and losing control,
// the position it sets, and the simulator's own view near the parked aircraft.

#include <algorithm>
#include <cmath>

#include "XPLMCamera.h"
#include "XPLMDataAccess.h"
#include "XPLMPlugin.h"
#include "world_test_util.h"
#include "world.h"

namespace xpsim::test {
namespace {

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

using CameraTest = WorldTest;

TEST_F(CameraTest, ByDefaultTheCameraIsThePilotsViewOfTheAircraftAndMovesWithIt) {
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

    XPLMSetDatad(XPLMFindDataRef("sim/flightmodel/position/local_x"), 1500.0);  // 1.5 km east
    XPLMSetDataf(XPLMFindDataRef("sim/flightmodel/position/psi"), 90.0f);
    driver::runFrames(1);
    XPLMReadCameraPosition(&p);
    EXPECT_NEAR(p.x, 1500.0f, 1.0f);
    EXPECT_FLOAT_EQ(p.heading, 90.0f);
    EXPECT_NEAR(datarefNumber("sim/graphics/view/view_x"), 1500.0, 1.0);
    EXPECT_FLOAT_EQ(datarefNumber("sim/graphics/view/view_y"), p.y);
    EXPECT_FLOAT_EQ(datarefNumber("sim/graphics/view/view_heading"), 90.0f);
    EXPECT_EQ(errors(), 0);
}

TEST_F(CameraTest, ControllerIsCalledEveryFrameAndItsPositionIsTheCameraAndTheViewDatarefs) {
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
    EXPECT_FLOAT_EQ(datarefNumber("sim/graphics/view/view_x"), 10.0f);
    EXPECT_FLOAT_EQ(datarefNumber("sim/graphics/view/view_y"), 23.0f);
    EXPECT_FLOAT_EQ(datarefNumber("sim/graphics/view/view_pitch"), 5.0f);
    EXPECT_FLOAT_EQ(datarefNumber("sim/graphics/view/view_heading"), 45.0f);
    EXPECT_FLOAT_EQ(datarefNumber("sim/graphics/view/view_roll"), 1.0f);
}

TEST_F(CameraTest, ReturningZeroOrDontControlCameraEndsControlWithoutALosingCall) {
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
    EXPECT_FLOAT_EQ(datarefNumber("sim/graphics/view/view_y"), p.y) << "the view datarefs are the simulator's again";
    EXPECT_EQ(errors(), 0);
}

TEST_F(CameraTest, ControlHandedOverDuringTheCallbackStaysWithTheNewController) {
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
    Calls mine;
    XPLMControlCamera(xplm_ControlCameraForever, control, &mine);
    driver::runFrames(1);
    int a = loadActor("Alpha");
    int b = loadActor("Beta");
    driver::enablePluginsAndSendLoadMessages();
    driver::sendMessage(a, kCameraTake, xplm_ControlCameraForever);
    EXPECT_EQ(mine.losing, 1);
    EXPECT_EQ(mine.losingWithPosition, 0);
    driver::runFrames(2);
    EXPECT_EQ(mine.frames, 1);
    EXPECT_EQ(count("Alpha", "camera frame"), 2);

    driver::sendMessage(b, kCameraTake, xplm_ControlCameraUntilViewChanges);
    EXPECT_EQ(count("Alpha", "camera losing null_position=1 refcon=" + std::to_string(a)), 1);
    driver::runFrames(3);
    EXPECT_EQ(count("Alpha", "camera frame"), 2);
    EXPECT_EQ(count("Beta", "camera frame"), 3);
    XPLMCameraPosition_t p{};
    XPLMReadCameraPosition(&p);
    EXPECT_FLOAT_EQ(p.x, static_cast<float>(b));  // Beta's position, not Alpha's

    // Only the controller may let go; Alpha's request changes nothing.
    driver::sendMessage(a, kCameraRelease, 0);
    EXPECT_EQ(errors(), 1);
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 1);
    driver::sendMessage(b, kCameraGiveUp, 0);
    driver::runFrames(2);
    EXPECT_EQ(count("Beta", "camera gives up"), 1);
    EXPECT_EQ(count("Beta", "camera frame"), 3);
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 0);
    EXPECT_FALSE(heardPrefix("Beta", "camera losing"));
}

TEST_F(CameraTest, DisabledOrUnloadedControllerLosesTheCameraAndIsNotCalled) {
    int a = loadActor("Alpha");
    driver::enablePluginsAndSendLoadMessages();
    driver::sendMessage(a, kCameraTake, xplm_ControlCameraForever);
    driver::runFrames(1);
    driver::sendMessage(a, kDisableMe, 0);
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 0);
    driver::runFrames(2);
    EXPECT_EQ(XPLMEnablePlugin(a), 1);
    driver::runFrames(2);
    EXPECT_EQ(count("Alpha", "camera frame"), 1);  // control did not come back

    driver::sendMessage(a, kCameraTake, xplm_ControlCameraForever);
    driver::reloadPlugins();  // unloads Alpha: nothing may call into its old binary
    driver::runFrames(2);
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 0);
}

TEST_F(CameraTest, SelectingAnotherViewEndsControlUntilViewChangesOnly) {
    Calls untilChange, forever;
    XPLMControlCamera(xplm_ControlCameraUntilViewChanges, control, &untilChange);
    driver::runFrames(1);
    std::string error;
    ASSERT_TRUE(driver::commandOnce("sim/view/glance_left", &error)) << error;  // same view, head turned
    ASSERT_TRUE(driver::commandOnce("sim/view/quick_look_3_mem", &error)) << error;  // stores, does not select
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 1);
    ASSERT_TRUE(driver::commandOnce("sim/view/chase", &error)) << error;
    EXPECT_EQ(untilChange.losing, 1);
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 0);

    XPLMControlCamera(xplm_ControlCameraForever, control, &forever);
    ASSERT_TRUE(driver::commandOnce("sim/view/tower", &error)) << error;
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 1);
    EXPECT_EQ(forever.losing, 0);
    driver::runFrames(1);
    EXPECT_EQ(untilChange.frames, 1);
    EXPECT_EQ(forever.frames, 1);
}

// Two controllers that take the camera back whenever they lose it.
int gRetakes = 0;
template <int Which>
int retake(XPLMCameraPosition_t*, int losing, void*) {
    if (losing) {
        ++gRetakes;
        XPLMControlCamera(xplm_ControlCameraForever, retake<Which>, nullptr);
    }
    return 1;
}

TEST_F(CameraTest, ControllersTakingTheCameraBackFromTheirLosingCallsDoNotRecurseWithoutEnd) {
    XPLMControlCamera(xplm_ControlCameraForever, retake<1>, nullptr);
    XPLMControlCamera(xplm_ControlCameraForever, retake<2>, nullptr);  // 1 loses and takes it back, 2 loses...
    EXPECT_EQ(errors(), 1);
    EXPECT_GE(gRetakes, 2);
    EXPECT_LE(gRetakes, 16);
    EXPECT_EQ(XPLMIsCameraBeingControlled(nullptr), 1);
    driver::runFrames(1);
    EXPECT_EQ(errors(), 1);
}

TEST_F(CameraTest, InvalidArgumentsAreReportedAndChangeNothing) {
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

// What the world tests (camera, planes, navigation, scenery) share: a simulator root
// already running, and the world_actor test plug-in installed under a name, with its events.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "plugin_test_util.h"

namespace xpsim::test {

// The messages world_actor acts on (tests/sim/plugins/world_actor.c).
enum WorldActorMessage {
    kCameraTake = 0x7FF10001,     // param: the duration
    kCameraRelease = 0x7FF10002,
    kCameraGiveUp = 0x7FF10003,   // its next control call returns 0
    kPlanesAcquire = 0x7FF10004,  // param 1: acquire again when called back
    kPlanesRelease = 0x7FF10005,
    kLoadAsync = 0x7FF10006,      // param 0: a library object, else a missing file
    kUnload = 0x7FF10007,
    kDisableMe = 0x7FF10008,
};

class WorldTest : public SimRootTest {
protected:
    void SetUp() override {
        SimRootTest::SetUp();
        startSim();
    }
    int loadActor(const std::string& name) { return loadTestPlugin("world_actor", name); }
    // A numeric dataref's value, read as the driver reads it.
    static double datarefNumber(const char* name) {
        std::string value, error;
        EXPECT_TRUE(driver::getDataref(name, &value, &error)) << error;
        return value.empty() ? 0.0 : std::stod(value);
    }
    int count(const std::string& name, const std::string& line) const {
        std::vector<std::string> lines = events(name);
        return static_cast<int>(std::count(lines.begin(), lines.end(), line));
    }
    bool heardPrefix(const std::string& name, const std::string& prefix) const {
        std::vector<std::string> lines = events(name);
        return std::any_of(lines.begin(), lines.end(),
                           [&](const std::string& line) { return line.rfind(prefix, 0) == 0; });
    }
};

}  // namespace xpsim::test

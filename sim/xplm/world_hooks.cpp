// The host's entry points into the world areas: one forget and one reset hook that
// fan out to camera, planes, navigation and scenery, and the loaded scenery area.

#include <cmath>

#include "host.h"
#include "nav_database.h"
#include "world.h"
#include "world_internal.h"

namespace xpsim {

namespace {
// X-Plane keeps roughly 300 x 300 km of scenery loaded around the aircraft.
constexpr double kLoadedSceneryHalfWidthM = 150000.0;
}  // namespace

bool inLoadedScenery(double lat, double lon) {
    double x, y, z;
    world::worldToLocal(lat, lon, 0.0, &x, &y, &z);
    return std::fabs(x) <= kLoadedSceneryHalfWidthM && std::fabs(z) <= kLoadedSceneryHalfWidthM;
}

// The world's share of a frame, before the camera and the drawing.
void sceneryFrame() { completeObjectLoads(); }

void forgetPluginWorld(int plugin) {
    forgetPluginCamera(plugin);
    forgetPluginPlanes(plugin);
    forgetPluginScenery(plugin);
}

void resetWorld() {
    resetCamera();
    resetPlanes();
    resetNavigation();
    resetNavDatabase();
    resetScenery();
}

}  // namespace xpsim

// XPLMCamera: which plug-in drives the camera, its control callback once per frame,
// losing control, and the camera position (near the user's aircraft by default).

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>

#include "DataRefTable.h"
#include "XPLMCamera.h"
#include "dataaccess_internal.h"
#include "host.h"
#include "world.h"
#include "world_internal.h"

namespace xpsim {

namespace {

struct Controller {
    int plugin = 0;
    XPLMCameraControlDuration duration = 0;
    XPLMCameraControl_f function = nullptr;  // null: the simulator drives the camera
    void* refcon = nullptr;
};

struct Camera {
    Controller controller;
    unsigned generation = 0;  // bumped on every change of control, to detect it during a callback
    bool positionFromPlugin = false;
    XPLMCameraPosition_t position{};
    XPLMCameraPosition_t published{};  // what the view datarefs hold
    bool everPublished = false;
} gCamera;

// The simulator's commands that select another view (glances and the like only turn
// the head within the current view).
constexpr const char* kViewSelections[] = {
    "sim/view/free_camera",   "sim/view/forward_with_panel", "sim/view/forward_with_hud",
    "sim/view/forward_with_nothing", "sim/view/linear_spot", "sim/view/still_spot",
    "sim/view/runway",        "sim/view/circle",             "sim/view/tower",
    "sim/view/ridealong",     "sim/view/track_weapon",       "sim/view/chase",
    "sim/view/3d_cockpit_toggle", "sim/view/cinema_verite",
};

// The simulator's own view: the pilot's eye in the user's aircraft, wherever it is now.
XPLMCameraPosition_t defaultPosition() {
    const AircraftPose user = userAircraftPose();
    double x, y, z;
    world::worldToLocal(user.lat, user.lon, user.elevationM + 2.0, &x, &y, &z);
    return XPLMCameraPosition_t{static_cast<float>(x), static_cast<float>(y), static_cast<float>(z), 0.0f,
                                static_cast<float>(user.headingDeg), 0.0f, 1.0f};
}

// The simulator drives the camera again, from this very frame.
void endControl() {
    gCamera.controller = Controller{};
    gCamera.positionFromPlugin = false;
    ++gCamera.generation;
}

// Losing-control calls in progress. The SDK does not say what happens when controllers
// take the camera back from their losing-control calls; we let that nest this deep, then
// the last one keeps control without telling the one it took it from.
int gLosingCallDepth = 0;
constexpr int kMaxLosingCallDepth = 8;

// Control passes away from a callback: it hears about it, if it can still be called.
void takeAwayFrom(const Controller& previous) {
    if (!previous.function || !isPluginEnabled(previous.plugin)) return;
    NestingGuard nesting(gLosingCallDepth, kMaxLosingCallDepth);
    if (!nesting) {
        Host::get().reportError("XPLMControlCamera: controllers keep taking the camera back from their "
                                "losing-control calls; the last one keeps it");
        return;
    }
    CallingPlugin calling(previous.plugin);
    previous.function(nullptr, 1, previous.refcon);  // the result is not used
}

// A controller that was disabled has lost control; being disabled, it is not called.
void dropDisabledController() {
    if (gCamera.controller.function && !isPluginEnabled(gCamera.controller.plugin)) endControl();
}

bool selectsView(const std::string& command) {
    // sim/view/quick_look_N recalls a stored view; quick_look_N_mem stores one.
    const std::string quickLook = "sim/view/quick_look_";
    if (command.rfind(quickLook, 0) == 0) return command.size() == quickLook.size() + 1;
    return std::any_of(std::begin(kViewSelections), std::end(kViewSelections),
                       [&](const char* name) { return command == name; });
}

XPLMCameraPosition_t currentPosition() { return gCamera.positionFromPlugin ? gCamera.position : defaultPosition(); }

// The sim/graphics/view datarefs, in the order of publishPosition's values. Their
// handles are looked up once per run (an earlier run's no longer resolve), so a moving
// camera costs no name lookups per frame.
constexpr const char* kViewRefNames[] = {
    "sim/graphics/view/view_x",     "sim/graphics/view/view_y",       "sim/graphics/view/view_z",
    "sim/graphics/view/view_pitch", "sim/graphics/view/view_heading", "sim/graphics/view/view_roll",
};
constexpr size_t kViewRefCount = std::size(kViewRefNames);

SimulatorDataRefs viewRefs(kViewRefNames);

// The view datarefs follow the camera, written when it moved. They are the simulator's
// own and read-only to plug-ins, so the host writes their storage directly.
void publishPosition() {
    XPLMCameraPosition_t p = currentPosition();
    if (gCamera.everPublished && std::memcmp(&p, &gCamera.published, sizeof p) == 0) return;
    DataRef* refs[kViewRefCount];
    if (!viewRefs.resolve(refs)) return;
    gCamera.published = p;
    gCamera.everPublished = true;
    const float values[kViewRefCount] = {p.x, p.y, p.z, p.pitch, p.heading, p.roll};
    for (size_t i = 0; i < kViewRefCount; ++i) refs[i]->scalar = values[i];
}

}  // namespace

void cameraSimulatorCommand(const std::string& command) {
    dropDisabledController();
    Controller c = gCamera.controller;
    if (!c.function || c.duration != xplm_ControlCameraUntilViewChanges) return;
    if (!selectsView(command)) return;
    endControl();
    takeAwayFrom(c);
}

void cameraFrame() {
    dropDisabledController();
    Controller c = gCamera.controller;
    if (!c.function) {
        publishPosition();
        return;
    }
    unsigned generation = gCamera.generation;
    // The SDK leaves the struct's contents undefined on entry; we pass the last position.
    XPLMCameraPosition_t position = currentPosition();
    int keep;
    {
        CallingPlugin calling(c.plugin);
        keep = c.function(&position, 0, c.refcon);
    }
    if (generation == gCamera.generation) {  // else control changed hands during the call
        if (keep) {
            gCamera.position = position;
            gCamera.positionFromPlugin = true;
        } else {
            endControl();
        }
    }
    publishPosition();
}

void forgetPluginCamera(int plugin) {
    if (gCamera.controller.function && gCamera.controller.plugin == plugin) endControl();
}

void resetCamera() { gCamera = Camera{}; }

}  // namespace xpsim

using namespace xpsim;

extern "C" {

XPLM_API void XPLMControlCamera(XPLMCameraControlDuration inHowLong, XPLMCameraControl_f inControlFunc,
                                void* inRefcon) {
    if (!inControlFunc) {
        Host::get().reportError("XPLMControlCamera: the control function must not be NULL");
        return;
    }
    if (inHowLong != xplm_ControlCameraUntilViewChanges && inHowLong != xplm_ControlCameraForever) {
        Host::get().reportError("XPLMControlCamera: %d is not a camera control duration", inHowLong);
        return;
    }
    dropDisabledController();
    Controller previous = gCamera.controller;
    gCamera.controller = Controller{Host::get().currentPlugin, inHowLong, inControlFunc, inRefcon};
    ++gCamera.generation;
    // The SDK does not say whether a plug-in replacing its own callback gets the
    // losing-control call; we give it to any callback that stops being the controller.
    if (previous.function != inControlFunc || previous.refcon != inRefcon) takeAwayFrom(previous);
}

XPLM_API void XPLMDontControlCamera(void) {
    dropDisabledController();
    if (!gCamera.controller.function) return;
    if (gCamera.controller.plugin != Host::get().currentPlugin) {
        Host::get().reportError("XPLMDontControlCamera: the camera is controlled by plug-in %d, not this one",
                                gCamera.controller.plugin);
        return;
    }
    endControl();  // no losing-control call: the plug-in asked for it
}

XPLM_API int XPLMIsCameraBeingControlled(XPLMCameraControlDuration* outCameraControlDuration) {
    dropDisabledController();
    if (!gCamera.controller.function) return 0;
    if (outCameraControlDuration) *outCameraControlDuration = gCamera.controller.duration;
    return 1;
}

XPLM_API void XPLMReadCameraPosition(XPLMCameraPosition_t* outCameraPosition) {
    if (!outCameraPosition) {
        Host::get().reportError("XPLMReadCameraPosition: the position pointer must not be NULL");
        return;
    }
    *outCameraPosition = currentPosition();
}

}  // extern "C"

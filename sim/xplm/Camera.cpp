// XPLMCamera: which plug-in drives the camera, its control callback once per frame,
// losing control, and the camera position (near the user's aircraft by default).

#include "XPLMCamera.h"
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
} gCamera;

// The simulator's own view: the pilot's eye in the parked user aircraft.
XPLMCameraPosition_t defaultPosition() {
    const UserAircraft& user = userAircraft();
    double x, y, z;
    world::worldToLocal(user.lat, user.lon, user.elevationM + 2.0, &x, &y, &z);
    return XPLMCameraPosition_t{static_cast<float>(x), static_cast<float>(y), static_cast<float>(z), 0.0f,
                                static_cast<float>(user.headingDeg), 0.0f, 1.0f};
}

void endControl() {
    gCamera.controller = Controller{};
    ++gCamera.generation;
}

// Control passes away from a callback: it hears about it, if it can still be called.
void takeAwayFrom(const Controller& previous) {
    if (!previous.function || !isPluginEnabled(previous.plugin)) return;
    CallingPlugin calling(previous.plugin);
    previous.function(nullptr, 1, previous.refcon);  // the result is not used
}

// A controller that was disabled has lost control; being disabled, it is not called.
void dropDisabledController() {
    if (gCamera.controller.function && !isPluginEnabled(gCamera.controller.plugin)) endControl();
}

}  // namespace

void cameraFrame() {
    dropDisabledController();
    Controller c = gCamera.controller;
    if (!c.function) {
        gCamera.positionFromPlugin = false;
        return;
    }
    unsigned generation = gCamera.generation;
    // The SDK leaves the struct's contents undefined on entry; we pass the last position.
    XPLMCameraPosition_t position = gCamera.positionFromPlugin ? gCamera.position : defaultPosition();
    int keep;
    {
        CallingPlugin calling(c.plugin);
        keep = c.function(&position, 0, c.refcon);
    }
    if (generation != gCamera.generation) return;  // control changed hands during the call
    if (keep) {
        gCamera.position = position;
        gCamera.positionFromPlugin = true;
    } else {
        endControl();  // the simulator drives this very frame
        gCamera.positionFromPlugin = false;
    }
}

void forgetPluginCamera(int plugin) {
    if (gCamera.controller.function && gCamera.controller.plugin == plugin) {
        endControl();
        gCamera.positionFromPlugin = false;
    }
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
    gCamera.positionFromPlugin = false;
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
    *outCameraPosition = gCamera.positionFromPlugin ? gCamera.position : defaultPosition();
}

}  // extern "C"

// What the world areas (camera, planes, navigation, scenery) share inside the host:
// the airport the user was placed at and each area's frame, forget and reset hooks.
// Where the user's aircraft is comes from its position datarefs (dataaccess_internal.h).
#pragma once

#include <string>

namespace xpsim {

// Planes.cpp: the airport the user's aircraft was last placed at.
const std::string& userAirportId();

// Whether (lat, lon) lies in the loaded scenery area, centred on the world's reference
// point (world.h): what navaids report as "in region" and where probes see terrain.
bool inLoadedScenery(double lat, double lon);

// Camera.cpp: the simulator ran one of its own commands (commands.cpp); the ones that
// select another view end an XPLMControlCamera of xplm_ControlCameraUntilViewChanges.
void cameraSimulatorCommand(const std::string& command);

// Planes.cpp: a plug-in was disabled; exclusive access to the planes it held ends now.
void releasePlanesOfDisabled(int plugin);
void completeObjectLoads();  // Scenery.cpp: asynchronous loads that are due

void forgetPluginCamera(int plugin);
void forgetPluginPlanes(int plugin);
void forgetPluginScenery(int plugin);

void resetCamera();
void resetPlanes();
void resetNavigation();
void resetScenery();

}  // namespace xpsim

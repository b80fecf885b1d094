// Registration of every module scripts can import, in the order the start sequence needs,
// and the registration function of each module (init plus the module's name).
#pragma once

namespace vorlith {

// Registers the binding and service modules; called by StartPython inside the guard,
// once per interpreter start, before any script is loaded.
void VL_RegisterModules();

void initXPLMDefs();
void initXPLMDataAccess();
void initXPLMDisplay();
void initXPLMMenus();
void initXPLMProcessing();
void initXPLMGraphics();
void initXPLMCamera();
void initXPLMNavigation();
void initXPLMScenery();
void initXPLMPlanes();
void initTembrookVCUtilities();
void initXPLMUtilities();
void initXPLMPlugin();
void initPythonScriptMessaging();

// The virtual camera's shared datarefs: published at every interpreter start, before the
// modules are registered, and withdrawn at every stop.
void VL_ShareVirtualCameraData();
void VL_UnshareVirtualCameraData();

}  // namespace vorlith

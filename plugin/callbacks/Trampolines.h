// The C functions the plug-in registers with the SDK, one per kind of callback (VL_...),
// and the dispatcher each forwards to (CallUser...), which reaches the script's callable.
// Each trampoline has the SDK's exact signature.
#pragma once

#include <cstdint>

#include "XPLMCamera.h"
#include "XPLMDisplay.h"
#include "XPLMScenery.h"
#include "XPLMUtilities.h"
#include "XPWidgetDefs.h"
#include "callbacks/Registry.h"

namespace vorlith {

// --- cells ---
float VL_FlightLoopCallback(float elapsedSinceLastCall, float elapsedSinceLastFlightLoop,
                            int counter, void* refcon);
int VL_DrawCallback(XPLMDrawingPhase phase, int isBefore, void* refcon);
int VL_KeySnifferCallback(char key, XPLMKeyFlags flags, char virtualKey, void* refcon);
void VL_HotKeyCallback(void* refcon);
void VL_MenuCallback(void* menuRefcon, void* itemRefcon);
int VL_CommandCallback(XPLMCommandRef command, XPLMCommandPhase phase, void* refcon);
void VL_PlanesAvailableCallback(void* refcon);
void VL_SharedDataCallback(void* refcon);
void VL_ObjectLoadedCallback(XPLMObjectRef object, void* refcon);
void VL_FeatureEnumeratorCallback(const char* feature, void* refcon);
void VL_LibraryEnumeratorCallback(const char* filePath, void* refcon);
int VL_CameraControlCallback(XPLMCameraPosition_t* position, int isLosingControl, void* refcon);

float CallUserFlightLoopCallback(float elapsedSinceLastCall, float elapsedSinceLastFlightLoop,
                                 int counter, void* refcon);
int CallUserDrawCallback(XPLMDrawingPhase phase, int isBefore, void* refcon);
int CallUserKeySnifferCallback(char key, XPLMKeyFlags flags, char virtualKey, void* refcon);
int CallUserHotKeyCallback(void* refcon);
int CallUserMenuCallback(void* menuRefcon, void* itemRefcon);
int CallUserCommandCallback(XPLMCommandRef command, XPLMCommandPhase phase, void* refcon);
int CallUserPlanesAvailableCallback(void* refcon);
int CallUserSharedDataCallback(void* refcon);
int CallUserObjectLoadedCallback(XPLMObjectRef object, void* refcon);
int CallUserFeatureEnumeratorCallback(const char* feature, void* refcon);
int CallUserLibraryEnumeratorCallback(const char* filePath, void* refcon);
int CallUserCameraControlCallback(XPLMCameraPosition_t* position, int isLosingControl,
                                  void* refcon);

// --- window blocks: draw, mouse click, key, cursor status, mouse wheel ---
enum VL_WindowSlot { VL_DrawWindowSlot, VL_MouseClickSlot, VL_KeySlot, VL_CursorStatusSlot,
                     VL_MouseWheelSlot, VL_WindowSlots };

void VL_DrawWindowCallback(XPLMWindowID window, void* refcon);
int VL_MouseClickCallback(XPLMWindowID window, int x, int y, XPLMMouseStatus status, void* refcon);
void VL_KeyCallback(XPLMWindowID window, char key, XPLMKeyFlags flags, char virtualKey,
                    void* refcon, int losingFocus);
XPLMCursorStatus VL_CursorStatusCallback(XPLMWindowID window, int x, int y, void* refcon);
int VL_MouseWheelCallback(XPLMWindowID window, int x, int y, int wheel, int clicks, void* refcon);

int CallUserDrawWindowCallback(XPLMWindowID window, void* refcon);
int CallUserMouseClickCallback(XPLMWindowID window, int x, int y, XPLMMouseStatus status,
                               void* refcon);
int CallUserKeyCallback(XPLMWindowID window, char key, XPLMKeyFlags flags, char virtualKey,
                        void* refcon, int losingFocus);
int CallUserCursorStatusCallback(XPLMWindowID window, int x, int y, void* refcon);
int CallUserMouseWheelCallback(XPLMWindowID window, int x, int y, int wheel, int clicks,
                               void* refcon);

// --- the error callback: every record of ErrorCallbackList in order ---
void VL_ErrorCallback(const char* message);
int CallUserErrorCallback(const _CallbackListEntry* record, const char* message);

// --- widgets: the record is found by widget in WidgetCallbackList ---
int VL_WidgetCallback(XPWidgetMessage message, XPWidgetID widget, intptr_t param1,
                      intptr_t param2);
int CallUserWidgetCallback(XPWidgetMessage message, XPWidgetID widget, intptr_t param1,
                           intptr_t param2);

// --- data accessors: a read block and a write block of six slots each ---
enum VL_DataSlot { VL_IntSlot, VL_FloatSlot, VL_DoubleSlot, VL_IntArraySlot, VL_FloatArraySlot,
                   VL_ByteArraySlot, VL_DataSlots };

int VL_GetDatai_Callback(void* refcon);
float VL_GetDataf_Callback(void* refcon);
double VL_GetDatad_Callback(void* refcon);
int VL_GetDatavi_Callback(void* refcon, int* values, int offset, int max);
int VL_GetDatavf_Callback(void* refcon, float* values, int offset, int max);
int VL_GetDatab_Callback(void* refcon, void* values, int offset, int max);
void VL_SetDatai_Callback(void* refcon, int value);
void VL_SetDataf_Callback(void* refcon, float value);
void VL_SetDatad_Callback(void* refcon, double value);
void VL_SetDatavi_Callback(void* refcon, int* values, int offset, int count);
void VL_SetDatavf_Callback(void* refcon, float* values, int offset, int count);
void VL_SetDatab_Callback(void* refcon, void* values, int offset, int count);

int CallUserGetDatai_Callback(void* refcon);
float CallUserGetDataf_Callback(void* refcon);
double CallUserGetDatad_Callback(void* refcon);
int CallUserGetDatavi_Callback(void* refcon, int* values, int offset, int max);
int CallUserGetDatavf_Callback(void* refcon, float* values, int offset, int max);
int CallUserGetDatab_Callback(void* refcon, void* values, int offset, int max);
int CallUserSetDatai_Callback(void* refcon, int value);
int CallUserSetDataf_Callback(void* refcon, float value);
int CallUserSetDatad_Callback(void* refcon, double value);
int CallUserSetDatavi_Callback(void* refcon, int* values, int offset, int count);
int CallUserSetDatavf_Callback(void* refcon, float* values, int offset, int count);
int CallUserSetDatab_Callback(void* refcon, void* values, int offset, int count);

}  // namespace vorlith

/* XPLMPlanes: the user's aircraft and the AI/multiplayer aircraft slots of the
 * X-Plane SDK 2.1.x. */
#ifndef _XPLMPlanes_h_
#define _XPLMPlanes_h_

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

#define XPLM_USER_AIRCRAFT 0

typedef struct {
    int structSize;
    float gearPosition;
    float flapRatio;
    float spoilerRatio;
    float speedBrakeRatio;
    float slatRatio;
    float wingSweep;
    float thrust;
    float yokePitch;
    float yokeHeading;
    float yokeRoll;
} XPLMPlaneDrawState_t;

#if defined(__cplusplus) && __cplusplus >= 201103L
static_assert(sizeof(XPLMPlaneDrawState_t) == 44, "XPLMPlaneDrawState_t must be 44 bytes");
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
_Static_assert(sizeof(XPLMPlaneDrawState_t) == 44, "XPLMPlaneDrawState_t must be 44 bytes");
#endif

typedef void (*XPLMPlanesAvailable_f)(void* inRefcon);

XPLM_API void XPLMSetUsersAircraft(const char* inAircraftPath);
XPLM_API void XPLMPlaceUserAtAirport(const char* inAirportCode);
XPLM_API void XPLMCountAircraft(int* outTotalAircraft,
                                int* outActiveAircraft,
                                XPLMPluginID* outController);
XPLM_API void XPLMGetNthAircraftModel(int inIndex, char* outFileName, char* outPath);
XPLM_API int XPLMAcquirePlanes(char** inAircraft, /* may be NULL */
                               XPLMPlanesAvailable_f inCallback,
                               void* inRefcon);
XPLM_API void XPLMReleasePlanes(void);
XPLM_API void XPLMSetActiveAircraftCount(int inCount);
XPLM_API void XPLMSetAircraftModel(int inIndex, const char* inAircraftPath);
XPLM_API void XPLMDisableAIForPlane(int inPlaneIndex);
XPLM_API void XPLMDrawAircraft(int inPlaneIndex,
                               float inX,
                               float inY,
                               float inZ,
                               float inPitch,
                               float inRoll,
                               float inYaw,
                               int inFullDraw,
                               XPLMPlaneDrawState_t* inDrawStateInfo);
XPLM_API void XPLMReinitUsersPlane(void);

#ifdef __cplusplus
}
#endif

#endif

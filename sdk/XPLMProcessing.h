/* XPLMProcessing: the simulator's clock and the flight-loop callbacks its main loop
 * runs every frame (X-Plane SDK 2.1.x). */
#ifndef _XPLMProcessing_h_
#define _XPLMProcessing_h_

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

#if defined(XPLM210)
enum {
    xplm_FlightLoop_Phase_BeforeFlightModel = 0,
    xplm_FlightLoop_Phase_AfterFlightModel = 1
};
typedef int XPLMFlightLoopPhaseType;

/* Opaque handle to a flight loop made by XPLMCreateFlightLoop. */
typedef void * XPLMFlightLoopID;
#endif

/* Returns when to run next: > 0 seconds, < 0 flight loops (frames), 0 = stop calling. */
typedef float (* XPLMFlightLoop_f)(
    float  inElapsedSinceLastCall,
    float  inElapsedTimeSinceLastFlightLoop,
    int    inCounter,
    void * inRefcon);

#if defined(XPLM210)
typedef struct {
    int                     structSize;  /* sizeof(XPLMCreateFlightLoop_t) */
    XPLMFlightLoopPhaseType phase;
    XPLMFlightLoop_f        callbackFunc;
    void *                  refcon;
} XPLMCreateFlightLoop_t;

#if defined(__cplusplus) && __cplusplus >= 201103L
static_assert(sizeof(XPLMCreateFlightLoop_t) == (sizeof(void *) == 8 ? 24 : 16),
              "XPLMCreateFlightLoop_t layout");
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
_Static_assert(sizeof(XPLMCreateFlightLoop_t) == (sizeof(void *) == 8 ? 24 : 16),
               "XPLMCreateFlightLoop_t layout");
#endif
#endif

XPLM_API float XPLMGetElapsedTime(void);
XPLM_API int   XPLMGetCycleNumber(void);

XPLM_API void XPLMRegisterFlightLoopCallback(XPLMFlightLoop_f inFlightLoop, float inInterval,
                                             void * inRefcon);
XPLM_API void XPLMUnregisterFlightLoopCallback(XPLMFlightLoop_f inFlightLoop, void * inRefcon);
XPLM_API void XPLMSetFlightLoopCallbackInterval(XPLMFlightLoop_f inFlightLoop, float inInterval,
                                                int inRelativeToNow, void * inRefcon);

#if defined(XPLM210)
XPLM_API XPLMFlightLoopID XPLMCreateFlightLoop(XPLMCreateFlightLoop_t * inParams);
XPLM_API void XPLMDestroyFlightLoop(XPLMFlightLoopID inFlightLoopID);
XPLM_API void XPLMScheduleFlightLoop(XPLMFlightLoopID inFlightLoopID, float inInterval,
                                     int inRelativeToNow);
#endif

#ifdef __cplusplus
}
#endif

#endif

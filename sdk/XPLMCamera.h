/* XPLMCamera: letting a plug-in drive the camera each frame, and reading the
 * camera's position, of the X-Plane SDK 2.1.x. */
#ifndef _XPLMCamera_h_
#define _XPLMCamera_h_

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    xplm_ControlCameraUntilViewChanges = 1,
    xplm_ControlCameraForever = 2
};
typedef int XPLMCameraControlDuration;

typedef struct {
    float x;
    float y;
    float z;
    float pitch;
    float heading;
    float roll;
    float zoom;
} XPLMCameraPosition_t;

#if defined(__cplusplus) && __cplusplus >= 201103L
static_assert(sizeof(XPLMCameraPosition_t) == 28, "XPLMCameraPosition_t must be 28 bytes");
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
_Static_assert(sizeof(XPLMCameraPosition_t) == 28, "XPLMCameraPosition_t must be 28 bytes");
#endif

typedef int (*XPLMCameraControl_f)(XPLMCameraPosition_t* outCameraPosition, /* may be NULL */
                                   int inIsLosingControl,
                                   void* inRefcon);

XPLM_API void XPLMControlCamera(XPLMCameraControlDuration inHowLong,
                                XPLMCameraControl_f inControlFunc,
                                void* inRefcon);
XPLM_API void XPLMDontControlCamera(void);
XPLM_API int XPLMIsCameraBeingControlled(XPLMCameraControlDuration* outCameraControlDuration /* may be NULL */);
XPLM_API void XPLMReadCameraPosition(XPLMCameraPosition_t* outCameraPosition);

#ifdef __cplusplus
}
#endif

#endif

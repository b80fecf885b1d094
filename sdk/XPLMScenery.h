/* XPLMScenery: terrain probes, loading and drawing objects, and library look-ups
 * of the X-Plane SDK 2.1.x. Everything here is 2.0 API or later. */
#ifndef _XPLMScenery_h_
#define _XPLMScenery_h_

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

#if defined(XPLM200)

enum {
    xplm_ProbeY = 0
};
typedef int XPLMProbeType;

enum {
    xplm_ProbeHitTerrain = 0,
    xplm_ProbeError = 1,
    xplm_ProbeMissed = 2
};
typedef int XPLMProbeResult;

typedef void* XPLMProbeRef;

typedef struct {
    int structSize;
    float locationX;
    float locationY;
    float locationZ;
    float normalX;
    float normalY;
    float normalZ;
    float velocityX;
    float velocityY;
    float velocityZ;
    int is_wet;
} XPLMProbeInfo_t;

#if defined(__cplusplus) && __cplusplus >= 201103L
static_assert(sizeof(XPLMProbeInfo_t) == 44, "XPLMProbeInfo_t must be 44 bytes");
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
_Static_assert(sizeof(XPLMProbeInfo_t) == 44, "XPLMProbeInfo_t must be 44 bytes");
#endif

XPLM_API XPLMProbeRef XPLMCreateProbe(XPLMProbeType inProbeType);
XPLM_API void XPLMDestroyProbe(XPLMProbeRef inProbe);
XPLM_API XPLMProbeResult XPLMProbeTerrainXYZ(XPLMProbeRef inProbe,
                                             float inX,
                                             float inY,
                                             float inZ,
                                             XPLMProbeInfo_t* outInfo);

typedef void* XPLMObjectRef;

typedef struct {
    int structSize;
    float x;
    float y;
    float z;
    float pitch;
    float heading;
    float roll;
} XPLMDrawInfo_t;

#if defined(__cplusplus) && __cplusplus >= 201103L
static_assert(sizeof(XPLMDrawInfo_t) == 28, "XPLMDrawInfo_t must be 28 bytes");
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
_Static_assert(sizeof(XPLMDrawInfo_t) == 28, "XPLMDrawInfo_t must be 28 bytes");
#endif

#endif /* XPLM200 */

#if defined(XPLM210)
typedef void (*XPLMObjectLoaded_f)(XPLMObjectRef inObject, void* inRefcon);
#endif

#if defined(XPLM200)
XPLM_API XPLMObjectRef XPLMLoadObject(const char* inPath);
#endif

#if defined(XPLM210)
XPLM_API void XPLMLoadObjectAsync(const char* inPath, XPLMObjectLoaded_f inCallback, void* inRefcon);
#endif

#if defined(XPLM200)
XPLM_API void XPLMDrawObjects(XPLMObjectRef inObject,
                              int inCount,
                              XPLMDrawInfo_t* inLocations,
                              int lighting,
                              int earth_relative);
XPLM_API void XPLMUnloadObject(XPLMObjectRef inObject);

typedef void (*XPLMLibraryEnumerator_f)(const char* inFilePath, void* inRef);

XPLM_API int XPLMLookupObjects(const char* inPath,
                               float inLatitude,
                               float inLongitude,
                               XPLMLibraryEnumerator_f enumerator,
                               void* ref);
#endif /* XPLM200 */

#ifdef __cplusplus
}
#endif

#endif

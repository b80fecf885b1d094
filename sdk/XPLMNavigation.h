/* XPLMNavigation: the navigation database, the FMS flight plan and the GPS
 * destination of the X-Plane SDK 2.1.x. */
#ifndef _XPLMNavigation_h_
#define _XPLMNavigation_h_

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
    xplm_Nav_Unknown = 0,
    xplm_Nav_Airport = 1,
    xplm_Nav_NDB = 2,
    xplm_Nav_VOR = 4,
    xplm_Nav_ILS = 8,
    xplm_Nav_Localizer = 16,
    xplm_Nav_GlideSlope = 32,
    xplm_Nav_OuterMarker = 64,
    xplm_Nav_MiddleMarker = 128,
    xplm_Nav_InnerMarker = 256,
    xplm_Nav_Fix = 512,
    xplm_Nav_DME = 1024,
    xplm_Nav_LatLon = 2048
};
typedef int XPLMNavType;

typedef int XPLMNavRef;

#define XPLM_NAV_NOT_FOUND -1

XPLM_API XPLMNavRef XPLMGetFirstNavAid(void);
XPLM_API XPLMNavRef XPLMGetNextNavAid(XPLMNavRef inNavAidRef);
XPLM_API XPLMNavRef XPLMFindFirstNavAidOfType(XPLMNavType inType);
XPLM_API XPLMNavRef XPLMFindLastNavAidOfType(XPLMNavType inType);
XPLM_API XPLMNavRef XPLMFindNavAid(const char* inNameFragment, /* may be NULL */
                                   const char* inIDFragment,   /* may be NULL */
                                   float* inLat,               /* may be NULL */
                                   float* inLon,               /* may be NULL */
                                   int* inFrequency,           /* may be NULL */
                                   XPLMNavType inType);
XPLM_API void XPLMGetNavAidInfo(XPLMNavRef inRef,
                                XPLMNavType* outType,    /* may be NULL */
                                float* outLatitude,      /* may be NULL */
                                float* outLongitude,     /* may be NULL */
                                float* outHeight,        /* may be NULL */
                                int* outFrequency,       /* may be NULL */
                                float* outHeading,       /* may be NULL */
                                char* outID,             /* may be NULL */
                                char* outName,           /* may be NULL */
                                char* outReg);           /* may be NULL */

XPLM_API int XPLMCountFMSEntries(void);
XPLM_API int XPLMGetDisplayedFMSEntry(void);
XPLM_API int XPLMGetDestinationFMSEntry(void);
XPLM_API void XPLMSetDisplayedFMSEntry(int inIndex);
XPLM_API void XPLMSetDestinationFMSEntry(int inIndex);
XPLM_API void XPLMGetFMSEntryInfo(int inIndex,
                                  XPLMNavType* outType, /* may be NULL */
                                  char* outID,          /* may be NULL */
                                  XPLMNavRef* outRef,   /* may be NULL */
                                  int* outAltitude,     /* may be NULL */
                                  float* outLat,        /* may be NULL */
                                  float* outLon);       /* may be NULL */
XPLM_API void XPLMSetFMSEntryInfo(int inIndex, XPLMNavRef inRef, int inAltitude);
XPLM_API void XPLMSetFMSEntryLatLon(int inIndex, float inLat, float inLon, int inAltitude);
XPLM_API void XPLMClearFMSEntry(int inIndex);

XPLM_API XPLMNavType XPLMGetGPSDestinationType(void);
XPLM_API XPLMNavRef XPLMGetGPSDestination(void);

#ifdef __cplusplus
}
#endif

#endif

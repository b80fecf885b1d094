/* XPLMDisplay: draw callbacks, key sniffers, plug-in windows, keyboard focus, mouse
 * handling, screen queries and hot keys of the X-Plane SDK 2.1.x. */
#ifndef _XPLMDisplay_h_
#define _XPLMDisplay_h_

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

/***************************************************************************
 * DRAWING CALLBACKS
 ***************************************************************************/

typedef int XPLMDrawingPhase;
enum {
    xplm_Phase_FirstScene = 0,
    xplm_Phase_Terrain = 5,
    xplm_Phase_Airports = 10,
    xplm_Phase_Vectors = 15,
    xplm_Phase_Objects = 20,
    xplm_Phase_Airplanes = 25,
    xplm_Phase_LastScene = 30,
    xplm_Phase_FirstCockpit = 35,
    xplm_Phase_Panel = 40,
    xplm_Phase_Gauges = 45,
    xplm_Phase_Window = 50,
    xplm_Phase_LastCockpit = 55
#if defined(XPLM200)
    ,
    xplm_Phase_LocalMap3D = 100,
    xplm_Phase_LocalMap2D = 101,
    xplm_Phase_LocalMapProfile = 102
#endif
};

typedef int (*XPLMDrawCallback_f)(XPLMDrawingPhase inPhase, int inIsBefore, void* inRefcon);

typedef int (*XPLMKeySniffer_f)(char inChar, XPLMKeyFlags inFlags, char inVirtualKey, void* inRefcon);

XPLM_API int XPLMRegisterDrawCallback(XPLMDrawCallback_f inCallback, XPLMDrawingPhase inPhase,
                                      int inWantsBefore, void* inRefcon);
XPLM_API int XPLMUnregisterDrawCallback(XPLMDrawCallback_f inCallback, XPLMDrawingPhase inPhase,
                                        int inWantsBefore, void* inRefcon);
XPLM_API int XPLMRegisterKeySniffer(XPLMKeySniffer_f inCallback, int inBeforeWindows, void* inRefcon);
XPLM_API int XPLMUnregisterKeySniffer(XPLMKeySniffer_f inCallback, int inBeforeWindows, void* inRefcon);

/***************************************************************************
 * WINDOW API
 ***************************************************************************/

typedef int XPLMMouseStatus;
enum {
    xplm_MouseDown = 1,
    xplm_MouseDrag = 2,
    xplm_MouseUp = 3
};

#if defined(XPLM200)
typedef int XPLMCursorStatus;
enum {
    xplm_CursorDefault = 0,
    xplm_CursorHidden = 1,
    xplm_CursorArrow = 2,
    xplm_CursorCustom = 3
};
#endif

typedef void* XPLMWindowID;

typedef void (*XPLMDrawWindow_f)(XPLMWindowID inWindowID, void* inRefcon);

typedef void (*XPLMHandleKey_f)(XPLMWindowID inWindowID, char inKey, XPLMKeyFlags inFlags,
                                char inVirtualKey, void* inRefcon, int losingFocus);

typedef int (*XPLMHandleMouseClick_f)(XPLMWindowID inWindowID, int x, int y,
                                      XPLMMouseStatus inMouse, void* inRefcon);

#if defined(XPLM200)
typedef XPLMCursorStatus (*XPLMHandleCursor_f)(XPLMWindowID inWindowID, int x, int y, void* inRefcon);

typedef int (*XPLMHandleMouseWheel_f)(XPLMWindowID inWindowID, int x, int y, int wheel, int clicks,
                                      void* inRefcon);

typedef struct {
    int structSize;
    int left;
    int top;
    int right;
    int bottom;
    int visible;
    XPLMDrawWindow_f drawWindowFunc;
    XPLMHandleMouseClick_f handleMouseClickFunc;
    XPLMHandleKey_f handleKeyFunc;
    XPLMHandleCursor_f handleCursorFunc;
    XPLMHandleMouseWheel_f handleMouseWheelFunc;
    void* refcon;
} XPLMCreateWindow_t;

#if defined(__LP64__) || defined(_WIN64)
#if defined(__cplusplus) && __cplusplus >= 201103L
static_assert(sizeof(XPLMCreateWindow_t) == 72, "XPLMCreateWindow_t must be 72 bytes on 64-bit");
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
_Static_assert(sizeof(XPLMCreateWindow_t) == 72, "XPLMCreateWindow_t must be 72 bytes on 64-bit");
#endif
#endif
#endif /* XPLM200 */

XPLM_API void XPLMGetScreenSize(int* outWidth, int* outHeight);
XPLM_API void XPLMGetMouseLocation(int* outX, int* outY);

XPLM_API XPLMWindowID XPLMCreateWindow(int inLeft, int inTop, int inRight, int inBottom, int inIsVisible,
                                       XPLMDrawWindow_f inDrawCallback, XPLMHandleKey_f inKeyCallback,
                                       XPLMHandleMouseClick_f inMouseCallback, void* inRefcon);

#if defined(XPLM200)
XPLM_API XPLMWindowID XPLMCreateWindowEx(XPLMCreateWindow_t* inParams);
#endif

XPLM_API void XPLMDestroyWindow(XPLMWindowID inWindowID);
XPLM_API void XPLMGetWindowGeometry(XPLMWindowID inWindowID, int* outLeft, int* outTop, int* outRight,
                                    int* outBottom);
XPLM_API void XPLMSetWindowGeometry(XPLMWindowID inWindowID, int inLeft, int inTop, int inRight,
                                    int inBottom);
XPLM_API int XPLMGetWindowIsVisible(XPLMWindowID inWindowID);
XPLM_API void XPLMSetWindowIsVisible(XPLMWindowID inWindowID, int inIsVisible);
XPLM_API void* XPLMGetWindowRefCon(XPLMWindowID inWindowID);
XPLM_API void XPLMSetWindowRefCon(XPLMWindowID inWindowID, void* inRefcon);
XPLM_API void XPLMTakeKeyboardFocus(XPLMWindowID inWindow);
XPLM_API void XPLMBringWindowToFront(XPLMWindowID inWindow);
XPLM_API int XPLMIsWindowInFront(XPLMWindowID inWindow);

/***************************************************************************
 * HOT KEYS
 ***************************************************************************/

typedef void (*XPLMHotKey_f)(void* inRefcon);

typedef void* XPLMHotKeyID;

XPLM_API XPLMHotKeyID XPLMRegisterHotKey(char inVirtualKey, XPLMKeyFlags inFlags, const char* inDescription,
                                         XPLMHotKey_f inCallback, void* inRefcon);
XPLM_API void XPLMUnregisterHotKey(XPLMHotKeyID inHotKey);
XPLM_API int XPLMCountHotKeys(void);
XPLM_API XPLMHotKeyID XPLMGetNthHotKey(int inIndex);
XPLM_API void XPLMGetHotKeyInfo(XPLMHotKeyID inHotKey, char* outVirtualKey, XPLMKeyFlags* outFlags,
                                char* outDescription, XPLMPluginID* outPlugin);
XPLM_API void XPLMSetHotKeyCombination(XPLMHotKeyID inHotKey, char inVirtualKey, XPLMKeyFlags inFlags);

#ifdef __cplusplus
}
#endif

#endif /* _XPLMDisplay_h_ */

/* XPWidgetDefs: types, properties, dispatch modes and messages shared by the widget
 * library of the X-Plane SDK 2.1.x (XPWidgets, XPStandardWidgets, XPWidgetUtils).
 * Declares no functions. */
#ifndef _XPWidgetDefs_h_
#define _XPWidgetDefs_h_

#include "XPLMDefs.h"

#ifdef __cplusplus
extern "C" {
#endif

#if APL
    #if XPWIDGETS
        #if __GNUC__ >= 4
            #define WIDGET_API __attribute__((visibility("default")))
        #else
            #define WIDGET_API
        #endif
    #else
        #define WIDGET_API
    #endif
#elif IBM
    #if XPWIDGETS
        #define WIDGET_API __declspec(dllexport)
    #else
        #define WIDGET_API __declspec(dllimport)
    #endif
#elif LIN
    #if XPWIDGETS
        #if __GNUC__ >= 4
            #define WIDGET_API __attribute__((visibility("default")))
        #else
            #define WIDGET_API
        #endif
    #else
        #define WIDGET_API
    #endif
#else
    #error "Platform not defined!"
#endif

typedef int XPWidgetPropertyID;

enum {
    xpProperty_Refcon = 0,
    xpProperty_Dragging = 1,
    xpProperty_DragXOff = 2,
    xpProperty_DragYOff = 3,
    xpProperty_Hilited = 4,
    xpProperty_Object = 5,
    xpProperty_Clip = 6,
    xpProperty_Enabled = 7,
    xpProperty_UserStart = 10000
};

typedef struct {
    int x;
    int y;
    int button;
#if defined(XPLM200)
    int delta;
#endif
} XPMouseState_t;

typedef struct {
    char key;
    XPLMKeyFlags flags;
    char vkey;
} XPKeyState_t;

typedef struct {
    int dx;
    int dy;
    int dwidth;
    int dheight;
} XPWidgetGeometryChange_t;

typedef int XPDispatchMode;

enum {
    xpMode_Direct = 0,
    xpMode_UpChain = 1,
    xpMode_Recursive = 2,
    xpMode_DirectAllCallbacks = 3,
    xpMode_Once = 4
};

typedef int XPWidgetClass;

#define xpWidgetClass_None 0

typedef int XPWidgetMessage;

enum {
    xpMsg_None = 0,
    xpMsg_Create = 1,
    xpMsg_Destroy = 2,
    xpMsg_Paint = 3,
    xpMsg_Draw = 4,
    xpMsg_KeyPress = 5,
    xpMsg_KeyTakeFocus = 6,
    xpMsg_KeyLoseFocus = 7,
    xpMsg_MouseDown = 8,
    xpMsg_MouseDrag = 9,
    xpMsg_MouseUp = 10,
    xpMsg_Reshape = 11,
    xpMsg_ExposedChanged = 12,
    xpMsg_AcceptChild = 13,
    xpMsg_LoseChild = 14,
    xpMsg_AcceptParent = 15,
    xpMsg_Shown = 16,
    xpMsg_Hidden = 17,
    xpMsg_DescriptorChanged = 18,
    xpMsg_PropertyChanged = 19,
#if defined(XPLM200)
    xpMsg_MouseWheel = 20,
#endif
#if defined(XPLM200)
    xpMsg_CursorAdjust = 21,
#endif
    xpMsg_UserStart = 10000
};

typedef void * XPWidgetID;

typedef int (* XPWidgetFunc_t)(
        XPWidgetMessage inMessage,
        XPWidgetID inWidget,
        intptr_t inParam1,
        intptr_t inParam2);

#if defined(__LP64__) || defined(_WIN64)
#if defined(__cplusplus) && __cplusplus >= 201103L
static_assert(sizeof(XPKeyState_t) == 12, "XPKeyState_t is 12 bytes");
static_assert(sizeof(XPWidgetGeometryChange_t) == 16, "XPWidgetGeometryChange_t is 16 bytes");
#if defined(XPLM200)
static_assert(sizeof(XPMouseState_t) == 16, "XPMouseState_t is 16 bytes");
#else
static_assert(sizeof(XPMouseState_t) == 12, "XPMouseState_t is 12 bytes");
#endif
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
_Static_assert(sizeof(XPKeyState_t) == 12, "XPKeyState_t is 12 bytes");
_Static_assert(sizeof(XPWidgetGeometryChange_t) == 16, "XPWidgetGeometryChange_t is 16 bytes");
#if defined(XPLM200)
_Static_assert(sizeof(XPMouseState_t) == 16, "XPMouseState_t is 16 bytes");
#else
_Static_assert(sizeof(XPMouseState_t) == 12, "XPMouseState_t is 12 bytes");
#endif
#endif
#endif

#ifdef __cplusplus
}
#endif

#endif

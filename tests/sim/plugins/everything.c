/* Test plug-in that registers every kind of callback the SDK has and logs each call it
 * gets through XPLMDebugString ("everything: ..."), so a scenario can drive it and check
 * the host's Log.txt. Frequent callbacks (drawing, cursor) are counted and reported. */
#include <stdarg.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "XPLMCamera.h"
#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMMenus.h"
#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMScenery.h"
#include "XPLMUtilities.h"
#include "XPStandardWidgets.h"
#include "XPWidgets.h"
#include "test_plugin.h"

#define MSG_REPORT 0x7FF00010 /* logs the counters */

enum { ITEM_REPORT = 1, ITEM_CAMERA, ITEM_ERROR, ITEM_RELOAD };

static XPLMMenuID gMenu;
static int gMenuItem = -1;
static XPLMWindowID gWindow;
static XPLMFlightLoopID gScheduled;
static XPLMCommandRef gPing, gBuiltin;
static XPLMHotKeyID gHotKey;
static XPLMDataRef gCounterRef;
static XPLMObjectRef gObject;
static XPWidgetID gWidgetWindow, gButton;
static int gCounter = 7;
static float gShared;
static int gLoops, gScheduledCalls, gCameraCalls;
static int gDraws, gWindowDraws, gCursorCalls;
static int gLastCursorX = -1, gLastCursorY = -1;

static void say(const char* fmt, ...) __attribute__((format(printf, 1, 2)));
static void say(const char* fmt, ...) {
    char line[512];
    int n = snprintf(line, sizeof line, "everything: ");
    va_list args;
    va_start(args, fmt);
    vsnprintf(line + n, sizeof line - n - 1, fmt, args);
    va_end(args);
    strcat(line, "\n");
    XPLMDebugString(line);
}

/* --- processing --- */

static float legacyLoop(float sinceLast, float sinceLoop, int counter, void* refcon) {
    ++gLoops;
    say("flight loop %d at %.3f s, cycle %d, since last %.3f", gLoops, XPLMGetElapsedTime(), XPLMGetCycleNumber(),
        sinceLast);
    return 0.5f;
}

static float scheduledLoop(float sinceLast, float sinceLoop, int counter, void* refcon) {
    ++gScheduledCalls;
    say("scheduled loop %d at cycle %d", gScheduledCalls, XPLMGetCycleNumber());
    return gScheduledCalls < 3 ? -10.0f : 0.0f; /* every 10 frames, three times, then paused */
}

/* --- display --- */

static int drawCallback(XPLMDrawingPhase phase, int isBefore, void* refcon) {
    if (gDraws++ == 0) say("draw callback phase %d before %d", phase, isBefore);
    return 1;
}

static void windowDraw(XPLMWindowID window, void* refcon) {
    float white[] = {1.0f, 1.0f, 1.0f};
    int left, top, right, bottom;
    if (gWindowDraws++ == 0) say("window draw, refcon ok %d", refcon == &gWindow);
    XPLMGetWindowGeometry(window, &left, &top, &right, &bottom);
    XPLMDrawString(white, left + 5, top - 15, "everything", NULL, xplmFont_Basic);
}

static int windowMouse(XPLMWindowID window, int x, int y, XPLMMouseStatus status, void* refcon) {
    static const char* names[] = {"?", "down", "drag", "up"};
    say("window mouse %s at %d,%d", names[status >= 1 && status <= 3 ? status : 0], x, y);
    if (status == xplm_MouseDown) XPLMTakeKeyboardFocus(window);
    return 1;
}

static void windowKey(XPLMWindowID window, char key, XPLMKeyFlags flags, char vkey, void* refcon, int losingFocus) {
    if (losingFocus) {
        say("window key: losing focus");
    } else {
        say("window key %d flags %d vkey 0x%02X", key, flags, (unsigned char)vkey);
        /* Escape gives the keyboard back to the simulator (and so to the hot keys). */
        if ((unsigned char)vkey == XPLM_VK_ESCAPE && (flags & xplm_UpFlag)) XPLMTakeKeyboardFocus(NULL);
    }
}

static XPLMCursorStatus windowCursor(XPLMWindowID window, int x, int y, void* refcon) {
    ++gCursorCalls;
    if (x != gLastCursorX || y != gLastCursorY) say("window cursor at %d,%d", x, y);
    gLastCursorX = x;
    gLastCursorY = y;
    return xplm_CursorArrow;
}

static int windowWheel(XPLMWindowID window, int x, int y, int wheel, int clicks, void* refcon) {
    say("window wheel at %d,%d axis %d clicks %d", x, y, wheel, clicks);
    return 1;
}

static int keySniffer(char key, XPLMKeyFlags flags, char vkey, void* refcon) {
    say("key sniffer %d flags %d vkey 0x%02X", key, flags, (unsigned char)vkey);
    return 1; /* let the key go on to the windows */
}

static void hotKey(void* refcon) { say("hot key, refcon ok %d", refcon == &gHotKey); }

/* --- widgets --- */

/* Added to the widget window: the button's press travels up to it. */
static int widgetHandler(XPWidgetMessage message, XPWidgetID widget, intptr_t param1, intptr_t param2) {
    if (message == xpMsg_PushButtonPressed) {
        say("widget: button pressed, from the button %d", (XPWidgetID)param1 == gButton);
        return 1;
    }
    return 0;
}

/* --- camera --- */

static int cameraControl(XPLMCameraPosition_t* position, int losingControl, void* refcon) {
    if (losingControl) {
        say("camera: losing control");
        return 0;
    }
    ++gCameraCalls;
    if (position) {
        position->x = 1.0f;
        position->y = 2.0f * gCameraCalls;
        position->z = 3.0f;
    }
    say("camera callback %d", gCameraCalls);
    if (gCameraCalls >= 3) {
        say("camera: giving control back");
        return 0;
    }
    return 1;
}

/* --- menus, commands, errors --- */

static void errorCallback(const char* message) { say("error callback: %s", message); }

static void menuHandler(void* menuRef, void* itemRef) {
    intptr_t item = (intptr_t)itemRef;
    say("menu item %d, menu ref ok %d", (int)item, menuRef == &gMenu);
    switch (item) {
        case ITEM_REPORT:
            XPLMSendMessageToPlugin(XPLMGetMyID(), MSG_REPORT, NULL);
            break;
        case ITEM_CAMERA:
            gCameraCalls = 0;
            XPLMControlCamera(xplm_ControlCameraUntilViewChanges, cameraControl, NULL);
            break;
        case ITEM_ERROR:
            XPLMGetDatai((XPLMDataRef)(intptr_t)0x5EADBEEF);
            break;
        case ITEM_RELOAD:
            XPLMReloadPlugins();
            break;
    }
}

static int pingHandler(XPLMCommandRef command, XPLMCommandPhase phase, void* refcon) {
    say("command ping phase %d", phase);
    return 1;
}

static int builtinHandler(XPLMCommandRef command, XPLMCommandPhase phase, void* refcon) {
    say("command sim/operation/screenshot phase %d (before)", phase);
    return 0; /* handled here: X-Plane takes no screenshot */
}

/* --- datarefs --- */

static int readCounter(void* refcon) {
    say("accessor read int");
    return gCounter;
}
static void writeCounter(void* refcon, int value) {
    say("accessor write int %d", value);
    gCounter = value;
}
static float readCounterf(void* refcon) {
    say("accessor read float");
    return (float)gCounter;
}
static void writeCounterf(void* refcon, float value) {
    say("accessor write float %.2f", value);
    gCounter = (int)value;
}

static void sharedChanged(void* refcon) {
    say("shared data changed, refcon ok %d", refcon == &gShared);
}

/* --- world --- */

static void planesAvailable(void* refcon) { say("planes available"); }

static void objectLoaded(XPLMObjectRef object, void* refcon) {
    say("object loaded async, %s", object ? "ok" : "NULL");
    if (object) {
        if (gObject) XPLMUnloadObject(gObject);
        gObject = object;
    }
}

static char gFirstObject[512];

static void libraryItem(const char* path, void* ref) {
    if (++*(int*)ref == 1) snprintf(gFirstObject, sizeof gFirstObject, "%s", path);
    say("library object %s", path);
}

static void feature(const char* name, void* ref) { say("feature %s", name); }

/* --- entry points --- */

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    XPLMCreateFlightLoop_t loop;
    strcpy(outName, "Everything");
    strcpy(outSignature, "xpsim.test.everything");
    strcpy(outDescription, "Registers every kind of callback and logs the calls.");
    say("start, my id %d", XPLMGetMyID());
    XPLMSetErrorCallback(errorCallback);
    XPLMEnumerateFeatures(feature, NULL);

    XPLMRegisterFlightLoopCallback(legacyLoop, 0.5f, NULL);
    memset(&loop, 0, sizeof loop);
    loop.structSize = sizeof loop;
    loop.phase = xplm_FlightLoop_Phase_AfterFlightModel;
    loop.callbackFunc = scheduledLoop;
    gScheduled = XPLMCreateFlightLoop(&loop);
    XPLMScheduleFlightLoop(gScheduled, -10.0f, 1);

    XPLMRegisterDrawCallback(drawCallback, xplm_Phase_Window, 0, NULL);
    gWindow = createTestWindow(100, 600, 300, 500, windowDraw, windowMouse, windowKey, windowCursor, windowWheel,
                               &gWindow);
    gWidgetWindow = XPCreateWidget(400, 600, 600, 400, 1, "Everything widgets", 1, NULL, xpWidgetClass_MainWindow);
    gButton = XPCreateWidget(420, 560, 520, 540, 1, "Press", 0, gWidgetWindow, xpWidgetClass_Button);
    XPSetWidgetProperty(gButton, xpProperty_ButtonType, xpPushButton);
    XPAddWidgetCallback(gWidgetWindow, widgetHandler);
    XPLMRegisterKeySniffer(keySniffer, 1, NULL);
    gHotKey = XPLMRegisterHotKey(XPLM_VK_F8, xplm_DownFlag, "everything hot key", hotKey, &gHotKey);

    gMenuItem = XPLMAppendMenuItem(XPLMFindPluginsMenu(), "Everything", NULL, 1);
    gMenu = XPLMCreateMenu("Everything", XPLMFindPluginsMenu(), gMenuItem, menuHandler, &gMenu);
    XPLMAppendMenuItem(gMenu, "Report", (void*)(intptr_t)ITEM_REPORT, 1);
    XPLMAppendMenuItem(gMenu, "Take camera", (void*)(intptr_t)ITEM_CAMERA, 1);
    XPLMAppendMenuItem(gMenu, "Trigger error", (void*)(intptr_t)ITEM_ERROR, 1);
    XPLMAppendMenuItem(gMenu, "Reload plug-ins", (void*)(intptr_t)ITEM_RELOAD, 1);

    gPing = XPLMCreateCommand("everything/ping", "Logs its phases");
    XPLMRegisterCommandHandler(gPing, pingHandler, 1, NULL);
    gBuiltin = XPLMFindCommand("sim/operation/screenshot");
    XPLMRegisterCommandHandler(gBuiltin, builtinHandler, 1, NULL);

    gCounterRef = XPLMRegisterDataAccessor("everything/counter", xplmType_Int | xplmType_Float, 1, readCounter,
                                           writeCounter, readCounterf, writeCounterf, NULL, NULL, NULL, NULL,
                                           NULL, NULL, NULL, NULL, NULL, NULL);
    XPLMShareData("everything/shared", xplmType_Float, sharedChanged, &gShared);
    return 1;
}

PLUGIN_API int XPluginEnable(void) {
    int found = 0;
    XPLMProbeRef probe;
    XPLMProbeInfo_t info;
    say("enable");
    say("acquire planes: %d", XPLMAcquirePlanes(NULL, planesAvailable, NULL));
    say("library lookup: %d objects", XPLMLookupObjects("lib/airport/vehicles/baggage_train.obj", 47.0f, -122.0f,
                                                        libraryItem, &found));
    say("library enumerated %d", found);
    XPLMLoadObjectAsync(gFirstObject, objectLoaded, NULL);
    probe = XPLMCreateProbe(xplm_ProbeY);
    memset(&info, 0, sizeof info);
    info.structSize = sizeof info;
    say("terrain probe result %d", XPLMProbeTerrainXYZ(probe, 0.0f, 0.0f, 0.0f, &info));
    XPLMDestroyProbe(probe);
    return 1;
}

PLUGIN_API void XPluginDisable(void) {
    say("disable");
    XPLMReleasePlanes();
}

PLUGIN_API void XPluginStop(void) {
    say("stop");
    XPLMUnregisterFlightLoopCallback(legacyLoop, NULL);
    XPLMDestroyFlightLoop(gScheduled);
    XPLMUnregisterDrawCallback(drawCallback, xplm_Phase_Window, 0, NULL);
    XPLMDestroyWindow(gWindow);
    XPDestroyWidget(gWidgetWindow, 1);
    XPLMUnregisterKeySniffer(keySniffer, 1, NULL);
    XPLMUnregisterHotKey(gHotKey);
    XPLMUnregisterCommandHandler(gPing, pingHandler, 1, NULL);
    XPLMUnregisterCommandHandler(gBuiltin, builtinHandler, 1, NULL);
    XPLMUnregisterDataAccessor(gCounterRef);
    XPLMUnshareData("everything/shared", xplmType_Float, sharedChanged, &gShared);
    XPLMDestroyMenu(gMenu);
    XPLMRemoveMenuItem(XPLMFindPluginsMenu(), gMenuItem);
    if (gObject) XPLMUnloadObject(gObject);
    gObject = NULL;
}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID from, int message, void* param) {
    say("message %d from %d param %ld", message, from, (long)(intptr_t)param);
    if (message == MSG_REPORT) {
        say("report: loops %d, scheduled %d, draws %s, window draws %s, cursor calls %s", gLoops, gScheduledCalls,
            gDraws > 0 ? "yes" : "no", gWindowDraws > 0 ? "yes" : "no", gCursorCalls > 0 ? "yes" : "no");
    }
}

/* Hello: a small C plug-in for the xpsim demo. It logs the aircraft's elevation once
 * a simulated second, offers a menu and a command that say hello, and shows a window
 * that counts the clicks it gets. Built against sdk/ like any X-Plane plug-in. */
#include <stdio.h>
#include <string.h>

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMMenus.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMUtilities.h"

static XPLMDataRef gElevation;
static XPLMCommandRef gSayHello;
static XPLMWindowID gWindow;
static int gMenuItem = -1;
static int gClicks;

static void say(const char* what) {
    char line[256];
    snprintf(line, sizeof line, "Hello: %s at %.2f s\n", what, XPLMGetElapsedTime());
    XPLMDebugString(line);
}

static float everySecond(float sinceLast, float sinceLoop, int counter, void* refcon) {
    char line[256];
    snprintf(line, sizeof line, "Hello: flight loop #%d, elevation %.1f m\n", counter,
             XPLMGetDatad(gElevation));
    XPLMDebugString(line);
    return 1.0f;
}

static void menuHandler(void* menuRef, void* itemRef) { say("menu says hello"); }

static int sayHello(XPLMCommandRef command, XPLMCommandPhase phase, void* refcon) {
    if (phase == xplm_CommandBegin) say("command says hello");
    return 1;
}

static void drawWindow(XPLMWindowID window, void* refcon) {
    int left, top, right, bottom;
    float white[] = {1.0f, 1.0f, 1.0f};
    char text[64];
    XPLMGetWindowGeometry(window, &left, &top, &right, &bottom);
    /* Windows have no frame of their own: the plug-in draws its background. */
    XPLMDrawTranslucentDarkBox(left, top, right, bottom);
    snprintf(text, sizeof text, "Hello from C: %d clicks", gClicks);
    XPLMDrawString(white, left + 10, top - 20, text, NULL, xplmFont_Basic);
}

static void windowKey(XPLMWindowID window, char key, XPLMKeyFlags flags, char vkey, void* refcon, int losingFocus) {}

static int windowMouse(XPLMWindowID window, int x, int y, XPLMMouseStatus status, void* refcon) {
    if (status == xplm_MouseDown) {
        char line[128];
        ++gClicks;
        snprintf(line, sizeof line, "Hello: click %d at %d,%d\n", gClicks, x, y);
        XPLMDebugString(line);
    }
    return 1;
}

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    XPLMMenuID menu;
    strcpy(outName, "Hello");
    strcpy(outSignature, "xpsim.example.hello");
    strcpy(outDescription, "A small C plug-in that shows what xpsim runs.");
    gElevation = XPLMFindDataRef("sim/flightmodel/position/elevation");
    gSayHello = XPLMCreateCommand("xpsim/example/say_hello", "Say hello");
    XPLMRegisterCommandHandler(gSayHello, sayHello, 1, NULL);
    gMenuItem = XPLMAppendMenuItem(XPLMFindPluginsMenu(), "Hello", NULL, 1);
    menu = XPLMCreateMenu("Hello", XPLMFindPluginsMenu(), gMenuItem, menuHandler, NULL);
    XPLMAppendMenuItem(menu, "Say hello", NULL, 1);
    gWindow = XPLMCreateWindow(100, 400, 400, 300, 1, drawWindow, windowKey, windowMouse, NULL);
    return 1;
}

PLUGIN_API void XPluginStop(void) {
    XPLMDestroyWindow(gWindow);
    XPLMUnregisterCommandHandler(gSayHello, sayHello, 1, NULL);
    XPLMRemoveMenuItem(XPLMFindPluginsMenu(), gMenuItem);
}

PLUGIN_API int XPluginEnable(void) {
    XPLMRegisterFlightLoopCallback(everySecond, 1.0f, NULL);
    say("enabled");
    return 1;
}

PLUGIN_API void XPluginDisable(void) {
    XPLMUnregisterFlightLoopCallback(everySecond, NULL);
    say("disabled");
}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID from, int message, void* param) {
    char line[128];
    snprintf(line, sizeof line, "Hello: message %d from plug-in %d\n", message, from);
    XPLMDebugString(line);
}

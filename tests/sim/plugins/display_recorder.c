/* Test plug-in: registers one of each display callback (a draw callback, a window, a
 * key sniffer, a hot key) and records every call, with the id XPLMGetMyID answers
 * inside it, into events.txt next to its binary. */
#include <stdio.h>
#include <string.h>

#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMPlugin.h"

#define MSG_TAKE_FOCUS 0x7FF10001 /* the window takes the keyboard focus */

static char gFolder[512];
static char gName[512];
static XPLMWindowID gWindow;

static void record(const char* event) {
    char path[600];
    FILE* f;
    snprintf(path, sizeof path, "%s/events.txt", gFolder);
    f = fopen(path, "a");
    if (!f) return;
    fprintf(f, "%s myid=%d\n", event, XPLMGetMyID());
    fclose(f);
}

static int drawCallback(XPLMDrawingPhase phase, int isBefore, void* refcon) {
    record("draw");
    return 1;
}

static void drawWindow(XPLMWindowID id, void* refcon) {
    float white[3] = {1, 1, 1};
    record("window");
    XPLMDrawString(white, 110, 280, gName, NULL, xplmFont_Basic);
}

static int click(XPLMWindowID id, int x, int y, XPLMMouseStatus status, void* refcon) {
    record(status == xplm_MouseDown ? "down" : status == xplm_MouseDrag ? "drag" : "up");
    return 1;
}

static void key(XPLMWindowID id, char c, XPLMKeyFlags flags, char vkey, void* refcon, int losingFocus) {
    record(losingFocus ? "losing focus" : "key");
}

static XPLMCursorStatus cursor(XPLMWindowID id, int x, int y, void* refcon) {
    record("cursor");
    return xplm_CursorDefault;
}

static int wheel(XPLMWindowID id, int x, int y, int w, int clicks, void* refcon) {
    record("wheel");
    return 1;
}

static int sniffer(char c, XPLMKeyFlags flags, char vkey, void* refcon) {
    record("sniffer");
    return 1;
}

static void hotKey(void* refcon) { record("hotkey"); }

/* <root>/Resources/plugins/<Name>/64/lin.xpl: the folder is <Name>/. */
static void findMyFolder(void) {
    char path[256];
    char* slash;
    XPLMGetPluginInfo(XPLMGetMyID(), NULL, path, NULL, NULL);
    slash = strrchr(path, '/');
    if (slash) *slash = '\0';
    slash = strrchr(path, '/');
    if (slash && strcmp(slash, "/64") == 0) *slash = '\0';
    snprintf(gFolder, sizeof gFolder, "%s", path);
}

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    XPLMCreateWindow_t params;
    findMyFolder();
    snprintf(gName, sizeof gName, "%s", strrchr(gFolder, '/') ? strrchr(gFolder, '/') + 1 : gFolder);
    strcpy(outName, gName);
    sprintf(outSignature, "xpsim.test.%s", gName);
    strcpy(outDescription, "Records the display callbacks it gets.");

    XPLMRegisterDrawCallback(drawCallback, xplm_Phase_Window, 0, NULL);
    memset(&params, 0, sizeof params);
    params.structSize = sizeof params;
    params.left = 100;
    params.top = 300;
    params.right = 300;
    params.bottom = 100;
    params.visible = 1;
    params.drawWindowFunc = drawWindow;
    params.handleMouseClickFunc = click;
    params.handleKeyFunc = key;
    params.handleCursorFunc = cursor;
    params.handleMouseWheelFunc = wheel;
    gWindow = XPLMCreateWindowEx(&params);
    XPLMRegisterKeySniffer(sniffer, 1, NULL);
    XPLMRegisterHotKey(XPLM_VK_F9, xplm_DownFlag, "Record a hot key", hotKey, NULL);
    return 1;
}

/* Leaves its window, callbacks and hot key behind, as careless plug-ins do: the host
 * must forget them itself. */
PLUGIN_API void XPluginStop(void) {}

PLUGIN_API int XPluginEnable(void) { return 1; }

PLUGIN_API void XPluginDisable(void) {}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void* inParam) {
    if (inMessage == MSG_TAKE_FOCUS) XPLMTakeKeyboardFocus(gWindow);
}

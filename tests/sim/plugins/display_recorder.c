/* Test plug-in: registers one of each display callback (a draw callback, a window, a
 * key sniffer, a hot key) and records every call, with the id XPLMGetMyID answers
 * inside it, into events.txt next to its binary. */
#include <stdio.h>
#include <string.h>

#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMPlugin.h"
#include "test_plugin.h"

#define MSG_TAKE_FOCUS 0x7FF10001 /* the window takes the keyboard focus */

static XPLMWindowID gWindow;

static void record(const char* event) { recordEvent("%s myid=%d", event, XPLMGetMyID()); }

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

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    startTestPlugin(outName, outSignature, outDescription, "xpsim.test.", "Records the display callbacks it gets.");

    XPLMRegisterDrawCallback(drawCallback, xplm_Phase_Window, 0, NULL);
    gWindow = createTestWindow(100, 300, 300, 100, drawWindow, click, key, cursor, wheel, NULL);
    XPLMRegisterKeySniffer(sniffer, 1, NULL);
    XPLMRegisterHotKey(XPLM_VK_F9, xplm_DownFlag, "Record a hot key", hotKey, NULL);
    return 1;
}

/* Leaves its window, callbacks and hot key behind, as careless plug-ins do: the host
 * must forget them itself. */
TEST_PLUGIN_PLAIN_LIFECYCLE()

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void* inParam) {
    if (inMessage == MSG_TAKE_FOCUS) XPLMTakeKeyboardFocus(gWindow);
}

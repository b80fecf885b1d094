/* Test plug-in that registers callbacks of every area and never unregisters them: the
 * host must drop them when the plug-in is unloaded. Each call is counted in
 * leaky_events.txt in the simulator's Output folder. */
#include <stdio.h>
#include <string.h>

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMMenus.h"
#include "XPLMPlugin.h"
#include "XPLMProcessing.h"
#include "XPLMUtilities.h"

static char gEvents[512];
static int gValue = 5;

static void record(const char* what) {
    FILE* f = fopen(gEvents, "a");
    if (!f) return;
    fprintf(f, "%s id=%d\n", what, XPLMGetMyID());
    fclose(f);
}

static float loop(float a, float b, int c, void* r) {
    record("loop");
    return -1.0f;
}
static int draw(XPLMDrawingPhase phase, int before, void* r) {
    record("draw");
    return 1;
}
static void menu(void* m, void* i) { record("menu"); }
static int command(XPLMCommandRef c, XPLMCommandPhase phase, void* r) {
    if (phase == xplm_CommandBegin) record("command");
    return 1;
}
static int readValue(void* r) {
    record("read");
    return gValue;
}
static int sniffer(char key, XPLMKeyFlags flags, char vkey, void* r) {
    if (flags & xplm_DownFlag) record("sniffer");
    return 1;
}
static void windowDraw(XPLMWindowID w, void* r) { record("window"); }
static void windowKey(XPLMWindowID w, char k, XPLMKeyFlags f, char v, void* r, int losing) {}
static int windowMouse(XPLMWindowID w, int x, int y, XPLMMouseStatus s, void* r) { return 1; }

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    XPLMMenuID sub;
    int item;
    XPLMGetSystemPath(gEvents);
    strcat(gEvents, "Output/leaky_events.txt");
    strcpy(outName, "Leaky");
    strcpy(outSignature, "xpsim.test.leaky");
    strcpy(outDescription, "Never unregisters anything.");
    XPLMRegisterFlightLoopCallback(loop, -1.0f, NULL);
    XPLMRegisterDrawCallback(draw, xplm_Phase_Window, 0, NULL);
    item = XPLMAppendMenuItem(XPLMFindPluginsMenu(), "Leaky", NULL, 1);
    sub = XPLMCreateMenu("Leaky", XPLMFindPluginsMenu(), item, menu, NULL);
    XPLMAppendMenuItem(sub, "Item", NULL, 1);
    XPLMRegisterCommandHandler(XPLMCreateCommand("leaky/command", "Leaks"), command, 1, NULL);
    XPLMRegisterDataAccessor("leaky/value", xplmType_Int, 0, readValue, NULL, NULL, NULL, NULL, NULL, NULL, NULL,
                             NULL, NULL, NULL, NULL, NULL, NULL);
    XPLMRegisterKeySniffer(sniffer, 1, NULL);
    XPLMCreateWindow(0, 700, 100, 600, 1, windowDraw, windowKey, windowMouse, NULL);
    return 1;
}

PLUGIN_API void XPluginStop(void) { record("stop"); }
PLUGIN_API int XPluginEnable(void) { return 1; }
PLUGIN_API void XPluginDisable(void) {}
PLUGIN_API void XPluginReceiveMessage(XPLMPluginID from, int message, void* param) {}

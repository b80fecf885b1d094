/* Test plug-in: draws with its own immediate-mode OpenGL in a draw callback (a magenta
 * quad from 600,100 to 700,200 after the window phase) and shows a legacy window at
 * 600,500-900,300 with a translucent dark box and white text, for the picture tests. */
#include <string.h>

#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "XPLMPlugin.h"
#include "test_plugin.h"

#if __has_include(<GL/gl.h>)
#include <GL/gl.h>
#define HAVE_GL 1
#endif

static XPLMWindowID gWindow;

static int drawQuad(XPLMDrawingPhase phase, int isBefore, void* refcon) {
#ifdef HAVE_GL
    XPLMSetGraphicsState(0, 0, 0, 0, 0, 0, 0);
    glColor4f(1.0f, 0.0f, 1.0f, 1.0f);
    glBegin(GL_QUADS);
    glVertex2i(600, 100);
    glVertex2i(700, 100);
    glVertex2i(700, 200);
    glVertex2i(600, 200);
    glEnd();
#endif
    return 1;
}

static void drawWindow(XPLMWindowID id, void* refcon) {
    float white[3] = {1.0f, 1.0f, 1.0f};
    int left, top, right, bottom;
    XPLMGetWindowGeometry(id, &left, &top, &right, &bottom);
    XPLMDrawTranslucentDarkBox(left, top, right, bottom);
    XPLMDrawString(white, left + 10, top - 20, "Pictures from xpsim", NULL, xplmFont_Basic);
}

static void noKey(XPLMWindowID id, char key, XPLMKeyFlags flags, char vkey, void* refcon, int losing) {}
static int noClick(XPLMWindowID id, int x, int y, XPLMMouseStatus status, void* refcon) { return 1; }

PLUGIN_API int XPluginStart(char* outName, char* outSig, char* outDesc) {
    startTestPlugin(outName, outSig, outDesc, "xpsim.test.", "Draws with OpenGL for the picture tests.");
    XPLMRegisterDrawCallback(drawQuad, xplm_Phase_Window, 0, NULL);
    gWindow = XPLMCreateWindow(600, 500, 900, 300, 1, drawWindow, noKey, noClick, NULL);
    return 1;
}

PLUGIN_API void XPluginStop(void) { XPLMDestroyWindow(gWindow); }
PLUGIN_API int XPluginEnable(void) { return 1; }
PLUGIN_API void XPluginDisable(void) {}
PLUGIN_API void XPluginReceiveMessage(XPLMPluginID from, int message, void* param) {}

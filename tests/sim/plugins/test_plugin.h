/* What test plug-ins share: the folder they are installed in, their name taken from
 * it (so one binary installed twice is two plug-ins), events.txt in that folder, one
 * line per recorded event, which the tests read back, and a window maker that the
 * display tests use as well. */
#ifndef XPSIM_TEST_PLUGIN_H
#define XPSIM_TEST_PLUGIN_H

#include <stdarg.h>
#include <stdio.h>
#include <string.h>

#include "XPLMDataAccess.h"
#include "XPLMDisplay.h"
#include "XPLMPlugin.h"

static char gFolder[512];
static char gName[512];

/* <root>/Resources/plugins/<Name>/64/lin.xpl: the folder is <Name>/, the name <Name>. */
static inline void findMyFolder(void) {
    char path[512];
    char* slash;
    XPLMGetPluginInfo(XPLMGetMyID(), NULL, path, NULL, NULL);
    slash = strrchr(path, '/');
    if (slash) *slash = '\0';
    slash = strrchr(path, '/');
    if (slash && strcmp(slash, "/64") == 0) *slash = '\0';
    snprintf(gFolder, sizeof gFolder, "%s", path);
    slash = strrchr(path, '/');
    snprintf(gName, sizeof gName, "%s", slash ? slash + 1 : path);
}

/* The start every test plug-in named after its folder shares: it finds its folder and
 * answers its name, the signature <signaturePrefix><Name> and its description. The
 * buffers are the 256 bytes X-Plane hands to XPluginStart. */
static inline void startTestPlugin(char* outName, char* outSignature, char* outDescription,
                                   const char* signaturePrefix, const char* description) {
    findMyFolder();
    snprintf(outName, 256, "%.255s", gName);
    snprintf(outSignature, 256, "%s%.200s", signaturePrefix, gName);
    snprintf(outDescription, 256, "%s", description);
}

/* The life-cycle calls of a plug-in that does all its work at start and in messages. */
#define TEST_PLUGIN_PLAIN_LIFECYCLE()            \
    PLUGIN_API void XPluginStop(void) {}         \
    PLUGIN_API int XPluginEnable(void) { return 1; } \
    PLUGIN_API void XPluginDisable(void) {}

static inline int readPublishedInt(void* refcon) { return *(int*)refcon; }

/* Publishes *value as the read-only int dataref xpsim/test/<Name>/<leaf>, for the tests to read. */
static inline XPLMDataRef publishInt(const char* leaf, int* value) {
    char name[600];
    snprintf(name, sizeof name, "xpsim/test/%s/%s", gName, leaf);
    return XPLMRegisterDataAccessor(name, xplmType_Int, 0, readPublishedInt, NULL, NULL, NULL, NULL, NULL, NULL,
                                    NULL, NULL, NULL, NULL, NULL, value, NULL);
}

/* Appends one printf-formatted line to events.txt. */
static inline void recordEvent(const char* fmt, ...) {
    char path[600];
    va_list args;
    FILE* f;
    snprintf(path, sizeof path, "%s/events.txt", gFolder);
    f = fopen(path, "a");
    if (!f) return;
    va_start(args, fmt);
    vfprintf(f, fmt, args);
    va_end(args);
    fputc('\n', f);
    fclose(f);
}

/* Whether the test put `file` into the plug-in's folder (a switch for its behaviour). */
static inline int folderHasFile(const char* file) {
    char path[600];
    FILE* f;
    snprintf(path, sizeof path, "%s/%s", gFolder, file);
    f = fopen(path, "r");
    if (f) fclose(f);
    return f != NULL;
}

#if defined(XPLM200)
/* A visible window made with XPLMCreateWindowEx, every callback given. */
static inline XPLMWindowID createTestWindow(int left, int top, int right, int bottom, XPLMDrawWindow_f draw,
                                            XPLMHandleMouseClick_f click, XPLMHandleKey_f key,
                                            XPLMHandleCursor_f cursor, XPLMHandleMouseWheel_f wheel,
                                            void* refcon) {
    XPLMCreateWindow_t params;
    memset(&params, 0, sizeof params);
    params.structSize = sizeof params;
    params.left = left;
    params.top = top;
    params.right = right;
    params.bottom = bottom;
    params.visible = 1;
    params.drawWindowFunc = draw;
    params.handleMouseClickFunc = click;
    params.handleKeyFunc = key;
    params.handleCursorFunc = cursor;
    params.handleMouseWheelFunc = wheel;
    params.refcon = refcon;
    return XPLMCreateWindowEx(&params);
}
#endif

#endif

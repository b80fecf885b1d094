/* Test plug-in: records its life cycle and the messages it gets into events.txt next
 * to its binary, and acts on a few test messages. Its name and signature come from
 * the folder it is installed in, so one binary can be installed as several plug-ins. */
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "XPLMPlugin.h"

/* Test messages (commands to this plug-in; the parameter is an int in the pointer). */
#define MSG_SEND_TO 0x7FF00001      /* send MSG_HELLO to plug-in `param` (-1 = broadcast) */
#define MSG_HELLO 0x7FF00002        /* recorded only */
#define MSG_RELOAD 0x7FF00003       /* XPLMReloadPlugins */
#define MSG_NATIVE_PATHS 0x7FF00004 /* enable XPLM_USE_NATIVE_PATHS when param != 0, else disable */
#define MSG_DISABLE 0x7FF00005      /* XPLMDisablePlugin(param) */
#define MSG_ENABLE 0x7FF00006       /* XPLMEnablePlugin(param), result recorded */

static char gFolder[512];
static char gName[256];

static void record(const char* fmt, long a, long b, long c) {
    char path[600];
    FILE* f;
    snprintf(path, sizeof path, "%s/events.txt", gFolder);
    f = fopen(path, "a");
    if (!f) return;
    fprintf(f, fmt, a, b, c);
    fputc('\n', f);
    fclose(f);
}

static int exists(const char* file) {
    char path[600];
    FILE* f;
    snprintf(path, sizeof path, "%s/%s", gFolder, file);
    f = fopen(path, "r");
    if (f) fclose(f);
    return f != NULL;
}

/* <root>/Resources/plugins/<Name>/64/lin.xpl: the folder is <Name>/, the name <Name>. */
static void findMyFolder(void) {
    char path[256];
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

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    findMyFolder();
    strcpy(outName, gName);
    sprintf(outSignature, "xpsim.test.%s", gName);
    strcpy(outDescription, "Records its life cycle and messages.");
    record("start id=%ld myid=%ld", XPLMGetMyID(), XPLMGetMyID(), 0);
    return exists("refuse_start") ? 0 : 1;
}

PLUGIN_API void XPluginStop(void) { record("stop id=%ld", XPLMGetMyID(), 0, 0); }

PLUGIN_API int XPluginEnable(void) {
    record("enable id=%ld", XPLMGetMyID(), 0, 0);
    return exists("refuse_enable") ? 0 : 1;
}

PLUGIN_API void XPluginDisable(void) { record("disable id=%ld", XPLMGetMyID(), 0, 0); }

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void* inParam) {
    long param = (long)(intptr_t)inParam;
    record("message from=%ld msg=%ld param=%ld", inFrom, inMessage, param);
    switch (inMessage) {
        case MSG_SEND_TO:
            XPLMSendMessageToPlugin((XPLMPluginID)param, MSG_HELLO, (void*)(intptr_t)XPLMGetMyID());
            break;
        case MSG_RELOAD:
            XPLMReloadPlugins();
            break;
        case MSG_NATIVE_PATHS:
            XPLMEnableFeature("XPLM_USE_NATIVE_PATHS", param != 0);
            record("native_paths=%ld", XPLMIsFeatureEnabled("XPLM_USE_NATIVE_PATHS"), 0, 0);
            break;
        case MSG_DISABLE:
            XPLMDisablePlugin((XPLMPluginID)param);
            break;
        case MSG_ENABLE:
            record("enable_result=%ld", XPLMEnablePlugin((XPLMPluginID)param), 0, 0);
            break;
    }
}

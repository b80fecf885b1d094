/* Test plug-in: records its life cycle and the messages it gets into events.txt next
 * to its binary, and acts on a few test messages. Its name and signature come from
 * the folder it is installed in, so one binary can be installed as several plug-ins. */
#include <stdint.h>

#include "test_plugin.h"

/* Test messages (commands to this plug-in; the parameter is an int in the pointer). */
#define MSG_SEND_TO 0x7FF00001      /* send MSG_HELLO to plug-in `param` (-1 = broadcast) */
#define MSG_HELLO 0x7FF00002        /* recorded only */
#define MSG_RELOAD 0x7FF00003       /* XPLMReloadPlugins */
#define MSG_NATIVE_PATHS 0x7FF00004 /* enable XPLM_USE_NATIVE_PATHS when param != 0, else disable */
#define MSG_DISABLE 0x7FF00005      /* XPLMDisablePlugin(param) */
#define MSG_ENABLE 0x7FF00006       /* XPLMEnablePlugin(param), result recorded */
#define MSG_ECHO 0x7FF00007         /* send MSG_ECHO to plug-in `param`, with its own id */

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    startTestPlugin(outName, outSignature, outDescription, "xpsim.test.", "Records its life cycle and messages.");
    recordEvent("start id=%d myid=%d", XPLMGetMyID(), XPLMGetMyID());
    return folderHasFile("refuse_start") ? 0 : 1;
}

/* With a file "enable_on_stop" in its folder, it enables every other plug-in as it stops. */
PLUGIN_API void XPluginStop(void) {
    int i;
    recordEvent("stop id=%d", XPLMGetMyID());
    if (!folderHasFile("enable_on_stop")) return;
    for (i = 0; i < XPLMCountPlugins(); ++i) {
        if (XPLMGetNthPlugin(i) != XPLMGetMyID()) XPLMEnablePlugin(XPLMGetNthPlugin(i));
    }
}

PLUGIN_API int XPluginEnable(void) {
    recordEvent("enable id=%d", XPLMGetMyID());
    return folderHasFile("refuse_enable") ? 0 : 1;
}

PLUGIN_API void XPluginDisable(void) { recordEvent("disable id=%d", XPLMGetMyID()); }

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void* inParam) {
    long param = (long)(intptr_t)inParam;
    recordEvent("message from=%d msg=%d param=%ld", inFrom, inMessage, param);
    switch (inMessage) {
        case MSG_SEND_TO:
            XPLMSendMessageToPlugin((XPLMPluginID)param, MSG_HELLO, (void*)(intptr_t)XPLMGetMyID());
            break;
        case MSG_RELOAD:
            XPLMReloadPlugins();
            break;
        case MSG_NATIVE_PATHS:
            XPLMEnableFeature("XPLM_USE_NATIVE_PATHS", param != 0);
            recordEvent("native_paths=%d", XPLMIsFeatureEnabled("XPLM_USE_NATIVE_PATHS"));
            break;
        case MSG_DISABLE:
            XPLMDisablePlugin((XPLMPluginID)param);
            break;
        case MSG_ENABLE:
            recordEvent("enable_result=%d", XPLMEnablePlugin((XPLMPluginID)param));
            break;
        case MSG_ECHO:
            XPLMSendMessageToPlugin((XPLMPluginID)param, MSG_ECHO, (void*)(intptr_t)XPLMGetMyID());
            break;
    }
}

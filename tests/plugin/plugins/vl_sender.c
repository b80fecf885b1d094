/* A partner plug-in: once the simulator says the plane is loaded (all plug-ins are
 * enabled by then) it broadcasts message 0x7F001 with the parameter 0xBEEF. */
#include <string.h>

#include "XPLMDefs.h"
#include "XPLMPlugin.h"

PLUGIN_API int XPluginStart(char* outName, char* outSig, char* outDesc) {
    strcpy(outName, "Sender");
    strcpy(outSig, "vorlith.test.sender");
    strcpy(outDesc, "Broadcasts a message once the plane is loaded");
    return 1;
}

PLUGIN_API void XPluginStop(void) {}

PLUGIN_API int XPluginEnable(void) { return 1; }

PLUGIN_API void XPluginDisable(void) {}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void* inParam) {
    (void)inParam;
    if (inFrom == XPLM_PLUGIN_XPLANE && inMessage == XPLM_MSG_PLANE_LOADED)
        XPLMSendMessageToPlugin(XPLM_NO_PLUGIN_ID, 0x7F001, (void*)0xBEEF);
}

/* Test plug-in: fills its start buffers to the last byte without terminating them, and
 * has no XPluginReceiveMessage (messages to it are simply not delivered). */
#include <string.h>

#include "XPLMDefs.h"

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    memset(outName, 'n', 256);
    memset(outSignature, 's', 256);
    memset(outDescription, 'd', 256);
    return 1;
}

PLUGIN_API void XPluginStop(void) {}
PLUGIN_API int XPluginEnable(void) { return 1; }
PLUGIN_API void XPluginDisable(void) {}

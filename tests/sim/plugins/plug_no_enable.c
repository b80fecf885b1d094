/* Test plug-in that lacks XPluginEnable and XPluginDisable: not a usable plug-in. */
#include <string.h>

#include "XPLMDefs.h"

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    strcpy(outName, "No enable");
    strcpy(outSignature, "xpsim.test.no_enable");
    strcpy(outDescription, "Misses two entry points.");
    return 1;
}

PLUGIN_API void XPluginStop(void) {}

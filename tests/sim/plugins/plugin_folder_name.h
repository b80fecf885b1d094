/* For test plug-ins installed as <root>/Resources/plugins/<Name>/64/lin.xpl: copies
 * <Name> into `out`, so one binary installed in several folders is several plug-ins. */
#ifndef XPSIM_TEST_PLUGIN_FOLDER_NAME_H
#define XPSIM_TEST_PLUGIN_FOLDER_NAME_H

#include <stdio.h>
#include <string.h>

#include "XPLMPlugin.h"

static void pluginFolderName(char* out, size_t size) {
    char path[256];
    char* slash;
    XPLMGetPluginInfo(XPLMGetMyID(), NULL, path, NULL, NULL);
    slash = strrchr(path, '/');
    if (slash) *slash = '\0';
    slash = strrchr(path, '/');
    if (slash && strcmp(slash, "/64") == 0) *slash = '\0';
    slash = strrchr(path, '/');
    snprintf(out, size, "%s", slash ? slash + 1 : path);
}

#endif

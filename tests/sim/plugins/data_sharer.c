/* Test plug-in: takes part in the shared int xpsim/test/shared (and other shared data
 * on request) and publishes what it saw under xpsim/test/<Name>/: how many change
 * notifications it got, the value it read in the last one, and the results of its
 * share and unshare calls. <Name> is the folder it is installed in. */
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "XPLMDataAccess.h"
#include "XPLMPlugin.h"
#include "test_plugin.h"

/* Test messages; the parameter is an int in the pointer. */
#define MSG_SHARE 0x7FF20001   /* XPLMShareData("xpsim/test/shared", param, notify) */
#define MSG_UNSHARE 0x7FF20002 /* XPLMUnshareData("xpsim/test/shared", param, notify) */
#define MSG_WRITE 0x7FF20003   /* XPLMSetDatai(xpsim/test/shared, param) */

static int gNotified;
static int gNotifiedValue = -1;
static int gNotifiedId = -2;
static int gLastResult = -1;

static void changed(void* refcon) {
    ++gNotified;
    gNotifiedValue = XPLMGetDatai(XPLMFindDataRef("xpsim/test/shared"));
    gNotifiedId = XPLMGetMyID();
}

static int getInt(void* refcon) { return *(int*)refcon; }

static void publish(const char* leaf, int* value) {
    char name[600];
    snprintf(name, sizeof name, "xpsim/test/%s/%s", gName, leaf);
    XPLMRegisterDataAccessor(name, xplmType_Int, 0, getInt, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL,
                             NULL, NULL, NULL, value, NULL);
}

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    findMyFolder();
    strcpy(outName, gName);
    sprintf(outSignature, "xpsim.test.%s", gName);
    strcpy(outDescription, "Shares data and counts change notifications.");
    publish("notified", &gNotified);
    publish("notified_value", &gNotifiedValue);
    publish("notified_id", &gNotifiedId);
    publish("last_result", &gLastResult);
    gLastResult = XPLMShareData("xpsim/test/shared", xplmType_Int, changed, NULL);
    return 1;
}

PLUGIN_API void XPluginStop(void) {}
PLUGIN_API int XPluginEnable(void) { return 1; }
PLUGIN_API void XPluginDisable(void) {}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void* inParam) {
    int param = (int)(intptr_t)inParam;
    switch (inMessage) {
        case MSG_SHARE: gLastResult = XPLMShareData("xpsim/test/shared", param, changed, NULL); break;
        case MSG_UNSHARE: gLastResult = XPLMUnshareData("xpsim/test/shared", param, changed, NULL); break;
        case MSG_WRITE: XPLMSetDatai(XPLMFindDataRef("xpsim/test/shared"), param); break;
    }
}

/* Test plug-in: takes part in the shared int xpsim/test/shared (and other shared data
 * on request) and publishes what it saw under xpsim/test/<Name>/: how many change
 * notifications it got, the value it read in the last one, and the results of its
 * share and unshare calls. <Name> is the folder it is installed in. */
#include <stdint.h>

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

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    startTestPlugin(outName, outSignature, outDescription, "xpsim.test.",
                    "Shares data and counts change notifications.");
    publishInt("notified", &gNotified);
    publishInt("notified_value", &gNotifiedValue);
    publishInt("notified_id", &gNotifiedId);
    publishInt("last_result", &gLastResult);
    gLastResult = XPLMShareData("xpsim/test/shared", xplmType_Int, changed, NULL);
    return 1;
}

TEST_PLUGIN_PLAIN_LIFECYCLE()

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void* inParam) {
    int param = (int)(intptr_t)inParam;
    switch (inMessage) {
        case MSG_SHARE: gLastResult = XPLMShareData("xpsim/test/shared", param, changed, NULL); break;
        case MSG_UNSHARE: gLastResult = XPLMUnshareData("xpsim/test/shared", param, changed, NULL); break;
        case MSG_WRITE: XPLMSetDatai(XPLMFindDataRef("xpsim/test/shared"), param); break;
    }
}

/* Test plug-in for the world areas: takes and gives up the camera, acquires and
 * releases the planes, loads objects asynchronously, on test messages; records what
 * the host calls back into events.txt next to its binary. One binary is installed as
 * several plug-ins, named after their folders. With a file "record_messages" in its
 * folder it also records the simulator's messages. */
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "XPLMCamera.h"
#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "XPLMScenery.h"
#include "test_plugin.h"

/* Test messages; the parameter is an int in the pointer. */
#define MSG_CAMERA_TAKE 0x7FF10001      /* XPLMControlCamera(param = duration) */
#define MSG_CAMERA_RELEASE 0x7FF10002   /* XPLMDontControlCamera */
#define MSG_CAMERA_GIVE_UP 0x7FF10003   /* the next control call returns 0 */
#define MSG_PLANES_ACQUIRE 0x7FF10004   /* XPLMAcquirePlanes with a callback, result recorded */
#define MSG_PLANES_RELEASE 0x7FF10005   /* XPLMReleasePlanes */
#define MSG_LOAD_ASYNC 0x7FF10006       /* XPLMLoadObjectAsync of the tug (param 0) or a missing file */
#define MSG_UNLOAD 0x7FF10007           /* XPLMUnloadObject of the last loaded object */
#define MSG_DISABLE_ME 0x7FF10008       /* XPLMDisablePlugin(myself) */

static int gGiveUp;
static int gAcquireAgain;
static XPLMObjectRef gObject;

static int cameraControl(XPLMCameraPosition_t* outPosition, int inIsLosingControl, void* inRefcon) {
    if (inIsLosingControl) {
        recordEvent("camera losing null_position=%d refcon=%ld", outPosition == NULL, (long)(intptr_t)inRefcon);
        return 0;
    }
    if (!outPosition) {
        recordEvent("camera called without a position");
        return 0;
    }
    /* A position of its own per plug-in: x = its id, so the test can tell who drove. */
    outPosition->x = (float)XPLMGetMyID();
    outPosition->y = 500.0f;
    outPosition->z = -250.0f;
    outPosition->pitch = -10.0f;
    outPosition->heading = 90.0f;
    outPosition->roll = 0.0f;
    outPosition->zoom = 2.0f;
    if (gGiveUp) {
        gGiveUp = 0;
        recordEvent("camera gives up");
        return 0;
    }
    recordEvent("camera frame");
    return 1;
}

static void planesAvailable(void* inRefcon) {
    recordEvent("planes available refcon=%ld myid=%d", (long)(intptr_t)inRefcon, XPLMGetMyID());
    if (gAcquireAgain) recordEvent("acquire again=%d", XPLMAcquirePlanes(NULL, planesAvailable, inRefcon));
}

static void objectLoaded(XPLMObjectRef inObject, void* inRefcon) {
    gObject = inObject;
    recordEvent("object loaded nonnull=%d refcon=%ld myid=%d", inObject != NULL, (long)(intptr_t)inRefcon,
                XPLMGetMyID());
}

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    startTestPlugin(outName, outSignature, outDescription, "xpsim.test.",
                    "Acts on the camera, the planes and objects on request.");
    return 1;
}

PLUGIN_API void XPluginStop(void) {}
PLUGIN_API int XPluginEnable(void) { return 1; }
PLUGIN_API void XPluginDisable(void) { recordEvent("disable"); }

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void* inParam) {
    long param = (long)(intptr_t)inParam;
    if (inMessage < 0x7FF00000 && folderHasFile("record_messages")) {
        recordEvent("message from=%d msg=%d param=%ld", inFrom, inMessage, param);
    }
    switch (inMessage) {
        case MSG_CAMERA_TAKE:
            XPLMControlCamera((XPLMCameraControlDuration)param, cameraControl, (void*)(intptr_t)XPLMGetMyID());
            break;
        case MSG_CAMERA_RELEASE:
            XPLMDontControlCamera();
            break;
        case MSG_CAMERA_GIVE_UP:
            gGiveUp = 1;
            break;
        case MSG_PLANES_ACQUIRE:
            gAcquireAgain = (int)param;
            recordEvent("acquire=%d", XPLMAcquirePlanes(NULL, planesAvailable, (void*)(intptr_t)(100 + XPLMGetMyID())));
            break;
        case MSG_PLANES_RELEASE:
            XPLMReleasePlanes();
            break;
        case MSG_LOAD_ASYNC:
            XPLMLoadObjectAsync(param == 0 ? "Resources/default scenery/sim objects/apt_vehicles/pushback/tug_GT110.obj"
                                           : "missing/thing.obj",
                                objectLoaded, (void*)(intptr_t)7);
            break;
        case MSG_UNLOAD:
            XPLMUnloadObject(gObject);
            break;
        case MSG_DISABLE_ME:
            XPLMDisablePlugin(XPLMGetMyID());
            break;
    }
}

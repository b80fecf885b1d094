/* Test plug-in for the world areas: takes and gives up the camera, acquires and
 * releases the planes, loads objects asynchronously, on test messages; records what
 * the host calls back into events.txt next to its binary. One binary is installed as
 * several plug-ins, named after their folders. */
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include "XPLMCamera.h"
#include "XPLMPlanes.h"
#include "XPLMPlugin.h"
#include "XPLMScenery.h"

/* Test messages; the parameter is an int in the pointer. */
#define MSG_CAMERA_TAKE 0x7FF10001      /* XPLMControlCamera(param = duration) */
#define MSG_CAMERA_RELEASE 0x7FF10002   /* XPLMDontControlCamera */
#define MSG_CAMERA_GIVE_UP 0x7FF10003   /* the next control call returns 0 */
#define MSG_PLANES_ACQUIRE 0x7FF10004   /* XPLMAcquirePlanes with a callback, result recorded */
#define MSG_PLANES_RELEASE 0x7FF10005   /* XPLMReleasePlanes */
#define MSG_LOAD_ASYNC 0x7FF10006       /* XPLMLoadObjectAsync of the tug (param 0) or a missing file */
#define MSG_UNLOAD 0x7FF10007           /* XPLMUnloadObject of the last loaded object */
#define MSG_DISABLE_ME 0x7FF10008       /* XPLMDisablePlugin(myself) */

static char gFolder[512];
static char gName[256];
static int gGiveUp;
static int gAcquireAgain;
static XPLMObjectRef gObject;

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

static int cameraControl(XPLMCameraPosition_t* outPosition, int inIsLosingControl, void* inRefcon) {
    if (inIsLosingControl) {
        record("camera losing null_position=%ld refcon=%ld", outPosition == NULL, (long)(intptr_t)inRefcon, 0);
        return 0;
    }
    if (!outPosition) {
        record("camera called without a position", 0, 0, 0);
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
        record("camera gives up", 0, 0, 0);
        return 0;
    }
    record("camera frame", 0, 0, 0);
    return 1;
}

static void planesAvailable(void* inRefcon) {
    record("planes available refcon=%ld myid=%ld", (long)(intptr_t)inRefcon, XPLMGetMyID(), 0);
    if (gAcquireAgain) record("acquire again=%ld", XPLMAcquirePlanes(NULL, planesAvailable, inRefcon), 0, 0);
}

static void objectLoaded(XPLMObjectRef inObject, void* inRefcon) {
    gObject = inObject;
    record("object loaded nonnull=%ld refcon=%ld myid=%ld", inObject != NULL, (long)(intptr_t)inRefcon, XPLMGetMyID());
}

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
    strcpy(outDescription, "Acts on the camera, the planes and objects on request.");
    return 1;
}

PLUGIN_API void XPluginStop(void) {}
PLUGIN_API int XPluginEnable(void) { return 1; }
PLUGIN_API void XPluginDisable(void) { record("disable", 0, 0, 0); }

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void* inParam) {
    long param = (long)(intptr_t)inParam;
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
            record("acquire=%ld", XPLMAcquirePlanes(NULL, planesAvailable, (void*)(intptr_t)(100 + XPLMGetMyID())), 0, 0);
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

/* Test plug-in: a legacy flight loop (every frame) and a created one (after the flight
 * model, every second frame) that count their calls and remember the plug-in id the
 * host reported while they ran, published as xpsim/test/<Name>/{legacy_calls,
 * created_calls,seen_id}. <Name> is the folder it is installed in. Like a careless
 * plug-in it leaves everything registered at stop: the host must drop it. */
#include "XPLMProcessing.h"
#include "test_plugin.h"

static int gLegacyCalls;
static int gCreatedCalls;
static int gSeenId = -2;
static XPLMFlightLoopID gCreated;

static float legacyLoop(float sinceCall, float sinceLoop, int counter, void* refcon) {
    ++gLegacyCalls;
    gSeenId = XPLMGetMyID();
    return -1.0f;
}

static float createdLoop(float sinceCall, float sinceLoop, int counter, void* refcon) {
    ++gCreatedCalls;
    gSeenId = XPLMGetMyID();
    return -2.0f;
}

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    XPLMCreateFlightLoop_t params;
    startTestPlugin(outName, outSignature, outDescription, "xpsim.test.", "Counts flight-loop calls.");
    publishInt("legacy_calls", &gLegacyCalls);
    publishInt("created_calls", &gCreatedCalls);
    publishInt("seen_id", &gSeenId);
    XPLMRegisterFlightLoopCallback(legacyLoop, -1.0f, NULL);
    params.structSize = sizeof params;
    params.phase = xplm_FlightLoop_Phase_AfterFlightModel;
    params.callbackFunc = createdLoop;
    params.refcon = NULL;
    gCreated = XPLMCreateFlightLoop(&params);
    XPLMScheduleFlightLoop(gCreated, -1.0f, 1);
    return 1;
}

TEST_PLUGIN_PLAIN_LIFECYCLE()
PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void* inParam) {}

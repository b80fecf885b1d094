/* Test plug-in: publishes accessor datarefs of every type under xpsim/test/<Name>/,
 * where <Name> is the folder it is installed in, and remembers which plug-in the host
 * said was calling (XPLMGetMyID) and which refcon each callback got. */
#include <stdint.h>

#include "test_plugin.h"

/* Test messages; the parameter is an int in the pointer. */
#define MSG_UNREGISTER 0x7FF10001 /* unregister every dataref of this plug-in */
#define MSG_REGISTER 0x7FF10002   /* register them again */

enum { kArraySize = 4, kDataSize = 8 };

static int gInt = 7;
static float gFloat = 2.5f;
static double gDouble = 1234.5678;
static int gInts[kArraySize] = {10, 20, 30, 40};
static float gFloats[kArraySize] = {0.5f, 1.5f, 2.5f, 3.5f};
static unsigned char gData[kDataSize] = "abcdefg";
static int gReadOnly = 99;
static int gSeenId = -2;      /* XPLMGetMyID in the last value callback */
static int gSeenRefcon;       /* refcon the last value callback got */
static int gCalls;            /* value callbacks so far */

static XPLMDataRef gValues, gReadOnlyRef, gSeenIdRef, gSeenRefconRef, gCallsRef;

static void seen(void* refcon) {
    gSeenId = XPLMGetMyID();
    gSeenRefcon = (int)(intptr_t)refcon;
    ++gCalls;
}

static int getInt(void* r) { seen(r); return gInt; }
static void setInt(void* r, int v) { seen(r); gInt = v; }
static float getFloat(void* r) { seen(r); return gFloat; }
static void setFloat(void* r, float v) { seen(r); gFloat = v; }
static double getDouble(void* r) { seen(r); return gDouble; }
static void setDouble(void* r, double v) { seen(r); gDouble = v; }

/* The provider implements the size query, offsets and bounds itself. */
#define ARRAY_ACCESSORS(Name, Param, Element, store, size)                      \
    static int get##Name(void* r, Param* out, int offset, int max) {            \
        int n;                                                                  \
        seen(r);                                                                \
        if (!out) return size;                                                  \
        if (offset < 0 || offset >= size || max <= 0) return 0;                 \
        n = size - offset < max ? size - offset : max;                          \
        memcpy(out, store + offset, n * sizeof(Element));                       \
        return n;                                                               \
    }                                                                           \
    static void set##Name(void* r, Param* in, int offset, int count) {          \
        int n;                                                                  \
        seen(r);                                                                \
        if (!in || offset < 0 || offset >= size || count <= 0) return;          \
        n = size - offset < count ? size - offset : count;                      \
        memcpy(store + offset, in, n * sizeof(Element));                        \
    }
ARRAY_ACCESSORS(Ints, int, int, gInts, kArraySize)
ARRAY_ACCESSORS(Floats, float, float, gFloats, kArraySize)
ARRAY_ACCESSORS(Data, void, unsigned char, gData, kDataSize)

static int getReadOnly(void* r) { seen(r); return gReadOnly; }

static void registerAll(void) {
    char name[600];
    snprintf(name, sizeof name, "xpsim/test/%s/values", gName);
    /* One dataref of every type; read refcon 11, write refcon 22. */
    gValues = XPLMRegisterDataAccessor(
        name,
        xplmType_Int | xplmType_Float | xplmType_Double | xplmType_IntArray | xplmType_FloatArray | xplmType_Data,
        1, getInt, setInt, getFloat, setFloat, getDouble, setDouble, getInts, setInts, getFloats, setFloats,
        getData, setData, (void*)11, (void*)22);
    snprintf(name, sizeof name, "xpsim/test/%s/read_only", gName);
    gReadOnlyRef = XPLMRegisterDataAccessor(name, xplmType_Int, 0, getReadOnly, NULL, NULL, NULL, NULL, NULL, NULL,
                                            NULL, NULL, NULL, NULL, NULL, NULL, NULL);
    gSeenIdRef = publishInt("seen_id", &gSeenId);
    gSeenRefconRef = publishInt("seen_refcon", &gSeenRefcon);
    gCallsRef = publishInt("calls", &gCalls);
}

static void unregisterAll(void) {
    XPLMUnregisterDataAccessor(gValues);
    XPLMUnregisterDataAccessor(gReadOnlyRef);
    XPLMUnregisterDataAccessor(gSeenIdRef);
    XPLMUnregisterDataAccessor(gSeenRefconRef);
    XPLMUnregisterDataAccessor(gCallsRef);
}

PLUGIN_API int XPluginStart(char* outName, char* outSignature, char* outDescription) {
    startTestPlugin(outName, outSignature, outDescription, "xpsim.test.", "Publishes accessor datarefs.");
    registerAll();
    return 1;
}

PLUGIN_API void XPluginStop(void) { unregisterAll(); }
PLUGIN_API int XPluginEnable(void) { return 1; }
PLUGIN_API void XPluginDisable(void) {}

PLUGIN_API void XPluginReceiveMessage(XPLMPluginID inFrom, int inMessage, void* inParam) {
    if (inMessage == MSG_UNREGISTER) unregisterAll();
    if (inMessage == MSG_REGISTER) registerAll();
}

#include "tools/Tools.h"

#include "XPLMProcessing.h"
#include "tools/Console.h"
#include "tools/Performance.h"
#include "tools/ReloadWatch.h"

namespace vorlith {

namespace {

int gLastCounter = -1;

float ToolsLoop(float, float, int counter, void*) {
    // The counter is the simulator's flight-loop cycle: one per frame.
    int frames = gLastCounter < 0 ? 0 : counter - gLastCounter;
    gLastCounter = counter;
    VL_RollPerformance(frames);
    VL_LookForChanges();  // last: a reload starts the scripts' counts afresh
    return 1.0f;
}

}  // namespace

void VL_StartTools() {
    gLastCounter = -1;
    VL_StartPerformance();
    XPLMRegisterFlightLoopCallback(ToolsLoop, 1.0f, nullptr);
}

void VL_StopTools() {
    XPLMUnregisterFlightLoopCallback(ToolsLoop, nullptr);
    VL_ForgetScriptFiles();
    VL_DestroyPerformanceWindow();
    VL_DestroyConsoleWindow();
}

}  // namespace vorlith

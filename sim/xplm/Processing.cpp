// XPLMProcessing: the clock and flight loops.
// Skeleton: filled in by the area's implementation.

#include "host.h"

namespace xpsim {

void flightLoopFrame() {}
void forgetPluginProcessing(int) {}
void resetProcessing() {}

}  // namespace xpsim

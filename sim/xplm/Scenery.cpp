// XPLMScenery: terrain probes, objects and the library.
// Skeleton: filled in by the area's implementation.

#include "host.h"

namespace xpsim {

void sceneryFrame() {}
void forgetPluginWorld(int) {}
void resetWorld() {}

}  // namespace xpsim

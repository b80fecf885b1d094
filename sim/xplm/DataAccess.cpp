// XPLMDataAccess: the simulator's datarefs, plug-in accessors and shared data.
// Skeleton: filled in by the area's implementation.

#include "host.h"

namespace xpsim {

void forgetPluginDataAccess(int) {}
void resetDataAccess() {}

}  // namespace xpsim

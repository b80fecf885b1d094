// XPLMUtilities: paths, files, versions, keys, commands and the error callback.
// Skeleton: filled in by the area's implementation.

#include "host.h"

namespace xpsim {

void commandFrame() {}
void callErrorCallback(int, const char*) {}
void forgetPluginUtilities(int) {}
void resetUtilities() {}

}  // namespace xpsim

// XPLMPlugin: the table of loaded plug-ins, loading, messages and features.
// Skeleton: filled in by the area's implementation.

#include "host.h"

namespace xpsim {

bool isPluginEnabled(int) { return false; }
void pluginFrame() {}
void unloadAllPlugins() {}
bool placeSdkLibraries(std::string*) { return true; }
void resetPlugins() {}

}  // namespace xpsim

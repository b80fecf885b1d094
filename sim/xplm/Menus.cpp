// XPLMMenus: the plug-ins menu, sub-menus and items.
// Skeleton: filled in by the area's implementation.

#include "host.h"

namespace xpsim {

void forgetPluginMenus(int) {}
void resetMenus() {}

}  // namespace xpsim

// XPLMDisplay: draw callbacks, key sniffers, windows, mouse, hot keys, screen.
// Skeleton: filled in by the area's implementation.

#include "host.h"

namespace xpsim {

void inputFrame() {}
void drawFrame() {}
void forgetPluginDisplay(int) {}
void resetDisplay() {}

}  // namespace xpsim

// XPLMGraphics: graphics state, textures, coordinate conversion and the per-frame draw list.
// Skeleton: filled in by the area's implementation.

#include "host.h"

namespace xpsim {

void resetGraphics() {}

}  // namespace xpsim

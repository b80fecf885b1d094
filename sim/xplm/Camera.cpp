// XPLMCamera: camera position and control.
// Skeleton: filled in by the area's implementation.

#include "host.h"

namespace xpsim {

void cameraFrame() {}

}  // namespace xpsim

// Stand-ins until the binding modules and the callback bridge land: no modules yet,
// no script error callbacks, no callback lists to check.

#include "modules/Modules.h"

#include "core/Lifecycle.h"

namespace vorlith {

void VL_RegisterModules() {}
void VL_ErrorCallback(const char*) {}
void VL_CheckAllCallbacks() {}

}  // namespace vorlith

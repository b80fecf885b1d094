// Registration of every module scripts can import, in the order the start sequence needs.
#pragma once

namespace vorlith {

// Registers the binding and service modules; called by StartPython inside the guard.
void VL_RegisterModules();

}  // namespace vorlith

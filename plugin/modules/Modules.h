// Registration of every module scripts can import, in the order the start sequence needs,
// and the registration function of each module (init plus the module's name).
#pragma once

namespace vorlith {

// Registers the binding and service modules; called by StartPython inside the guard,
// once per interpreter start, before any script is loaded.
void VL_RegisterModules();

void initTembrookUtilities();
void initXPLMDefs();
void initXPLMDataAccess();
void initXPLMProcessing();

}  // namespace vorlith

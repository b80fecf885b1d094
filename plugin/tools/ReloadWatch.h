// TOOLS:ReloadOnChange: the scripts are reloaded, as the control panel's Reload does,
// when a script file in the scripts folder is added, changed or removed.
#pragma once

namespace vorlith {

// Compares the scripts folder with the last look (the tools' loop calls it once a
// second); nothing while the switch is off.
void VL_LookForChanges();
void VL_ForgetScriptFiles();

}  // namespace vorlith

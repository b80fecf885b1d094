// TOOLS:ReloadOnChange: the scripts are reloaded, as the control panel's Reload does,
// when a script file in the scripts folder is added, changed or removed.
#pragma once

namespace vorlith {

// The plug-in's own flight loop that looks at the folder once a second; it runs from
// XPluginStart to XPluginStop and does nothing while the switch is off.
void VL_StartReloadWatch();
void VL_StopReloadWatch();

}  // namespace vorlith

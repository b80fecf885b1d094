// The script-author tools that run once a second: the folder watch and the performance
// table. Their own flight loop runs from XPluginStart to XPluginStop.
#pragma once

namespace vorlith {

void VL_StartTools();
void VL_StopTools();

}  // namespace vorlith

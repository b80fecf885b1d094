// What the other areas of the host ask of the datarefs (DataRefTable.cpp).
#pragma once

namespace xpsim {

// The simulator's own per-frame change of its datarefs (the "flight model" step):
// advances the sim/time datarefs by one frame. Processing.cpp runs it between the
// before- and after-flight-model flight loops.
void flightModelStep();

}  // namespace xpsim

// A cheap clock for timing calls into scripts: ticks of the processor's time-stamp
// counter where it has one (constant rate, about 10 ns to read), nanoseconds elsewhere.
// Turned into time by measuring ticks against the steady clock over a long span.
#pragma once

#include <cstdint>

namespace vorlith {

std::uint64_t VL_Ticks();

}  // namespace vorlith

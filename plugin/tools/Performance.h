// The cost of each script per frame, from the dispatch's counts: the "Performance"
// window and, with TOOLS:PerformanceLog = N, the same table in the log every N seconds.
#pragma once

#include <string>
#include <vector>

namespace vorlith {

void VL_StartPerformance();
// Once a second: turns the counts of the last `frames` frames into the table (the
// counts start again), refreshes the window and writes the log when due.
void VL_RollPerformance(int frames);
// The table's lines as the window and the log show them; empty before the first second.
const std::vector<std::string>& VL_PerformanceLines();
// The "Performance" menu item.
void VL_OpenPerformanceWindow();
void VL_DestroyPerformanceWindow();

}  // namespace vorlith

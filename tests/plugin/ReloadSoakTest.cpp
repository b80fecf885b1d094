// Reloads leak nothing: 200 reloads of ten scripts that leave registrations of every
// kind behind grow the process by at most 5 MB over the first reload.

#include <unistd.h>

#include <fstream>

#include "Harness.h"
#include "driver.h"

namespace vorlith::test {
namespace {

double ResidentMegabytes() {
    long pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

TEST_F(PluginTest, TwoHundredReloadsOfScriptsThatLeaveRegistrationsGrowRssByAtMost5MB) {
    for (int i = 0; i < 10; ++i) AddScript("VL_Soak.py", "VL_Soak" + std::to_string(i) + ".py");
    StartSim();
    RunSeconds(0.05);
    xpsim::driver::reloadPlugins();
    RunSeconds(0.05);
    double first = ResidentMegabytes();
    for (int reload = 1; reload < 200; ++reload) {
        xpsim::driver::reloadPlugins();
        xpsim::driver::runFrames(2);
    }
    double growth = ResidentMegabytes() - first;
    std::string log = Log();
    EXPECT_EQ(CountOf(log, "Script 'VL_Soak9.py' successfully loaded.\n"), 201);
    EXPECT_EQ(CountOf(log, "Error"), 0) << log.substr(0, 4000);
    EXPECT_LE(growth, 5.0) << "MB after the first reload: " << first;
    std::printf("RSS after the first reload %.1f MB, growth over 199 more %.2f MB\n", first, growth);
}

}  // namespace
}  // namespace vorlith::test

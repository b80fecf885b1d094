// The SDK generation the plug-in detects from the simulator's SDK library, as the
// version text in the log tells it.

#include "Harness.h"

namespace vorlith::test {
namespace {

TEST_F(PluginTest, VersionTextNamesTheSimulatorsSdkGeneration) {
    for (const char* sdk : {"1.02", "2.00", "2.10"}) {
        SCOPED_TRACE(sdk);
        StartSim(sdk);
        StopSim();
        std::vector<std::string> log = SplitLines(Log());
        ASSERT_GE(log.size(), 2u);
        EXPECT_EQ(log[1].rfind(std::string("Vorlith 2.67.07 (SDK ") + sdk + ") ", 0), 0u) << log[1];
        std::remove((ScriptsFolder() + "/VorlithLog.txt").c_str());
    }
}

}  // namespace
}  // namespace vorlith::test

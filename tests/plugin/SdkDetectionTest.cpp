// The SDK generation the plug-in detects from the simulator's SDK library, as the
// version text in the log tells it, and the loader's report when there is no library.

#include "Harness.h"

namespace vorlith::test {
namespace {

TEST_F(PluginTest, VersionTextNamesTheSimulatorsSdkGeneration) {
    for (const char* sdk : {"1.02", "2.00", "2.10"}) {
        SCOPED_TRACE(sdk);
        testing::internal::CaptureStdout();
        StartSim(sdk);
        StopSim();
        std::string printed = testing::internal::GetCapturedStdout();
        std::vector<std::string> log = SplitLines(Log());
        ASSERT_GE(log.size(), 2u);
        EXPECT_EQ(log[1].rfind(std::string("Vorlith 2.67.07 (SDK ") + sdk + ") ", 0), 0u) << log[1];
        // A 1.02 simulator has no SDK library to open: the loader's error goes to stdout.
        bool reported = printed.find("dlerror: ") != std::string::npos &&
                        printed.find("Resources/plugins/XPLM_64.so") != std::string::npos;
        EXPECT_EQ(reported, std::string(sdk) == "1.02") << printed;
        std::remove((ScriptsFolder() + "/VorlithLog.txt").c_str());
    }
}

}  // namespace
}  // namespace vorlith::test

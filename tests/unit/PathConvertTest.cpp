// The macOS colon (HFS) paths and the other separator rules.

#include <gtest/gtest.h>

#include <cstring>

#include "platform/PathConvert.h"

using namespace vorlith;

namespace {
std::string Posix(const char* hfs, const char* boot = "Macintosh HD", int size = 512) {
    char out[512];
    std::strcpy(out, "untouched");
    int result = VL_HfsToPosix(hfs, boot, out, size);
    return result == 0 ? std::string(out) : "error:" + std::string(out);
}
}  // namespace

TEST(PathConvert, BootVolumeMapsToTheRootAndOtherVolumesToVolumes) {
    EXPECT_EQ(Posix("Macintosh HD:Applications:X-Plane 9:"), "/Applications/X-Plane 9");
    EXPECT_EQ(Posix("Macintosh HD:Applications:X-Plane 9:Resources:plugins:XPLM.framework:XPLM"),
              "/Applications/X-Plane 9/Resources/plugins/XPLM.framework/XPLM");
    EXPECT_EQ(Posix("Data:Sim:"), "/Volumes/Data/Sim");
    EXPECT_EQ(Posix("Macintosh HD:"), "/");
    EXPECT_EQ(Posix("Macintosh HD"), "/");
    EXPECT_EQ(Posix("Data"), "/Volumes/Data");
}

TEST(PathConvert, SlashInsideAnHfsNameBecomesColon) {
    EXPECT_EQ(Posix("Macintosh HD:A/B:c.txt"), "/A:B/c.txt");
}

TEST(PathConvert, RelativeMalformedAndTooLongPathsFailWithoutWriting) {
    EXPECT_EQ(Posix(":Relative:Path"), "error:untouched");
    EXPECT_EQ(Posix("Macintosh HD::Up"), "error:untouched");
    EXPECT_EQ(Posix(""), "error:untouched");
    // "/Applications" needs 14 bytes with its terminator.
    EXPECT_EQ(Posix("Macintosh HD:Applications", "Macintosh HD", 13), "error:untouched");
    EXPECT_EQ(Posix("Macintosh HD:Applications", "Macintosh HD", 14), "/Applications");
}

TEST(PathConvert, JoinUsesTheGivenSeparatorAfterTheBase) {
    EXPECT_EQ(VL_JoinPath("/sim/", {"Resources", "plugins", "PythonScripts"}, "/"),
              "/sim/Resources/plugins/PythonScripts");
    EXPECT_EQ(VL_JoinPath("Disk:Sim:", {"Resources", "plugins"}, ":"), "Disk:Sim:Resources:plugins");
    EXPECT_EQ(VL_JoinPath("/sim/", {}, "/"), "/sim/");
}

TEST(PathConvert, PythonFormPathGoesUnderVolumesOnlyForColonPaths) {
    EXPECT_EQ(VL_PythonFormPath("Disk:Sim:Resources:plugins:PythonScripts", ":"),
              "/Volumes/Disk/Sim/Resources/plugins/PythonScripts");
    EXPECT_EQ(VL_PythonFormPath("/home/me/X-Plane/Resources/plugins/PythonScripts", "/"),
              "/home/me/X-Plane/Resources/plugins/PythonScripts");
}

// What scripts get back from the path functions and what they hand in, on a colon simulator.
TEST(PathConvert, ColonFormIsTheOnlyReverseOfPythonFormOnColonSimulators) {
    EXPECT_EQ(VL_PythonFormPath("Disk:Sim:", ":"), "/Volumes/Disk/Sim/");
    EXPECT_EQ(VL_ColonFormPath("a/b/c.txt", ":"), "a:b:c.txt");
    EXPECT_EQ(VL_ColonFormPath("a/b/c.txt", "/"), "a/b/c.txt");
    EXPECT_EQ(VL_ColonFormPath("", ":"), "");
}

// Bounded copies into the fixed-size buffers, the print-list line and ini line ends.

#include <gtest/gtest.h>

#include <cstring>

#include "core/IniText.h"
#include "core/Text.h"

using namespace vorlith;

TEST(Text, CopiesAndAppendsAreCutAtTheBufferAndStayTerminated) {
    char buffer[8];
    std::memset(buffer, 'Z', sizeof buffer);
    VL_CopyText(buffer, "abcdefghijkl");
    EXPECT_STREQ(buffer, "abcdefg");
    VL_CopyText(buffer, "ab");
    VL_AppendText(buffer, "cdefghij");
    EXPECT_STREQ(buffer, "abcdefg");
    VL_AppendText(buffer, "more");  // already full
    EXPECT_STREQ(buffer, "abcdefg");
    VL_CopyText(buffer, static_cast<const char*>(nullptr));
    EXPECT_STREQ(buffer, "");

    // A text of 5000 bytes into the 4096-byte buffers keeps 4095 of them.
    std::string huge(5000, 'x');
    char big[4096];
    VL_CopyText(big, huge);
    EXPECT_EQ(std::strlen(big), 4095u);
}

TEST(Text, PrintListLineDropsEveryNewlineAndIsCut) {
    char line[16];
    const char* text = "a\nb\n";
    VL_StripNewlines(line, sizeof line, text, std::strlen(text));
    EXPECT_STREQ(line, "ab");
    VL_StripNewlines(line, sizeof line, "\n", 1);
    EXPECT_STREQ(line, "");
    std::string longText(40, 'y');
    VL_StripNewlines(line, sizeof line, longText.c_str(), longText.size());
    EXPECT_EQ(std::string(line), std::string(15, 'y'));
}

TEST(IniText, AllFourLineEndsReadAsOne) {
    const std::string expected = "[DEBUG]\nDebugCallbacks = 1\n\nCheckCallbacks = 1\n";
    EXPECT_EQ(VL_NormaliseLineEnds("[DEBUG]\nDebugCallbacks = 1\n\nCheckCallbacks = 1\n"), expected);
    EXPECT_EQ(VL_NormaliseLineEnds("[DEBUG]\rDebugCallbacks = 1\r\rCheckCallbacks = 1\r"), expected);
    EXPECT_EQ(VL_NormaliseLineEnds("[DEBUG]\r\nDebugCallbacks = 1\r\n\r\nCheckCallbacks = 1\r\n"), expected);
    EXPECT_EQ(VL_NormaliseLineEnds("[DEBUG]\n\rDebugCallbacks = 1\n\r\n\rCheckCallbacks = 1\n\r"), expected);
    EXPECT_EQ(VL_NormaliseLineEnds("no line end"), "no line end");
}

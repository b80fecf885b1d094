// XPLMGraphics in the host: world/local conversion, the per-frame draw list (text,
// numbers, boxes, state changes), fonts and measuring, texture numbers.

#include <cmath>
#include <cstring>
#include <set>

#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "display_test_util.h"
#include "world.h"

namespace xpsim::test {
namespace {

class GraphicsTest : public DisplaySimTest {
protected:
    void SetUp() override {
        DisplaySimTest::SetUp();
        startSim();
    }
};

float kWhite[3] = {1, 1, 1};

TEST_F(GraphicsTest, WorldAndLocalCoordinatesRoundTripAroundTheAircraftsAirport) {
    double x, y, z;
    XPLMWorldToLocal(world::kAirportLat, world::kAirportLon, world::kAirportElevationM, &x, &y, &z);
    EXPECT_NEAR(x, 0.0, 1e-6);
    EXPECT_NEAR(y, world::kAirportElevationM, 1e-6);
    EXPECT_NEAR(z, 0.0, 1e-6);

    // +X east, -Z north; about 111 km per degree of latitude.
    XPLMWorldToLocal(world::kAirportLat + 0.01, world::kAirportLon + 0.01, 500.0, &x, &y, &z);
    EXPECT_GT(x, 0.0);
    EXPECT_NEAR(z, -1113.2, 1.0);
    EXPECT_NEAR(y, 500.0, 1e-9);

    for (double lat : {47.0, 47.449, 48.2}) {
        for (double lon : {-123.0, -122.3093, -121.5}) {
            double backLat, backLon, backAlt;
            XPLMWorldToLocal(lat, lon, 250.0, &x, &y, &z);
            XPLMLocalToWorld(x, y, z, &backLat, &backLon, &backAlt);
            EXPECT_NEAR(backLat, lat, 1e-9);
            EXPECT_NEAR(backLon, lon, 1e-9);
            EXPECT_NEAR(backAlt, 250.0, 1e-9);
        }
    }
    double lat, lon, alt;
    XPLMLocalToWorld(1000.0, 20.0, -2000.0, &lat, &lon, &alt);
    XPLMWorldToLocal(lat, lon, alt, &x, &y, &z);
    EXPECT_NEAR(x, 1000.0, 1e-6);
    EXPECT_NEAR(y, 20.0, 1e-9);
    EXPECT_NEAR(z, -2000.0, 1e-6);

    XPLMWorldToLocal(lat, lon, alt, &x, nullptr, &z);
    EXPECT_EQ(errorsMentioning("XPLMWorldToLocal: an output pointer is NULL"), 1);
}

int drawTexts(XPLMDrawingPhase, int, void*) {
    XPLMDrawTranslucentDarkBox(10, 200, 210, 100);
    char text[] = "Hello";
    XPLMDrawString(kWhite, 20, 180, text, nullptr, xplmFont_Basic);
    XPLMDrawNumber(kWhite, 20, 160, 3.14159, 3, 2, 1, xplmFont_Basic);
    return 1;
}

TEST_F(GraphicsTest, TextNumbersAndBoxesAreRecordedInTheDrawListOfTheFrameThatDrewThem) {
    XPLMRegisterDrawCallback(drawTexts, xplm_Phase_Window, 0, nullptr);
    EXPECT_TRUE(driver::drawList().empty());
    driver::runFrames(1);

    std::vector<DrawItem> boxes = drawn("darkbox");
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ((std::vector<int>{boxes[0].x, boxes[0].y, boxes[0].right, boxes[0].bottom}),
              (std::vector<int>{10, 200, 210, 100}));
    std::vector<DrawItem> strings = drawn("string");
    ASSERT_EQ(strings.size(), 1u);
    EXPECT_EQ(strings[0].text, "Hello");
    EXPECT_EQ(strings[0].x, 20);
    EXPECT_EQ(strings[0].y, 180);
    EXPECT_EQ(strings[0].style, xplmFont_Basic);
    int charWidth = 0;
    XPLMGetFontDimensions(xplmFont_Basic, &charWidth, nullptr, nullptr);
    EXPECT_EQ(strings[0].right, 20 + 5 * charWidth);
    std::vector<DrawItem> numbers = drawn("number");
    ASSERT_EQ(numbers.size(), 1u);
    EXPECT_EQ(numbers[0].text, "+003.14");
    EXPECT_EQ(numbers[0].y, 160);

    // The window phase's own drawing came before the after-callback's text.
    std::vector<DrawItem> all = driver::drawList();
    auto position = [&](const std::string& kind, const std::string& text) {
        for (size_t i = 0; i < all.size(); ++i) {
            if (all[i].kind == kind && (text.empty() || all[i].text == text)) return static_cast<int>(i);
        }
        return -1;
    };
    EXPECT_LT(position("phase", "Window"), position("darkbox", ""));
    EXPECT_LT(position("string", ""), position("phase", "LastCockpit"));

    // Each frame's list holds that frame only.
    XPLMUnregisterDrawCallback(drawTexts, xplm_Phase_Window, 0, nullptr);
    driver::runFrames(1);
    EXPECT_TRUE(drawn("string").empty());
    EXPECT_EQ(drawn("phase").size(), 12u);
}

TEST_F(GraphicsTest, DrawNumberPadsRoundsAndSignsAndWrappedStringsBreakAtSpacesIntoLinesGoingDown) {
    struct Case {
        double value;
        int digits, decimals, sign;
        const char* text;
    } cases[] = {
        {3.14159, 3, 2, 0, "003.14"}, {-3.14159, 1, 3, 0, "-3.142"}, {42, 2, 0, 1, "+42"},
        {12345, 2, 0, 0, "12345"},    {-0.001, 1, 2, 0, "0.00"},     {0, 1, 1, 1, "+0.0"},
    };
    for (const Case& c : cases) XPLMDrawNumber(kWhite, 0, 0, c.value, c.digits, c.decimals, c.sign, xplmFont_Led);
    int w = 0, h = 0;
    XPLMGetFontDimensions(xplmFont_Basic, &w, &h, nullptr);
    int wrap = 11 * w;  // "alpha beta" fits, "alpha beta gamma" does not
    char text[] = "alpha beta gamma extraordinarily";
    XPLMDrawString(kWhite, 5, 300, text, &wrap, xplmFont_Basic);
    driver::runFrames(1);
    std::vector<DrawItem> numbers = drawn("number");
    ASSERT_EQ(numbers.size(), std::size(cases));
    for (size_t i = 0; i < numbers.size(); ++i) EXPECT_EQ(numbers[i].text, cases[i].text) << cases[i].value;
    std::vector<DrawItem> lines = drawn("string");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].text, "alpha beta");
    EXPECT_EQ(lines[1].text, "gamma");
    EXPECT_EQ(lines[2].text, "extraordinarily");  // too long for a line: a line of its own
    EXPECT_EQ(lines[1].y, 300 - h);
    EXPECT_EQ(lines[2].y, 300 - 2 * h);
    EXPECT_EQ(lines[2].x, 5);
}

TEST_F(GraphicsTest, FontDimensionsAndMeasuredWidthsAgreePerFont) {
    for (int font = xplmFont_Basic; font <= xplmFont_Proportional; ++font) {
        int w = -1, h = -1, digitsOnly = -1;
        XPLMGetFontDimensions(font, &w, &h, &digitsOnly);
        EXPECT_GT(w, 0) << font;
        EXPECT_GT(h, 0) << font;
        EXPECT_TRUE(digitsOnly == 0 || digitsOnly == 1) << font;
        if (font != xplmFont_Proportional) {
            EXPECT_EQ(XPLMMeasureString(font, "12345", 5), 5.0f * w) << font;
        }
    }
    int digitsOnly = -1;
    XPLMGetFontDimensions(xplmFont_Basic, nullptr, nullptr, &digitsOnly);
    EXPECT_EQ(digitsOnly, 0);
    XPLMGetFontDimensions(xplmFont_Led, nullptr, nullptr, &digitsOnly);
    EXPECT_EQ(digitsOnly, 1);

    // Proportional: glyphs differ, the average stays near the reported width.
    EXPECT_LT(XPLMMeasureString(xplmFont_Proportional, "iiii", 4), XPLMMeasureString(xplmFont_Proportional, "MMMM", 4));
    const char sentence[] = "The quick brown fox jumps over the lazy dog";
    int avg = 0;
    XPLMGetFontDimensions(xplmFont_Proportional, &avg, nullptr, nullptr);
    float perChar = XPLMMeasureString(xplmFont_Proportional, sentence, std::strlen(sentence)) / std::strlen(sentence);
    EXPECT_NEAR(perChar, avg, 1.5);

    // Only the first n characters count: the text need not end there.
    char unterminated[4] = {'a', 'b', 'c', 'd'};
    EXPECT_EQ(XPLMMeasureString(xplmFont_Basic, unterminated, 2), XPLMMeasureString(xplmFont_Basic, "ab", 2));
    EXPECT_EQ(XPLMMeasureString(xplmFont_Basic, "abc", 0), 0.0f);

    int w = 9;
    XPLMGetFontDimensions(99, &w, nullptr, nullptr);
    EXPECT_EQ(w, 0);
    EXPECT_EQ(XPLMMeasureString(-1, "abc", 3), 0.0f);
    char text[] = "x";
    XPLMDrawString(kWhite, 0, 0, text, nullptr, 42);
    EXPECT_EQ(errorsMentioning("unknown font"), 3);
}

TEST_F(GraphicsTest, GraphicsStateAndTextureBindingsAreRecordedOnlyWhenTheyChange) {
    XPLMSetGraphicsState(0, 1, 0, 0, 1, 0, 0);
    XPLMSetGraphicsState(0, 1, 0, 0, 1, 0, 0);  // redundant: the cache skips it
    XPLMSetGraphicsState(1, 0, 1, 1, 0, 1, 1);
    XPLMBindTexture2d(1005, 0);
    XPLMBindTexture2d(1005, 0);
    XPLMBindTexture2d(1005, 1);
    XPLMBindTexture2d(7, 0);
    driver::runFrames(1);
    std::vector<DrawItem> states = drawn("state");
    ASSERT_EQ(states.size(), 2u);
    EXPECT_EQ(states[0].text, "fog=0 tex=1 lighting=0 alphatest=0 blend=1 depthtest=0 depthwrite=0");
    EXPECT_EQ(states[1].text, "fog=1 tex=0 lighting=1 alphatest=1 blend=0 depthtest=1 depthwrite=1");
    std::vector<DrawItem> binds = drawn("texture");
    ASSERT_EQ(binds.size(), 3u);
    EXPECT_EQ(binds[0].text + "@" + std::to_string(binds[0].style), "1005@0");
    EXPECT_EQ(binds[1].text + "@" + std::to_string(binds[1].style), "1005@1");
    EXPECT_EQ(binds[2].text + "@" + std::to_string(binds[2].style), "7@0");

    // The cache outlives the frame: the same state next frame changes nothing.
    XPLMSetGraphicsState(1, 0, 1, 1, 0, 1, 1);
    XPLMBindTexture2d(7, 0);
    driver::runFrames(1);
    EXPECT_TRUE(drawn("state").empty());
    EXPECT_TRUE(drawn("texture").empty());

    XPLMBindTexture2d(3, 4);
    XPLMSetGraphicsState(0, 9, 0, 0, 0, 0, 0);
    EXPECT_EQ(errorsMentioning("XPLMBindTexture2d: texture unit 4"), 1);
    EXPECT_EQ(errorsMentioning("XPLMSetGraphicsState: 9 texture units"), 1);
}

TEST_F(GraphicsTest, GeneratedTextureNumbersAreUniqueAndApartFromTheSimulatorsTextures) {
    std::set<int> seen;
    for (XPLMTextureID id : {xplm_Tex_GeneralInterface, xplm_Tex_AircraftPaint, xplm_Tex_AircraftLiteMap}) {
        int name = XPLMGetTexture(id);
        EXPECT_GT(name, 0);
        EXPECT_TRUE(seen.insert(name).second) << name;
    }
    int first[5], second[3];
    XPLMGenerateTextureNumbers(first, 5);
    XPLMGenerateTextureNumbers(second, 3);
    for (int n : first) EXPECT_TRUE(seen.insert(n).second) << n;
    for (int n : second) EXPECT_TRUE(seen.insert(n).second) << n;
    EXPECT_EQ(seen.size(), 11u);

    EXPECT_EQ(XPLMGetTexture(3), 0);
    XPLMGenerateTextureNumbers(nullptr, 2);
    XPLMGenerateTextureNumbers(nullptr, 0);  // nothing asked, nothing wrong
    EXPECT_EQ(errorsMentioning("XPLMGetTexture: unknown texture 3"), 1);
    EXPECT_EQ(errorsMentioning("XPLMGenerateTextureNumbers"), 1);
}

}  // namespace
}  // namespace xpsim::test

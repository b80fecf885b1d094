// Pictures: a scenario's screenshots show the simulator's frame with widgets, text, a
// plug-in window and a plug-in's own OpenGL where they were drawn; only captured
// frames are drawn; identical runs give identical files.

#include <cmath>

#include "Renderer.h"
#include "plugin_test_util.h"
#include "scenario.h"
#include "screenshots.h"

namespace xpsim::test {
namespace {

class RenderTest : public SimRootTest {
protected:
    void SetUp() override {
        SimRootTest::SetUp();
        std::string why;
        if (!runner::picturesAvailable(&why)) GTEST_SKIP() << "no OpenGL stack for pictures here: " << why;
    }

    // Runs the form and the OpenGL plug-in through `scenario`, then a screenshot into
    // <root>/<file>; that picture.
    render::Image shoot(const std::string& scenario, const std::string& file) {
        startSim();
        loadTestPlugin("widget_form", "WidgetForm");
        loadTestPlugin("gl_painter", "GlPainter");
        driver::enablePluginsAndSendLoadMessages();
        std::ostringstream out;
        runner::ScenarioContext context{root, &out};
        std::string error;
        std::string text = scenario + "screenshot \"" + root + "/" + file + "\"\n";
        EXPECT_TRUE(runner::playScenario(text, "pictures.txt", context, &error)) << error;
        render::Image image;
        EXPECT_TRUE(render::readPng(root + "/" + file, &image, &error)) << error;
        driver::shutdown();
        return image;
    }
};

struct Rgb {
    int r, g, b;
};

// Screen coordinates (y up) to the picture's rows (top first).
Rgb pixel(const render::Image& image, int x, int y) {
    const uint8_t* p = image.at(x, image.height - 1 - y);
    return Rgb{p[0], p[1], p[2]};
}

bool near(Rgb a, Rgb b, int tolerance = 3) {
    return std::abs(a.r - b.r) <= tolerance && std::abs(a.g - b.g) <= tolerance && std::abs(a.b - b.b) <= tolerance;
}

// Pixels in the box that differ from the colour at its lower-left corner.
int marks(const render::Image& image, int left, int bottom, int right, int top) {
    Rgb background = pixel(image, left, bottom);
    int n = 0;
    for (int y = bottom; y < top; ++y)
        for (int x = left; x < right; ++x) n += near(pixel(image, x, y), background, 40) ? 0 : 1;
    return n;
}

TEST_F(RenderTest, AScreenshotShowsWidgetsTextWindowsAndThePluginsOwnOpenGLWhereTheyWereDrawn) {
    long drawnBefore = runner::framesDrawn();
    render::Image image = shoot(
        "run 30 frames\n"
        "mouse click 115 502\n",  // the Sound check box: lit; Music stays unlit
        "shot.png");
    ASSERT_EQ(image.width, 1024);
    ASSERT_EQ(image.height, 768);
    // 32 frames ran, but only the frames before the screenshot since its "run" were drawn.
    EXPECT_LE(runner::framesDrawn() - drawnBefore, 3);

    Rgb formFill = pixel(image, 450, 250), sky = pixel(image, 800, 700), ground = pixel(image, 800, 50);
    EXPECT_TRUE(near(formFill, Rgb{191, 196, 201}, 6)) << formFill.r << "," << formFill.g << "," << formFill.b;
    EXPECT_GT(sky.b, sky.r + 60);      // sky above, ground below
    EXPECT_GT(ground.g, ground.b + 20);
    EXPECT_FALSE(near(pixel(image, 118, 502), pixel(image, 218, 502), 30));  // lit check box, unlit one

    EXPECT_GT(marks(image, 110, 556, 170, 570), 40);  // the caption "Label"
    EXPECT_EQ(marks(image, 400, 210, 490, 320), 0);   // nothing drawn in this part of the form

    EXPECT_TRUE(near(pixel(image, 650, 150), Rgb{255, 0, 255}, 0));   // the plug-in's glBegin quad
    Rgb boxOverSky = pixel(image, 850, 450), skyBeside = pixel(image, 950, 450);  // its window's dark box
    EXPECT_LT(boxOverSky.r + boxOverSky.g + boxOverSky.b, (skyBeside.r + skyBeside.g + skyBeside.b) / 2);
    EXPECT_GT(marks(image, 605, 470, 780, 490), 60);                    // and its white text
}

TEST_F(RenderTest, IdenticalRunsGiveIdenticalPictureFiles) {
    const char* scenario = "run 5 frames\nmouse click 190 560\nkey a A\n";
    shoot(scenario, "same.png");
    std::string first = readFile(root + "/same.png");
    shoot(scenario, "same.png");
    EXPECT_FALSE(first.empty());
    EXPECT_EQ(first, readFile(root + "/same.png"));
}

}  // namespace
}  // namespace xpsim::test

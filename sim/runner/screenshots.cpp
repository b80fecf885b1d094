// The runner's side of pictures: the renderer's lifetime, which frames it draws, and
// PNG files. Built without sim/render, every screenshot says once that there are none.

#include "screenshots.h"

#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

#include "driver.h"
#include "host_api.h"
#ifdef XPSIM_RENDER
#include "Renderer.h"
#endif

namespace xpsim::runner {

namespace {

bool gEveryFrame = false;
bool gSaidNoPictures = false;
std::string gWhyNot = "xpsim was built without pictures (EGL, OpenGL, FreeType or libpng missing)";

#ifdef XPSIM_RENDER
bool gTried = false;
// Lives until the process ends: the host keeps drawing into it across runs, and
// tearing EGL down while libraries unload at exit gains nothing.
render::OffscreenRenderer* gRenderer = nullptr;
#endif

void sayNoPictures() {
    if (gSaidNoPictures) return;
    gSaidNoPictures = true;
    std::cerr << "xpsim: no pictures: " << gWhyNot << "\n";
    hostapi::log("xpsim: no pictures: " + gWhyNot);
}

// Creates the renderer on first use; the host draws with it from then on.
bool haveRenderer() {
#ifdef XPSIM_RENDER
    if (!gTried) {
        gTried = true;
        gRenderer = render::OffscreenRenderer::create(&gWhyNot).release();
        if (gRenderer) driver::setFrameRenderer(gRenderer);
    }
    return gRenderer != nullptr;
#else
    return false;
#endif
}

bool ensureRenderer() {
    if (haveRenderer()) return true;
    sayNoPictures();
    return false;
}

bool isScreenshot(const ScenarioStep& step) { return step.command->run == cmdScreenshot; }
bool isRun(const ScenarioStep& step) { return std::string(step.command->name) == "run"; }

}  // namespace

void captureFrames(bool on) {
    if (gEveryFrame) return;
    if (on && !ensureRenderer()) return;
    driver::setFrameRendering(on ? FrameRendering::LastFrameOfEachRun : FrameRendering::Off);
}

void drawEveryFrame() {
    gEveryFrame = true;
    if (ensureRenderer()) driver::setFrameRendering(FrameRendering::EveryFrame);
}

bool picturesAvailable(std::string* why) {
    if (haveRenderer()) return true;
    if (why) *why = gWhyNot;
    return false;
}

long framesDrawn() {
#ifdef XPSIM_RENDER
    if (gRenderer) return gRenderer->framesDrawn();
#endif
    return 0;
}

bool takeScreenshot(const std::string& path, std::string* error) {
    if (!ensureRenderer()) return true;
#ifdef XPSIM_RENDER
    int cycle = driver::cycleNumber();
    if (cycle == 0) {
        *error = "no frame has run yet";
        return false;
    }
    if (gRenderer->lastFrameCycle() != cycle) {
        *error = "frame " + std::to_string(cycle) + " was not drawn";
        return false;
    }
    render::Image image;
    if (!gRenderer->readFrame(&image, error)) return false;
    if (!render::writePng(path, image, error)) return false;
    hostapi::log("xpsim: screenshot of frame " + std::to_string(cycle) + " in " + path);
#endif
    return true;
}

bool screenshotAhead(const std::vector<ScenarioStep>& steps, size_t index, bool finalShot) {
    for (size_t j = index + 1; j < steps.size(); ++j) {
        if (isScreenshot(steps[j])) return true;
        if (isRun(steps[j])) return false;
    }
    return finalShot;
}

bool scenarioFileShootsBeforeRunning(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    std::vector<ScenarioStep> steps;
    std::string error;
    if (!in || !parseScenario(text.str(), path, &steps, &error)) return false;
    for (const ScenarioStep& step : steps) {
        if (isScreenshot(step)) return true;
        if (isRun(step)) return false;
    }
    return false;
}

bool cmdScreenshot(ScenarioContext&, const ScenarioArgs& args, std::string* error) {
    return takeScreenshot(args[0], error);
}

}  // namespace xpsim::runner

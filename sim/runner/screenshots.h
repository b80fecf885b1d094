// Pictures of frames: the "screenshot" scenario command and xpsim's --screenshot, over
// the optional off-screen renderer. Only frames a screenshot will show are drawn.
#pragma once

#include <string>

#include "scenario.h"

namespace xpsim::runner {

// While on, the last frame of each run of frames is drawn (every frame after
// drawEveryFrame). The first call that turns it on creates the renderer; without
// pictures xpsim says so once and runs on.
void captureFrames(bool on);
// From now on every frame is drawn, captured or not (xpsim --render-every-frame).
void drawEveryFrame();

// Writes the last frame drawn as a PNG file. Without pictures it writes nothing and succeeds.
bool takeScreenshot(const std::string& path, std::string* error);
// True when pictures can be drawn here; *why says why not.
bool picturesAvailable(std::string* why);
// Frames drawn so far in this process.
long framesDrawn();

// Whether a screenshot in the scenario comes before its first "run": the frames run
// before the scenario must then be drawn. False when the file cannot be read or parsed.
bool scenarioFileShootsBeforeRunning(const std::string& path);
// True when a screenshot step comes after step `index` with no "run" between, or
// `finalShot` and no "run" follows: the frames step `index` runs must be drawn.
bool screenshotAhead(const std::vector<ScenarioStep>& steps, size_t index, bool finalShot);

// "screenshot FILE.png".
bool cmdScreenshot(ScenarioContext& context, const ScenarioArgs& args, std::string* error);

}  // namespace xpsim::runner

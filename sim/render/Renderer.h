// The off-screen renderer: draws the simulator's frames into a headless OpenGL context
// (EGL, Mesa's software renderer), where the plug-ins' own OpenGL calls land too, and
// writes them as PNG files. Optional: the host runs without it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "driver.h"

namespace xpsim::render {

// A picture: RGB rows, top row first.
struct Image {
    int width = 0, height = 0;
    std::vector<uint8_t> rgb;
    const uint8_t* at(int x, int y) const { return &rgb[(static_cast<size_t>(y) * width + x) * 3]; }
};

class OffscreenRenderer : public FrameRenderer {
public:
    // The renderer with its context current on this thread; null with *why when no
    // usable EGL/OpenGL stack or font is present.
    static std::unique_ptr<OffscreenRenderer> create(std::string* why);

    // The last frame drawn (screen coordinates: y up, so row 0 is the screen's top).
    virtual bool readFrame(Image* image, std::string* error) = 0;
    // The cycle number of the last frame drawn; 0 when none was.
    virtual int lastFrameCycle() const = 0;
    virtual long framesDrawn() const = 0;
};

bool writePng(const std::string& path, const Image& image, std::string* error);
bool readPng(const std::string& path, Image* image, std::string* error);

}  // namespace xpsim::render

// The headless OpenGL context: a desktop compatibility-profile context from EGL on
// Mesa's surfaceless platform, drawing into a framebuffer object of the screen's size.
#pragma once

#include <memory>
#include <string>

#include "Renderer.h"

namespace xpsim::render {

class GlContext {
public:
    // Null with *why when EGL or OpenGL cannot give such a context.
    static std::unique_ptr<GlContext> create(std::string* why);
    ~GlContext();

    // Binds the framebuffer, (re)sized to width x height.
    void bindFramebuffer(int width, int height);
    bool readPixels(Image* image, std::string* error);

private:
    GlContext() = default;
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace xpsim::render

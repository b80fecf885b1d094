// EGL set-up and the framebuffer the frames are drawn into.

#include "gl_context.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace xpsim::render {

struct GlContext::Impl {
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLContext context = EGL_NO_CONTEXT;
    PFNGLGENFRAMEBUFFERSPROC genFramebuffers = nullptr;
    PFNGLBINDFRAMEBUFFERPROC bindFramebuffer = nullptr;
    PFNGLGENRENDERBUFFERSPROC genRenderbuffers = nullptr;
    PFNGLBINDRENDERBUFFERPROC bindRenderbuffer = nullptr;
    PFNGLRENDERBUFFERSTORAGEPROC renderbufferStorage = nullptr;
    PFNGLFRAMEBUFFERRENDERBUFFERPROC framebufferRenderbuffer = nullptr;
    PFNGLCHECKFRAMEBUFFERSTATUSPROC checkFramebufferStatus = nullptr;
    GLuint framebuffer = 0, colour = 0, depth = 0;
    int width = 0, height = 0;
};

namespace {

template <class F>
bool load(F* f, const char* name) {
    *f = reinterpret_cast<F>(eglGetProcAddress(name));
    return *f != nullptr;
}

}  // namespace

std::unique_ptr<GlContext> GlContext::create(std::string* why) {
    // Identical runs must give identical pictures: llvmpipe splits the screen between
    // threads, and one thread fixes the order of its work. Software rendering also
    // keeps a machine's GPU (and its driver's rounding) out of the pictures. A user's
    // own setting wins.
    setenv("LP_NUM_THREADS", "1", 0);
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 0);
    auto fail = [why](const std::string& message) {
        *why = message;
        return nullptr;
    };
    auto getPlatformDisplay =
        reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
    if (!getPlatformDisplay) return fail("EGL has no eglGetPlatformDisplayEXT");
    std::unique_ptr<GlContext> gl(new GlContext);
    gl->impl_ = std::make_unique<Impl>();
    Impl& c = *gl->impl_;
    c.display = getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    EGLint major = 0, minor = 0;
    if (c.display == EGL_NO_DISPLAY || !eglInitialize(c.display, &major, &minor))
        return fail("EGL has no surfaceless display (Mesa's libegl-mesa0 and libgl1-mesa-dri are needed)");
    if (!eglBindAPI(EGL_OPENGL_API)) return fail("EGL offers no desktop OpenGL");
    const EGLint attributes[] = {EGL_CONTEXT_OPENGL_PROFILE_MASK, EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT,
                                 EGL_NONE};
    c.context = eglCreateContext(c.display, EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, attributes);
    if (c.context == EGL_NO_CONTEXT) return fail("EGL cannot create an OpenGL compatibility context");
    if (!eglMakeCurrent(c.display, EGL_NO_SURFACE, EGL_NO_SURFACE, c.context))
        return fail("EGL cannot make the OpenGL context current");
    if (!load(&c.genFramebuffers, "glGenFramebuffers") || !load(&c.bindFramebuffer, "glBindFramebuffer") ||
        !load(&c.genRenderbuffers, "glGenRenderbuffers") || !load(&c.bindRenderbuffer, "glBindRenderbuffer") ||
        !load(&c.renderbufferStorage, "glRenderbufferStorage") ||
        !load(&c.framebufferRenderbuffer, "glFramebufferRenderbuffer") ||
        !load(&c.checkFramebufferStatus, "glCheckFramebufferStatus"))
        return fail("OpenGL has no framebuffer objects");
    c.genFramebuffers(1, &c.framebuffer);
    c.genRenderbuffers(1, &c.colour);
    c.genRenderbuffers(1, &c.depth);
    gl->bindFramebuffer(1024, 768);
    if (c.checkFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE)
        return fail("OpenGL cannot draw into a framebuffer object");
    return gl;
}

GlContext::~GlContext() {
    if (!impl_ || impl_->display == EGL_NO_DISPLAY) return;
    eglMakeCurrent(impl_->display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (impl_->context != EGL_NO_CONTEXT) eglDestroyContext(impl_->display, impl_->context);
    eglTerminate(impl_->display);
}

void GlContext::bindFramebuffer(int width, int height) {
    Impl& c = *impl_;
    c.bindFramebuffer(GL_FRAMEBUFFER, c.framebuffer);
    if (width != c.width || height != c.height) {
        c.bindRenderbuffer(GL_RENDERBUFFER, c.colour);
        c.renderbufferStorage(GL_RENDERBUFFER, GL_RGBA8, width, height);
        c.bindRenderbuffer(GL_RENDERBUFFER, c.depth);
        c.renderbufferStorage(GL_RENDERBUFFER, GL_DEPTH24_STENCIL8, width, height);
        c.framebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, c.colour);
        c.framebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_RENDERBUFFER, c.depth);
        c.width = width;
        c.height = height;
    }
    glViewport(0, 0, width, height);
}

bool GlContext::readPixels(Image* image, std::string* error) {
    Impl& c = *impl_;
    if (c.width <= 0 || c.height <= 0) {
        *error = "nothing drawn yet";
        return false;
    }
    c.bindFramebuffer(GL_FRAMEBUFFER, c.framebuffer);
    std::vector<uint8_t> bottomUp(static_cast<size_t>(c.width) * c.height * 3);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, c.width, c.height, GL_RGB, GL_UNSIGNED_BYTE, bottomUp.data());
    glPopClientAttrib();
    image->width = c.width;
    image->height = c.height;
    image->rgb.resize(bottomUp.size());
    size_t row = static_cast<size_t>(c.width) * 3;
    for (int y = 0; y < c.height; ++y)
        std::copy_n(&bottomUp[static_cast<size_t>(c.height - 1 - y) * row], row, &image->rgb[y * row]);
    return true;
}

}  // namespace xpsim::render

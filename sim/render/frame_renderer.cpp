// The frame renderer: sets up each draw phase's coordinates, draws the simulator's own
// parts of a frame (sky and ground, XPLMGraphics calls, the widget library's artwork)
// as their calls arrive, in between the plug-ins' own OpenGL calls.

#define GL_GLEXT_PROTOTYPES 1
#include <GL/gl.h>
#include <GL/glext.h>

#include <cmath>
#include <cstdio>
#include <vector>

#include "Renderer.h"
#include "XPLMCamera.h"
#include "XPLMDisplay.h"
#include "XPLMGraphics.h"
#include "gl_context.h"
#include "text.h"
#include "ui_artwork.h"

namespace xpsim::render {

namespace {

constexpr int kTextureUnits = 4;

bool is3dPhase(int phase) { return phase < xplm_Phase_FirstCockpit || phase == xplm_Phase_LocalMap3D; }

// Our own drawing leaves the plug-ins' OpenGL state as it found it (and the host's
// graphics-state cache true), and draws in 2-D screen pixels with a known state.
class OwnDrawing {
public:
    OwnDrawing(int width, int height) {
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glMatrixMode(GL_PROJECTION);
        glPushMatrix();
        glLoadIdentity();
        glOrtho(0, width, 0, height, -1, 1);
        glMatrixMode(GL_MODELVIEW);
        glPushMatrix();
        glLoadIdentity();
        for (int unit = kTextureUnits - 1; unit >= 0; --unit) {
            glActiveTexture(GL_TEXTURE0 + unit);
            glDisable(GL_TEXTURE_2D);
        }
        for (GLenum cap : {GL_LIGHTING, GL_FOG, GL_DEPTH_TEST, GL_ALPHA_TEST, GL_CULL_FACE, GL_LINE_SMOOTH})
            glDisable(cap);
        glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    }
    ~OwnDrawing() {
        glMatrixMode(GL_MODELVIEW);
        glPopMatrix();
        glMatrixMode(GL_PROJECTION);
        glPopMatrix();
        glPopAttrib();
    }
    OwnDrawing(const OwnDrawing&) = delete;
    OwnDrawing& operator=(const OwnDrawing&) = delete;
};

class Renderer final : public OffscreenRenderer {
public:
    Renderer(std::unique_ptr<GlContext> gl, std::unique_ptr<TextPainter> text)
        : gl_(std::move(gl)), text_(std::move(text)) {}

    void beginFrame() override {
        XPLMGetScreenSize(&width_, &height_);
        width_ = std::max(1, width_), height_ = std::max(1, height_);
        gl_->bindFramebuffer(width_, height_);
        clips_.clear();
        glDisable(GL_SCISSOR_TEST);
        glClearColor(0, 0, 0, 1);
        glClearDepth(1.0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
    }

    void beginPhase(int phase) override {
        // The SDK promises set-up matrices on entry: local OpenGL coordinates seen from
        // the camera in the 3-D phases (x east, y up, z south), cockpit pixels in the
        // 2-D ones. The field of view is ours: 60 degrees high, narrowed by the zoom.
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        if (!is3dPhase(phase)) {
            glOrtho(0, width_, 0, height_, -1, 1);
            glMatrixMode(GL_MODELVIEW);
            glLoadIdentity();
            return;
        }
        XPLMCameraPosition_t camera;
        XPLMReadCameraPosition(&camera);
        double zoom = camera.zoom > 0 ? camera.zoom : 1.0;
        double nearPlane = 1.0, top = nearPlane * std::tan(30.0 * M_PI / 180.0) / zoom;
        double right = top * width_ / height_;
        glFrustum(-right, right, -top, top, nearPlane, 100000.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glRotatef(-camera.roll, 0, 0, 1);
        glRotatef(-camera.pitch, 1, 0, 0);
        glRotatef(camera.heading, 0, 1, 0);
        glTranslatef(-camera.x, -camera.y, -camera.z);
    }

    void draw(const DrawItem& item) override {
        const std::string& k = item.kind;
        if (k == "state") return applyState(item.text);
        if (k == "texture") return bindTexture(item);
        if (k == "clip") return clip(Box{item.x, item.bottom, item.right, item.y});
        if (k == "unclip") return unclip();
        OwnDrawing scope(width_, height_);
        if (k == "phase") {
            drawPhase(item.style);
        } else if (k == "string" || k == "number") {
            text_->draw(item.text, item.x, item.y, item.style, item.color);
        } else if (k == "darkbox") {
            fillBox(Box{item.x, item.bottom, item.right, item.y}, Colour{0.02f, 0.03f, 0.05f, 0.62f});
        } else if (k == "window" && !item.text.empty()) {  // an XPLM window itself has no look
            drawUiWindow(item);
        } else if (k == "element") {
            drawUiElement(item, *text_);
        } else if (k == "track") {
            drawUiTrack(item);
        } else if (k == "selection") {
            fillBox(Box{item.x, item.bottom, item.right, item.y}, Colour{0.55f, 0.70f, 0.95f});
        } else if (k == "caret") {
            fillBox(Box{item.x, item.bottom, item.x + 1, item.y}, Colour{0.0f, 0.0f, 0.0f});
        }
    }

    void endFrame(int cycle) override {
        glDisable(GL_SCISSOR_TEST);
        lastCycle_ = cycle;
        ++frames_;
    }

    bool readFrame(Image* image, std::string* error) override { return gl_->readPixels(image, error); }
    int lastFrameCycle() const override { return lastCycle_; }
    long framesDrawn() const override { return frames_; }

private:
    // The simulator's own drawing of a phase: a plain sky, then the ground.
    void drawPhase(int phase) {
        if (phase == xplm_Phase_FirstScene) {
            glShadeModel(GL_SMOOTH);
            glBegin(GL_QUADS);
            glColor3f(0.62f, 0.78f, 0.94f), glVertex2i(0, height_ / 2), glVertex2i(width_, height_ / 2);
            glColor3f(0.25f, 0.45f, 0.78f), glVertex2i(width_, height_), glVertex2i(0, height_);
            glEnd();
        } else if (phase == xplm_Phase_Terrain) {
            glBegin(GL_QUADS);
            glColor3f(0.36f, 0.48f, 0.27f), glVertex2i(0, 0), glVertex2i(width_, 0);
            glColor3f(0.55f, 0.62f, 0.45f), glVertex2i(width_, height_ / 2), glVertex2i(0, height_ / 2);
            glEnd();
        }
    }

    void applyState(const std::string& text) {
        int fog, tex, lighting, alphaTest, blend, depthTest, depthWrite;
        if (std::sscanf(text.c_str(), "fog=%d tex=%d lighting=%d alphatest=%d blend=%d depthtest=%d depthwrite=%d",
                        &fog, &tex, &lighting, &alphaTest, &blend, &depthTest, &depthWrite) != 7)
            return;
        auto set = [](GLenum cap, int on) { on ? glEnable(cap) : glDisable(cap); };
        set(GL_FOG, fog);
        for (int unit = kTextureUnits - 1; unit >= 0; --unit) {
            glActiveTexture(GL_TEXTURE0 + unit);
            set(GL_TEXTURE_2D, unit < tex);
        }
        set(GL_LIGHTING, lighting);
        set(GL_ALPHA_TEST, alphaTest);
        set(GL_BLEND, blend);
        if (blend) glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        set(GL_DEPTH_TEST, depthTest);
        glDepthMask(depthWrite ? GL_TRUE : GL_FALSE);
    }

    void bindTexture(const DrawItem& item) {
        glActiveTexture(GL_TEXTURE0 + item.style);
        glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(std::stoul(item.text)));
        glActiveTexture(GL_TEXTURE0);
    }

    // Clipped widgets: nested clips intersect, and unclipping restores the outer one.
    void clip(Box box) {
        if (!clips_.empty()) {
            const Box& outer = clips_.back();
            box = Box{std::max(box.left, outer.left), std::max(box.bottom, outer.bottom),
                      std::min(box.right, outer.right), std::min(box.top, outer.top)};
        }
        clips_.push_back(box);
        applyClip();
    }
    void unclip() {
        if (!clips_.empty()) clips_.pop_back();
        applyClip();
    }
    void applyClip() {
        if (clips_.empty()) {
            glDisable(GL_SCISSOR_TEST);
            return;
        }
        const Box& b = clips_.back();
        glEnable(GL_SCISSOR_TEST);
        glScissor(b.left, b.bottom, std::max(0, b.right - b.left), std::max(0, b.top - b.bottom));
    }

    std::unique_ptr<GlContext> gl_;
    std::unique_ptr<TextPainter> text_;
    int width_ = 1024, height_ = 768;
    std::vector<Box> clips_;
    int lastCycle_ = 0;
    long frames_ = 0;
};

}  // namespace

std::unique_ptr<OffscreenRenderer> OffscreenRenderer::create(std::string* why) {
    std::unique_ptr<GlContext> gl = GlContext::create(why);
    if (!gl) return nullptr;
    std::unique_ptr<TextPainter> text = TextPainter::create(why);
    if (!text) return nullptr;
    return std::make_unique<Renderer>(std::move(gl), std::move(text));
}

}  // namespace xpsim::render

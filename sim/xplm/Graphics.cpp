// XPLMGraphics: the graphics state cache, texture numbers, world/local conversion,
// the simulator's fonts and text, and the per-frame draw list every drawing call
// (ours and the widget library's) is recorded in.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>

#include "XPLMGraphics.h"
#include "graphics_internal.h"
#include "host.h"
#include "world.h"

namespace xpsim {
namespace {

// The draw list is bounded: a plug-in drawing in a loop cannot exhaust memory.
constexpr size_t kMaxDrawItemsPerFrame = 100000;
std::vector<DrawItem> gCurrentFrame;
std::vector<DrawItem> gLastFrame;
bool gDropReported = false;

FrameRenderer* gRenderer = nullptr;
FrameRendering gRendering = FrameRendering::Off;
bool gRenderingThisFrame = false;  // decided when the frame starts, kept to its end
bool gRendererDrawing = false;     // in the draw phases of such a frame: drawing calls are drawn

struct GraphicsState {
    int fog, textureUnits, lighting, alphaTesting, alphaBlending, depthTesting, depthWriting;
    bool operator==(const GraphicsState& o) const {
        return fog == o.fog && textureUnits == o.textureUnits && lighting == o.lighting &&
               alphaTesting == o.alphaTesting && alphaBlending == o.alphaBlending &&
               depthTesting == o.depthTesting && depthWriting == o.depthWriting;
    }
};

constexpr int kTextureUnits = 4;  // what SDK 2.1 supports
std::optional<GraphicsState> gState;  // unknown until first set: no default is promised
std::optional<int> gBoundTexture[kTextureUnits];

// The simulator's own textures have small names; numbers handed to plug-ins start
// well above them, so the two never meet.
constexpr int kSimTextures[] = {1, 2, 3};  // indexed by XPLMTextureID
constexpr int kFirstPluginTexture = 1000;
int gNextTexture = kFirstPluginTexture;

DrawItem stateItem(const GraphicsState& state) {
    char text[128];
    std::snprintf(text, sizeof text, "fog=%d tex=%d lighting=%d alphatest=%d blend=%d depthtest=%d depthwrite=%d",
                  state.fog, state.textureUnits, state.lighting, state.alphaTesting, state.alphaBlending,
                  state.depthTesting, state.depthWriting);
    DrawItem item;
    item.kind = "state";
    item.text = text;
    return item;
}

DrawItem textureItem(int texture, int unit) {
    DrawItem item;
    item.kind = "texture";
    item.text = std::to_string(texture);
    item.style = unit;
    return item;
}

struct Font {
    int charWidth, charHeight;
    bool digitsOnly;
};

// One cell size per font, indexed by XPLMFontID. The SDK does not give X-Plane's real
// sizes; these are plausible for the 1024x768 cockpit, and digit fonts say so.
constexpr Font kFonts[] = {
    {8, 12, false},  // Basic
    {8, 12, false},  // Menus
    {9, 14, false},  // Metal
    {10, 16, true},  // Led
    {14, 16, true},  // LedWide
    {9, 13, false},  // PanelHUD
    {8, 12, false},  // PanelEFIS
    {8, 12, false},  // PanelGPS
    {9, 14, true},   // RadiosGA
    {9, 14, true},   // RadiosBC
    {9, 14, true},   // RadiosHM
    {7, 14, true},   // RadiosGANarrow
    {7, 14, true},   // RadiosBCNarrow
    {7, 14, true},   // RadiosHMNarrow
    {10, 16, true},  // Timer
    {9, 14, true},   // FullRound
    {7, 10, true},   // SmallRound
    {8, 12, false},  // Menus_Localized
    {6, 12, false},  // Proportional: the width is the average
};
constexpr int kFontCount = static_cast<int>(sizeof kFonts / sizeof kFonts[0]);

const Font* findFont(XPLMFontID font, const char* function) {
    if (font >= 0 && font < kFontCount) return &kFonts[font];
    Host::get().reportError("%s: unknown font %d", function, font);
    return nullptr;
}

// Width of one character in the proportional font: narrow, average or wide glyphs.
float proportionalWidth(unsigned char c) {
    switch (c) {
        case 'i': case 'l': case 'j': case '.': case ',': case ':': case ';': case '\'': case '|': case '!':
            return 3.0f;
        case ' ': case 'f': case 't': case 'r': case 'I': case '(': case ')':
            return 4.0f;
        case 'm': case 'w': case 'M': case 'W': case '@':
            return 10.0f;
        default:
            return (c >= 'A' && c <= 'Z') ? 8.0f : 6.0f;
    }
}

float measure(XPLMFontID font, const char* text, size_t count) {
    if (font != xplmFont_Proportional) return static_cast<float>(kFonts[font].charWidth) * count;
    float width = 0;
    for (size_t i = 0; i < count; ++i) width += proportionalWidth(static_cast<unsigned char>(text[i]));
    return width;
}

// Our own drawing calls belong to the plug-in making them.
void recordCall(DrawItem item) {
    item.plugin = Host::get().currentPlugin;
    recordDraw(item);
}

void recordText(const char* kind, const std::string& text, int x, int y, XPLMFontID font, const float* rgb) {
    DrawItem item;
    for (int i = 0; i < 3; ++i) item.color[i] = rgb[i];
    item.kind = kind;
    item.text = text;
    item.x = x;
    item.y = y;
    item.right = x + static_cast<int>(std::ceil(measure(font, text.data(), text.size())));
    item.bottom = y;
    item.style = font;
    recordCall(item);
}

// Breaks text into lines no wider than `width` at spaces; a word wider than a line
// gets a line of its own.
std::vector<std::string> wrapText(XPLMFontID font, const std::string& text, int width) {
    std::vector<std::string> lines;
    std::string line;
    size_t pos = 0;
    while (pos < text.size()) {
        size_t end = text.find(' ', pos);
        if (end == std::string::npos) end = text.size();
        std::string word = text.substr(pos, end - pos);
        std::string candidate = line.empty() ? word : line + " " + word;
        if (!line.empty() && measure(font, candidate.data(), candidate.size()) > width) {
            lines.push_back(line);
            line = word;
        } else {
            line = candidate;
        }
        pos = end + 1;
    }
    if (!line.empty() || lines.empty()) lines.push_back(line);
    return lines;
}

}  // namespace

void recordDraw(const DrawItem& item) {
    if (gCurrentFrame.size() >= kMaxDrawItemsPerFrame) {
        if (!gDropReported) Host::get().log("xpsim: draw list full, further drawing of this frame not recorded");
        gDropReported = true;
        return;
    }
    gCurrentFrame.push_back(item);
    if (gRendererDrawing) gRenderer->draw(item);
}

void beginDrawFrame(bool lastOfRun) {
    gRenderingThisFrame = gRenderer && (gRendering == FrameRendering::EveryFrame ||
                                        (gRendering == FrameRendering::LastFrameOfEachRun && lastOfRun));
}

void beginDrawPhase(int phase) {
    if (!gRenderingThisFrame) return;
    // Drawing calls a plug-in makes outside the draw phases (a flight loop) stay out of
    // the picture, as they would in X-Plane.
    if (!gRendererDrawing) {
        gRenderer->beginFrame();
        // The cache may have changed on frames that were not drawn: the context
        // catches up, without the draw list hearing of it.
        if (gState) gRenderer->draw(stateItem(*gState));
        for (int unit = 0; unit < kTextureUnits; ++unit)
            if (gBoundTexture[unit]) gRenderer->draw(textureItem(*gBoundTexture[unit], unit));
    }
    gRendererDrawing = true;
    gRenderer->beginPhase(phase);
}

void finishDrawFrame() {
    if (gRendererDrawing) gRenderer->endFrame(Host::get().cycleNumber + 1);
    gRenderingThisFrame = gRendererDrawing = false;
    gLastFrame.swap(gCurrentFrame);
    gCurrentFrame.clear();
    gDropReported = false;
}

void resetGraphics() {
    gCurrentFrame.clear();
    gLastFrame.clear();
    gDropReported = false;
    gState.reset();
    for (auto& bound : gBoundTexture) bound.reset();
    gNextTexture = kFirstPluginTexture;
}

namespace driver {
std::vector<DrawItem> drawList() { return gLastFrame; }
void setFrameRenderer(FrameRenderer* renderer) {
    gRenderer = renderer;
    if (!renderer) gRenderingThisFrame = gRendererDrawing = false;
}
void setFrameRendering(FrameRendering which) { gRendering = which; }
FrameRendering frameRendering() { return gRendering; }
}  // namespace driver

}  // namespace xpsim

using namespace xpsim;

XPLM_API void XPLMSetGraphicsState(int inEnableFog, int inNumberTexUnits, int inEnableLighting,
                                   int inEnableAlphaTesting, int inEnableAlphaBlending, int inEnableDepthTesting,
                                   int inEnableDepthWriting) {
    if (inNumberTexUnits < 0 || inNumberTexUnits > kTextureUnits) {
        Host::get().reportError("XPLMSetGraphicsState: %d texture units (0 to %d)", inNumberTexUnits, kTextureUnits);
        inNumberTexUnits = std::clamp(inNumberTexUnits, 0, kTextureUnits);
    }
    GraphicsState wanted{inEnableFog != 0,          inNumberTexUnits,         inEnableLighting != 0,
                         inEnableAlphaTesting != 0, inEnableAlphaBlending != 0, inEnableDepthTesting != 0,
                         inEnableDepthWriting != 0};
    // Like X-Plane's state cache: only real changes reach OpenGL, and the draw list.
    if (gState && *gState == wanted) return;
    gState = wanted;
    recordCall(stateItem(wanted));
}

XPLM_API void XPLMBindTexture2d(int inTextureNum, int inTextureUnit) {
    if (inTextureUnit < 0 || inTextureUnit >= kTextureUnits) {
        Host::get().reportError("XPLMBindTexture2d: texture unit %d (0 to %d)", inTextureUnit, kTextureUnits - 1);
        return;
    }
    std::optional<int>& bound = gBoundTexture[inTextureUnit];
    if (bound && *bound == inTextureNum) return;
    bound = inTextureNum;
    recordCall(textureItem(inTextureNum, inTextureUnit));
}

XPLM_API void XPLMGenerateTextureNumbers(int* outTextureIDs, int inCount) {
    if (inCount <= 0) return;
    if (!outTextureIDs) {
        Host::get().reportError("XPLMGenerateTextureNumbers: the output array is NULL");
        return;
    }
    for (int i = 0; i < inCount; ++i) outTextureIDs[i] = gNextTexture++;
}

XPLM_API int XPLMGetTexture(XPLMTextureID inTexture) {
    // The SDK leaves open what an unloaded texture answers; the user's aircraft and
    // the interface are always loaded here, so every well-known texture has a name.
    if (inTexture < 0 || inTexture >= static_cast<int>(sizeof kSimTextures / sizeof kSimTextures[0])) {
        Host::get().reportError("XPLMGetTexture: unknown texture %d", inTexture);
        return 0;
    }
    return kSimTextures[inTexture];
}

XPLM_API void XPLMWorldToLocal(double inLatitude, double inLongitude, double inAltitude, double* outX, double* outY,
                               double* outZ) {
    if (!outX || !outY || !outZ) {
        Host::get().reportError("XPLMWorldToLocal: an output pointer is NULL");
        return;
    }
    world::worldToLocal(inLatitude, inLongitude, inAltitude, outX, outY, outZ);
}

XPLM_API void XPLMLocalToWorld(double inX, double inY, double inZ, double* outLatitude, double* outLongitude,
                               double* outAltitude) {
    if (!outLatitude || !outLongitude || !outAltitude) {
        Host::get().reportError("XPLMLocalToWorld: an output pointer is NULL");
        return;
    }
    world::localToWorld(inX, inY, inZ, outLatitude, outLongitude, outAltitude);
}

XPLM_API void XPLMDrawTranslucentDarkBox(int inLeft, int inTop, int inRight, int inBottom) {
    DrawItem item;
    item.kind = "darkbox";
    item.x = inLeft;
    item.y = inTop;
    item.right = inRight;
    item.bottom = inBottom;
    recordCall(item);
}

XPLM_API void XPLMDrawString(float* inColorRGB, int inXOffset, int inYOffset, char* inChar, int* inWordWrapWidth,
                             XPLMFontID inFontID) {
    if (!findFont(inFontID, "XPLMDrawString")) return;
    if (!inColorRGB || !inChar) {
        Host::get().reportError("XPLMDrawString: %s is NULL", inChar ? "the colour" : "the string");
        return;
    }
    std::string text(inChar);
    if (!inWordWrapWidth) {
        recordText("string", text, inXOffset, inYOffset, inFontID, inColorRGB);
        return;
    }
    // The SDK does not give the line spacing of wrapped text; we use the font's cell
    // height, lines going down from the first one.
    int y = inYOffset;
    for (const std::string& line : wrapText(inFontID, text, *inWordWrapWidth)) {
        recordText("string", line, inXOffset, y, inFontID, inColorRGB);
        y -= kFonts[inFontID].charHeight;
    }
}

XPLM_API void XPLMDrawNumber(float* inColorRGB, int inXOffset, int inYOffset, double inValue, int inDigits,
                             int inDecimals, int inShowSign, XPLMFontID inFontID) {
    if (!findFont(inFontID, "XPLMDrawNumber")) return;
    if (!inColorRGB) {
        Host::get().reportError("XPLMDrawNumber: the colour is NULL");
        return;
    }
    // The SDK describes the format only as the simulator's digit fields; we pad the
    // integer part with zeros to inDigits and never cut digits off.
    int digits = std::clamp(inDigits, 0, 20);
    int decimals = std::clamp(inDecimals, 0, 15);
    int width = digits + (decimals > 0 ? decimals + 1 : 0);
    char magnitude[64];
    std::snprintf(magnitude, sizeof magnitude, "%0*.*f", width, decimals, std::fabs(inValue));
    bool shownAsZero = std::string(magnitude).find_first_of("123456789") == std::string::npos;
    const char* sign = (inValue < 0 && !shownAsZero) ? "-" : (inShowSign ? "+" : "");
    recordText("number", std::string(sign) + magnitude, inXOffset, inYOffset, inFontID, inColorRGB);
}

XPLM_API void XPLMGetFontDimensions(XPLMFontID inFontID, int* outCharWidth, int* outCharHeight, int* outDigitsOnly) {
    const Font* font = findFont(inFontID, "XPLMGetFontDimensions");
    if (outCharWidth) *outCharWidth = font ? font->charWidth : 0;
    if (outCharHeight) *outCharHeight = font ? font->charHeight : 0;
    if (outDigitsOnly) *outDigitsOnly = font && font->digitsOnly ? 1 : 0;
}

XPLM_API float XPLMMeasureString(XPLMFontID inFontID, const char* inChar, int inNumChars) {
    if (!findFont(inFontID, "XPLMMeasureString")) return 0.0f;
    if (inNumChars <= 0) return 0.0f;
    if (!inChar) {
        Host::get().reportError("XPLMMeasureString: the string is NULL");
        return 0.0f;
    }
    // Exactly inNumChars characters: the text need not be NUL-terminated.
    return measure(inFontID, inChar, static_cast<size_t>(inNumChars));
}

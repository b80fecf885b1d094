// Glyphs rendered once by FreeType into one alpha texture (an atlas), then drawn as
// textured quads in the text's colour.

#include "text.h"

#include <GL/gl.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <tuple>
#include <vector>

#include "XPLMGraphics.h"

namespace xpsim::render {

namespace {

constexpr int kAtlasSize = 1024;

// Debian's fonts-dejavu-core. Fixed-width SDK fonts use the monospaced face, so that
// every glyph sits in its cell; the proportional font the proportional one.
const char* const kFontDirs[] = {"/usr/share/fonts/truetype/dejavu/", "/usr/share/fonts/TTF/",
                                 "/usr/share/fonts/dejavu/"};
const char* const kFaceFiles[] = {"DejaVuSansMono.ttf", "DejaVuSans.ttf"};
enum Face { kMono, kSans, kFaceCount };

struct Glyph {
    float u0, v0, u1, v1;
    int width, rows, left, top, advance;
};

// One UTF-8 sequence, or one byte taken as Latin-1 when it does not start a valid one.
unsigned decodeOne(const std::string& s, size_t i, size_t* length) {
    unsigned char c = static_cast<unsigned char>(s[i]);
    size_t extra = c >= 0xF0 && c < 0xF5 ? 3 : c >= 0xE0 && c < 0xF0 ? 2 : c >= 0xC2 && c < 0xE0 ? 1 : 0;
    *length = 1;
    if (extra == 0 || i + extra >= s.size()) return c;
    unsigned code = c & (0x3Fu >> extra);
    for (size_t k = 1; k <= extra; ++k) {
        unsigned char next = static_cast<unsigned char>(s[i + k]);
        if ((next & 0xC0) != 0x80) return c;
        code = (code << 6) | (next & 0x3Fu);
    }
    *length = extra + 1;
    return code;
}

}  // namespace

struct TextPainter::Impl {
    FT_Library library = nullptr;
    FT_Face faces[kFaceCount] = {};
    GLuint atlas = 0;
    int penX = 0, penY = 0, rowHeight = 0;  // where the next glyph goes in the atlas
    std::map<std::tuple<int, int, unsigned>, Glyph> glyphs;

    ~Impl() {
        for (FT_Face f : faces)
            if (f) FT_Done_Face(f);
        if (library) FT_Done_FreeType(library);
    }

    const Glyph* glyph(int face, int pixels, unsigned code) {
        auto key = std::make_tuple(face, pixels, code);
        auto it = glyphs.find(key);
        if (it != glyphs.end()) return &it->second;
        FT_Face f = faces[face];
        FT_Set_Pixel_Sizes(f, 0, static_cast<FT_UInt>(pixels));
        if (FT_Load_Char(f, code, FT_LOAD_RENDER | FT_LOAD_TARGET_NORMAL) != 0) return nullptr;
        const FT_Bitmap& bitmap = f->glyph->bitmap;
        int w = static_cast<int>(bitmap.width), h = static_cast<int>(bitmap.rows);
        if (penX + w + 1 > kAtlasSize) {
            penX = 0;
            penY += rowHeight + 1;
            rowHeight = 0;
        }
        if (penY + h + 1 > kAtlasSize) {
            // Full: start again. Quads already drawn keep what they sampled.
            glyphs.clear();
            penX = penY = rowHeight = 0;
        }
        std::vector<unsigned char> pixelsCopy(static_cast<size_t>(w) * h);
        for (int y = 0; y < h; ++y)
            std::memcpy(&pixelsCopy[static_cast<size_t>(y) * w], bitmap.buffer + y * bitmap.pitch, w);
        if (w > 0 && h > 0) {
            glBindTexture(GL_TEXTURE_2D, atlas);
            glTexSubImage2D(GL_TEXTURE_2D, 0, penX, penY, w, h, GL_ALPHA, GL_UNSIGNED_BYTE, pixelsCopy.data());
        }
        Glyph g{float(penX) / kAtlasSize,
                float(penY) / kAtlasSize,
                float(penX + w) / kAtlasSize,
                float(penY + h) / kAtlasSize,
                w,
                h,
                f->glyph->bitmap_left,
                f->glyph->bitmap_top,
                static_cast<int>(f->glyph->advance.x >> 6)};
        penX += w + 1;
        rowHeight = std::max(rowHeight, h);
        return &(glyphs[key] = g);
    }
};

std::unique_ptr<TextPainter> TextPainter::create(std::string* why) {
    std::unique_ptr<TextPainter> painter(new TextPainter);
    painter->impl_ = std::make_unique<Impl>();
    Impl& p = *painter->impl_;
    if (FT_Init_FreeType(&p.library) != 0) {
        *why = "FreeType cannot start";
        return nullptr;
    }
    for (int face = 0; face < kFaceCount; ++face) {
        for (const char* dir : kFontDirs) {
            std::string path = std::string(dir) + kFaceFiles[face];
            if (FT_New_Face(p.library, path.c_str(), 0, &p.faces[face]) == 0) break;
            p.faces[face] = nullptr;
        }
        if (!p.faces[face]) {
            *why = std::string("font ") + kFaceFiles[face] + " not found (Debian package fonts-dejavu-core)";
            return nullptr;
        }
    }
    glGenTextures(1, &p.atlas);
    glPushAttrib(GL_TEXTURE_BIT);
    glBindTexture(GL_TEXTURE_2D, p.atlas);
    std::vector<unsigned char> clear(static_cast<size_t>(kAtlasSize) * kAtlasSize, 0);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA, kAtlasSize, kAtlasSize, 0, GL_ALPHA, GL_UNSIGNED_BYTE, clear.data());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glPopAttrib();
    return painter;
}

TextPainter::~TextPainter() = default;

void TextPainter::draw(const std::string& text, int x, int y, int font, const float rgb[3]) {
    Impl& p = *impl_;
    int cellWidth = 0, cellHeight = 0;
    XPLMGetFontDimensions(font, &cellWidth, &cellHeight, nullptr);
    if (cellHeight <= 0) return;
    bool proportional = font == xplmFont_Proportional;
    int face = proportional ? kSans : kMono;
    // The largest size whose glyphs fit the cell: DejaVu Sans Mono advances 0.6 em.
    int pixels = proportional ? cellHeight - 1 : std::min(cellHeight, static_cast<int>(cellWidth / 0.6));
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    float pen = static_cast<float>(x);
    for (size_t i = 0; i < text.size();) {
        size_t length = 1;
        unsigned code = decodeOne(text, i, &length);
        // The host measures bytes: a character's cell spans those of its bytes.
        float cell = XPLMMeasureString(font, text.data() + i, static_cast<int>(length));
        const Glyph* g = code > ' ' ? p.glyph(face, pixels, code) : nullptr;
        if (g && g->width > 0) {
            // Uploading may have bound the atlas again; the quads need it bound.
            glBindTexture(GL_TEXTURE_2D, p.atlas);
            int left = static_cast<int>(std::lround(pen + (cell - g->advance) / 2)) + g->left;
            int top = y + g->top;
            glColor4f(rgb[0], rgb[1], rgb[2], 1.0f);
            glBegin(GL_QUADS);
            glTexCoord2f(g->u0, g->v0), glVertex2i(left, top);
            glTexCoord2f(g->u1, g->v0), glVertex2i(left + g->width, top);
            glTexCoord2f(g->u1, g->v1), glVertex2i(left + g->width, top - g->rows);
            glTexCoord2f(g->u0, g->v1), glVertex2i(left, top - g->rows);
            glEnd();
        }
        pen += cell;
        i += length;
    }
}

}  // namespace xpsim::render

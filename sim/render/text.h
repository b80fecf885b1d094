// Text in the simulator's fonts: glyphs from FreeType (Debian's DejaVu fonts), each
// placed in the cell the host measures for it, so what a plug-in measures is what it sees.
#pragma once

#include <memory>
#include <string>

namespace xpsim::render {

class TextPainter {
public:
    // Null with *why when FreeType or the fonts are missing.
    static std::unique_ptr<TextPainter> create(std::string* why);
    ~TextPainter();

    // Draws one line with its first cell's lower-left at (x, y), as XPLMDrawString does.
    // Expects 2-D pixel coordinates; leaves the GL state as it found it.
    void draw(const std::string& text, int x, int y, int font, const float rgb[3]);

private:
    TextPainter() = default;
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace xpsim::render

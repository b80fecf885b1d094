// Line-end normalisation for the ini reader.

#include "core/IniText.h"

namespace vorlith {

std::string VL_NormaliseLineEnds(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (c != '\r' && c != '\n') {
            out += c;
            continue;
        }
        out += '\n';
        // The other character of a pair belongs to the same line end.
        char other = (c == '\r') ? '\n' : '\r';
        if (i + 1 < text.size() && text[i + 1] == other) ++i;
    }
    return out;
}

}  // namespace vorlith

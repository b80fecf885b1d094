// Bounded copies into fixed-size buffers.

#include "core/Text.h"

#include <cstring>

namespace vorlith {

char* VL_CopyText(char* dst, std::size_t size, const char* src) {
    if (size == 0) return dst;
    dst[0] = '\0';
    return VL_AppendText(dst, size, src);
}

char* VL_AppendText(char* dst, std::size_t size, const char* src) {
    if (size == 0 || !src) return dst;
    std::size_t used = strnlen(dst, size - 1);
    std::size_t room = size - 1 - used;
    std::size_t n = strnlen(src, room);
    std::memcpy(dst + used, src, n);
    dst[used + n] = '\0';
    return dst;
}

char* VL_StripNewlines(char* dst, std::size_t size, const char* src, std::size_t length) {
    if (size == 0) return dst;
    std::size_t out = 0;
    // The captured text is first cut to the buffer, then its line ends are dropped.
    if (length > size - 1) length = size - 1;
    for (std::size_t i = 0; i < length; ++i)
        if (src[i] != '\n') dst[out++] = src[i];
    dst[out] = '\0';
    return dst;
}

}  // namespace vorlith

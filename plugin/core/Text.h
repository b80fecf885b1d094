// Bounded text into the plug-in's fixed-size buffers: every copy cuts at the buffer's
// size instead of overflowing, and always leaves a terminated string.
#pragma once

#include <cstddef>
#include <string>

namespace vorlith {

// Copies src (null reads as "") into dst[size], cut to size-1 bytes. Returns dst.
char* VL_CopyText(char* dst, std::size_t size, const char* src);
// Appends src to the string already in dst[size], cut at the buffer's end. Returns dst.
char* VL_AppendText(char* dst, std::size_t size, const char* src);

template <std::size_t N>
char* VL_CopyText(char (&dst)[N], const char* src) { return VL_CopyText(dst, N, src); }
template <std::size_t N>
char* VL_CopyText(char (&dst)[N], const std::string& src) { return VL_CopyText(dst, N, src.c_str()); }
template <std::size_t N>
char* VL_AppendText(char (&dst)[N], const char* src) { return VL_AppendText(dst, N, src); }

// The one-line form of a captured text for the print list: the text cut to size-1
// bytes with every '\n' dropped.
char* VL_StripNewlines(char* dst, std::size_t size, const char* src, std::size_t length);

}  // namespace vorlith

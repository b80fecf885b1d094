// Reading memory the plug-in did not allocate without trusting the address: a pointer
// that another plug-in (or a bad message) made up gives a failure instead of a crash.
#pragma once

#include <cstddef>

namespace vorlith {

// Copies `size` bytes at `source` into `target`; false (and `target` untouched or
// partly written) when the memory is not readable.
bool VL_ReadMemory(void* target, const void* source, std::size_t size);

}  // namespace vorlith

// Platform layer: the directory for temporary files.
#pragma once

#include <cstddef>

namespace genutil::platform {

// Stores the path of the directory with a trailing separator. Returns the number of bytes,
// excluding the terminator, or 0 if the path and its terminator do not fit in `size`.
std::size_t TemporaryDirectory(char* out, std::size_t size);

}  // namespace genutil::platform

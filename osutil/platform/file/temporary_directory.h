// The directory for temporary files.
#pragma once

#include <cstddef>

namespace genutil::platform {

// The directory for temporary files with a separator behind it. Bytes stored, without a terminator;
// 0 when they and the terminator are more than `size`.
std::size_t TemporaryDirectory(char* out, std::size_t size);

}  // namespace genutil::platform

// What the library asks of an operating system about profile (ini) files.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil::platform {

// Reads the first `size` bytes of a file, whose path is in the current code set. Returns the length
// of the whole file in bytes; -1 when it cannot be read.
std::int64_t ReadProfile(const char* path, char* out, std::size_t size);

}  // namespace genutil::platform

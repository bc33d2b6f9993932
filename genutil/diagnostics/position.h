// The position of an event in the source, in the form used by trace lines and assertions.
#pragma once

#include <cstddef>
#include <cstdio>

namespace genutil {

// Writes "Line    12 in FILE" with a terminator, truncated to `size` bytes. A null file is empty.
inline void WritePosition(char* out, std::size_t size, long line, const char* file) {
    std::snprintf(out, size, "Line %5ld in %s", line, file ? file : "");
}

}  // namespace genutil

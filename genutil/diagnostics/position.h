// The position of an event in the source, as trace lines and assertions show it.
#pragma once

#include <cstddef>
#include <cstdio>

namespace genutil {

// Writes "Line    12 in FILE" with a terminator, cut at `size` bytes. A null file is empty.
inline void WritePosition(char* out, std::size_t size, long line, const char* file) {
    std::snprintf(out, size, "Line %5ld in %s", line, file ? file : "");
}

}  // namespace genutil

// Copying names to a caller's buffer.
#pragma once

#include <cstddef>
#include <cstring>

namespace genutil {

// Copies a name only if it fits completely, because a truncated name could be a different valid
// name. Otherwise the result is empty. Returns the length of the copied name, or 0 if it does not
// fit.
inline int CopyWhole(char* dst, int size, const char* name) {
    if (!dst || size <= 0) return 0;
    const std::size_t length = std::strlen(name);
    const bool fits = length < static_cast<std::size_t>(size);
    std::memcpy(dst, name, fits ? length : 0);
    dst[fits ? length : 0] = 0;
    return fits ? static_cast<int>(length) : 0;
}

}  // namespace genutil

// A buffer for the duration of one call.
#pragma once

#include <cstdint>

#include "genutil/allocate.h"

namespace genutil {

class Scratch {
  public:
    // The size has 64 bits, because a multiple of a length could wrap around on 32-bit machines.
    explicit Scratch(std::uint64_t size) : m_bytes(static_cast<char*>(Allocate(size))) {}
    char* Bytes() const { return m_bytes.Get(); }  // null if allocation failed

  private:
    Owned<char> m_bytes;
};

// Returns the buffer size that convertStrExt requires for so many bytes, including the terminator.
inline std::uint64_t ConvertedSize(std::uint64_t length) {
    return 3 * length + 1;
}

}  // namespace genutil

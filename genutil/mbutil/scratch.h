// A buffer for the length of one call.
#pragma once

#include <cstdint>

#include "genutil/allocate.h"

namespace genutil {

class Scratch {
  public:
    // A multiple of a length is counted in 64 bits, or it would wrap around on 32-bit machines.
    explicit Scratch(std::uint64_t size) : m_bytes(static_cast<char*>(Allocate(size))) {}
    char* Bytes() const { return m_bytes.Get(); }  // null when memory ran out

  private:
    Owned<char> m_bytes;
};

// Room for the conversion of so many bytes by convertStrExt, with its terminator.
inline std::uint64_t ConvertedSize(std::uint64_t length) {
    return 3 * length + 1;
}

}  // namespace genutil

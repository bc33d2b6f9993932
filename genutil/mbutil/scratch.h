// A buffer for the length of one call.
#pragma once

#include <cstddef>
#include <cstdlib>

namespace genutil {

class Scratch {
  public:
    explicit Scratch(std::size_t size) : m_bytes(static_cast<char*>(std::malloc(size))) {}
    ~Scratch() { std::free(m_bytes); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    char* Bytes() const { return m_bytes; }  // null when memory ran out

  private:
    char* m_bytes;
};

}  // namespace genutil

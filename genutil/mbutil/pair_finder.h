// Search for one byte, or two in a row, in a text that is read no further than its terminator.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil {

class PairFinder {
  public:
    // A second byte of 0 means: any.
    PairFinder(const unsigned char* text, unsigned char first, unsigned char second)
        : m_at(text), m_known(text), m_first(first), m_second(second) {}

    // The next place, null behind the last.
    const unsigned char* Next();

  private:
    bool Learn();
    std::uint32_t Matches(const unsigned char* bytes) const;

    static constexpr std::size_t kStep = 16;
    const unsigned char* m_at;     // where m_matches stands
    const unsigned char* m_known;  // no terminator before this
    unsigned char m_first, m_second;
    bool m_ended = false;  // m_known is the terminator
    bool m_started = false;
    std::uint32_t m_matches = 0;  // bits of places not yet given
    std::size_t m_window = 256;
};

}  // namespace genutil

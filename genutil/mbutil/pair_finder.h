// Search for one byte or two consecutive bytes in a text. No byte after the terminator is read.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil {

class PairFinder {
  public:
    // A second byte of 0 matches any byte.
    PairFinder(const unsigned char* text, unsigned char first, unsigned char second)
        : m_at(text), m_known(text), m_first(first), m_second(second) {}

    // Returns the next match, or null after the last.
    const unsigned char* Next();

  private:
    bool Learn();
    std::uint32_t Matches(const unsigned char* bytes) const;

    static constexpr std::size_t kStep = 16;
    const unsigned char* m_at;     // position of m_matches
    const unsigned char* m_known;  // no terminator before this
    unsigned char m_first, m_second;
    bool m_ended = false;  // m_known is the terminator
    bool m_started = false;
    std::uint32_t m_matches = 0;  // bits of matches not yet returned
    std::size_t m_window = 256;
};

}  // namespace genutil

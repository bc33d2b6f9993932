// Search for a sequence of bytes in time proportional to the text, however repetitive both are, and
// without memory: the two-way algorithm of Crochemore and Perrin.
#pragma once

#include <cstddef>

namespace genutil {

class TwoWayFinder {
  public:
    // The needle has at least one byte. Both texts must outlive the finder.
    TwoWayFinder(const unsigned char* text, std::size_t length, const unsigned char* needle,
                 std::size_t needleLength);

    // Returns the next occurrence, which may overlap the previous one, or null after the last.
    const unsigned char* Next();

  private:
    bool MatchesAt(const unsigned char* at, std::size_t* shift);

    const unsigned char* m_text;
    std::size_t m_length;
    const unsigned char* m_needle;
    std::size_t m_needleLength;
    std::size_t m_left;    // length of the left part of the needle
    std::size_t m_period;  // by how much a match of the right part may shift
    bool m_periodic;
    std::size_t m_at = 0;
    std::size_t m_known = 0;  // bytes of the needle that are known to match at m_at
};

}  // namespace genutil

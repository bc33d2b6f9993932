// File names and patterns with wildcards, which match by the rules of Windows.
//
//   *     any characters; before a dot, it does not consume the last dot of the name
//   ?     a character other than a dot; no character before a dot and at the end of the name
//   .*    and ".?": the dot may be missing at the end of the name
//   *.    at the end: names without a dot
//   *.*   every name
//
// Letter case is ignored.
#pragma once

#include <cstddef>

#include "osutil/platform/file/path_units.h"

namespace genutil {

class NamePattern {
  public:
    explicit NamePattern(const char* pattern);  // pattern and names are in the current code set
    // Returns false also if allocation fails, which is reported.
    bool Matches(const char* name);
    bool HasFailed() const { return m_failed; }  // returns true if an allocation has failed so far

  private:
    // Wildcards according to their place, as units that no name contains.
    enum : unsigned short { kAny = 1, kAnyButLastDot, kOne, kDotOrEnd };

    void Compile(const unsigned short* pattern, std::size_t count);
    void Skip(unsigned short next, bool atEnd);
    void Step(unsigned short character, bool lastDot);

    bool m_everything = false;
    bool m_failed = false;
    std::size_t m_count = 0;
    platform::PathBuffer<unsigned short> m_elements;
    // True for each element before which the name so far matches the pattern.
    platform::PathBuffer<unsigned char> m_reached;
};

}  // namespace genutil

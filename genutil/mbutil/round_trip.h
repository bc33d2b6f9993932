// Exact text: text whose bytes are recovered unchanged from its 16-bit form. Operations on its
// characters can be performed on its bytes, without that form.
#pragma once

#include <cstddef>
#include <string_view>

#include "genutil/mbutil/align.h"
#include "genutil/mbutil/step.h"

namespace genutil {

// Returns true if a text in the current code set is known to be exact: it is well formed and has no
// first byte under which a character has a second code. Returns false for some exact texts: GBK and
// user-defined characters are left to the slower method. The text contains no 0 byte.
bool IsExactText(std::string_view text);

// Character boundaries in exact text. Positions must be queried in ascending order. All queries
// together take time in proportion to the text.
class CharacterStarts {
  public:
    explicit CharacterStarts(const unsigned char* text) : m_boundary(text) {}

    // Returns true if a byte may be within a character, so that its position must be queried. Any
    // other byte always begins a character.
    static bool MayLieWithin(unsigned char byte) {
        return g_currentStep && g_currentStep->later[byte];
    }

    bool operator()(const unsigned char* place) {
        // The preceding character is usually a single byte.
        if (place == m_boundary || g_currentStep->first[place[-1]] == 1) return true;
        const auto offset = static_cast<std::size_t>(place - m_boundary);
        const std::size_t start = AlignToCharacter(*g_currentStep, m_boundary, offset);
        m_boundary += start;
        return start == offset;
    }

  private:
    const unsigned char* m_boundary;  // start of a character, not after any position still to be
                                      // queried
};

}  // namespace genutil

// Text that comes back from its 16-bit form byte by byte as it was. What is done to such text
// character by character may be done to its bytes, without that form.
#pragma once

#include <cstddef>
#include <string_view>

#include "genutil/mbutil/align.h"
#include "genutil/mbutil/step.h"

namespace genutil {

// Whether a text in the current code set is such: well formed, with no first byte under which a
// character has a second code. Not every text that is such is known as it: GBK and user-defined
// characters are left to the slower way. The text has no 0 in it.
bool IsExactText(std::string_view text);

// Tells which places in exact text begin a character. Places are asked for in ascending order, and
// the look at all of them takes time in proportion to the text.
class CharacterStarts {
  public:
    explicit CharacterStarts(const unsigned char* text) : m_boundary(text) {}

    // Whether this must be asked about a place where a byte stands: else it begins a character
    // wherever it does.
    static bool MayLieWithin(unsigned char byte) {
        return g_currentStep && g_currentStep->later[byte];
    }

    bool operator()(const unsigned char* place) {
        // Mostly a character of one byte stands before.
        if (place == m_boundary || g_currentStep->first[place[-1]] == 1) return true;
        const auto offset = static_cast<std::size_t>(place - m_boundary);
        const std::size_t start = AlignToCharacter(*g_currentStep, m_boundary, offset);
        m_boundary += start;
        return start == offset;
    }

  private:
    const unsigned char* m_boundary;  // a start, not behind any place to come
};

}  // namespace genutil

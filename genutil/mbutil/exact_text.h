// Text that comes back from its 16-bit form byte by byte as it was. What is done to such text
// character by character may be done to its bytes, without that form.
#pragma once

#include <cstddef>

#include "genutil/mbutil/code_page.h"

namespace genutil {

// Whether all of the text is valid in the code set and each of its codes is the one that its
// character has on the way back. In a single-byte code set it does not depend on the text, since
// there invalid bytes come back too. The text has no 0 in it.
bool IsExactText(const CodePage& page, const char* text, std::size_t bytes);

// Tells which places in exact text begin a character. Places are asked for in ascending order, and
// the look at all of them takes time in proportion to the text.
class CharacterStarts {
  public:
    CharacterStarts(const CodePage& page, const unsigned char* text, std::size_t length)
        : m_page(page), m_text(text), m_end(text + length) {}

    // Whether this must be asked about a place where a byte stands: else it begins a character
    // wherever it does.
    static bool MayLieWithin(const CodePage& page, unsigned char byte) {
        return page.form == CodeForm::kPairs && page.isTrail[byte];
    }

    bool operator()(std::size_t place);

  private:
    const CodePage& m_page;
    const unsigned char* const m_text;
    const unsigned char* const m_end;
    std::size_t m_boundary = 0;  // a start, not behind any place to come
};

}  // namespace genutil

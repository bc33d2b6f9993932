// Conversion of a locale's text from UTF-16 to a code set that may lack some of its characters.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genutil/mbutil/code_page.h"

namespace genutil {

// Writes a text in a code page of one-byte and two-byte codes, with best-fit characters in place of
// those that the code page lacks. Stores at most size bytes, including the terminator. Returns the
// number of bytes stored, excluding the terminator. Returns -1 if a character has no best fit or if
// there is no room.
long ToNearestText(const CodePage& page, const std::uint16_t* text, char* out, std::size_t size);

}  // namespace genutil

// Text of a locale, from UTF-16 to a code set that may lack some of its characters.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genutil/mbutil/code_page.h"

namespace genutil {

// Writes a text in a code page of one-byte and two-byte codes, with the nearest characters in place
// of those that it lacks. Stores at most size bytes, terminator included. Returns the bytes stored
// without terminator; -1 when a character has no near one, and when there is no room.
long ToNearestText(const CodePage& page, const std::uint16_t* text, char* out, std::size_t size);

}  // namespace genutil

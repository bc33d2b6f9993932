// The characters of UTF-8, over which the library steps byte by byte.
#pragma once

#include <cstddef>
#include <string_view>

// Returns the length of the character at a position: 1 to 4, or 0 if it is invalid.
int Utf8Length(std::string_view text, std::size_t at);

// Returns the code point of a valid character.
unsigned CodePoint(std::string_view character);

// The characters of UTF-8, which the library steps byte by byte.
#pragma once

#include <cstddef>
#include <string_view>

// Length of the character at a position: 1 to 4, 0 when it is invalid there.
int Utf8Length(std::string_view text, std::size_t at);

// Code point of a valid character.
unsigned CodePoint(std::string_view character);

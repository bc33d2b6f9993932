// Text on a terminal: its width and its style.
#pragma once

#include <cstdio>
#include <string>

// Returns the number of columns of a UTF-8 text: two for a wide character, none for a combining
// mark.
std::size_t Columns(const std::string& utf8);

// Returns the longest beginning of a text that fits in a number of columns.
std::string FittingInto(const std::string& utf8, std::size_t columns);

enum class Style { kHeading, kFault };

// Returns the text in the style if the stream is a terminal that supports it and NO_COLOR is not
// set. Otherwise returns it unchanged.
std::string Styled(std::FILE* stream, Style style, const std::string& text);

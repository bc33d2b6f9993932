// Text on a terminal: its columns, its style.
#pragma once

#include <cstdio>
#include <string>

// Columns that a text in UTF-8 takes: two for a wide character, none for a mark on another one.
std::size_t Columns(const std::string& utf8);

// As much from the front of a text as takes no more columns.
std::string FittingInto(const std::string& utf8, std::size_t columns);

enum class Style { kHeading, kFault };

// In the style where the stream is a terminal that shows it and NO_COLOR is not set; else as it is.
std::string Styled(std::FILE* stream, Style style, const std::string& text);

// Brings date, time and number patterns of CLDR into the shape in which Windows gives them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil::platform {

// Turns a CLDR pattern ("EEEE, d MMMM y 'г'.") into that of Windows ("dddd, d MMMM yyyy 'г.'"):
// years in four digits, no era, one marker for the parts of a day with a blank between it and the
// digits, other letters and what stands between them within apostrophes, plain blanks, no marks of
// direction. Stores at most size - 1 units and a terminator; false, with an empty pattern, when it
// is longer.
bool WindowsPattern(const std::uint16_t* pattern, std::uint16_t* out, std::size_t size);

// The text between the first two parts of a pattern, without apostrophes; none (false) when it
// is empty, has letters in it or does not fit.
bool SeparatorOfPattern(const std::uint16_t* pattern, std::uint16_t* out, std::size_t size);

// The order of a date pattern's parts: 0 month day year, 1 day before month wherever the year is,
// 2 year month day.
int OrderOfPattern(const std::uint16_t* pattern);
// The longest run of a token in a pattern, outside apostrophes; of d at most `limit` are counted,
// since longer runs are names.
int RunInPattern(const std::uint16_t* pattern, char token, int limit);
// Whether the AM or PM text comes before the hours.
bool MarkerIsFirst(const std::uint16_t* pattern);

// Drops marks of direction, and makes plain blanks and a plain minus sign of fancier ones.
// A narrow blank becomes `blank`. In place.
void PlainText(std::uint16_t* text, std::uint16_t blank);

// Sizes of digit groups ("3;2;0") of a number pattern such as "#,##,##0.###", and the number of its
// form for negative numbers, as Windows counts them.
void GroupingOfPattern(const std::uint16_t* pattern, std::uint16_t (&out)[8]);
int NegativeFormatOfPattern(const std::uint16_t* pattern);

}  // namespace genutil::platform

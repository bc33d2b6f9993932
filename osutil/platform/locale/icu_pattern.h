// Conversion of date, time and number patterns of CLDR to the form that Windows provides.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil::platform {

// Converts a CLDR pattern ("EEEE, d MMMM y 'г'.") to that of Windows ("dddd, d MMMM yyyy 'г.'"):
// years in four digits, no era, one marker for the parts of a day with a blank between it and the
// digits, other letters and the text between them in apostrophes, plain blanks, no direction marks.
// Stores at most size - 1 units and a terminator. Returns false, with an empty pattern, if it is
// longer.
bool WindowsPattern(const std::uint16_t* pattern, std::uint16_t* out, std::size_t size);

// Stores the text between the first two parts of a pattern, without apostrophes. Returns false if
// it is empty, contains letters or does not fit.
bool SeparatorOfPattern(const std::uint16_t* pattern, std::uint16_t* out, std::size_t size);

// Returns the order of a date pattern's parts: 0 month day year, 1 day before month with the year
// anywhere, 2 year month day.
int OrderOfPattern(const std::uint16_t* pattern);
// Returns the length of the longest run of a token in a pattern, outside apostrophes. Of d, at most
// `limit` are counted, because longer runs are names.
int RunInPattern(const std::uint16_t* pattern, char token, int limit);
// Returns true if the AM or PM marker precedes the hours.
bool MarkerIsFirst(const std::uint16_t* pattern);

// Normalises a text in place: removes direction marks, replaces special blanks with plain ones and
// a special minus sign with "-". A narrow blank becomes `blank`.
void PlainText(std::uint16_t* text, std::uint16_t blank);

// Determine, in the notation of Windows, the sizes of digit groups ("3;2;0") of a number pattern
// such as "#,##,##0.###", and the number of its format for negative numbers.
void GroupingOfPattern(const std::uint16_t* pattern, std::uint16_t (&out)[8]);
int NegativeFormatOfPattern(const std::uint16_t* pattern);

}  // namespace genutil::platform

// Dates as people type them, in any common form. Each reader reads a date at the start of a text
// and reports its end. A date is never read partially.
//
//     date    = [ weekday ] ( numeric | named | kanji ) [ weekday ]
//     numeric = n s n s n | n s n | yyyymmdd        s: one of / - . , or blanks, the same twice
//     named   = [ year s ] day s month [ s year ] | month s day [ s year ], with ordinals, "of"
//     kanji   = [ [ era ] n YEAR ] n MONTH n DAY | era n s n s n
//
// The roles of three numbers follow the locale's order, unless one has three or more digits or is
// above 31. That number is the year, and if it is the first, month and day follow it (ISO 8601).
// Month and day are never exchanged to make an invalid date valid. A missing year is the present
// one.
#pragma once

#include "genutil/date/date_numbers.h"

namespace genutil {

// Advance the cursor past the date if the result is kRead; otherwise nothing changes.
Reading ReadNumericDate(TextCursor& at, const DateSetting& setting, DateFound* found);
Reading ReadNamedDate(TextCursor& at, const DateSetting& setting, DateFound* found);
Reading ReadKanjiDate(TextCursor& at, const DateSetting& setting, DateFound* found);

// Tries the locale's long format, its short format and then the readers above, and chooses the
// reading that leaves the shortest rest of the text. A format is accepted only if the text has a
// year of at most four digits where the format has one. The text must be NUL-terminated.
Reading ReadAnyDate(TextCursor& at, const DateSetting& setting, DateFound* found);

// Reads a date only in the locale's formats, and only with a year.
bool ReadDateInFormat(TextCursor& at, const DateSetting& setting, DateFound* found);

}  // namespace genutil

// Dates as people type them, in whatever form. Each reader takes a date from the front of a text
// and says where it ends; nothing is read in part.
//
//     date    = [ weekday ] ( numeric | named | kanji ) [ weekday ]
//     numeric = n s n s n | n s n | yyyymmdd        s: one of / - . , or blanks, the same twice
//     named   = [ year s ] day s month [ s year ] | month s day [ s year ], with ordinals, "of"
//     kanji   = [ [ era ] n YEAR ] n MONTH n DAY | era n s n s n
//
// Which of three numbers is what follows the locale's order, unless one has three or more digits or
// is above 31: that is the year, and one in front has month and day behind it (ISO 8601). Month and
// day never change places to make a date of what is none. A missing year is the present one.
#pragma once

#include "genutil/date/date_numbers.h"

namespace genutil {

// On kRead the cursor moves behind the date; otherwise nothing changes.
Reading ReadNumericDate(TextCursor& at, const DateSetting& setting, DateFound* found);
Reading ReadNamedDate(TextCursor& at, const DateSetting& setting, DateFound* found);
Reading ReadKanjiDate(TextCursor& at, const DateSetting& setting, DateFound* found);

// The locale's long format, its short one, and then the readers above: the one that leaves least of
// the text. A format counts only where the text has a year of at most four digits for its year.
// The text must end with a NUL.
Reading ReadAnyDate(TextCursor& at, const DateSetting& setting, DateFound* found);

// Only the locale's formats, and only with a year.
bool ReadDateInFormat(TextCursor& at, const DateSetting& setting, DateFound* found);

}  // namespace genutil

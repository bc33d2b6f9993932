// Names of months and weekdays as people type them: in full or abbreviated, in any letter case, in
// the locale's language or in English.
#pragma once

#include "genlocale.h"
#include "genutil/date/text_cursor.h"

namespace genutil {

// Skips the longest month name at the cursor. Returns its month (from 0), or -1 if there is none.
// Names of the locale take precedence over English names.
int SkipMonthName(TextCursor& at, const CLCLocale& locale);

// Skips a weekday's name, which may be in parentheses or between commas. Returns false if there is
// none.
bool SkipWeekday(TextCursor& at, const CLCLocale& locale);

// Skips words between the parts of a date that have no meaning by themselves: those in apostrophes
// in the locale's long date format, and articles and similar words of several languages.
bool SkipFiller(TextCursor& at, const CLCLocale& locale);

// Skips the first marker of a year before Christ that matches at the cursor.
bool SkipBcMarker(TextCursor& at);

}  // namespace genutil

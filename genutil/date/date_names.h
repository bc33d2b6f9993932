// Names of months and days as people type them: in full or short, in any letter case, in the
// locale's language or in English.
#pragma once

#include "genlocale.h"
#include "genutil/date/text_cursor.h"

namespace genutil {

// The month (from 0) whose name stands at the cursor, which moves behind the longest; -1 when there
// is none. Names of the locale go before those of English.
int SkipMonthName(TextCursor& at, const CLCLocale& locale);

// A weekday's name, perhaps in parentheses or between commas; false when there is none.
bool SkipWeekday(TextCursor& at, const CLCLocale& locale);

// Words between the parts of a date that mean nothing by themselves: those that the locale's long
// date format has between apostrophes, and articles and the like of several languages.
bool SkipFiller(TextCursor& at, const CLCLocale& locale);

// The first of the markers for years before Christ that stands at the cursor.
bool SkipBcMarker(TextCursor& at);

}  // namespace genutil

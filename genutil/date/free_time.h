// Times of day as people type them, in any common form.
//
//     time   = [ marker ] ( hour [ s minute [ s second [ fraction ] ] ] ) [ marker ]
//     s      = ":" or "." or the locale's separator, the same twice; or a unit after each number
//
// Units are "h", "m" and "s", "Uhr", and the characters of China, Japan and Korea. Markers are
// those of the locale and the English ones. A fraction of a second is read and ignored.
#pragma once

#include "genlocale.h"
#include "genutil/date/text_cursor.h"
#include "genutil/date/time_parse.h"

namespace genutil {

struct TimeFound {
    ClockFields time;
    bool minuteGiven, secondGiven;
};

// Advances the cursor past the time if the result is kRead; otherwise nothing changes.
// @param compact true accepts a time that is one number of four or six digits, as after the "T" of
//     ISO 8601.
TimeReading ReadTime(TextCursor& at, const CLCLocale& locale, bool compact, TimeFound* found);

// Reads a time at the start of a text in the current code set: in the locale's format if that
// covers the whole text, or in any form.
// @param length receives the number of bytes read.
TimeReading ParseTime(const CGNString& text, const CLCLocale& locale, ClockFields* time,
                      std::size_t* length);

// Skips blanks and a marker of AM or PM. Returns false and changes nothing if there is none.
bool SkipMarker(TextCursor& at, const CLCLocale& locale, bool* pm);

// Skips a unit after the number of an hour.
bool SkipHourUnit(TextCursor& at);

}  // namespace genutil

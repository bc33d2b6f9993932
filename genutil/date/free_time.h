// Times of day as people type them, in whatever form.
//
//     time   = [ marker ] ( hour [ s minute [ s second [ fraction ] ] ] ) [ marker ]
//     s      = ":" or "." or the locale's separator, the same twice; or a unit behind each number
//
// Units are "h", "m" and "s", "Uhr", and the characters of China, Japan and Korea. Markers are
// those of the locale and the English ones. A fraction of a second is read and dropped.
#pragma once

#include "genlocale.h"
#include "genutil/date/text_cursor.h"
#include "genutil/date/time_parse.h"

namespace genutil {

struct TimeFound {
    ClockFields time;
    bool minuteGiven, secondGiven;
};

// On kRead the cursor moves behind the time; otherwise nothing changes. With `compact` the time may
// be one number of four or six digits, as behind the "T" of ISO 8601.
TimeReading ReadTime(TextCursor& at, const CLCLocale& locale, bool compact, TimeFound* found);

// A time from the front of a text in the current code set: as the locale writes it, if that is all
// of the text, or in any form. *length receives the bytes that were read.
TimeReading ParseTime(const CGNString& text, const CLCLocale& locale, ClockFields* time,
                      std::size_t* length);

// A text for AM or PM; behind blanks. False, with nothing changed, without one.
bool SkipMarker(TextCursor& at, const CLCLocale& locale, bool* pm);

// A unit behind the number of an hour.
bool SkipHourUnit(TextCursor& at);

}  // namespace genutil

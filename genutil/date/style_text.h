// Dates and times as text in the locale's format of a style.
#pragma once

#include "genlocale.h"
#include "genutil/date/date_format.h"

namespace genutil {

// Appends a date in the format of a style (0 and 1 short, 2 long, 3 the locale's own) after
// updating the locale from the system's settings. Any other style appends nothing. Returns false
// for a malformed format.
// @param yearFirst receives 1 if the format begins with the year, which decides the position of a
//     B.C. marker, and otherwise 0; may be null.
bool AppendDate(TextBuilder& out, DateFields& date, unsigned char* yearFirst, long style,
                CLCLocale* locale);

// Same as above for a time.
void AppendTime(TextBuilder& out, const ClockFields& time, CLCLocale* locale);

// Replaces a text with a number, as printf writes "%0*d". Returns 1.
inline unsigned char ReplaceByNumber(CGNString& out, int number, int width) {
    out.Clear();
    TextBuilder(out).AppendNumber(number, width);
    return 1;
}

}  // namespace genutil

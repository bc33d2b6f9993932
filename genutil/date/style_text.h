// Dates and times as text in the locale's format of a style.
#pragma once

#include "genlocale.h"
#include "genutil/date/date_format.h"

namespace genutil {

// Appends a date in the format of a style (0 and 1 short, 2 long, 3 the locale's own), after the
// locale took the system's settings anew; any other style appends nothing. *yearFirst, unless null,
// becomes whether the format begins with the year, which decides the place of a B.C. marker.
// Returns false for a malformed format.
bool AppendDate(TextBuilder& out, DateFields& date, unsigned char* yearFirst, long style,
                CLCLocale* locale);

// The same for a time.
void AppendTime(TextBuilder& out, const ClockFields& time, CLCLocale* locale);

// Replaces a text by a number, as printf writes "%0*d". Returns 1.
inline unsigned char ReplaceByNumber(CGNString& out, int number, int width) {
    out.Clear();
    TextBuilder(out).AppendNumber(number, width);
    return 1;
}

}  // namespace genutil

// Dates and times together, as people type them: "20 March 2010, 2:30 pm", "2010-03-20T14:30Z".
#pragma once

#include <cstdint>

#include "genutil/date/free_date.h"
#include "genutil/date/free_time.h"

namespace genutil {

struct MomentFound {
    bool hasDate, hasTime, hasOffset;
    DateFound date;
    TimeFound time;
    std::int32_t offset;  // seconds east of Greenwich that the time is given in
};

enum class MomentReading { kRead, kBadDate, kBadTime, kTimeOutOfRange };

// A whole text with a date, a time or both in either order. The time may have "Z" or an offset
// behind it.
MomentReading ReadMoment(const CGNString& text, const DateSetting& setting, MomentFound* found);

// The same for a caller who does not ask which parts the text has: at once where the text is as the
// locale writes moments.
MomentReading ReadMomentAsWritten(const CGNString& text, const DateSetting& setting,
                                  MomentFound* found);

// A whole text with a date only; and with a time only, which may have an offset, in which nothing
// but blanks is midnight.
MomentReading ReadMomentDate(const CGNString& text, const DateSetting& setting, MomentFound* found);
MomentReading ReadMomentTime(const CGNString& text, const DateSetting& setting, MomentFound* found);

}  // namespace genutil

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
    std::int32_t offset;  // of the time, in seconds east of Greenwich
};

enum class MomentReading { kRead, kBadDate, kBadTime, kTimeOutOfRange };

// Reads a whole text with a date, a time or both in either order. The time may be followed by "Z"
// or an offset.
MomentReading ReadMoment(const CGNString& text, const DateSetting& setting, MomentFound* found);

// Same as above for a caller that does not need to know which parts the text has. Faster for text
// in the format in which the locale writes moments.
MomentReading ReadMomentAsWritten(const CGNString& text, const DateSetting& setting,
                                  MomentFound* found);

// Read a whole text with only a date, or only a time. The time may have an offset, and a blank text
// is midnight.
MomentReading ReadMomentDate(const CGNString& text, const DateSetting& setting, MomentFound* found);
MomentReading ReadMomentTime(const CGNString& text, const DateSetting& setting, MomentFound* found);

}  // namespace genutil

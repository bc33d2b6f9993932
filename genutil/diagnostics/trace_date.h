// The date of trace lines. Declared here for the trace, and defined with the dates, which are in a
// higher layer.
#pragma once

#include <cstdint>

namespace genutil {

constexpr char kTraceDateForm[] = "00/00/00 00:00:00 :: ";  // month, day and year

// Writes the present date and time in the zone of the calling thread.
void WriteTraceDate(char (&out)[sizeof kTraceDateForm]);

// The present moment, in the zone of the calling thread or in UTC.
struct TraceMoment {
    long sinceEpoch;  // seconds since 1970
    int year, month, day, hour, minute, second, millisecond;
    long offset;  // seconds east of UTC
};
void ReadTraceMoment(bool isUtc, TraceMoment* moment);

// Returns the day number of a moment, in seconds since 1970.
std::int32_t TraceDayOf(bool isUtc, std::int64_t seconds);
std::int32_t TraceDayNow(bool isUtc);

}  // namespace genutil

// The date of trace lines. Declared here for the trace, and defined with the dates, which are in a
// higher layer.
#pragma once

namespace genutil {

constexpr char kTraceDateForm[] = "00/00/00 00:00:00 :: ";  // month, day and year

// Writes the present date and time in the zone of the calling thread.
void WriteTraceDate(char (&out)[sizeof kTraceDateForm]);

}  // namespace genutil

// The forms of trace lines that programs choose.
#pragma once

#include "genutil/diagnostics/trace_line.h"

namespace genutil {

// A message and its circumstances.
struct TraceMessage {
    const char* position;  // null for none
    short mask;
    const char* module;
    const char* format;
    va_list* arguments;
    unsigned long thread;
};

// Returns true if every directive and field of a line format is known, see CGNTrace::ResetFormat().
bool IsTraceFormat(const char* format);

// Writes a line in a valid format.
void WriteFormatted(TraceLine* line, const char* format, bool isUtc, const TraceMessage& message);
// Writes a line as a JSON object, in UTF-8.
void WriteJson(TraceLine* line, bool isUtc, const TraceMessage& message);

}  // namespace genutil

// The last lines of the process, kept in memory for a failed assertion or a crash.
#pragma once

#include <cstddef>

namespace genutil {

// Keeps the last `count` lines from now on; 0 for none. Returns false, and changes nothing, if
// allocation fails or the count is out of range.
bool StartTraceRing(long count, const char* path);

void AddToTraceRing(const char* line, std::size_t length);

// Appends the lines to the file of the ring, after a heading, and discards them. May be called
// while the process crashes: it allocates nothing and waits for no lock.
void WriteTraceRing(const char* heading);

bool IsTraceRingUsed();

}  // namespace genutil

// Platform layer: streams of the C runtime. Paths are in the current code set.
#pragma once

#include <cstdint>
#include <cstdio>

namespace genutil::platform {

// Opens a file as a stream of the C runtime, which closes it. Returns null if it cannot be opened.
// The mode is that of fopen, at most three letters.
std::FILE* OpenStream(const char* path, const char* mode);
// Returns the position in a stream of the C library, also beyond 2 GB, or -1 if it has none.
std::int64_t PlaceIn(std::FILE* stream);
bool GoTo(std::FILE* stream, std::int64_t place);
// Returns true if a path names the file, not a device or a pipe, that a stream reads.
bool IsOpenIn(std::FILE* stream, const char* path);

}  // namespace genutil::platform

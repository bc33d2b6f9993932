// Streams of the C runtime. Paths are in the current code set.
#pragma once

#include <cstdint>
#include <cstdio>

namespace genutil::platform {

// Opens a file as a stream of the C runtime, which closes it; null when it does not open. The mode
// is that of fopen, of at most three letters.
std::FILE* OpenStream(const char* path, const char* mode);
// The place in a stream of the C library, beyond 2 GB too; -1 when it has none.
std::int64_t PlaceIn(std::FILE* stream);
bool GoTo(std::FILE* stream, std::int64_t place);

}  // namespace genutil::platform

#include "osutil/platform/file/streams.h"

#include "osutil/platform/posix/file/paths.h"

namespace genutil::platform {

// Child processes do not inherit the stream.
std::FILE* OpenStream(const char* path, const char* mode) {
    const SystemPath name(path);
    char closing[8];
    std::snprintf(closing, sizeof closing, "%se", mode);
    return name.Get() ? std::fopen(name.Get(), closing) : nullptr;
}

std::int64_t PlaceIn(std::FILE* stream) {
    return ftello(stream);
}

bool GoTo(std::FILE* stream, std::int64_t place) {
    return fseeko(stream, place, SEEK_SET) == 0;
}

}  // namespace genutil::platform

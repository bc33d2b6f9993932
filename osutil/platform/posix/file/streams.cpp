#include "osutil/platform/file/streams.h"

#include <sys/stat.h>

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

bool IsOpenIn(std::FILE* stream, const char* path) {
    const SystemPath name(path);
    struct stat here, there;
    return name.Get() && fstat(fileno(stream), &here) == 0 && S_ISREG(here.st_mode) &&
           stat(name.Get(), &there) == 0 && here.st_dev == there.st_dev &&
           here.st_ino == there.st_ino;
}

}  // namespace genutil::platform

#include "osutil/platform/posix/file/descriptor.h"

#include <cerrno>

namespace genutil::platform {

bool ReadExactly(int file, std::int64_t offset, void* out, std::size_t size) {
    for (auto* at = static_cast<char*>(out); size > 0;) {
        const ssize_t done = pread(file, at, size, offset);
        if (done < 0 && errno == EINTR) continue;
        if (done <= 0) return false;
        at += done;
        offset += done;
        size -= static_cast<std::size_t>(done);
    }
    return true;
}

bool WriteAll(int file, const char* bytes, std::size_t size) {
    while (size > 0) {
        const ssize_t done = write(file, bytes, size);
        if (done < 0 && errno == EINTR) continue;
        if (done <= 0) return false;
        bytes += done;
        size -= static_cast<std::size_t>(done);
    }
    return true;
}

}  // namespace genutil::platform

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

}  // namespace genutil::platform

// Profile files through file descriptors.
#include "osutil/platform/profiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "osutil/platform/posix/paths.h"

namespace genutil::platform {

namespace {

bool ReadAll(int file, char* out, std::size_t size) {
    while (size > 0) {
        const ssize_t count = read(file, out, size);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        out += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

}  // namespace

std::int64_t ReadProfile(const char* path, char* out, std::size_t size) {
    const SystemPath systemPath(path);
    const int file = systemPath.Get() ? open(systemPath.Get(), O_RDONLY | O_CLOEXEC) : -1;
    if (file < 0) return -1;
    struct stat status;
    std::int64_t length = -1;
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode)) length = status.st_size;
    const auto wanted = static_cast<std::int64_t>(size);
    if (length > 0 &&
        !ReadAll(file, out, static_cast<std::size_t>(length < wanted ? length : wanted)))
        length = -1;
    close(file);
    return length;
}

}  // namespace genutil::platform

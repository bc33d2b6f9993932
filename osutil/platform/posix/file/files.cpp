// Files through file descriptors.
#include "osutil/platform/file/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "osutil/platform/posix/file/descriptor.h"
#include "osutil/platform/posix/file/errors.h"
#include "osutil/platform/posix/file/paths.h"

namespace genutil::platform {

namespace {

// O_NONBLOCK: opening does not wait for the other end of a pipe.
int FlagsOf(Opening opening) {
    switch (opening) {
        case Opening::kRead:
            return O_RDONLY | O_NONBLOCK;
        case Opening::kCreate:
            return O_WRONLY | O_CREAT | O_EXCL;
        case Opening::kCreateOrTruncate:
            return O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK;
        case Opening::kCreateOrAppend:
            return O_RDWR | O_CREAT | O_APPEND;
        case Opening::kAppend:
            break;
    }
    return O_WRONLY | O_APPEND | O_NONBLOCK;
}

FileCode CodeOf(int result) {
    return result == 0 ? kDone : FileCodeOf(errno);
}

}  // namespace

// -- Open files ----------------------------------------------------------------------------------

File::File(const char* path, Opening opening) {
    const SystemPath name(path);
    m_handle = name.Get() ? open(name.Get(), FlagsOf(opening) | O_CLOEXEC | O_NOCTTY, 0666) : -1;
    m_code = m_handle >= 0 ? kDone : FileCodeOf(errno);
    if (m_handle < 0 || opening == Opening::kRead) return;
    // Writing waits for a slow reader. A pipe opened for both directions has only itself as one.
    struct stat status;
    const int file = static_cast<int>(m_handle);
    if (fcntl(file, F_SETFL, FlagsOf(opening) & O_APPEND) == 0 && fstat(file, &status) == 0 &&
        !(opening == Opening::kCreateOrAppend && S_ISFIFO(status.st_mode)))
        return;
    m_code = kFailed;
    Close();
}

std::int64_t File::Size() const {
    struct stat status;
    const bool known = m_handle >= 0 && fstat(static_cast<int>(m_handle), &status) == 0;
    return known && S_ISREG(status.st_mode) ? status.st_size : -1;
}

bool File::ReadAt(std::int64_t offset, char* out, std::size_t count) {
    return ReadExactly(static_cast<int>(m_handle), offset, out, count);
}

bool File::Write(const char* bytes, std::size_t count) {
    return WriteAll(static_cast<int>(m_handle), bytes, count);
}

bool File::Close() {
    if (m_handle < 0) return false;
    const int file = static_cast<int>(m_handle);
    m_handle = -1;
    return close(file) == 0;
}

// -- By path -------------------------------------------------------------------------------------

bool Exists(const char* path) {
    const SystemPath name(path);
    struct stat status;
    return name.Get() && lstat(name.Get(), &status) == 0;
}

bool NameFits(const char* path) {
    constexpr std::size_t kLongest = 255, kEnding = 4;
    const SystemPath name(path);
    if (!name.Get()) return true;
    const char* const slash = std::strrchr(name.Get(), '/');
    return std::strlen(slash ? slash + 1 : name.Get()) <= kLongest - kEnding;
}

FileCode MakeDirectory(const char* path) {
    const SystemPath name(path);
    return name.Get() ? CodeOf(mkdir(name.Get(), 0777)) : FileCodeOf(errno);
}

FileCode RemoveFile(const char* path) {
    const SystemPath name(path);
    return name.Get() ? CodeOf(unlink(name.Get())) : FileCodeOf(errno);
}

}  // namespace genutil::platform

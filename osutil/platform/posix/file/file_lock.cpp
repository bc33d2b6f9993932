#include "osutil/platform/posix/file/file_lock.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdint>
#include <ctime>

namespace genutil::platform {

namespace {

bool SetLock(int file, short kind) {
    struct flock lock = {};
    lock.l_type = kind;
    lock.l_whence = SEEK_SET;
    lock.l_start = INT64_MAX - 1;
    lock.l_len = 1;
    return fcntl(file, F_OFD_SETLK, &lock) == 0;
}

}  // namespace

FileLock::FileLock(int file) : m_file(file) {
    constexpr std::int64_t kPatience = 10'000'000'000, kLongestPause = 5'000'000;  // nanoseconds
    timespec pause = {0, 50'000};
    for (std::int64_t waited = 0; !(m_taken = SetLock(file, F_WRLCK)); waited += pause.tv_nsec) {
        if (errno != EAGAIN && errno != EACCES && errno != EINTR) break;
        if (waited >= kPatience) return;
        nanosleep(&pause, nullptr);
        if (pause.tv_nsec < kLongestPause) pause.tv_nsec *= 2;
    }
    m_taken = true;
}

FileLock::~FileLock() {
    if (m_taken) SetLock(m_file, F_UNLCK);
}

bool IsNamed(int folder, const char* name, const struct stat& file) {
    struct stat named;
    return fstatat(folder, name, &named, AT_SYMLINK_NOFOLLOW) == 0 && named.st_dev == file.st_dev &&
           named.st_ino == file.st_ino;
}

}  // namespace genutil::platform

#include "osutil/platform/posix/file/file_target.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

namespace genutil::platform {

bool FileTarget::Find(const char* path) {
    constexpr int kMostLinks = 40;
    if (!Set("", 0, path)) return false;
    for (int links = 0; links < kMostLinks; ++links) {
        char link[PATH_MAX];
        const ssize_t length = readlink(m_path, link, sizeof link - 1);
        if (length < 0) return *Name() != 0;
        link[length] = 0;
        const bool ok = *link == '/' ? Set("", 0, link)
                                     : Set(m_path, static_cast<std::size_t>(Name() - m_path), link);
        if (!ok) return false;
    }
    return false;
}

const char* FileTarget::Name() const {
    const char* slash = std::strrchr(m_path, '/');
    return slash ? slash + 1 : m_path;
}

int FileTarget::OpenFolder() const {
    char folder[PATH_MAX] = ".";
    const auto length = static_cast<std::size_t>(Name() - m_path);
    if (length) std::memcpy(folder, m_path, length);
    if (length) folder[length] = 0;
    return open(folder, O_PATH | O_DIRECTORY | O_CLOEXEC);
}

bool FileTarget::Set(const char* folder, std::size_t length, const char* path) {
    char made[PATH_MAX];
    const int size =
        std::snprintf(made, sizeof made, "%.*s%s", static_cast<int>(length), folder, path);
    if (size < 0 || static_cast<std::size_t>(size) >= sizeof made) return false;
    std::memcpy(m_path, made, static_cast<std::size_t>(size) + 1);
    return true;
}

}  // namespace genutil::platform

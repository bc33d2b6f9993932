// Paths of directories to remove.
#pragma once

#include <cstring>

#include "osutil/platform/posix/file/paths.h"

namespace genutil::platform {

// A path to a directory without anything after its last name, because "link/" and "link/." denote
// the target of the link.
class DirectoryPath {
  public:
    explicit DirectoryPath(const char* path) {
        const SystemPath name(path);
        const std::size_t length = name.Get() ? Trim(name.Get()) : 0;
        if (!name.Get() || !m_buffer.Reserve(length + 1)) return;
        std::memcpy(m_buffer.Get(), name.Get(), length);
        m_buffer.Get()[length] = 0;
    }
    const char* Get() const { return m_buffer.Get(); }  // null, with errno set, if there is no path

  private:
    static std::size_t Trim(const char* path) {
        std::size_t length = std::strlen(path);
        for (;;) {
            while (length > 1 && path[length - 1] == '/') --length;
            if (length < 3 || std::memcmp(path + length - 2, "/.", 2) != 0) return length;
            --length;
        }
    }
    PathBuffer<char> m_buffer;
};

}  // namespace genutil::platform

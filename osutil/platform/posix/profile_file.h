// Files behind the profile functions: their paths, their state and their bytes.
#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <optional>

#include "osutil/platform/posix/config_home.h"
#include "osutil/platform/posix/paths.h"

namespace genutil::platform {

// A file descriptor, closed at the end of the scope.
class OpenDescriptor {
  public:
    explicit OpenDescriptor(int file) : m_file(file) {}
    OpenDescriptor(const OpenDescriptor&) = delete;
    OpenDescriptor& operator=(const OpenDescriptor&) = delete;
    ~OpenDescriptor() {
        if (m_file >= 0) close(m_file);
    }
    int Get() const { return m_file; }
    bool IsOpen() const { return m_file >= 0; }
    bool Close() {  // false when what was written may be lost
        const int file = m_file;
        m_file = -1;
        return close(file) == 0;
    }

  private:
    int m_file;
};

// The path of a profile: null is the default one, and a name without a folder is one in the
// configuration folder.
class ProfilePath {
  public:
    explicit ProfilePath(const char* file);
    const char* Get() const { return m_path; }  // null when there is none
    bool IsKept() const { return m_kept.has_value(); }

  private:
    SystemPath m_given;
    std::optional<ConfigPath> m_kept;  // of the file in the configuration folder
    const char* m_path;
};

// What tells one state of a file from another.
struct FileState {
    std::uint64_t device, inode;
    std::int64_t size, changed, modified;  // bytes, and nanoseconds since 1970

    static FileState Of(const struct stat& status) {
        return {status.st_dev, status.st_ino, status.st_size, Nanoseconds(status.st_ctim),
                Nanoseconds(status.st_mtim)};
    }
    static std::int64_t Nanoseconds(const timespec& time) {
        return std::int64_t{time.tv_sec} * 1000000000 + time.tv_nsec;
    }
    bool operator==(const FileState&) const = default;
};

// Reads exactly so many bytes; false when there are fewer, or when reading fails.
bool ReadExactly(int file, char* out, std::size_t size);

}  // namespace genutil::platform

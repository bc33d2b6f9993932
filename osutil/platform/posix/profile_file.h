// Files behind the profile functions: their paths and their state.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <optional>

#include "osutil/platform/posix/config_home.h"
#include "osutil/platform/posix/paths.h"

namespace genutil::platform {

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

}  // namespace genutil::platform

// The state of a file, to detect changes.
#pragma once

#include <sys/stat.h>

#include <cstdint>

namespace genutil::platform {

// The properties that distinguish one state of a file from another.
struct FileState {
    std::uint64_t device, inode;
    std::int64_t size, changed, modified;  // in bytes, and in nanoseconds since 1970

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

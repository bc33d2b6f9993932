// The lock of a directory, under which its files are replaced or moved.
#pragma once

#include <sys/file.h>

#include <cerrno>

namespace genutil::platform {

// Excludes other processes and, if the directory is opened for each lock, other threads.
class FolderLock {
  public:
    explicit FolderLock(int folder) : m_folder(folder) {
        int failed;
        while ((failed = flock(folder, LOCK_EX)) != 0 && errno == EINTR) {
        }
        m_taken = failed == 0;
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    // Explicit, because a child that was forked meanwhile also has the directory open.
    ~FolderLock() { flock(m_folder, LOCK_UN); }
    bool IsTaken() const { return m_taken; }

  private:
    int m_folder;
    bool m_taken;
};

}  // namespace genutil::platform

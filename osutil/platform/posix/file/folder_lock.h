// The lock of a folder, under which files of it are replaced or moved.
#pragma once

#include <sys/file.h>

#include <cerrno>

namespace genutil::platform {

// Holds between processes and, for a folder that is opened for each lock, between threads.
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
    // Said in so many words: a child that was forked meanwhile has the folder open, too.
    ~FolderLock() { flock(m_folder, LOCK_UN); }
    bool IsTaken() const { return m_taken; }

  private:
    int m_folder;
    bool m_taken;
};

}  // namespace genutil::platform

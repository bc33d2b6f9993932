// A lock of an open file between processes, and between threads that open the file separately.
#pragma once

#include <sys/stat.h>

namespace genutil::platform {

// Only those who may write a file can lock it. The lock covers one byte beyond the end of every
// file, so that it does not conflict with locks that a program has on the contents.
class FileLock {
  public:
    // Waits for ten seconds at most, because a stopped process keeps its locks.
    // @param file is open for writing and stays open longer than the lock.
    explicit FileLock(int file);
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    // Unlocks explicitly, because a child that was forked meanwhile also has the file open.
    ~FileLock();

    // Returns true without a lock on a file system that has no locks.
    bool IsTaken() const { return m_taken; }

  private:
    int m_file;
    bool m_taken;
};

// Returns true if a name in a folder still refers to that file. Whoever had the lock before may
// have renamed or removed the file.
bool IsNamed(int folder, const char* name, const struct stat& file);

}  // namespace genutil::platform

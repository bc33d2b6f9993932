// The removal of whole trees. Entries are named relative to an open directory, so that no path is
// followed through a link and none becomes too long.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "osutil/platform/file/directories.h"
#include "osutil/platform/posix/file/directory_path.h"

namespace genutil::platform {

namespace {

constexpr int kOpenDirectory = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

// Gives the owner all permissions for a directory, but not for the target of a link.
bool GrantAll(int parent, const char* name) {
    return fchmodat(parent, name, S_IRWXU, AT_SYMLINK_NOFOLLOW) == 0;
}

// Gives the owner permission to change a directory.
bool Unlock(int directory) {
    struct stat status;
    return fstat(directory, &status) == 0 && (status.st_mode & S_IRWXU) != S_IRWXU &&
           fchmod(directory, (status.st_mode & 07777) | S_IRWXU) == 0;
}

int OpenToEmpty(int parent, const char* name) {
    const int opened = openat(parent, name, kOpenDirectory | O_NOFOLLOW);
    if (opened >= 0 || errno != EACCES || !GrantAll(parent, name)) return opened;
    return openat(parent, name, kOpenDirectory | O_NOFOLLOW);
}

// Empties a directory of any depth with one descriptor open at a time. It descends into a directory
// that is not empty and returns by "..", after verifying that this is the directory from which it
// came. Each return reads the directory anew.
class DeepRemoval {
  public:
    explicit DeepRemoval(int top) : m_current(top) {}
    ~DeepRemoval() {
        if (m_current >= 0) close(m_current);
        Release(m_above);
    }
    DeepRemoval(const DeepRemoval&) = delete;
    DeepRemoval& operator=(const DeepRemoval&) = delete;

    bool Run() {
        while (m_current >= 0) switch (EmptyCurrent()) {
                case Step::kFailed:
                    return false;
                case Step::kDown:
                    break;
                case Step::kEmpty:
                    if (m_depth == 0) return true;
                    if (!GoUp()) return false;
            }
        return false;
    }

  private:
    enum class Step { kFailed, kDown, kEmpty };
    struct Place {
        dev_t device;
        ino_t inode;
    };

    // Removes as much as possible. Stops at a directory that is not empty, after entering it.
    Step EmptyCurrent() {
        const int copy = fcntl(m_current, F_DUPFD_CLOEXEC, 0);
        DIR* const stream = copy < 0 ? nullptr : fdopendir(copy);
        if (!stream) {
            if (copy >= 0) close(copy);
            return Step::kFailed;
        }
        rewinddir(stream);  // the copy shares its position with previous ones
        Step step = Step::kEmpty;
        errno = 0;
        while (step == Step::kEmpty) {
            const dirent* const entry = readdir(stream);
            if (!entry) break;
            if (!IsDots(entry->d_name)) step = RemoveEntry(entry->d_name);
            errno = 0;
        }
        if (step == Step::kEmpty && errno != 0) step = Step::kFailed;
        closedir(stream);
        return step;
    }

    // Tries to remove an entry as a directory first, since only that call removes directories.
    Step RemoveEntry(const char* name) {
        for (const bool again : {false, true}) {
            const bool file = unlinkat(m_current, name, 0) == 0;
            if (file || unlinkat(m_current, name, AT_REMOVEDIR) == 0) return Step::kEmpty;
            if (errno == ENOENT) return Step::kEmpty;  // already removed by another process
            if (errno == ENOTEMPTY || errno == EEXIST)
                return GoDown(name) ? Step::kDown : Step::kFailed;
            if (again || !Unlock(m_current)) break;
        }
        return Step::kFailed;
    }

    bool GoDown(const char* name) {
        struct stat status;
        void* const grown = Reallocate(m_above, (m_depth + 1) * sizeof(Place));
        if (!AssertAllocation(grown != nullptr, "osutil/osfile", __LINE__)) return false;
        m_above = static_cast<Place*>(grown);
        if (fstat(m_current, &status) != 0) return false;
        const int below = OpenToEmpty(m_current, name);
        if (below < 0) return false;
        m_above[m_depth++] = {status.st_dev, status.st_ino};
        close(m_current);
        m_current = below;
        return !IsRefused();
    }

    // A system may permanently refuse to remove a directory that seems empty. A directory in which
    // another process creates files meanwhile is emptied several times.
    bool IsRefused() {
        struct stat status;
        if (fstat(m_current, &status) != 0) return true;
        const bool again = status.st_dev == m_last.device && status.st_ino == m_last.inode;
        m_times = again ? m_times + 1 : 1;
        m_last = {status.st_dev, status.st_ino};
        constexpr int kMostTimes = 8;
        return m_times > kMostTimes;
    }

    bool GoUp() {
        struct stat status;
        const Place& above = m_above[--m_depth];
        const int up = openat(m_current, "..", kOpenDirectory);
        close(m_current);
        m_current = up;
        return up >= 0 && fstat(up, &status) == 0 && status.st_dev == above.device &&
               status.st_ino == above.inode;
    }

    int m_current;
    Place* m_above = nullptr;
    std::size_t m_depth = 0;
    Place m_last = {};  // the directory entered last, and the number of consecutive times
    int m_times = 0;
};

// Empties a directory and takes ownership of its descriptor. Directories stay open on the way down,
// up to a depth.
bool EmptyDirectory(int directory, int depth);

// Removes a directory with its content. Another process may add entries to it meanwhile, but a
// system may also refuse for good to remove a directory that seems empty.
bool RemoveBranch(int parent, const char* name, int depth) {
    constexpr int kMostTimes = 8;
    for (int times = 0; times < kMostTimes; ++times) {
        const int below = OpenToEmpty(parent, name);
        if (below < 0) return errno == ENOENT;
        if (!EmptyDirectory(below, depth)) return false;
        if (unlinkat(parent, name, AT_REMOVEDIR) == 0 || errno == ENOENT) return true;
        if (errno == EACCES && Unlock(parent) && unlinkat(parent, name, AT_REMOVEDIR) == 0)
            return true;
        if (errno != ENOTEMPTY && errno != EEXIST) return false;
    }
    return false;
}

// Removes an entry of any kind; one that has vanished counts as removed.
bool RemoveEntry(int parent, const dirent& entry, int depth) {
    if (entry.d_type == DT_DIR) return RemoveBranch(parent, entry.d_name, depth);
    for (const bool again : {false, true}) {
        if (unlinkat(parent, entry.d_name, 0) == 0 || errno == ENOENT) return true;
        if (errno == EISDIR || errno == EPERM) {  // a directory after all, by either error
            if (RemoveBranch(parent, entry.d_name, depth)) return true;
        }
        if (again || !Unlock(parent)) break;
    }
    return false;
}

bool EmptyDirectory(int directory, int depth) {
    constexpr int kDeepest = 32;
    if (depth == kDeepest) return DeepRemoval(directory).Run();
    DIR* const stream = fdopendir(directory);
    if (!stream) {
        close(directory);
        return false;
    }
    bool good = true;
    errno = 0;
    while (const dirent* const entry = good ? readdir(stream) : nullptr) {
        if (!IsDots(entry->d_name)) good = RemoveEntry(directory, *entry, depth + 1);
        errno = 0;
    }
    good = good && errno == 0;
    closedir(stream);
    return good;
}

}  // namespace

bool RemoveTree(const char* path) {
    const DirectoryPath name(path);
    struct stat status;
    struct stat root;
    if (!name.Get() || lstat(name.Get(), &status) != 0 || stat("/", &root) != 0) return false;
    if (status.st_dev == root.st_dev && status.st_ino == root.st_ino) return false;
    if (!S_ISDIR(status.st_mode)) return unlink(name.Get()) == 0;
    return RemoveBranch(AT_FDCWD, name.Get(), 0);
}

}  // namespace genutil::platform

// Directories through directory streams. Entries to remove are named relative to an open directory,
// so that no path is followed through a link and none becomes too long.
#include "osutil/platform/file/directories.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <optional>

#include "osutil/platform/posix/file/errors.h"
#include "osutil/platform/posix/file/paths.h"

namespace genutil::platform {

namespace {

constexpr int kOpenDirectory = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

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

// Removes a directory, or a link to one, by its name in its parent.
FileCode RemoveDirectoryAt(int parent, const char* name) {
    if (unlinkat(parent, name, AT_REMOVEDIR) == 0) return kDone;
    const int error = errno;
    struct stat status;
    // Some file systems report a directory that is not empty as an existing one.
    if (error == EEXIST) return kNotEmpty;
    if (error != ENOTDIR || fstatat(parent, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return FileCodeOf(error);
    const bool linked = S_ISLNK(status.st_mode) && fstatat(parent, name, &status, 0) == 0 &&
                        S_ISDIR(status.st_mode);
    if (!linked) return kFailed;
    return unlinkat(parent, name, 0) == 0 ? kDone : FileCodeOf(errno);
}

}  // namespace

FileCode RemoveEmptyDirectory(const char* path) {
    const DirectoryPath name(path);
    return name.Get() ? RemoveDirectoryAt(AT_FDCWD, name.Get()) : FileCodeOf(errno);
}

// -- Walks ---------------------------------------------------------------------------------------

struct Directory::State {
    explicit State(DIR* opened) : stream(opened) {}
    ~State() { closedir(stream); }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    // Takes ownership of the descriptor, if there is one.
    static State* Of(int descriptor) {
        DIR* const stream = descriptor < 0 ? nullptr : fdopendir(descriptor);
        State* const state = stream ? New<State>(stream) : nullptr;
        if (descriptor >= 0) AssertAllocation(state != nullptr, "osutil/osfile", __LINE__);
        if (stream && !state) closedir(stream);
        if (!stream && descriptor >= 0) close(descriptor);
        return state;
    }
    bool Status(struct stat* status, int flags) const {
        return fstatat(dirfd(stream), entry->d_name, status, flags) == 0;
    }

    DIR* stream;
    dirent* entry = nullptr;
    std::optional<NameText> name;
};

Directory::Directory(const char* path, Links links) : m_state(nullptr) {
    const auto openAs = [this](const char* name, int flags) {
        const int descriptor = name ? open(name, kOpenDirectory | flags) : -1;
        const bool isMissing = name && (errno == ENOENT || errno == ENOTDIR);
        m_state = State::Of(descriptor);
        m_failed = !m_state && (descriptor >= 0 || !isMissing);
    };
    if (links == Links::kFollow)
        openAs(SystemPath(path).Get(), 0);
    else
        openAs(DirectoryPath(path).Get(), O_NOFOLLOW);
}

Directory Directory::EntryAsDirectory() const {
    return Directory(State::Of(
        openat(dirfd(m_state->stream), m_state->entry->d_name, kOpenDirectory | O_NOFOLLOW)));
}

Directory::~Directory() {
    delete m_state;
}

bool Directory::Next() {
    if (!m_state) return false;
    errno = 0;
    m_state->entry = readdir(m_state->stream);
    if (!m_state->entry) {
        m_failed = errno != 0;
        return false;
    }
    m_state->name.emplace(m_state->entry->d_name);
    m_failed = m_state->name->Get() == nullptr;
    return !m_failed;
}

bool Directory::IsOneName() const {
    return platform::IsOneName(Name());
}

const char* Directory::Name() const {
    return m_state->name->Get();
}

bool Directory::IsDirectory() const {
    const unsigned char type = m_state->entry->d_type;
    if (type != DT_LNK && type != DT_UNKNOWN) return type == DT_DIR;
    struct stat status;
    return m_state->Status(&status, 0) && S_ISDIR(status.st_mode);
}

bool Directory::IsLink() const {
    const unsigned char type = m_state->entry->d_type;
    if (type != DT_UNKNOWN) return type == DT_LNK;
    struct stat status;
    return m_state->Status(&status, AT_SYMLINK_NOFOLLOW) && S_ISLNK(status.st_mode);
}

bool Directory::ModificationTime(std::int64_t* seconds) const {
    struct stat status;
    if (!m_state->Status(&status, AT_SYMLINK_NOFOLLOW)) return false;
    *seconds = status.st_mtime;
    return true;
}

FileCode Directory::RemoveEntryFile() {
    const int result = unlinkat(dirfd(m_state->stream), m_state->entry->d_name, 0);
    return result == 0 ? kDone : FileCodeOf(errno);
}

FileCode Directory::RemoveEntryDirectory() {
    return RemoveDirectoryAt(dirfd(m_state->stream), m_state->entry->d_name);
}

// -- Trees ---------------------------------------------------------------------------------------

namespace {

// Gives the owner all permissions for a directory, but not for the target of a link.
bool GrantAll(int parent, const char* name) {
    return fchmodat(parent, name, S_IRWXU, AT_SYMLINK_NOFOLLOW) == 0;
}

// Empties a directory of any depth with one descriptor open at a time. It descends into a directory
// that is not empty and returns by "..", after verifying that this is the directory from which it
// came.
class TreeRemoval {
  public:
    explicit TreeRemoval(int top) : m_current(top) {}
    ~TreeRemoval() {
        if (m_current >= 0) close(m_current);
        Release(m_above);
    }
    TreeRemoval(const TreeRemoval&) = delete;
    TreeRemoval& operator=(const TreeRemoval&) = delete;

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

    // Gives the owner permission to change a directory.
    static bool Unlock(int directory) {
        struct stat status;
        return fstat(directory, &status) == 0 && (status.st_mode & S_IRWXU) != S_IRWXU &&
               fchmod(directory, (status.st_mode & 07777) | S_IRWXU) == 0;
    }

    bool GoDown(const char* name) {
        struct stat status;
        void* const grown = Reallocate(m_above, (m_depth + 1) * sizeof(Place));
        if (!AssertAllocation(grown != nullptr, "osutil/osfile", __LINE__)) return false;
        m_above = static_cast<Place*>(grown);
        if (fstat(m_current, &status) != 0) return false;
        int below = openat(m_current, name, kOpenDirectory | O_NOFOLLOW);
        if (below < 0 && errno == EACCES && GrantAll(m_current, name))
            below = openat(m_current, name, kOpenDirectory | O_NOFOLLOW);
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

}  // namespace

bool RemoveTree(const char* path) {
    const DirectoryPath name(path);
    struct stat status;
    struct stat root;
    if (!name.Get() || lstat(name.Get(), &status) != 0 || stat("/", &root) != 0) return false;
    if (status.st_dev == root.st_dev && status.st_ino == root.st_ino) return false;
    if (!S_ISDIR(status.st_mode)) return unlink(name.Get()) == 0;
    int top = open(name.Get(), kOpenDirectory | O_NOFOLLOW);
    if (top < 0 && errno == EACCES && GrantAll(AT_FDCWD, name.Get()))
        top = open(name.Get(), kOpenDirectory | O_NOFOLLOW);
    return top >= 0 && TreeRemoval(top).Run() && rmdir(name.Get()) == 0;
}

}  // namespace genutil::platform

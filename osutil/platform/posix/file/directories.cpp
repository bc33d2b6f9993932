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

#include "osutil/platform/posix/file/directory_path.h"
#include "osutil/platform/posix/file/errors.h"
#include "osutil/platform/posix/file/paths.h"

namespace genutil::platform {

namespace {

constexpr int kOpenDirectory = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

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

bool Directory::ReadStatus(Status* out) const {
    struct stat status;
    if (!m_state->Status(&status, AT_SYMLINK_NOFOLLOW)) return false;
    const Kind kind = S_ISREG(status.st_mode)   ? Kind::kFile
                      : S_ISDIR(status.st_mode) ? Kind::kDirectory
                      : S_ISLNK(status.st_mode) ? Kind::kLink
                                                : Kind::kOther;
    *out = {kind, kind == Kind::kDirectory ? 0 : status.st_size, status.st_mtime};
    return true;
}

FileCode Directory::RemoveEntryFile() {
    const int result = unlinkat(dirfd(m_state->stream), m_state->entry->d_name, 0);
    return result == 0 ? kDone : FileCodeOf(errno);
}

FileCode Directory::RemoveEntryDirectory() {
    return RemoveDirectoryAt(dirfd(m_state->stream), m_state->entry->d_name);
}

}  // namespace genutil::platform

#include "osutil/platform/file/changes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <string_view>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "osutil/platform/posix/file/descriptor.h"
#include "osutil/platform/posix/file/errors.h"
#include "osutil/platform/posix/file/file_lock.h"
#include "osutil/platform/posix/file/file_target.h"
#include "osutil/platform/posix/file/paths.h"
#include "osutil/platform/posix/file/replace_file.h"

namespace genutil::platform {

namespace {

// Renames without replacing, also on file systems that cannot do so in one call.
int RenameToUnused(int fromFolder, const char* from, int toFolder, const char* to) {
    if (renameat2(fromFolder, from, toFolder, to, RENAME_NOREPLACE) == 0) return 0;
    if (errno != EINVAL && errno != ENOSYS) return errno;
    if (linkat(fromFolder, from, toFolder, to, 0) == 0) {
        unlinkat(fromFolder, from, 0);
        return 0;
    }
    if (errno != EPERM && errno != EOPNOTSUPP) return errno;
    struct stat status;
    if (fstatat(toFolder, to, &status, AT_SYMLINK_NOFOLLOW) == 0) return EEXIST;
    return renameat(fromFolder, from, toFolder, to) == 0 ? 0 : errno;
}

// A new file in a folder until it gets its name.
class FileBeside {
  public:
    FileBeside(int folder, mode_t mode) : m_folder(folder), m_file(-1) {
        do {
            std::snprintf(m_name, sizeof m_name, ".genutil-%llx~", UnusedNumber());
            m_file =
                openat(folder, m_name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
        } while (m_file < 0 && errno == EEXIST);
        m_error = m_file < 0 ? errno : 0;
    }
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;
    ~FileBeside() {
        if (m_file >= 0) close(m_file);
        if (m_file >= 0 && !m_named) unlinkat(m_folder, m_name, 0);
    }
    int Get() const { return m_file; }
    int Error() const { return m_error; }
    // Returns 0 or the error.
    int GiveName(const char* name, bool overwrite) {
        if (fsync(m_file) != 0) return errno;
        const int error = !overwrite ? RenameToUnused(m_folder, m_name, m_folder, name)
                          : renameat(m_folder, m_name, m_folder, name) == 0 ? 0
                                                                            : errno;
        m_named = error == 0;
        return error;
    }

  private:
    int m_folder, m_file, m_error;
    bool m_named = false;
    char m_name[40];
};

int MakeContents(int folder, const char* name, const char* bytes, std::size_t size) {
    FileBeside made(folder, 0666);
    if (made.Error()) return made.Error();
    return WriteAll(made.Get(), bytes, size) ? made.GiveName(name, false) : errno;
}

// Returns EAGAIN if another file has taken the name.
int ReplaceOpen(int folder, const char* name, int file, std::string_view bytes) {
    const FileLock lock(file);
    struct stat status;
    if (!lock.IsTaken()) return EBUSY;
    if (fstat(file, &status) != 0) return errno;
    if (!S_ISREG(status.st_mode)) return EISDIR;
    if (!IsNamed(folder, name, status)) return EAGAIN;
    const FileParts parts(&bytes, 1);
    const Replaced replaced = ReplaceFile(folder, name, file, status, parts);
    if (replaced != Replaced::kRefused) return replaced == Replaced::kDone ? 0 : EIO;
    const auto size = static_cast<std::size_t>(status.st_size);
    const Owned<char> old(static_cast<char*>(Allocate(size + 1)));
    if (!AssertAllocation(old.Get() != nullptr, "osutil/osfile", __LINE__)) return ENOMEM;
    if (!ReadExactly(file, 0, old.Get(), size)) return EIO;
    return OverwriteFile(file, 0, {old.Get(), size}, parts) ? 0 : EIO;
}

// Copies the rest of a file, which may end earlier or later than it was said to.
bool CopyRest(int from, int to) {
    constexpr std::size_t kPiece = 1 << 20;
    ssize_t done;
    while ((done = copy_file_range(from, nullptr, to, nullptr, std::size_t{1} << 30, 0)) > 0)
        continue;
    if (done < 0 && errno != EXDEV && errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP &&
        errno != EBADF)
        return false;
    // Also after success: files without a size, such as those of /proc, are empty for that call.
    const Owned<char> piece(static_cast<char*>(Allocate(kPiece)));
    if (!AssertAllocation(piece.Get() != nullptr, "osutil/osfile", __LINE__)) return false;
    for (;;) {
        const ssize_t got = read(from, piece.Get(), kPiece);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return got == 0;
        if (!WriteAll(to, piece.Get(), static_cast<std::size_t>(got))) return false;
    }
}

}  // namespace

unsigned long long UnusedNumber() {
    static std::atomic<unsigned> s_count{0};
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    return static_cast<unsigned long long>(now.tv_nsec) << 34 ^
           static_cast<unsigned long long>(getpid()) << 12 ^ ++s_count;
}

FileCode ReplaceContents(const char* path, const char* bytes, std::size_t size) {
    const SystemPath name(path);
    FileTarget target;
    if (!name.Get() || !target.Find(name.Get())) return FileCodeOf(name.Get() ? ENOENT : errno);
    const OpenDescriptor folder(target.OpenFolder());
    if (!folder.IsOpen()) return FileCodeOf(errno);
    constexpr int kMostAttempts = 1000;  // each one fails because another writer succeeded
    for (int i = 0; i < kMostAttempts; ++i) {
        const OpenDescriptor file(
            openat(folder.Get(), target.Name(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        int error = errno;
        if (file.IsOpen())
            error = ReplaceOpen(folder.Get(), target.Name(), file.Get(), {bytes, size});
        else if (error == ENOENT)
            error = MakeContents(folder.Get(), target.Name(), bytes, size);
        if (error != EAGAIN && error != EEXIST) return FileCodeOf(error);
    }
    return kFailed;
}

FileCode MakePrivateFile(const char* path) {
    const SystemPath name(path);
    const OpenDescriptor file(
        name.Get() ? open(name.Get(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600) : -1);
    return file.IsOpen() ? kDone : FileCodeOf(errno);
}

FileCode CopyWholeFile(const char* from, const char* to, bool overwrite) {
    const SystemPath source(from), name(to);
    FileTarget target;
    if (!source.Get() || !name.Get()) return FileCodeOf(errno);
    if (!target.Find(name.Get())) return kNotFound;
    const OpenDescriptor old(open(source.Get(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status, there;
    if (!old.IsOpen() || fstat(old.Get(), &status) != 0) return FileCodeOf(errno);
    if (!S_ISREG(status.st_mode)) return kAccessDenied;
    const OpenDescriptor folder(target.OpenFolder());
    if (!folder.IsOpen()) return FileCodeOf(errno);
    if (fstatat(folder.Get(), target.Name(), &there, AT_SYMLINK_NOFOLLOW) == 0) {
        if (!overwrite) return kExists;
        if (!S_ISREG(there.st_mode)) return kAccessDenied;
        if (there.st_dev == status.st_dev && there.st_ino == status.st_ino) return kAccessDenied;
    }
    FileBeside made(folder.Get(), 0600);
    if (made.Error()) return FileCodeOf(made.Error());
    if (!CopyRest(old.Get(), made.Get()) || fchmod(made.Get(), status.st_mode & 0777) != 0)
        return kFailed;
    return FileCodeOf(made.GiveName(target.Name(), overwrite));
}

FileCode MoveEntry(const char* from, const char* to, bool overwrite) {
    const SystemPath source(from), target(to);
    if (!source.Get() || !target.Get()) return FileCodeOf(errno);
    int error = 0;
    if (!overwrite)
        error = RenameToUnused(AT_FDCWD, source.Get(), AT_FDCWD, target.Get());
    else if (std::rename(source.Get(), target.Get()) != 0)
        error = errno;
    if (error != EXDEV) return FileCodeOf(error);
    struct stat status;
    if (lstat(source.Get(), &status) != 0) return FileCodeOf(errno);
    if (!S_ISREG(status.st_mode)) return kFailed;
    const FileCode copied = CopyWholeFile(from, to, overwrite);
    if (copied != kDone) return copied;
    return unlink(source.Get()) == 0 ? kDone : FileCodeOf(errno);
}

}  // namespace genutil::platform

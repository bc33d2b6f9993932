#include "osutil/platform/posix/file/replace_file.h"

#include <fcntl.h>
#include <sys/uio.h>

#include <cerrno>
#include <cstdio>

#include "osutil/platform/posix/file/descriptor.h"
#include "osutil/platform/posix/file/file_lock.h"
#include "osutil/platform/posix/file/file_rights.h"

namespace genutil::platform {

namespace {

bool WriteParts(int file, FileParts parts) {
    constexpr int kMost = 16;
    while (!parts.empty()) {
        iovec pieces[kMost];
        int count = 0;
        while (!parts.empty() && count < kMost) {
            const std::string_view part = parts.front();
            parts = parts.subspan(1);
            if (!part.empty()) pieces[count++] = {const_cast<char*>(part.data()), part.size()};
        }
        for (iovec* at = pieces; count > 0;) {
            ssize_t written = writev(file, at, count);
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) return false;
            for (; count > 0 && static_cast<std::size_t>(written) >= at->iov_len; ++at, --count)
                written -= static_cast<ssize_t>(at->iov_len);
            if (count == 0) break;
            at->iov_base = static_cast<char*>(at->iov_base) + written;
            at->iov_len -= static_cast<std::size_t>(written);
        }
    }
    return true;
}

// The new file until it is renamed. A user has one name for it in each folder, because nobody can
// remove another user's file in a shared folder. The lock of the file decides whose turn it is.
class NewFile {
  public:
    explicit NewFile(int folder) : m_folder(folder) {
        std::snprintf(m_name, sizeof m_name, ".genutil-new-%u~", static_cast<unsigned>(geteuid()));
    }

    Replaced TakePlaceOf(const char* name, int file, const struct stat& status, FileParts parts) {
        for (int tries = 0; tries < 1000; ++tries) {
            const OpenDescriptor made(
                openat(m_folder, m_name, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
            if (!made.IsOpen()) {
                if (errno == EEXIST && RemoveLeftover()) continue;
                return Replaced::kRefused;
            }
            const FileLock lock(made.Get());
            struct stat madeStatus;
            if (!lock.IsTaken() || fstat(made.Get(), &madeStatus) != 0) return Replaced::kFailed;
            if (!IsNamed(m_folder, m_name, madeStatus)) continue;  // removed as a leftover
            const Replaced result = Fill(made.Get(), name, file, status, parts);
            if (result != Replaced::kDone) unlinkat(m_folder, m_name, 0);
            return result;
        }
        return Replaced::kFailed;
    }

  private:
    // Waits for the writer of the file that has the name, and removes the file of a killed one.
    bool RemoveLeftover() const {
        const OpenDescriptor found(
            openat(m_folder, m_name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        struct stat status;
        if (!found.IsOpen() || fstat(found.Get(), &status) != 0 || !S_ISREG(status.st_mode))
            return errno == ENOENT || unlinkat(m_folder, m_name, 0) == 0;
        const FileLock lock(found.Get());
        if (!lock.IsTaken()) return false;
        return !IsNamed(m_folder, m_name, status) || unlinkat(m_folder, m_name, 0) == 0;
    }

    Replaced Fill(int made, const char* name, int file, const struct stat& status,
                  FileParts parts) const {
        if (!CopyRights(made, file, status)) return Replaced::kRefused;
        if (!WriteParts(made, parts) || fsync(made) != 0) return Replaced::kFailed;
        return renameat(m_folder, m_name, m_folder, name) == 0 ? Replaced::kDone
                                                               : Replaced::kRefused;
    }

    int m_folder;
    char m_name[40];
};

bool WriteAt(int file, std::int64_t from, FileParts parts) {
    return lseek(file, from, SEEK_SET) == from && WriteParts(file, parts);
}

}  // namespace

Replaced ReplaceFile(int folder, const char* name, int file, const struct stat& status,
                     FileParts parts) {
    if (status.st_nlink > 1) return Replaced::kRefused;
    return NewFile(folder).TakePlaceOf(name, file, status, parts);
}

bool OverwriteFile(int file, std::int64_t from, std::string_view oldEnd, FileParts newEnd) {
    std::size_t size = 0;
    for (const std::string_view part : newEnd) size += part.size();
    const auto oldSize = from + static_cast<std::int64_t>(oldEnd.size());
    const auto newSize = from + static_cast<std::int64_t>(size);
    if (newSize > oldSize && posix_fallocate(file, oldSize, newSize - oldSize) != 0) {
        [[maybe_unused]] const int ignored = ftruncate(file, oldSize);
        return false;
    }
    if (WriteAt(file, from, newEnd) && ftruncate(file, newSize) == 0) return fsync(file) == 0;
    const std::string_view old[] = {oldEnd};
    [[maybe_unused]] const bool restored =
        WriteAt(file, from, old) && ftruncate(file, oldSize) == 0;
    return false;
}

}  // namespace genutil::platform

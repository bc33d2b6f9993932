// Writing profile files. A new file replaces the old one, so that readers always find a complete
// file, even if the writing process was killed.
//
// The lock is that of the directory, because a lock of the file disappears with the file. The lock
// also makes a single name sufficient for new files. A file left by a killed process is replaced by
// the next one.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "osutil/config/ini_edit.h"
#include "osutil/platform/config/profiles.h"
#include "osutil/platform/posix/config/profile_path.h"
#include "osutil/platform/posix/file/descriptor.h"
#include "osutil/platform/posix/file/folder_lock.h"

namespace genutil::platform {

namespace {

constexpr std::int64_t kLargestProfile = 1 << 30;

// The file that a path refers to. Symbolic links are followed to a name, which need not exist.
class Target {
  public:
    bool Find(const char* path) {
        constexpr int kMostLinks = 40;
        if (!Set("", 0, path)) return false;
        for (int links = 0; links < kMostLinks; ++links) {
            char link[PATH_MAX];
            const ssize_t length = readlink(m_path, link, sizeof link - 1);
            if (length < 0) return *Name() != 0;
            link[length] = 0;
            const bool ok = *link == '/'
                                ? Set("", 0, link)
                                : Set(m_path, static_cast<std::size_t>(Name() - m_path), link);
            if (!ok) return false;
        }
        return false;
    }
    const char* Name() const {
        const char* slash = std::strrchr(m_path, '/');
        return slash ? slash + 1 : m_path;
    }
    int OpenFolder() const {
        char folder[PATH_MAX] = ".";
        const auto length = static_cast<std::size_t>(Name() - m_path);
        if (length) std::memcpy(folder, m_path, length);
        if (length) folder[length] = 0;
        return open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    }

  private:
    bool Set(const char* folder, std::size_t length, const char* path) {
        char made[PATH_MAX];
        const int size =
            std::snprintf(made, sizeof made, "%.*s%s", static_cast<int>(length), folder, path);
        if (size < 0 || static_cast<std::size_t>(size) >= sizeof made) return false;
        std::memcpy(m_path, made, static_cast<std::size_t>(size) + 1);
        return true;
    }

    char m_path[PATH_MAX];
};

// The present content of a file.
struct OldFile {
    bool exists = false;
    struct stat status = {};
    Owned<char> text;

    std::string_view Text() const { return {text.Get(), static_cast<std::size_t>(status.st_size)}; }

    // Returns false if it is not a file, or cannot be read or written.
    bool Read(int folder, const char* name) {
        const OpenDescriptor file(
            openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (!file.IsOpen()) return errno == ENOENT;
        exists = true;
        if (fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode) ||
            status.st_size > kLargestProfile || faccessat(folder, name, W_OK, AT_EACCESS) != 0)
            return false;
        const auto size = static_cast<std::size_t>(status.st_size);
        text.Reset(static_cast<char*>(Allocate(size + 1)));
        return AssertAllocation(text.Get() != nullptr, "osutil/osconfig", __LINE__) &&
               ReadExactly(file.Get(), 0, text.Get(), size);
    }
};

// The new file until it is renamed.
class NewFile {
  public:
    explicit NewFile(int folder) : m_folder(folder) {
        // One name per user, because nobody can remove another user's file in a shared directory.
        std::snprintf(m_name, sizeof m_name, ".genutil-profile-%u~",
                      static_cast<unsigned>(geteuid()));
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool Replace(const char* name, const OldFile& old, const IniEdit& edit) {
        unlinkat(m_folder, m_name, 0);
        OpenDescriptor file(openat(m_folder, m_name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                                   old.exists ? 0600 : 0666));
        if (!file.IsOpen()) return false;
        if (CopyRights(file.Get(), old) && Write(file.Get(), old.Text(), edit) &&
            fsync(file.Get()) == 0 && file.Close() &&
            renameat(m_folder, m_name, m_folder, name) == 0)
            return true;
        unlinkat(m_folder, m_name, 0);
        return false;
    }

  private:
    // Only the superuser can give files away. The group of another user's file is kept if that is
    // allowed.
    static bool CopyRights(int file, const OldFile& old) {
        struct stat status;
        if (!old.exists) return true;
        if (fstat(file, &status) != 0) return false;
        mode_t mode = old.status.st_mode & 07777;
        const bool isSame =
            status.st_uid == old.status.st_uid && status.st_gid == old.status.st_gid;
        if (!isSame && fchown(file, old.status.st_uid, old.status.st_gid) != 0) {
            mode &= 0777;
            // Permissions of a group apply to that group only.
            if (fchown(file, static_cast<uid_t>(-1), old.status.st_gid) != 0)
                mode &= ~static_cast<mode_t>(S_IRWXG) | (mode << 3 & S_IRWXG);
        }
        return fchmod(file, mode) == 0;
    }

    static bool Write(int file, std::string_view text, const IniEdit& edit) {
        iovec parts[IniEdit::kMostParts + 2];
        int count = 0;
        const auto add = [&](std::string_view part) {
            if (!part.empty()) parts[count++] = {const_cast<char*>(part.data()), part.size()};
        };
        add(text.substr(0, edit.begin));
        for (unsigned i = 0; i < edit.count; ++i) add(edit.parts[i]);
        add(text.substr(edit.end));
        for (iovec* at = parts; count > 0;) {
            ssize_t written = writev(file, at, count);
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) return false;
            for (; count > 0 && static_cast<std::size_t>(written) >= at->iov_len; ++at, --count)
                written -= static_cast<ssize_t>(at->iov_len);
            if (count == 0) break;
            at->iov_base = static_cast<char*>(at->iov_base) + written;
            at->iov_len -= static_cast<std::size_t>(written);
        }
        return true;
    }

    int m_folder;
    char m_name[40];
};

bool Plan(std::string_view text, const char* section, const char* key, const char* value,
          IniEdit* edit) {
    if (!key) return PlanIniSectionRemoval(text, section, edit);
    if (!value) return PlanIniKeyRemoval(text, section, key, edit);
    return PlanIniValue(text, section, key, value, edit);
}

// Lines of bytes would corrupt a text of 16-bit characters.
bool IsUtf16(std::string_view text) {
    return text.substr(0, 2) == "\xFF\xFE" || text.substr(0, 2) == "\xFE\xFF";
}

}  // namespace

bool WriteProfileValue(const char* file, const char* section, const char* key, const char* value) {
    const ProfilePath path(file);
    Target target;
    if (!path.Get() || !target.Find(path.Get())) return false;
    if (path.IsKept() && value) MakeFolderOf(path.Get());
    const OpenDescriptor folder(target.OpenFolder());
    if (!folder.IsOpen()) return false;
    const FolderLock lock(folder.Get());
    OldFile old;
    IniEdit edit;
    if (!lock.IsTaken() || !old.Read(folder.Get(), target.Name()) || IsUtf16(old.Text()))
        return false;
    if (!Plan(old.Text(), section, key, value, &edit)) return true;
    return NewFile(folder.Get()).Replace(target.Name(), old, edit);
}

}  // namespace genutil::platform

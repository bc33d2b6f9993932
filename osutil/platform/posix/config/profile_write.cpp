// Writing profile files. A new file replaces the old one, so that readers always find a complete
// file, even if the writing process was killed. Where that is not possible, or would change the
// owner or the rights of the file, it is written in place.
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "osutil/config/ini_convert.h"
#include "osutil/config/ini_edit.h"
#include "osutil/platform/config/profiles.h"
#include "osutil/platform/posix/config/profile_cache.h"
#include "osutil/platform/posix/config/profile_path.h"
#include "osutil/platform/posix/file/descriptor.h"
#include "osutil/platform/posix/file/file_lock.h"
#include "osutil/platform/posix/file/replace_file.h"

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
        return open(folder, O_PATH | O_DIRECTORY | O_CLOEXEC);
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

// The file before the change.
struct OldFile {
    struct stat status = {};
    Owned<char> text;

    std::string_view Text() const { return {text.Get(), static_cast<std::size_t>(status.st_size)}; }

    bool Read(int file) {
        if (fstat(file, &status) != 0 || status.st_size > kLargestProfile) return false;
        const auto size = static_cast<std::size_t>(status.st_size);
        text.Reset(static_cast<char*>(Allocate(size + 1)));
        return AssertAllocation(text.Get() != nullptr, "osutil/osconfig", __LINE__) &&
               ReadExactly(file, 0, text.Get(), size);
    }
};

bool Plan(std::string_view text, const char* section, const char* key, const char* value,
          IniEdit* edit) {
    if (!key) return PlanIniSectionRemoval(text, section, edit);
    if (!value) return PlanIniKeyRemoval(text, section, key, edit);
    return PlanIniValue(text, section, key, value, edit);
}

struct Change {
    const char *section, *key, *value;
};

bool Write(int folder, const char* name, int file, const OldFile& old, const IniEdit& edit) {
    const std::string_view text = old.Text();
    std::string_view parts[IniEdit::kMostParts + 2];
    std::copy_n(edit.parts, edit.count, parts + 1);
    parts[0] = text.substr(0, edit.begin);
    parts[edit.count + 1] = text.substr(edit.end);
    const FileParts all(parts, edit.count + 2);
    // There is nothing to lose in an empty file, such as one that was just made.
    const Replaced replaced =
        text.empty() ? Replaced::kRefused : ReplaceFile(folder, name, file, old.status, all);
    if (replaced != Replaced::kRefused) return replaced == Replaced::kDone;
    return OverwriteFile(file, static_cast<std::int64_t>(edit.begin), text.substr(edit.begin),
                         all.subspan(1));
}

enum class Attempt { kDone, kFailed, kAgain };

// Changes an open file, unless another one has taken its name.
Attempt ChangeFile(int folder, const char* name, int file, const Change& change) {
    const FileLock lock(file);
    OldFile old;
    IniEdit edit;
    if (!lock.IsTaken() || fstat(file, &old.status) != 0) return Attempt::kFailed;
    if (!IsNamed(folder, name, old.status)) return Attempt::kAgain;
    if (!old.Read(file) || IsForeignIni(old.Text())) return Attempt::kFailed;
    if (!Plan(old.Text(), change.section, change.key, change.value, &edit)) return Attempt::kDone;
    const bool written = Write(folder, name, file, old, edit);
    ForgetProfile(FileState::Of(old.status));
    return written ? Attempt::kDone : Attempt::kFailed;
}

Attempt TryChange(int folder, const char* name, const Change& change) {
    constexpr int kFlags = O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const OpenDescriptor file(openat(folder, name, kFlags));
    struct stat status;
    if (file.IsOpen())
        return fstat(file.Get(), &status) == 0 && S_ISREG(status.st_mode)
                   ? ChangeFile(folder, name, file.Get(), change)
                   : Attempt::kFailed;
    if (errno != ENOENT) return Attempt::kFailed;
    if (!change.value) return Attempt::kDone;
    const OpenDescriptor made(openat(folder, name, kFlags | O_CREAT | O_EXCL, 0666));
    if (!made.IsOpen()) return errno == EEXIST ? Attempt::kAgain : Attempt::kFailed;
    const Attempt result = ChangeFile(folder, name, made.Get(), change);
    if (result == Attempt::kFailed) unlinkat(folder, name, 0);
    return result;
}

}  // namespace

bool WriteProfileValue(const char* file, const char* section, const char* key, const char* value) {
    const ProfilePath path(file);
    Target target;
    if (!path.Get() || !target.Find(path.Get())) return false;
    if (path.IsKept() && value) MakeFolderOf(path.Get());
    const OpenDescriptor folder(target.OpenFolder());
    if (!folder.IsOpen()) return false;
    constexpr int kMostAttempts = 1000;  // each one fails because another writer succeeded
    for (int i = 0; i < kMostAttempts; ++i) {
        const Attempt result = TryChange(folder.Get(), target.Name(), {section, key, value});
        if (result != Attempt::kAgain) return result == Attempt::kDone;
    }
    return false;
}

}  // namespace genutil::platform

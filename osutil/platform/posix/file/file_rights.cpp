#include "osutil/platform/posix/file/file_rights.h"

#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string_view>

namespace genutil::platform {

namespace {

constexpr char kAccessList[] = "system.posix_acl_access";
constexpr std::size_t kLongest = 4096;  // of a value, and of all names; others are not copied

bool IsCopied(std::string_view name) {
    return name == kAccessList || name.starts_with("user.") || name.starts_with("security.");
}

bool CopyAttribute(int newFile, int oldFile, const char* name) {
    char value[kLongest], present[kLongest];
    const ssize_t size = fgetxattr(oldFile, name, value, sizeof value);
    if (size < 0) return false;
    const auto length = static_cast<std::size_t>(size);
    if (fgetxattr(newFile, name, present, sizeof present) == size &&
        std::memcmp(value, present, length) == 0)
        return true;
    return fsetxattr(newFile, name, value, length, 0) == 0;
}

bool CopyAttributes(int newFile, int oldFile) {
    char names[kLongest];
    const ssize_t size = flistxattr(oldFile, names, sizeof names);
    if (size < 0 && errno != ENOTSUP) return false;
    bool hasAccessList = false;
    for (const char* name = names; name < names + size; name += std::strlen(name) + 1) {
        if (!IsCopied(name)) continue;
        if (!CopyAttribute(newFile, oldFile, name)) return false;
        hasAccessList = hasAccessList || std::strcmp(name, kAccessList) == 0;
    }
    // The directory may have given the new file a list of its own.
    return hasAccessList || fremovexattr(newFile, kAccessList) == 0 || errno == ENODATA ||
           errno == ENOTSUP;
}

}  // namespace

bool CopyRights(int newFile, int oldFile, const struct stat& old) {
    struct stat made;
    if (fstat(newFile, &made) != 0) return false;
    if ((made.st_uid != old.st_uid || made.st_gid != old.st_gid) &&
        fchown(newFile, old.st_uid, old.st_gid) != 0)
        return false;
    // A change of the owner clears attributes and permissions, and a list changes permissions.
    if (!CopyAttributes(newFile, oldFile) || fstat(newFile, &made) != 0) return false;
    return (made.st_mode & 07777) == (old.st_mode & 07777) ||
           fchmod(newFile, old.st_mode & 07777) == 0;
}

}  // namespace genutil::platform

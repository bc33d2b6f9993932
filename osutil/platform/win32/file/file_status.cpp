// The status records of the C runtime, one for each size of a time.
#include <utility>

#include "osfile.h"
#include "osutil/platform/file/path_units.h"

namespace {

// Same as in the runtime for times beyond the range of a record.
template <class Time>
void PutTime(__time64_t time, Time* out) {
    *out = std::in_range<Time>(time) ? static_cast<Time>(time) : -1;
}

// The runtime takes the "?" in the prefix of a long path for a wildcard, so a plain prefix is used.
// Its queries for the records with a 32-bit size store the lower half of a larger one.
template <class Status>
int Examine(const char* path, Status* status) {
    const genutil::platform::PathUnits units(path);
    struct _stat64 found;
    if (!units.Get() || _wstat64(reinterpret_cast<const wchar_t*>(units.Get()), &found) != 0)
        return -1;
    if (!std::in_range<_off_t>(found.st_size)) return -1;
    status->st_dev = found.st_dev;
    status->st_ino = found.st_ino;
    status->st_mode = found.st_mode;
    status->st_nlink = found.st_nlink;
    status->st_uid = found.st_uid;
    status->st_gid = found.st_gid;
    status->st_rdev = found.st_rdev;
    status->st_size = static_cast<_off_t>(found.st_size);
    PutTime(found.st_atime, &status->st_atime);
    PutTime(found.st_mtime, &status->st_mtime);
    PutTime(found.st_ctime, &status->st_ctime);
    return 0;
}

}  // namespace

int OSFileStat(char const* path, struct _stat32& status) {
    return Examine(path, &status);
}
int OSFileStat(char const* path, struct _stat64i32& status) {
    return Examine(path, &status);
}

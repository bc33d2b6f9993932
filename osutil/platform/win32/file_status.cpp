// The status records of the C runtime, which has one for each size of a time.
#include "osfile.h"
#include "osutil/platform/path_units.h"

namespace {

// The runtime takes the "?" in the prefix of a long path for a wildcard, so it gets a plain one.
template <class Status>
int Examine(const char* path, Status* status, int (*query)(const wchar_t*, Status*)) {
    const genutil::platform::PathUnits units(path);
    return units.Get() ? query(reinterpret_cast<const wchar_t*>(units.Get()), status) : -1;
}

}  // namespace

int OSFileStat(char const* path, struct _stat32& status) {
    return Examine(path, &status, _wstat32);
}
int OSFileStat(char const* path, struct _stat64i32& status) {
    return Examine(path, &status, _wstat64i32);
}

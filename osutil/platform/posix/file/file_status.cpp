// The status record in the form of this system.
#include "osfile.h"
#include "osutil/platform/posix/file/paths.h"

int OSFileStat(char const* path, struct _stat& status) {
    const genutil::platform::SystemPath name(path);
    return name.Get() ? stat(name.Get(), &status) : -1;
}

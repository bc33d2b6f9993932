#include "osutil/platform/posix/file/errors.h"

#include <cerrno>

namespace genutil::platform {

// What Windows calls a denied access or a missing path goes by several numbers here.
FileCode FileCodeOf(int error) {
    switch (error) {
        case 0:
            return kDone;
        case EEXIST:
            return kExists;
        case ENOENT:
        case ENOTDIR:       // a file stands where the path needs a directory
        case ENAMETOOLONG:  // no such name can exist
            return kNotFound;
        case EACCES:
        case EPERM:
        case EROFS:
        case EBUSY:
        case EISDIR:
            return kAccessDenied;
        case ENOTEMPTY:
            return kNotEmpty;
        default:
            return kFailed;
    }
}

}  // namespace genutil::platform

#include "osutil/platform/posix/file/errors.h"

#include <cerrno>

namespace genutil::platform {

// Several error numbers correspond to what Windows reports as access denied or path not found.
FileCode FileCodeOf(int error) {
    switch (error) {
        case 0:
            return kDone;
        case EEXIST:
            return kExists;
        case ENOENT:
        case ENOTDIR:       // a file is in place of a directory in the path
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

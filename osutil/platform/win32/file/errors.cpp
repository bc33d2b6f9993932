#include "osutil/platform/win32/file/errors.h"

#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

// The same mapping as that of the C runtime to EEXIST, ENOENT, EACCES and ENOTEMPTY.
FileCode FileCodeOf(unsigned long error) {
    if (error >= ERROR_WRITE_PROTECT && error <= ERROR_SHARING_BUFFER_EXCEEDED)
        return kAccessDenied;
    switch (error) {
        case ERROR_SUCCESS:
            return kDone;
        case ERROR_ALREADY_EXISTS:
        case ERROR_FILE_EXISTS:
            return kExists;
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_DRIVE:
        case ERROR_NO_MORE_FILES:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_FILENAME_EXCED_RANGE:
            return kNotFound;
        case ERROR_ACCESS_DENIED:
        case ERROR_CURRENT_DIRECTORY:
        case ERROR_NETWORK_ACCESS_DENIED:
        case ERROR_CANNOT_MAKE:
        case ERROR_DRIVE_LOCKED:
            return kAccessDenied;
        case ERROR_DIR_NOT_EMPTY:
            return kNotEmpty;
        default:
            return kFailed;
    }
}

}  // namespace genutil::platform

// Profile files through file handles.
#include "osutil/platform/profiles.h"

#include "osutil/platform/win32/paths.h"
#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

std::int64_t ReadProfile(const char* path, char* out, std::size_t size) {
    const SystemPath systemPath(path);
    if (!systemPath.Get()) return -1;
    const HANDLE file =
        CreateFileW(systemPath.Get(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return -1;
    LARGE_INTEGER length;
    DWORD count = 0;
    if (!GetFileSizeEx(file, &length) ||
        (size != 0 && !ReadFile(file, out, static_cast<DWORD>(size), &count, nullptr)) ||
        (count < size && count < length.QuadPart))
        length.QuadPart = -1;
    CloseHandle(file);
    return length.QuadPart;
}

}  // namespace genutil::platform

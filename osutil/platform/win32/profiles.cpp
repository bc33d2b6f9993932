// Profile files through file handles and the system's profile calls.
#include "osutil/platform/profiles.h"

#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

std::int64_t ReadProfile(const char* path, char* out, std::size_t size) {
    const HANDLE file = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
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

// The ANSI calls keep the bytes of a file, where the wide ones would lose what the system's ANSI
// code page does not have.

std::size_t ReadProfileValue(const char* file, const char* section, const char* key,
                             const char* fallback, char* out, std::size_t size) {
    const auto room = static_cast<DWORD>(size);
    return file ? GetPrivateProfileStringA(section, key, fallback, out, room, file)
                : GetProfileStringA(section, key, fallback, out, room);
}

bool WriteProfileValue(const char* file, const char* section, const char* key, const char* value) {
    return (file ? WritePrivateProfileStringA(section, key, value, file)
                 : WriteProfileStringA(section, key, value)) != 0;
}

}  // namespace genutil::platform

// Profile files through the system's profile calls.
#include "osutil/platform/config/profiles.h"

#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

// The ANSI calls preserve the bytes of a file. The wide ones would lose characters that the
// system's ANSI code page lacks.

std::size_t ReadProfileValue(const char* file, const char* section, const char* key,
                             const char* fallback, char* out, std::size_t size) {
    // A character that does not fit is cut as a whole under a double-byte code page. Wine then
    // counts the last byte of the buffer before the terminator, but does not write it.
    if (size > 1) out[size - 2] = '\0';
    const auto room = static_cast<DWORD>(size);
    const DWORD length = file ? GetPrivateProfileStringA(section, key, fallback, out, room, file)
                              : GetProfileStringA(section, key, fallback, out, room);
    return length > 0 && out[length - 1] == '\0' ? length - 1 : length;
}

bool WriteProfileValue(const char* file, const char* section, const char* key, const char* value) {
    return (file ? WritePrivateProfileStringA(section, key, value, file)
                 : WriteProfileStringA(section, key, value)) != 0;
}

}  // namespace genutil::platform

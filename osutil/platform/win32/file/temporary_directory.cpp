#include "osutil/platform/file/temporary_directory.h"

#include <algorithm>

#include "osutil/platform/win32/file/paths.h"
#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

std::size_t TemporaryDirectory(char* out, std::size_t size) {
    wchar_t path[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, path);
    if (length == 0 || length > MAX_PATH) return 0;
    const NameText text(path);
    if (!text.Get()) return 0;
    std::size_t count = 0;
    while (text.Get()[count]) ++count;
    if (count >= size) return 0;
    std::copy_n(text.Get(), count, out);
    return count;
}

}  // namespace genutil::platform

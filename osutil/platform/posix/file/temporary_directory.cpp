#include "osutil/platform/file/temporary_directory.h"

#include <cstring>

#include "osutil/platform/posix/file/paths.h"

namespace genutil::platform {

std::size_t TemporaryDirectory(char* out, std::size_t size) {
    const NameText text(TemporaryFolder());
    if (!text.Get()) return 0;
    std::size_t length = std::strlen(text.Get());
    while (length > 0 && text.Get()[length - 1] == '/') --length;
    if (length + 2 > size) return 0;
    std::memcpy(out, text.Get(), length);
    // The separator with which names are joined.
    out[length] = '\\';
    return length + 1;
}

}  // namespace genutil::platform

// Whole files: reading, reading up to a trailer, writing.
#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

#include "genutil/allocate.h"
#include "genutil/assert_allocation.h"
#include "osfile.h"
#include "osutil/platform/file/files.h"

using genutil::platform::File;
using genutil::platform::Opening;

namespace {

// Allocates a buffer that the caller releases.
char* NewBuffer(std::int64_t bytes) {
    void* const buffer = genutil::Allocate(static_cast<std::uint64_t>(bytes));
    genutil::AssertAllocation(buffer != nullptr, "osutil/osfile", __LINE__);
    return static_cast<char*>(buffer);
}

// Reads the first `count` bytes of a file of `size` bytes into a new buffer. Returns their number,
// or 0.
int ReadStart(File& file, std::int64_t count, std::int64_t size, char*& buffer) {
    if (count <= 0 || count > INT_MAX || count > size) return 0;
    char* const bytes = NewBuffer(count + 1);
    if (!bytes) return 0;
    if (!file.ReadAt(0, bytes, static_cast<std::size_t>(count))) {
        genutil::Release(bytes);
        return 0;
    }
    bytes[count] = 0;
    buffer = bytes;
    return static_cast<int>(count);
}

// Returns the payload length in the trailer at the end of a file, or `size` if there is no trailer.
std::int64_t PayloadLength(std::string_view tail, std::string_view marker, std::int64_t size) {
    const std::size_t colon = tail.find(':');
    if (tail.find(marker) == std::string_view::npos || colon == std::string_view::npos) return size;
    // The tail is terminated, and therefore also the number.
    return std::strtoll(tail.data() + colon + 1, nullptr, 10);
}

}  // namespace

int OSGetBinaryFileContents(char*& buffer, char const* path) {
    buffer = nullptr;
    File file(path, Opening::kRead);
    const std::int64_t size = file.Size();
    return ReadStart(file, size, size, buffer);
}

int OSGetFileContents(char*& buffer, char const* path) {
    return OSGetBinaryFileContents(buffer, path) >= 1 && OSDosToUnix(buffer);
}

int OSGetBinaryFileContentsWithFieldOffset(char*& buffer, char const* path, char const* marker) {
    buffer = nullptr;
    File file(path, Opening::kRead);
    const std::int64_t size = file.Size();
    if (!marker || size <= 0) return 0;
    const auto longest = static_cast<std::int64_t>(std::strlen(marker)) + 16;
    const std::int64_t length = std::min(longest, size);
    const genutil::Owned<char> tail(NewBuffer(length + 1));
    const auto bytes = static_cast<std::size_t>(length);
    if (!tail.Get() || !file.ReadAt(size - length, tail.Get(), bytes)) return 0;
    tail.Get()[bytes] = 0;
    return ReadStart(file, PayloadLength({tail.Get(), bytes}, marker, size), size, buffer);
}

int OSGetFileContentsWithFieldOffset(char*& buffer, char const* path, char const* marker) {
    return OSGetBinaryFileContentsWithFieldOffset(buffer, path, marker) >= 1 && OSDosToUnix(buffer);
}

int OSWriteFieldOffset(char const* path, char const* trailer) {
    if (!trailer) return 0;
    const std::size_t length = std::strlen(trailer);
    File file(path, Opening::kAppend);
    const bool written = file.Code() == 0 && length <= INT_MAX && file.Write(trailer, length);
    return file.Close() && written ? static_cast<int>(length) : 0;
}

long OSWriteBinaryFileContents(char* buffer, unsigned int size, CGNString path,
                               osFileActionIfExists action) {
    if (action < osFailIfExists || action > osAppendIfExists) return 0;
    if (action == osFailIfExists && genutil::platform::Exists(path)) return osFileExists;
    if ((!buffer && size != 0) || std::cmp_greater(size, LONG_MAX)) return 0;
    File file(path, action == osFailIfExists     ? Opening::kCreate
                    : action == osAppendIfExists ? Opening::kCreateOrAppend
                                                 : Opening::kCreateOrTruncate);
    if (file.Code() == genutil::platform::kExists) return osFileExists;
    const bool written = file.Code() == 0 && file.Write(buffer, size);
    return file.Close() && written ? static_cast<long>(size) : 0;
}

int OSDosToUnix(char* text) {
    if (!text) return 0;
    char* out = std::strstr(text, "\r\n");
    if (!out) return 1;
    const char* const end = text + std::strlen(text);
    // Moves whole runs between one pair and the next.
    for (const char* from = out + 1; from < end;) {
        const char* const pair = std::strstr(from, "\r\n");
        const auto run = static_cast<std::size_t>((pair ? pair : end) - from);
        std::memmove(out, from, run);
        out += run;
        from += run + (pair ? 1 : 0);
    }
    *out = 0;
    return 1;
}

#include "osutil/platform/posix/file/paths.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "genutil/mbutil/step.h"
#include "genutil/mbutil/wide_convert.h"

namespace genutil::platform {

namespace {

// Converts to a new text in the buffer. Returns null, after reporting it, if allocation fails.
const char* Convert(const char* path, PathBuffer<char>& buffer) {
    const PathUnits units(path);
    if (!units.Get()) return nullptr;
    for (unsigned short* unit = units.Get(); *unit; ++unit)
        if (*unit == '\\') *unit = '/';
    return EncodeUtf8(units, buffer) < 0 ? nullptr : buffer.Get();
}

bool IsSame(const char* converted, const char* path) {
    while (*path && (*converted == *path || (*converted == '/' && *path == '\\')))
        ++converted, ++path;
    return *converted == *path;
}

bool IsMissing(const char* path) {
    struct stat status;
    return lstat(path, &status) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

// Returns the length of the first name in a path in the current code set.
std::size_t NameLength(const char* path) {
    std::size_t length = 0;
    while (path[length] && path[length] != '/' && path[length] != '\\')
        length += g_currentStep ? StepLength(*g_currentStep, Bytes(path + length)) : 1;
    return length;
}

}  // namespace

bool IsOneName(const char* name) {
    return name[NameLength(name)] == 0;
}

long EncodeUtf8(const PathUnits& units, PathBuffer<char>& buffer) {
    const std::size_t room = 3 * units.Count();
    char* const out = buffer.Reserve(room + 1);
    if (!out) return -1;
    const long length = ToUtf8(out, room, units.Get(), units.Count());
    if (!AssertAllocation(length >= 0, "osutil/osfile", __LINE__)) return -1;
    out[length] = 0;
    return length;
}

const char* TemporaryFolder() {
    const char* const folder = std::getenv("TMPDIR");
    return folder && *folder == '/' ? folder : "/tmp";
}

SystemPath::SystemPath(const char* path) {
    errno = path ? ENOMEM : EINVAL;
    if (path) m_path = Convert(path, m_buffer);
    if (!m_path || IsSame(m_path, path)) return;
    const int error = errno;
    if (IsMissing(m_path)) UseNamesAsTheyAre(path);
    errno = error;
}

// Follows the path name by name. A name that does not exist in converted form but exists as bytes
// is passed unchanged.
void SystemPath::UseNamesAsTheyAre(const char* path) {
    char* const out = m_found.Reserve(3 * std::strlen(path) + 1);
    PathBuffer<char> name, converted;
    if (!out || !name.Reserve(std::strlen(path) + 1)) return;
    bool differs = false;
    for (std::size_t at = 0;;) {
        const std::size_t length = NameLength(path);
        std::memcpy(name.Get(), path, length);
        name.Get()[length] = 0;
        if (!Convert(name.Get(), converted)) return;
        std::strcpy(out + at, converted.Get());
        if (IsMissing(out) && std::strcmp(name.Get(), converted.Get()) != 0) {
            std::strcpy(out + at, name.Get());
            if (IsMissing(out))
                std::strcpy(out + at, converted.Get());
            else
                differs = true;
        }
        at += std::strlen(out + at);
        path += length;
        if (!*path) break;
        out[at++] = '/';
        ++path;
    }
    if (differs) m_path = out;
}

NameText::NameText(const char* name) {
    const std::size_t bytes = std::strlen(name);
    PathBuffer<unsigned short> units;
    if (!units.Reserve(bytes + 1)) return;
    const long count = FromUtf8(units.Get(), name, bytes);
    units.Get()[count < 0 ? 0 : count] = 0;
    const std::int64_t length = count < 0 ? -1 : NarrowLength(units.Get());
    const std::size_t room = length < 0 ? bytes : static_cast<std::size_t>(length);
    char* const out = m_buffer.Reserve(room + 1);
    if (!out) return;
    if (length < 0)
        std::memcpy(out, name, bytes);
    else
        ToNarrow(out, room, units.Get());
    out[room] = 0;
    m_name = out;
}

}  // namespace genutil::platform

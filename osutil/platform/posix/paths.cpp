#include "osutil/platform/posix/paths.h"

#include <cerrno>
#include <cstring>

#include "genutil/mbutil/wide.h"

namespace genutil::platform {

SystemPath::SystemPath(const char* path) {
    errno = path ? ENOMEM : EINVAL;
    const PathUnits units(path);
    if (!units.Get()) return;
    for (unsigned short* unit = units.Get(); *unit; ++unit)
        if (*unit == '\\') *unit = '/';
    const std::size_t room = 3 * units.Count();
    char* const out = m_buffer.Reserve(room + 1);
    if (!out) return;
    const long length = ToUtf8(out, room, units.Get(), units.Count());
    if (!AssertAllocation(length >= 0, "osutil/osfile", __LINE__)) return;
    out[length] = 0;
    m_path = out;
}

NameText::NameText(const char* name) {
    const std::size_t bytes = std::strlen(name);
    PathBuffer<unsigned short> units;
    if (!units.Reserve(bytes + 1)) return;
    const long count = FromUtf8(units.Get(), name, bytes);
    units.Get()[count < 0 ? 0 : count] = 0;
    const long length = count < 0 ? -1 : NarrowLength(units.Get());
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

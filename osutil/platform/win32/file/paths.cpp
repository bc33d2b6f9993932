#include "osutil/platform/win32/file/paths.h"

#include <cwchar>

#include "genutil/mbutil/wide_convert.h"
#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

static_assert(sizeof(wchar_t) == sizeof(unsigned short));

namespace {

// Paths of directories must leave room for a name of 12 characters below MAX_PATH.
constexpr std::size_t kLongPath = MAX_PATH - 12;

bool IsSeparator(wchar_t c) {
    return c == L'\\' || c == L'/';
}

// Returns true if a relative path becomes a long one, because the current directory has a long
// path.
bool IsLongFromHere(const wchar_t* path) {
    const bool isFull = (IsSeparator(path[0]) && IsSeparator(path[1])) ||
                        (path[0] && path[1] == L':' && IsSeparator(path[2]));
    return !isFull && GetFullPathNameW(path, 0, nullptr, nullptr) > kLongPath;
}

}  // namespace

SystemPath::SystemPath(const char* path) : m_units(path) {
    SetLastError(path ? ERROR_NOT_ENOUGH_MEMORY : ERROR_INVALID_PARAMETER);
    if (!m_units.Get()) return;
    // The system's result for an empty path varies.
    if (m_units.Count() == 0)
        SetLastError(ERROR_PATH_NOT_FOUND);
    else
        Take(reinterpret_cast<const wchar_t*>(m_units.Get()), m_units.Count());
}

SystemPath::SystemPath(const wchar_t* directory, const wchar_t* name) : m_units(nullptr) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    std::size_t above = std::wcslen(directory);
    // In the form without a length limit, the system does not accept two consecutive separators.
    while (above > 1 && (directory[above - 1] == L'\\' || directory[above - 1] == L'/')) --above;
    const std::size_t length = above + 1 + std::wcslen(name);
    wchar_t* const joined = m_joined.Reserve(length + 1);
    if (!joined) return;
    std::wmemcpy(joined, directory, above);
    joined[above] = L'\\';
    std::wmemcpy(joined + above + 1, name, length - above);
    Take(joined, length);
}

void SystemPath::Take(const wchar_t* path, std::size_t length) {
    if (std::wcsncmp(path, L"\\\\?\\", 4) == 0 || (length < kLongPath && !IsLongFromHere(path)))
        m_path = path;
    else if (Extend(path))
        m_path = m_extended.Get();
}

bool SystemPath::Extend(const wchar_t* path) {
    const DWORD size = GetFullPathNameW(path, 0, nullptr, nullptr);
    constexpr std::size_t kPrefix = 8;  // length of the longer prefix "\\?\UNC\"
    wchar_t* const out = size == 0 ? nullptr : m_extended.Reserve(size + kPrefix);
    if (!out) return false;
    if (GetFullPathNameW(path, size, out + kPrefix, nullptr) == 0) return false;
    const bool share = out[kPrefix] == L'\\' && out[kPrefix + 1] == L'\\';
    // The two backslashes of a share's path become the end of the prefix.
    const wchar_t* const prefix = share ? L"\\\\?\\UNC\\" : L"\\\\?\\";
    const wchar_t* const rest = out + kPrefix + (share ? 2 : 0);
    const std::size_t length = std::wcslen(prefix);
    std::wmemmove(out + length, rest, std::wcslen(rest) + 1);
    std::wmemcpy(out, prefix, length);
    return true;
}

FullPath::FullPath(const wchar_t* path) {
    const DWORD size = path && *path ? GetFullPathNameW(path, 0, nullptr, nullptr) : 0;
    wchar_t* const out = size ? m_buffer.Reserve(size) : nullptr;
    if (out && GetFullPathNameW(path, size, out, nullptr) < size) m_path = out;
}

NameText::NameText(const wchar_t* name) {
    const auto units = reinterpret_cast<const unsigned short*>(name);
    const std::size_t count = std::wcslen(name);
    const std::size_t room = kMostNarrowBytes * count;
    char* const out = m_buffer.Reserve(room + 1);
    if (!out) return;
    const long length = ToNarrowLossy(out, room, units, count);
    if (!AssertAllocation(length >= 0, "osutil/osfile", __LINE__)) return;
    out[length] = 0;
    m_name = out;
}

}  // namespace genutil::platform

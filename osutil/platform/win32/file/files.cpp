// Files through file handles.
#include "osutil/platform/file/files.h"

#include <algorithm>

#include "osutil/platform/win32/file/errors.h"
#include "osutil/platform/win32/file/paths.h"
#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

namespace {

struct Access {
    DWORD rights, creation, attributes;
};
Access AccessOf(Opening opening) {
    switch (opening) {
        case Opening::kRead:
            return {GENERIC_READ, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN};
        case Opening::kCreate:
            return {GENERIC_WRITE, CREATE_NEW, FILE_ATTRIBUTE_NORMAL};
        case Opening::kCreateOrTruncate:
            return {GENERIC_WRITE, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL};
        case Opening::kCreateOrAppend:
            return {GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL};
        case Opening::kAppend:
            break;
    }
    return {GENERIC_WRITE, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL};
}

// Makes the system transfer bytes from or to the file position. Returns true if all were
// transferred.
template <class Move, class Byte>
bool MoveAll(HANDLE file, Byte* bytes, std::size_t count, Move move) {
    constexpr std::size_t kMostAtOnce = 0x40000000;
    while (count > 0) {
        const auto part = static_cast<DWORD>(std::min(count, kMostAtOnce));
        DWORD done = 0;
        if (!move(file, bytes, part, &done, nullptr) || done == 0) return false;
        bytes += done;
        count -= done;
    }
    return true;
}

bool AtEnd(HANDLE file) {
    LARGE_INTEGER none = {};
    return SetFilePointerEx(file, none, nullptr, FILE_END);
}

HANDLE HandleOf(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}
const std::intptr_t kClosed = reinterpret_cast<std::intptr_t>(INVALID_HANDLE_VALUE);

FileCode CodeOf(BOOL good) {
    return good ? kDone : FileCodeOf(GetLastError());
}

}  // namespace

// -- Open files ----------------------------------------------------------------------------------

File::File(const char* path, Opening opening) : m_handle(kClosed) {
    const SystemPath name(path);
    const Access access = AccessOf(opening);
    if (name.Get())
        m_handle = reinterpret_cast<std::intptr_t>(
            CreateFileW(name.Get(), access.rights, FILE_SHARE_READ, nullptr, access.creation,
                        access.attributes, nullptr));
    m_code = m_handle != kClosed ? kDone : FileCodeOf(GetLastError());
    const bool appends = opening == Opening::kAppend || opening == Opening::kCreateOrAppend;
    if (m_handle == kClosed || !appends || AtEnd(HandleOf(m_handle))) return;
    m_code = kFailed;
    Close();
}

std::int64_t File::Size() const {
    LARGE_INTEGER size;
    return m_handle != kClosed && GetFileSizeEx(HandleOf(m_handle), &size) ? size.QuadPart : -1;
}

bool File::ReadAt(std::int64_t offset, char* out, std::size_t count) {
    LARGE_INTEGER start;
    start.QuadPart = offset;
    return SetFilePointerEx(HandleOf(m_handle), start, nullptr, FILE_BEGIN) &&
           MoveAll(HandleOf(m_handle), out, count, ReadFile);
}

bool File::Write(const char* bytes, std::size_t count) {
    return MoveAll(HandleOf(m_handle), bytes, count, WriteFile);
}

bool File::Close() {
    if (m_handle == kClosed) return false;
    const HANDLE file = HandleOf(m_handle);
    m_handle = kClosed;
    return CloseHandle(file) != 0;
}

// -- By path -------------------------------------------------------------------------------------

bool Exists(const char* path) {
    const SystemPath name(path);
    return name.Get() && GetFileAttributesW(name.Get()) != INVALID_FILE_ATTRIBUTES;
}

bool NameFits(const char* path) {
    const PathUnits units(path);
    return units.Count() < MAX_PATH;
}

FileCode MakeDirectory(const char* path) {
    const SystemPath name(path);
    return CodeOf(name.Get() && CreateDirectoryW(name.Get(), nullptr));
}

}  // namespace genutil::platform

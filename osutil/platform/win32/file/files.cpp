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

// Has the system move bytes from or to where the file is; whether all were.
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

std::int64_t PlaceIn(std::FILE* stream) {
    return _ftelli64(stream);
}

bool GoTo(std::FILE* stream, std::int64_t place) {
    return _fseeki64(stream, place, SEEK_SET) == 0;
}

// -- By path -------------------------------------------------------------------------------------

std::FILE* OpenStream(const char* path, const char* mode) {
    const SystemPath name(path);
    wchar_t wideMode[4] = {};
    for (int i = 0; i < 3 && mode[i]; ++i) wideMode[i] = static_cast<wchar_t>(mode[i]);
    return name.Get() ? _wfopen(name.Get(), wideMode) : nullptr;
}

bool Exists(const char* path) {
    const SystemPath name(path);
    return name.Get() && GetFileAttributesW(name.Get()) != INVALID_FILE_ATTRIBUTES;
}

FileCode MakeDirectory(const char* path) {
    const SystemPath name(path);
    return CodeOf(name.Get() && CreateDirectoryW(name.Get(), nullptr));
}

// -- Places --------------------------------------------------------------------------------------

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

bool VisitConnectedDisks(ResourceVisitor visitor, void* context) {
    HANDLE enumeration;
    if (WNetOpenEnumW(RESOURCE_CONNECTED, RESOURCETYPE_DISK, 0, nullptr, &enumeration) != NO_ERROR)
        return false;
    PathBuffer<NETRESOURCEW> buffer;
    DWORD bytes = 1600;
    DWORD result = buffer.Reserve(bytes / sizeof(NETRESOURCEW)) ? NO_ERROR : ERROR_OUTOFMEMORY;
    while (result == NO_ERROR || result == ERROR_MORE_DATA) {
        const DWORD room = bytes;
        DWORD count = static_cast<DWORD>(-1);  // as many as there is room for
        result = WNetEnumResourceW(enumeration, &count, buffer.Get(), &bytes);
        if (result == NO_ERROR) {
            for (DWORD i = 0; i < count; ++i) {
                const NETRESOURCEW& disk = buffer.Get()[i];
                if (!disk.lpLocalName || !disk.lpRemoteName) continue;
                const NameText local(disk.lpLocalName), remote(disk.lpRemoteName);
                if (local.Get() && remote.Get()) visitor(context, local.Get(), remote.Get());
            }
        } else if (result == ERROR_MORE_DATA) {
            // Not even one has room; `bytes` tells what it needs, if it is more.
            bytes = bytes > room ? bytes : 2 * room;
            const std::size_t records = bytes / sizeof(NETRESOURCEW) + 1;
            if (!buffer.Reserve(records)) result = ERROR_OUTOFMEMORY;
        }
    }
    WNetCloseEnum(enumeration);
    return true;
}

}  // namespace genutil::platform

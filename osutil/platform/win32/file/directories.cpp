// Directories through find handles.
#include "osutil/platform/file/directories.h"

#include <cwchar>
#include <optional>

#include "osutil/platform/win32/file/errors.h"
#include "osutil/platform/win32/file/paths.h"
#include "osutil/platform/win32/scoped_handle.h"

namespace genutil::platform {

namespace {

// Only reparse points with this bit in their tag refer to another place. The content of others is
// kept by a storage service, such as a directory in the cloud, and they are entered like
// directories.
bool IsLinkTag(DWORD attributes, DWORD tag) {
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) && IsReparseTagNameSurrogate(tag);
}

// A link to a directory is a directory with its own target.
bool IsDirectoryLink(const wchar_t* path, DWORD attributes) {
    constexpr DWORD kLink = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & kLink) != kLink) return false;
    WIN32_FIND_DATAW found;
    const ScopedSearch search(FindFirstFileW(path, &found));
    return !search || IsLinkTag(found.dwFileAttributes, found.dwReserved0);
}

FileCode CodeOf(BOOL good) {
    return good ? kDone : FileCodeOf(GetLastError());
}

FileCode RemoveFileAt(const wchar_t* path) {
    if (!path) return FileCodeOf(GetLastError());
    return CodeOf(IsDirectoryLink(path, GetFileAttributesW(path)) ? RemoveDirectoryW(path)
                                                                  : DeleteFileW(path));
}

}  // namespace

FileCode RemoveFile(const char* path) {
    return RemoveFileAt(SystemPath(path).Get());
}

FileCode RemoveEmptyDirectory(const char* path) {
    const SystemPath name(path);
    return CodeOf(name.Get() && RemoveDirectoryW(name.Get()));
}

// -- Walks ---------------------------------------------------------------------------------------

struct Directory::State {
    // Returns null if there is no such directory, and for an empty path. *failed becomes true if
    // the directory exists but cannot be read.
    static State* Of(const wchar_t* path, Links links, bool* failed) {
        const DWORD attributes = path && *path ? GetFileAttributesW(path) : INVALID_FILE_ATTRIBUTES;
        if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY) ||
            (links == Links::kRefuse && IsDirectoryLink(path, attributes)))
            return nullptr;
        State* state = New<State>();
        *failed = true;
        if (!AssertAllocation(state != nullptr, "osutil/osfile", __LINE__)) return nullptr;
        *failed = !state->Open(path);
        if (!*failed) return state;
        delete state;
        return nullptr;
    }
    bool Open(const wchar_t* from) {
        const std::size_t length = std::wcslen(from);
        if (!path.Reserve(length + 1)) return false;
        std::wmemcpy(path.Get(), from, length + 1);
        const SystemPath every(from, L"*");
        if (every.Get()) *search.Place() = FindFirstFileW(every.Get(), &entry);
        return static_cast<bool>(search);
    }

    PathBuffer<wchar_t> path;
    ScopedSearch search;
    WIN32_FIND_DATAW entry;
    bool begun = false;
    std::optional<NameText> name;
};

Directory::Directory(const char* path, Links links) : m_state(nullptr) {
    const SystemPath name(path);
    m_failed = !name.Get() && path && *path;
    if (!m_failed) m_state = State::Of(name.Get(), links, &m_failed);
}

Directory Directory::EntryAsDirectory() const {
    const SystemPath path(m_state->path.Get(), m_state->entry.cFileName);
    bool failed = false;
    return Directory(State::Of(path.Get(), Links::kRefuse, &failed));
}

Directory::~Directory() {
    delete m_state;
}

bool Directory::Next() {
    if (!m_state) return false;
    if (m_state->begun && !FindNextFileW(m_state->search.Get(), &m_state->entry)) {
        m_failed = GetLastError() != ERROR_NO_MORE_FILES;
        return false;
    }
    m_state->begun = true;
    m_state->name.emplace(m_state->entry.cFileName);
    m_failed = m_state->name->Get() == nullptr;
    return !m_failed;
}

bool Directory::IsOneName() const {
    return true;
}

const char* Directory::Name() const {
    return m_state->name->Get();
}

bool Directory::IsDirectory() const {
    return (m_state->entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool Directory::IsLink() const {
    return IsLinkTag(m_state->entry.dwFileAttributes, m_state->entry.dwReserved0);
}

bool Directory::ModificationTime(std::int64_t* seconds) const {
    const FILETIME time = m_state->entry.ftLastWriteTime;
    const std::int64_t ticks = std::int64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    *seconds = ticks / 10000000 - 11644473600;  // from units of 100 ns since 1601
    return true;
}

bool Directory::ReadStatus(Status* out) const {
    const WIN32_FIND_DATAW& entry = m_state->entry;
    out->kind = IsLink() ? Kind::kLink : IsDirectory() ? Kind::kDirectory : Kind::kFile;
    out->size = std::int64_t{entry.nFileSizeHigh} << 32 | entry.nFileSizeLow;
    return ModificationTime(&out->modified);
}

FileCode Directory::RemoveEntryFile() {
    return RemoveFileAt(SystemPath(m_state->path.Get(), m_state->entry.cFileName).Get());
}

FileCode Directory::RemoveEntryDirectory() {
    const SystemPath path(m_state->path.Get(), m_state->entry.cFileName);
    return CodeOf(path.Get() && RemoveDirectoryW(path.Get()));
}

// -- Trees ---------------------------------------------------------------------------------------

namespace {

// Empties a directory of any depth. It descends into a directory that is not empty and returns by
// its path.
class TreeRemoval {
  public:
    // The path must be in the form without a length limit.
    bool Run(const wchar_t* top) {
        const std::size_t length = std::wcslen(top);
        if (!Append(top, length)) return false;
        for (;;) {
            switch (EmptyCurrent()) {
                case Step::kFailed:
                    return false;
                case Step::kDown:
                    break;
                case Step::kEmpty:
                    if (!RemoveDirectoryW(m_path.Get()) && !IsMissing()) return false;
                    if (m_length == length) return true;
                    while (m_path.Get()[m_length - 1] != L'\\') --m_length;
                    m_path.Get()[--m_length] = 0;
            }
        }
    }

  private:
    enum class Step { kFailed, kDown, kEmpty };

    static bool IsMissing() {
        const DWORD error = GetLastError();
        return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    }

    bool Append(const wchar_t* text, std::size_t length) {
        constexpr std::size_t kLongest = 32768;  // the maximum length of a path in the system
        wchar_t* const path = m_length == 0 ? m_path.Reserve(kLongest) : m_path.Get();
        if (!path || m_length + length >= kLongest) return false;
        std::wmemcpy(path + m_length, text, length);
        m_length += length;
        path[m_length] = 0;
        return true;
    }

    // Removes as much as possible. Stops at a directory that is not empty, after entering it.
    Step EmptyCurrent() {
        const std::size_t length = m_length;
        if (!Append(L"\\*", 2)) return Step::kFailed;
        const ScopedSearch search(FindFirstFileW(m_path.Get(), &m_entry));
        m_path.Get()[m_length = length] = 0;
        if (!search) return IsMissing() ? Step::kEmpty : Step::kFailed;
        do {
            if (IsDots(m_entry.cFileName)) continue;
            const Step step = RemoveEntry();
            if (step != Step::kEmpty) return step;
        } while (FindNextFileW(search.Get(), &m_entry));
        return GetLastError() == ERROR_NO_MORE_FILES ? Step::kEmpty : Step::kFailed;
    }

    Step RemoveEntry() {
        const std::size_t length = m_length;
        if (!Append(L"\\", 1) || !Append(m_entry.cFileName, std::wcslen(m_entry.cFileName)))
            return Step::kFailed;
        const bool isDirectory = (m_entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (m_entry.dwFileAttributes & FILE_ATTRIBUTE_READONLY)
            SetFileAttributesW(m_path.Get(), FILE_ATTRIBUTE_NORMAL);
        const BOOL removed =
            isDirectory ? RemoveDirectoryW(m_path.Get()) : DeleteFileW(m_path.Get());
        if (!removed && isDirectory && GetLastError() == ERROR_DIR_NOT_EMPTY) return Step::kDown;
        const bool done = removed || IsMissing();
        m_path.Get()[m_length = length] = 0;
        return done ? Step::kEmpty : Step::kFailed;
    }

    PathBuffer<wchar_t> m_path;
    std::size_t m_length = 0;
    WIN32_FIND_DATAW m_entry;
};

// A full path in the form without a length limit; none for a root.
class LongPath {
  public:
    explicit LongPath(const wchar_t* path) {
        const DWORD size = GetFullPathNameW(path, 0, nullptr, nullptr);
        constexpr std::size_t kPrefix = 8;  // length of the longer prefix "\\?\UNC\"
        wchar_t* const out = size == 0 ? nullptr : m_buffer.Reserve(size + kPrefix);
        if (!out || GetFullPathNameW(path, size, out + kPrefix, nullptr) == 0) return;
        wchar_t* begin = out + kPrefix;
        std::size_t length = std::wcslen(begin);
        while (length > 0 && begin[length - 1] == L'\\') begin[--length] = 0;
        if (length <= 2) return;
        if (std::wcsncmp(begin, L"\\\\?\\", 4) != 0) {
            const bool share = begin[0] == L'\\' && begin[1] == L'\\';
            const wchar_t* const prefix = share ? L"\\\\?\\UNC\\" : L"\\\\?\\";
            const std::size_t prefixLength = std::wcslen(prefix);
            begin += share ? 2 : 0;
            begin -= prefixLength;
            std::wmemcpy(begin, prefix, prefixLength);
        }
        m_path = begin;
    }
    const wchar_t* Get() const { return m_path; }

  private:
    PathBuffer<wchar_t> m_buffer;
    const wchar_t* m_path = nullptr;
};

}  // namespace

// A name that did not convert contains "?", which matches any character in a search and must not
// remove other files.
bool RemoveTree(const char* path) {
    const SystemPath name(path);
    if (!name.Get()) return false;
    const LongPath full(name.Get());
    constexpr std::size_t kPrefix = 4;
    if (!full.Get() || std::wcspbrk(full.Get() + kPrefix, L"*?")) return false;
    const DWORD attributes = GetFileAttributesW(full.Get());
    if (attributes == INVALID_FILE_ATTRIBUTES) return false;
    if (attributes & FILE_ATTRIBUTE_READONLY)
        SetFileAttributesW(full.Get(), attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    if (!(attributes & FILE_ATTRIBUTE_DIRECTORY)) return DeleteFileW(full.Get());
    if (IsDirectoryLink(full.Get(), attributes)) return RemoveDirectoryW(full.Get());
    return TreeRemoval().Run(full.Get());
}

}  // namespace genutil::platform

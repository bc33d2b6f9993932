// Directories through find handles, and trees through the shell.
#include "osutil/platform/file/directories.h"

#include <cwchar>
#include <optional>

#include "osutil/platform/win32/file/errors.h"
#include "osutil/platform/win32/file/paths.h"
#include "osutil/platform/win32/scoped_handle.h"

namespace genutil::platform {

namespace {

// A link to a directory is a directory with its own target.
bool IsDirectoryLink(DWORD attributes) {
    constexpr DWORD kLink = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & kLink) == kLink;
}

FileCode CodeOf(BOOL good) {
    return good ? kDone : FileCodeOf(GetLastError());
}

FileCode RemoveFileAt(const wchar_t* path) {
    if (!path) return FileCodeOf(GetLastError());
    return CodeOf(IsDirectoryLink(GetFileAttributesW(path)) ? RemoveDirectoryW(path)
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
    // Returns null if there is no such directory, and for an empty path.
    static State* Of(const wchar_t* path, Links links) {
        const DWORD attributes = path && *path ? GetFileAttributesW(path) : INVALID_FILE_ATTRIBUTES;
        if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY) ||
            (links == Links::kRefuse && IsDirectoryLink(attributes)))
            return nullptr;
        State* state = New<State>();
        if (!AssertAllocation(state != nullptr, "osutil/osfile", __LINE__)) return nullptr;
        if (!state->Open(path)) {
            delete state;
            state = nullptr;
        }
        return state;
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

Directory::Directory(const char* path, Links links)
    : m_state(State::Of(SystemPath(path).Get(), links)) {}

Directory Directory::EntryAsDirectory() const {
    return Directory(
        State::Of(SystemPath(m_state->path.Get(), m_state->entry.cFileName).Get(), Links::kRefuse));
}

Directory::~Directory() {
    delete m_state;
}

bool Directory::Next() {
    if (!m_state || (m_state->begun && !FindNextFileW(m_state->search.Get(), &m_state->entry)))
        return false;
    m_state->begun = true;
    m_state->name.emplace(m_state->entry.cFileName);
    return m_state->name->Get() != nullptr;
}

const char* Directory::Name() const {
    return m_state->name->Get();
}

bool Directory::IsDirectory() const {
    return (m_state->entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool Directory::IsLink() const {
    return (m_state->entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

bool Directory::ModificationTime(std::int64_t* seconds) const {
    const FILETIME time = m_state->entry.ftLastWriteTime;
    const std::int64_t ticks = std::int64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime;
    *seconds = ticks / 10000000 - 11644473600;  // from units of 100 ns since 1601
    return true;
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

// Removes the links to directories from a tree, because some shells do not preserve their targets.
// Returns false also for a path that is too long for the shell, which is left unchanged.
bool RemoveLinks(const wchar_t* directory) {
    if (std::wcslen(directory) >= MAX_PATH) return false;
    const SystemPath every(directory, L"*");
    Owned<WIN32_FIND_DATAW> entry(
        static_cast<WIN32_FIND_DATAW*>(Allocate(sizeof(WIN32_FIND_DATAW))));
    if (!AssertAllocation(entry.Get() != nullptr, "osutil/osfile", __LINE__) || !every.Get())
        return false;
    const ScopedSearch search(FindFirstFileW(every.Get(), entry.Get()));
    if (!search) return true;
    bool good = true;
    do {
        if (!(entry.Get()->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) ||
            IsDots(entry.Get()->cFileName))
            continue;
        const SystemPath path(directory, entry.Get()->cFileName);
        good = path.Get() &&
               (IsDirectoryLink(entry.Get()->dwFileAttributes) ? RemoveDirectoryW(path.Get())
                                                               : RemoveLinks(path.Get()));
    } while (good && FindNextFileW(search.Get(), entry.Get()));
    return good;
}

// A path in the form of the shell: a full path with "\" that ends in two zeroes.
class ShellPath {
  public:
    explicit ShellPath(const wchar_t* path) {
        const DWORD size = GetFullPathNameW(path, 0, nullptr, nullptr);
        wchar_t* const out = size == 0 ? nullptr : m_buffer.Reserve(size + 1);
        if (!out || GetFullPathNameW(path, size, out, nullptr) == 0) return;
        std::size_t length = std::wcslen(out);
        while (length > 3 && out[length - 1] == L'\\') --length;
        out[length] = out[length + 1] = 0;
        m_path = out;
    }
    const wchar_t* Get() const { return m_path; }

  private:
    PathBuffer<wchar_t> m_buffer;
    const wchar_t* m_path = nullptr;
};

}  // namespace

// The shell treats a name with wildcards as a pattern. No file has such a name, but a name that did
// not convert contains "?" and must not remove other files.
bool RemoveTree(const char* path) {
    const SystemPath name(path);
    if (!name.Get() || std::wcspbrk(name.Get(), L"*?")) return false;
    const ShellPath full(name.Get());
    if (!full.Get()) return false;
    const DWORD attributes = GetFileAttributesW(full.Get());
    if (attributes == INVALID_FILE_ATTRIBUTES) return false;
    if (IsDirectoryLink(attributes)) return RemoveDirectoryW(full.Get());
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) && !RemoveLinks(full.Get())) return false;
    SHFILEOPSTRUCTW operation = {};
    operation.wFunc = FO_DELETE;
    operation.pFrom = full.Get();
    operation.fFlags = FOF_SILENT | FOF_NOCONFIRMATION | FOF_NOERRORUI;
    return SHFileOperationW(&operation) == 0 && !operation.fAnyOperationsAborted;
}

}  // namespace genutil::platform

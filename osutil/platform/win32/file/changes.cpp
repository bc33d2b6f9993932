#include "osutil/platform/file/changes.h"

#include <algorithm>
#include <cwchar>

#include "osutil/platform/win32/file/errors.h"
#include "osutil/platform/win32/file/paths.h"
#include "osutil/platform/win32/scoped_handle.h"
#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

namespace {

FileCode CodeOf(BOOL good) {
    return good ? kDone : FileCodeOf(GetLastError());
}

// A new file beside another one, removed unless it gets that name.
class FileBeside {
  public:
    explicit FileBeside(const wchar_t* path) {
        wchar_t ending[40];
        do {
            std::swprintf(ending, 40, L".%llx~", UnusedNumber());
            const std::size_t length = std::wcslen(path);
            if (!m_name.Reserve(length + 40)) return;
            std::wmemcpy(m_name.Get(), path, length);
            std::wmemcpy(m_name.Get() + length, ending, std::wcslen(ending) + 1);
            m_file = CreateFileW(m_name.Get(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                 FILE_ATTRIBUTE_NORMAL, nullptr);
        } while (m_file == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_EXISTS);
    }
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;
    ~FileBeside() {
        if (!IsOpen()) return;
        Close();
        if (!m_named) DeleteFileW(m_name.Get());
    }
    bool IsOpen() const { return m_file != INVALID_HANDLE_VALUE; }

    bool Write(const char* bytes, std::size_t size) {
        constexpr std::size_t kMostAtOnce = 0x40000000;
        while (size > 0) {
            DWORD done = 0;
            const auto part = static_cast<DWORD>(std::min(size, kMostAtOnce));
            if (!WriteFile(m_file, bytes, part, &done, nullptr) || done == 0) return false;
            bytes += done;
            size -= done;
        }
        return FlushFileBuffers(m_file) != 0;
    }

    // Takes the place of a file, whose rights and attributes remain, or of none.
    BOOL TakePlaceOf(const wchar_t* path) {
        Close();
        BOOL good = ReplaceFileW(path, m_name.Get(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS,
                                 nullptr, nullptr);
        if (!good && GetLastError() == ERROR_FILE_NOT_FOUND)
            good = MoveFileExW(m_name.Get(), path, MOVEFILE_WRITE_THROUGH);
        m_named = good != 0;
        return good;
    }

  private:
    void Close() {
        if (!m_closed) CloseHandle(m_file);
        m_closed = true;
    }

    PathBuffer<wchar_t> m_name;
    HANDLE m_file = INVALID_HANDLE_VALUE;
    bool m_named = false, m_closed = false;
};

}  // namespace

unsigned long long UnusedNumber() {
    static volatile LONG s_count = 0;
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return static_cast<unsigned long long>(now.QuadPart) << 28 ^
           static_cast<unsigned long long>(GetCurrentProcessId()) << 12 ^
           static_cast<unsigned long long>(InterlockedIncrement(&s_count));
}

FileCode ReplaceContents(const char* path, const char* bytes, std::size_t size) {
    const SystemPath given(path);
    const FullPath name(given.Get());
    if (!name.Get()) return FileCodeOf(GetLastError());
    const DWORD attributes = GetFileAttributesW(name.Get());
    if (attributes != INVALID_FILE_ATTRIBUTES &&
        (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)))
        return kAccessDenied;
    FileBeside made(name.Get());
    if (!made.IsOpen() || !made.Write(bytes, size)) return FileCodeOf(GetLastError());
    return CodeOf(made.TakePlaceOf(name.Get()));
}

// The directory for temporary files belongs to the user.
FileCode MakePrivateFile(const char* path) {
    const SystemPath name(path);
    const HANDLE file = name.Get() ? CreateFileW(name.Get(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                                 FILE_ATTRIBUTE_NORMAL, nullptr)
                                   : INVALID_HANDLE_VALUE;
    if (file == INVALID_HANDLE_VALUE) return FileCodeOf(GetLastError());
    CloseHandle(file);
    return kDone;
}

FileCode CopyWholeFile(const char* from, const char* to, bool overwrite) {
    const SystemPath source(from), target(to);
    return CodeOf(source.Get() && target.Get() &&
                  CopyFileW(source.Get(), target.Get(), !overwrite));
}

FileCode MoveEntry(const char* from, const char* to, bool overwrite) {
    const SystemPath source(from), target(to);
    const DWORD replace = overwrite ? MOVEFILE_REPLACE_EXISTING : 0;
    return CodeOf(source.Get() && target.Get() &&
                  MoveFileExW(source.Get(), target.Get(), MOVEFILE_COPY_ALLOWED | replace));
}

}  // namespace genutil::platform

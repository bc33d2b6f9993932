#include "osutil/platform/file/streams.h"

#include <io.h>
#include <sys/stat.h>

#include "osutil/platform/win32/file/paths.h"
#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

std::FILE* OpenStream(const char* path, const char* mode) {
    const SystemPath name(path);
    wchar_t wideMode[4] = {};
    for (int i = 0; i < 3 && mode[i]; ++i) wideMode[i] = static_cast<wchar_t>(mode[i]);
    std::FILE* stream = name.Get() ? _wfopen(name.Get(), wideMode) : nullptr;
    // Child processes do not inherit the stream.
    if (stream)
        SetHandleInformation(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream))),
                             HANDLE_FLAG_INHERIT, 0);
    return stream;
}

std::int64_t PlaceIn(std::FILE* stream) {
    return _ftelli64(stream);
}

bool GoTo(std::FILE* stream, std::int64_t place) {
    return _fseeki64(stream, place, SEEK_SET) == 0;
}

std::int64_t ChangeTimeOf(std::FILE* stream) {
    struct _stat64 status;
    return _fstat64(_fileno(stream), &status) == 0 ? status.st_mtime : -1;
}

// A file cannot be renamed while it is open as a stream.
bool IsFileAt(std::FILE*, const char*) {
    return true;
}

bool LockForRenaming(std::FILE*) {
    return false;
}

bool RenameFile(const char* from, const char* to) {
    const SystemPath source(from), target(to);
    return source.Get() && target.Get() &&
           MoveFileExW(source.Get(), target.Get(), MOVEFILE_REPLACE_EXISTING);
}

bool IsOpenIn(std::FILE* stream, const char* path) {
    const SystemPath name(path);
    if (!name.Get()) return false;
    const HANDLE file = CreateFileW(name.Get(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    BY_HANDLE_FILE_INFORMATION here, there;
    const bool same = GetFileInformationByHandle(file, &there) &&
                      GetFileInformationByHandle(
                          reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream))), &here) &&
                      here.dwVolumeSerialNumber == there.dwVolumeSerialNumber &&
                      here.nFileIndexHigh == there.nFileIndexHigh &&
                      here.nFileIndexLow == there.nFileIndexLow;
    CloseHandle(file);
    return same;
}

}  // namespace genutil::platform

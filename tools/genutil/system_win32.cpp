#define WIN32_LEAN_AND_MEAN
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

#include "tools/genutil/system.h"

// The C++ library takes narrow paths for UTF-8.
std::filesystem::path PathOf(const std::string& argument) {
    const int size = static_cast<int>(argument.size());
    std::wstring wide(argument.size(), L'\0');
    const int length =
        size ? MultiByteToWideChar(CP_ACP, 0, argument.data(), size, wide.data(), size) : 0;
    wide.resize(static_cast<std::size_t>(length));
    return wide;
}

std::string ArgumentOf(const std::filesystem::path& path) {
    const std::wstring wide = path.generic_wstring();
    const int length = static_cast<int>(wide.size()), room = length * 4;
    std::string argument(static_cast<std::size_t>(room), '\0');
    const int size = length ? WideCharToMultiByte(CP_ACP, 0, wide.data(), length, argument.data(),
                                                  room, nullptr, nullptr)
                            : 0;
    argument.resize(static_cast<std::size_t>(size));
    return argument;
}

FileKind KindOf(const std::string& path) {
    const DWORD facts = GetFileAttributesA(path.c_str());
    if (facts == INVALID_FILE_ATTRIBUTES) return FileKind::kMissing;
    if (facts & FILE_ATTRIBUTE_DIRECTORY) return FileKind::kFolder;
    return facts & FILE_ATTRIBUTE_DEVICE ? FileKind::kOther : FileKind::kFile;
}

std::string IdentityOf(const std::string& path) {
    const HANDLE file =
        CreateFileA(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return "";
    BY_HANDLE_FILE_INFORMATION facts;
    const bool known = GetFileInformationByHandle(file, &facts) != 0;
    CloseHandle(file);
    if (!known) return "";
    return std::to_string(facts.dwVolumeSerialNumber) + ":" + std::to_string(facts.nFileIndexHigh) +
           ":" + std::to_string(facts.nFileIndexLow);
}

std::FILE* CreateNewFile(const std::string& path, bool) {
    const int flags = _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY;
    const int file = _open(path.c_str(), flags, _S_IREAD | _S_IWRITE);
    return file < 0 ? nullptr : _fdopen(file, "wb");
}

bool MoveOver(const std::string& from, const std::string& to) {
    return MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

bool CutFile(const std::string& path, std::size_t length) {
    const int file = _open(path.c_str(), _O_RDWR | _O_BINARY);
    if (file < 0) return false;
    const bool done = _chsize_s(file, static_cast<long long>(length)) == 0;
    return _close(file) == 0 && done;
}

void UseBinaryStreams() {
    for (std::FILE* stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
}

bool IsTerminal(std::FILE* stream) {
    return _isatty(_fileno(stream)) != 0;
}

bool ShowsStyles(std::FILE* stream) {
    constexpr DWORD kEscapeSequences = 4;  // from Windows 10 on
    const auto console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    DWORD mode = 0;
    return GetConsoleMode(console, &mode) && SetConsoleMode(console, mode | kEscapeSequences);
}

std::size_t TerminalColumns(std::FILE* stream) {
    CONSOLE_SCREEN_BUFFER_INFO facts;
    const auto console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    if (!GetConsoleScreenBufferInfo(console, &facts) || facts.dwSize.X <= 0) return 80;
    return static_cast<std::size_t>(facts.dwSize.X);
}

std::string ArgumentToUtf8(const std::string& argument) {
    const int size = static_cast<int>(argument.size());
    std::wstring wide(argument.size(), L'\0');
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_ACP, 0, argument.data(), size, wide.data(), size)));
    std::string utf8(wide.size() * 3, '\0');
    utf8.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), utf8.data(),
                            static_cast<int>(utf8.size()), nullptr, nullptr)));
    return utf8;
}

void UseCodeSetOfArguments() {}  // the library has already chosen it

std::string TextOfArgument(const std::string& text) {
    return ArgumentToUtf8(text);
}

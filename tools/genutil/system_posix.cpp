#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "mbutil.h"
#include "tools/genutil/system.h"

std::filesystem::path PathOf(const std::string& argument) {
    return argument;
}

std::string ArgumentOf(const std::filesystem::path& path) {
    return path.generic_string();
}

FileKind KindOf(const std::string& path) {
    struct stat facts;
    if (stat(path.c_str(), &facts) != 0) return FileKind::kMissing;
    if (S_ISDIR(facts.st_mode)) return FileKind::kFolder;
    return S_ISREG(facts.st_mode) ? FileKind::kFile : FileKind::kOther;
}

std::string IdentityOf(const std::string& path) {
    struct stat facts;
    if (stat(path.c_str(), &facts) != 0) return "";
    return std::to_string(facts.st_dev) + ":" + std::to_string(facts.st_ino);
}

std::FILE* CreateNewFile(const std::string& path, bool isPrivate) {
    const mode_t mode = isPrivate ? 0600 : 0666;
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    return file < 0 ? nullptr : fdopen(file, "wb");
}

bool MoveOver(const std::string& from, const std::string& to) {
    return std::rename(from.c_str(), to.c_str()) == 0;
}

bool CutFile(const std::string& path, std::size_t length) {
    return truncate(path.c_str(), static_cast<off_t>(length)) == 0;
}

void UseBinaryStreams() {}

bool IsTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) != 0;
}

bool ShowsStyles(std::FILE* stream) {
    const char* const kind = std::getenv("TERM");
    return IsTerminal(stream) && kind && *kind && std::strcmp(kind, "dumb") != 0;
}

std::size_t TerminalColumns(std::FILE* stream) {
    winsize size = {};
    return ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col ? size.ws_col : 80;
}

std::string ArgumentToUtf8(const std::string& argument) {
    return argument;
}

void UseCodeSetOfArguments() {
    InitMbutil();
    InitMbutilExt(mbUtf8);
}

std::string TextOfArgument(const std::string& text) {
    return text;
}

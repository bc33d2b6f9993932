#include "osutil/platform/file/streams.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "osutil/platform/posix/file/paths.h"

namespace genutil::platform {

// Child processes do not inherit the stream.
std::FILE* OpenStream(const char* path, const char* mode) {
    const SystemPath name(path);
    char closing[8];
    std::snprintf(closing, sizeof closing, "%se", mode);
    return name.Get() ? std::fopen(name.Get(), closing) : nullptr;
}

std::int64_t PlaceIn(std::FILE* stream) {
    return ftello(stream);
}

bool GoTo(std::FILE* stream, std::int64_t place) {
    return fseeko(stream, place, SEEK_SET) == 0;
}

std::int64_t ChangeTimeOf(std::FILE* stream) {
    struct stat status;
    return fstat(fileno(stream), &status) == 0 ? status.st_mtime : -1;
}

bool IsFileAt(std::FILE* stream, const char* path) {
    const SystemPath name(path);
    struct stat open, named;
    if (!name.Get() || fstat(fileno(stream), &open) != 0) return true;
    return stat(name.Get(), &named) == 0 && open.st_dev == named.st_dev &&
           open.st_ino == named.st_ino;
}

// The lock of a process, unlike that of an open file, is not shared by the child of a fork. On file
// systems without locks, processes do not take turns.
bool LockForRenaming(std::FILE* stream) {
    struct flock whole {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    fcntl(fileno(stream), F_SETLKW, &whole);
    return true;
}

bool RenameFile(const char* from, const char* to) {
    const SystemPath source(from), target(to);
    return source.Get() && target.Get() && std::rename(source.Get(), target.Get()) == 0;
}

bool IsOpenIn(std::FILE* stream, const char* path) {
    const SystemPath name(path);
    struct stat here, there;
    return name.Get() && fstat(fileno(stream), &here) == 0 && S_ISREG(here.st_mode) &&
           stat(name.Get(), &there) == 0 && here.st_dev == there.st_dev &&
           here.st_ino == there.st_ino;
}

}  // namespace genutil::platform

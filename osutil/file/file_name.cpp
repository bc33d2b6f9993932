// Names derived from paths, and unused names.
#include <cstring>
#include <initializer_list>

#include "genutil/ascii.h"
#include "osfile.h"
#include "osutil/file/path.h"
#include "osutil/platform/file/files.h"
#include "osutil/platform/file/network_drives.h"
#include "osutil/platform/file/temporary_directory.h"

namespace {

constexpr std::size_t kTemporaryPath = 260, kTemporaryQuery = 512;

// No code set has a dot within a character.
char* LastDot(char* path) {
    return path ? std::strrchr(path, '.') : nullptr;
}

}  // namespace

int OSGetTempDir(CGNString& result) {
    char path[kTemporaryQuery];
    const std::size_t length = genutil::platform::TemporaryDirectory(path, sizeof path);
    result.CopyNBytes(path, static_cast<unsigned>(length));
    return 1;
}

CGNString OSGetFileExtension(char* path) {
    const char* const dot = LastDot(path);
    return dot ? CGNString(dot + 1) : CGNString();
}

CGNString OSGetFileNoExtension(char* path) {
    char* const dot = LastDot(path);
    if (!dot) return CGNString();
    *dot = 0;
    return CGNString(path);
}

CGNString OSGetFileFromPath(CGNString const& path) {
    CGNString directory, file;
    path.SplitFilePath(directory, file);
    return file;
}

unsigned char OSGetReportTempFileName(char const* prefix, char const* qualifier,
                                      CGNString& result) {
    CGNString name;
    const bool named =
        name.sprintf("%s(%s)", prefix ? prefix : "", qualifier ? qualifier : "") >= 0;
    for (const char barred : {'\\', '/', ':', '*', '?', '"', '<', '>', '|', '.'})
        name.Replace(barred, '_');
    result.Empty();
    char path[kTemporaryPath];
    const std::size_t length = genutil::platform::TemporaryDirectory(path, sizeof path);
    if (length == 0 || !named) return 0;
    CGNString directory;
    directory.CopyNBytes(path, static_cast<unsigned>(length));
    if (!genutil::platform::Exists(directory) && OSCreateDirectory(directory) != 0) return 0;
    CGNString base;
    if (!genutil::JoinPath(base, directory, name)) return 0;
    base.Truncate(256);
    while (!base.IsEmpty() && !genutil::platform::NameFits(base))
        base.Truncate(base.GetLengthInChars() - 1);
    CGNString candidate(base);
    for (int number = 1; genutil::platform::Exists(candidate); ++number)
        if (candidate.sprintf("%s.%03d", static_cast<const char*>(base), number) < 0) return 0;
    result = candidate;
    return !result.IsEmpty();
}

namespace {

struct DriveSearch {
    char letter;
    CGNString remote;
    bool found;
};

void TakeDrive(void* context, const char* local, const char* remote) {
    auto* const search = static_cast<DriveSearch*>(context);
    // A lower-case letter in the path matches no drive, on which programs rely.
    if (!local || search->letter != genutil::AsciiUpper(*local)) return;
    search->remote = remote;
    search->found = true;
}

}  // namespace

unsigned char OSGetUniversalName(CGNString& result, CGNString& path) {
    const char first = static_cast<const char*>(path)[0];
    if (!genutil::IsAsciiLetter(first)) return 0;
    if (!path.CompareSingleByteAt(1, ':') && !path.CompareSingleByteAt(2, '\\')) return 0;
    DriveSearch search{first, {}, false};
    if (!genutil::platform::VisitConnectedDisks(TakeDrive, &search) || !search.found) return 0;
    CGNString rest;
    path.SubStr(rest, 2);
    result = search.remote;
    result += rest;
    return 1;
}

// Directories made and removed, and what is removed from them.
#include "genperf.h"
#include "osfile.h"
#include "osutil/file/path.h"
#include "osutil/platform/file/directories.h"
#include "osutil/platform/file/files.h"

using genutil::platform::Directory;
using genutil::platform::IsDots;
using Links = Directory::Links;

static_assert(int{osFileFailed} == int{genutil::platform::kFailed} &&
              int{osFileExists} == int{genutil::platform::kExists} &&
              int{osFileNotFound} == int{genutil::platform::kNotFound} &&
              int{osFileAccessDenied} == int{genutil::platform::kAccessDenied} &&
              int{osDirectoryNotEmpty} == int{genutil::platform::kNotEmpty});

namespace {

// What is no file stays, and keeps its directory.
void RemoveFilesIn(Directory&& directory) {
    while (directory.Next())
        if (!IsDots(directory.Name())) directory.RemoveEntryFile();
}

}  // namespace

int OSCreateDirectory(CGNString const& path) {
    return genutil::platform::MakeDirectory(path);
}

int OSRemoveDirectory(CGNString const& path) {
    return genutil::platform::RemoveEmptyDirectory(path);
}

int OSRemoveFile(CGNString const& path) {
    return genutil::platform::RemoveFile(path);
}

int OSRemoveDirectoryAndContents(CGNString const& path) {
    RemoveFilesIn(Directory(path, Links::kRefuse));
    return OSRemoveDirectory(path);
}

int OSDeleteDirectoryTree(CGNString const& path) {
    return path.IsEmpty() || genutil::platform::RemoveTree(path) ? 0 : 1;
}

// Programs know that "." and ".." are asked about. They go by path, where they are the directory
// and the one above it; the others by what the system knows them as, so that no other can go for
// one whose name does not convert.
int OSRemovePatternFromDirectory(CGNString const& path, unsigned char (*predicate)(CGNString&)) {
    Directory directory(path, Links::kFollow);
    while (directory.Next()) {
        CGNString name(directory.Name());
        if (!predicate || !predicate(name)) continue;
        if (IsDots(directory.Name())) {
            CGNString entry;
            if (genutil::JoinPath(entry, path, directory.Name()) &&
                OSRemoveDirectoryAndContents(entry) != 0)
                OSRemoveFile(entry);
            continue;
        }
        RemoveFilesIn(directory.EntryAsDirectory());
        if (directory.RemoveEntryDirectory() != 0) directory.RemoveEntryFile();
    }
    return 0;
}

int OSRemoveOldFilesFromDirectory(CGNString const& path, long seconds) {
    long now, micro;
    OSGetTime(now, micro);
    Directory directory(path, Links::kFollow);
    while (directory.Next()) {
        std::int64_t modified;
        if (!IsDots(directory.Name()) && directory.ModificationTime(&modified) &&
            now - modified > seconds)
            directory.RemoveEntryFile();
    }
    return 0;
}

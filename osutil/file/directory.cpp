// Creation and removal of directories and their content.
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

// Entries that are not files are kept, and keep the directory from being removed.
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

// Programs rely on the predicate being called for "." and "..". These are removed by path, as the
// directory and its parent. Other entries are removed by the name under which the system knows
// them, so that no other entry is removed instead of one whose name does not convert.
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

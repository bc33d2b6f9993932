// Changes of whole files: replacing, copying, moving, and making what is missing.
#include "osutil/platform/file/changes.h"

#include <cstdio>
#include <cstring>

#include "osfile.h"
#include "osutil/file/path.h"
#include "osutil/platform/file/directories.h"
#include "osutil/platform/file/files.h"
#include "osutil/platform/file/temporary_directory.h"

using genutil::JoinPath;
namespace platform = genutil::platform;

int OSReplaceFileContents(CGNString const& path, void const* bytes, size_t size) {
    if (!bytes && size != 0) return osFileFailed;
    return platform::ReplaceContents(path, static_cast<const char*>(bytes), size);
}

int OSCreateTempFile(CGNString const& directory, CGNString const& prefix, CGNString& path) {
    char temporary[512] = "";
    if (directory.IsEmpty()) platform::TemporaryDirectory(temporary, sizeof temporary);
    const CGNString folder(directory.IsEmpty() ? CGNString(temporary) : directory);
    path.Empty();
    if (folder.IsEmpty()) return osFileNotFound;
    for (int tries = 0; tries < 1000; ++tries) {
        char number[24];
        std::snprintf(number, sizeof number, "%llx", platform::UnusedNumber());
        CGNString name(prefix), made;
        name += number;
        if (name.GetLength() != prefix.GetLength() + std::strlen(number)) return osFileFailed;
        if (!JoinPath(made, folder, name)) return osFileFailed;
        const int result = platform::MakePrivateFile(made);
        if (result == osFileExists) continue;
        if (result == 0) path = made;
        if (result == 0 && path.IsEmpty()) platform::RemoveFile(made);
        return result == 0 && path.IsEmpty() ? int{osFileFailed} : result;
    }
    return osFileExists;
}

namespace {

int MakeOne(CGNString const& path) {
    const int result = platform::MakeDirectory(path);
    if (result != osFileExists && result != osFileAccessDenied) return result;
    using platform::Directory;
    return Directory(path, Directory::Links::kFollow).IsOpen() ? 0 : result;
}

}  // namespace

// Tries the whole path first, because mostly only its last part is missing.
int OSCreateDirectories(CGNString const& path) {
    const int result = MakeOne(path);
    if (result != osFileNotFound) return result;
    CGNString parent, name, whole(path);
    whole.SplitFilePath(parent, name);
    // A path that ends in a separator.
    if (name.IsEmpty() && !parent.IsEmpty() && parent.GetLength() < path.GetLength())
        return OSCreateDirectories(parent);
    if (parent.IsEmpty() || parent.GetLength() >= path.GetLength()) return result;
    const int above = OSCreateDirectories(parent);
    return above == 0 ? MakeOne(path) : above;
}

int OSCopyFile(CGNString const& from, CGNString const& to, osFileActionIfExists action) {
    if (action != osFailIfExists && action != osOverwriteIfExists) return osFileFailed;
    return platform::CopyWholeFile(from, to, action == osOverwriteIfExists);
}

int OSMoveFile(CGNString const& from, CGNString const& to, osFileActionIfExists action) {
    if (action != osFailIfExists && action != osOverwriteIfExists) return osFileFailed;
    return platform::MoveEntry(from, to, action == osOverwriteIfExists);
}

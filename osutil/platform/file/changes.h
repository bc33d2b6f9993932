// Platform layer: changes of whole files that other programs see at once or not at all.
#pragma once

#include <cstddef>

#include "osutil/platform/file/files.h"

namespace genutil::platform {

// Gives a file new contents, or makes it. Readers find the old or the new contents, unless no new
// file can take the place of the old one, which is then written in place. The file keeps its owner,
// rights and attributes. A link is followed.
FileCode ReplaceContents(const char* path, const char* bytes, std::size_t size);

// Makes a new, empty file that only the user can read. Returns kExists if the name is in use.
FileCode MakePrivateFile(const char* path);

// Copies a file with its permissions. The copy appears when it is complete. Links are followed.
// Anything but a file cannot be copied.
FileCode CopyWholeFile(const char* from, const char* to, bool overwrite);

// Gives a file, a link or, on the same file system, a directory another name.
FileCode MoveEntry(const char* from, const char* to, bool overwrite);

// Returns a number that differs from call to call and from process to process.
unsigned long long UnusedNumber();

}  // namespace genutil::platform

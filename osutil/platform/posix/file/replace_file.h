// Giving a file new contents. Readers find the old or the new ones, even if the writing process is
// killed, wherever a new file can take the place of the old one.
#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <span>
#include <string_view>

namespace genutil::platform {

using FileParts = std::span<const std::string_view>;  // contents, in pieces

enum class Replaced {
    kDone,
    kFailed,   // for lack of room, or after an error of the device
    kRefused,  // no new file can take the place of this one: OverwriteFile() may succeed
};

// Writes a new file beside the old one, flushes it and renames it. A file with several hard links
// is refused, and one whose owner, permissions or attributes a new file cannot have.
// @param folder is open.
// @param file the old file, which is open and locked by a FileLock.
// @param status the status of the old file.
Replaced ReplaceFile(int folder, const char* name, int file, const struct stat& status,
                     FileParts parts);

// Writes into an open file. Room is reserved first. If writing fails all the same, the old end is
// restored as far as possible.
// @param from the position from which on the contents change.
// @param oldEnd the old contents from there on.
bool OverwriteFile(int file, std::int64_t from, std::string_view oldEnd, FileParts newEnd);

}  // namespace genutil::platform

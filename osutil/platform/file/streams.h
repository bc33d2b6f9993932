// Platform layer: streams of the C runtime. Paths are in the current code set.
#pragma once

#include <cstdint>
#include <cstdio>

namespace genutil::platform {

// Waits until no other process has this lock on the file of a stream, and has it until the stream
// is closed. Returns false if the system cannot rename open files, and the lock is needless:
// renaming fails while another process has the file open.
bool LockForRenaming(std::FILE* stream);

// Opens a file as a stream of the C runtime, which closes it. Returns null if it cannot be opened.
// The mode is that of fopen, at most three letters.
std::FILE* OpenStream(const char* path, const char* mode);
// Returns the position in a stream of the C library, also beyond 2 GB, or -1 if it has none.
std::int64_t PlaceIn(std::FILE* stream);
bool GoTo(std::FILE* stream, std::int64_t place);
// Returns the time of the last change of an open file, in seconds since 1970, or -1.
std::int64_t ChangeTimeOf(std::FILE* stream);
// Returns false if the path is known to lead to another file than the open one, or to none.
bool IsFileAt(std::FILE* stream, const char* path);
// Gives a file another name in the same directory, in place of a file that has it. Returns true on
// success. A file that a program has open cannot be renamed on some systems.
bool RenameFile(const char* from, const char* to);
// Returns true if a path names the file, not a device or a pipe, that a stream reads.
bool IsOpenIn(std::FILE* stream, const char* path);

}  // namespace genutil::platform

// An output file that appears complete or not at all.
#pragma once

#include <string>

// Returns true if the path may be written: it must not exist unless `force` is true. Returns false
// after a message.
bool MayWrite(const std::string& path, bool force);

// Writes to a new file in the same directory and then renames it to the path. Until then, and after
// any failure, an existing file is unchanged. Devices and pipes are written to directly. Returns
// false after a message.
bool WriteFile(const std::string& path, const std::string& text);

// Replaces the contents of an existing file, which remains the same file: its owner, rights and
// links are kept. The new contents are written to a file beside it first. If they cannot be written
// to the file itself, a message names the file that has them. Returns false after a message.
bool RewriteFile(const std::string& path, const std::string& text);

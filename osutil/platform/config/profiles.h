// Platform layer: profile (ini) files, whose lines are those of osutil/config/ini_text.h. Paths and
// names are in the current code set.
#pragma once

#include <cstddef>

namespace genutil::platform {

// A null file is the system's default one. A file named without a directory is in the directory in
// which the system keeps such files.

// Stores the value of a key as a terminated text of at most size - 1 bytes, or the fallback without
// trailing blanks if there is no such key. Returns its length. A longer text is truncated, which
// may split a character.
std::size_t ReadProfileValue(const char* file, const char* section, const char* key,
                             const char* fallback, char* out, std::size_t size);

// Stores a value that the file can hold (ini_edit.h). A null value removes the key, and a null key
// removes the section. Returns false and leaves the file unchanged on failure.
bool WriteProfileValue(const char* file, const char* section, const char* key, const char* value);

}  // namespace genutil::platform

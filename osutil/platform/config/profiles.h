// What the library asks of an operating system about profile (ini) files, whose lines are those of
// osutil/config/ini_text.h. Paths and names are in the current code set.
#pragma once

#include <cstddef>

namespace genutil::platform {

// A null file is the system's default one, and one that is named without a folder lies where the
// system keeps such files.

// Stores the value of a key, or the fall-back without the blanks at its end where there is none, as
// a terminated text of at most size - 1 bytes. Returns its length. What is longer is cut, perhaps
// within a character.
std::size_t ReadProfileValue(const char* file, const char* section, const char* key,
                             const char* fallback, char* out, std::size_t size);

// Stores a value that the file can hold (ini_edit.h); a null value removes the key, and a null key
// the section. False when it is not done, with the file as it was.
bool WriteProfileValue(const char* file, const char* section, const char* key, const char* value);

}  // namespace genutil::platform

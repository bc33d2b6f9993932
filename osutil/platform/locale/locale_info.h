// What the library asks of an operating system about a locale by the numbers of Windows' own query.
#pragma once

namespace genutil::platform {

// Stores a fact as a terminated text in the locale's ANSI code page, or as 32 bits when the type
// asks for that. Returns the bytes stored, or with a size of 0 those needed; 0 on failure.
int AskLocale(unsigned long locale, unsigned long type, char* out, int size);

}  // namespace genutil::platform

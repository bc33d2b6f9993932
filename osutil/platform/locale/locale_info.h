// Platform layer: locale facts by the type numbers of the Windows query.
#pragma once

namespace genutil::platform {

// Stores a fact as a terminated text in the locale's ANSI code page, or as 32 bits if the type
// requests that. Returns the number of bytes stored, or with a size of 0 the number needed. Returns
// 0 on failure.
int AskLocale(unsigned long locale, unsigned long type, char* out, int size);

}  // namespace genutil::platform

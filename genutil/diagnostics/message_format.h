// Checks of formats from resource libraries, which may differ from those for which a program was
// written.
#pragma once

#include <cstring>

namespace genutil {

// Returns false for a printf format that stores into memory ("%n"), or that takes a width or a
// precision from its arguments ("%*d"), which no message uses.
inline bool IsMessageFormat(const char* format) {
    while (const char* mark = std::strchr(format, '%')) {
        const char* const conversion = mark + 1 + std::strspn(mark + 1, "-+ #0123456789.'hlLqjzt");
        if (*conversion == 'n' || *conversion == '*' || *conversion == 0) return false;
        format = conversion + 1;
    }
    return true;
}

}  // namespace genutil

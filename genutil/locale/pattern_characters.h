// The characters of a format pattern in the code set of its locale.
#pragma once

#include "mbutil.h"

namespace genutil {

// Calls see(at, length, quoted) for each character of a pattern. Apostrophes are reported as
// quoted.
template <class See>
void ForEachInPattern(const char* pattern, int codeSet, See see) {
    bool quoted = false;
    for (const char* p = pattern; *p;) {
        const int length = mbbytesinchartype(reinterpret_cast<const unsigned char*>(p), codeSet);
        if (*p == '\'') {
            see(p, length, true);
            quoted = !quoted;
        } else {
            see(p, length, quoted);
        }
        p += length;
    }
}

// Returns true if a pattern contains a token outside apostrophes.
inline bool PatternHas(const char* pattern, int codeSet, char token) {
    bool has = false;
    ForEachInPattern(pattern, codeSet, [&](const char* at, int, bool quoted) {
        has = has || (!quoted && *at == token);
    });
    return has;
}

}  // namespace genutil

// The characters of a format picture, in the code set of its locale.
#pragma once

#include "mbutil.h"

namespace genutil {

// Calls see(at, length, quoted) for each character of a picture; apostrophes are seen as quoted.
template <class See>
void ForEachInPicture(const char* picture, int codeSet, See see) {
    bool quoted = false;
    for (const char* p = picture; *p;) {
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

// Whether a picture has a token, outside apostrophes.
inline bool PictureHas(const char* picture, int codeSet, char token) {
    bool has = false;
    ForEachInPicture(picture, codeSet, [&](const char* at, int, bool quoted) {
        has = has || (!quoted && *at == token);
    });
    return has;
}

}  // namespace genutil

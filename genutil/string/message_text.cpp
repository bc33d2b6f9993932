#include "genutil/string/message_text.h"

#include <cstring>

#include "genutil/string/storage.h"

namespace genutil {

namespace {

// Returns the placeholder number at p, from 1, and stores the number of its digits. Returns 0 if
// there is none.
unsigned ReadPlace(const char* p, unsigned* length) {
    *length = 1;
    if (p[0] < '1' || p[0] > '9') return 0;
    if (p[0] != '1' || p[1] != '0') return static_cast<unsigned>(p[0] - '0');
    *length = 2;
    return 10;
}

}  // namespace

// Searches bytes, because no "%" is part of a longer character.
CGNString Substitute(const CGNString& message, const char* const (&texts)[kMostSubstitutions]) {
    CGNString out;
    out.AllocateBuffer(message.GetLength() + 64, 1);
    const char* p = message;
    while (const char* mark = std::strchr(p, '%')) {
        StringStorage::Store(out, p, out.GetLength(), static_cast<std::size_t>(mark - p));
        unsigned length;
        const unsigned place = ReadPlace(mark + 1, &length);
        if (place != 0)
            out += texts[place - 1];
        else
            out += '%';
        p = mark + 1;
        if (place != 0 || *p == '%') p += length;
    }
    out += p;
    return out;
}

}  // namespace genutil

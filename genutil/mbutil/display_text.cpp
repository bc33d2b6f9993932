#include "genutil/mbutil/display_text.h"

#include <cstring>

#include "genutil/mbutil/best_fit.h"
#include "mbutil.h"

namespace genutil {

namespace {

// Replaces two-byte letters that the current code set lacks with plain ones. The text becomes
// shorter.
void DropAccents(char* utf8) {
    char* to = utf8;
    for (const char* p = utf8; *p;) {
        const unsigned lead = static_cast<unsigned char>(p[0]);
        const unsigned letter = (lead & 0x1F) << 6 | (static_cast<unsigned char>(p[1]) & 0x3F);
        const bool isPair = lead >= 0xC2 && lead <= 0xDF && (p[1] & 0xC0) == 0x80;
        const char plain = isPair ? PlainLetter(static_cast<std::uint16_t>(letter)) : '\0';
        if (!plain) {
            *to++ = *p++;
            continue;
        }
        char there[16];
        mbConversion conversion = {};
        mbConvert(p, 2, mbUtf8, there, sizeof there, mbGetLocaleCodeSet(), &conversion);
        if (conversion.lost) {
            *to++ = plain;
        } else {
            *to++ = p[0];
            *to++ = p[1];
        }
        p += 2;
    }
    *to = 0;
}

}  // namespace

int WriteDisplayText(char* out, int size, const char* utf8) {
    if (!out || size <= 0) return 0;
    char text[160];
    const std::size_t length = std::strlen(utf8);
    const std::size_t n = length < sizeof text ? length : sizeof text - 1;
    std::memcpy(text, utf8, n);
    text[n] = 0;
    mbIsMultiByte();  // determines the current code set
    DropAccents(text);
    mbConvert(text, std::strlen(text), mbUtf8, out, static_cast<std::size_t>(size),
              mbGetLocaleCodeSet(), nullptr);
    return *out != 0;
}

}  // namespace genutil

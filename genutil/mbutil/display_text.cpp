#include "genutil/mbutil/display_text.h"

#include <cstring>

#include "mbutil.h"

namespace genutil {

namespace {

// The letters from U+00C0 to U+017F without what stands on or under them.
constexpr char kBaseLetters[] =
    "AAAAAAACEEEEIIIIDNOOOOOxOUUUUYTsaaaaaaaceeeeiiiidnooooo/ouuuuyty"
    "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIiIiJjKkkLlLlLlL"
    "lLlNnNnNnnNnOoOoOoOoRrRrRrSsSsSsSsTtTtTtUuUuUuUuUuUuWwYyYZzZzZzs";
static_assert(sizeof kBaseLetters == 0x180 - 0xC0 + 1);

// Replaces the two-byte letters of that range that the current code set does not have. The text
// becomes shorter.
void DropAccents(char* utf8) {
    char* to = utf8;
    for (const char* p = utf8; *p;) {
        const unsigned lead = static_cast<unsigned char>(p[0]);
        const unsigned letter = (lead & 0x1F) << 6 | (static_cast<unsigned char>(p[1]) & 0x3F);
        if (lead < 0xC3 || lead > 0xC5) {
            *to++ = *p++;
            continue;
        }
        char there[16];
        mbConversion conversion = {};
        mbConvert(p, 2, mbUtf8, there, sizeof there, mbGetLocaleCodeSet(), &conversion);
        if (conversion.lost) {
            *to++ = kBaseLetters[letter - 0xC0];
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
    mbIsMultiByte();  // settles the current code set
    DropAccents(text);
    mbConvert(text, std::strlen(text), mbUtf8, out, static_cast<std::size_t>(size),
              mbGetLocaleCodeSet(), nullptr);
    return *out != 0;
}

}  // namespace genutil

// Character classes of Windows.
#include "osutil/platform/text/characters.h"

#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

namespace {

struct Pair {
    WORD type;
    CharacterClass own;
};
constexpr Pair kPairs[] = {
    {C1_ALPHA, kAlpha}, {C1_DIGIT, kDigit}, {C1_LOWER, kLower},     {C1_UPPER, kUpper},
    {C1_PUNCT, kPunct}, {C1_SPACE, kSpace}, {C1_XDIGIT, kHexDigit},
};

constexpr WORD kDefined = 0x0200;  // C1_DEFINED, which older headers lack

bool IsPrintable(unsigned c, WORD type) {
    const bool surrogate = c >= 0xD800 && c <= 0xDFFF;
    return (type & kDefined) && !(type & C1_CNTRL) && !surrogate;
}

}  // namespace

void ReadCharacterClasses(unsigned page, std::uint8_t* classes) {
    WCHAR characters[256];
    WORD types[256] = {};
    for (unsigned i = 0; i < 256; ++i) characters[i] = static_cast<WCHAR>(page << 8 | i);
    GetStringTypeW(CT_CTYPE1, characters, 256, types);
    for (unsigned i = 0; i < 256; ++i) {
        unsigned own = IsPrintable(page << 8 | i, types[i]) ? kPrint : 0;
        for (const Pair& pair : kPairs)
            if (types[i] & pair.type) own |= pair.own;
        classes[i] = static_cast<std::uint8_t>(own);
    }
}

}  // namespace genutil::platform

// Character classes derived from ICU's general categories, as Windows defines them.
#include "osutil/platform/text/characters.h"

#include <unicode/uchar.h>

namespace genutil::platform {

namespace {

constexpr std::uint32_t kSymbols = U_GC_SM_MASK | U_GC_SC_MASK | U_GC_SK_MASK | U_GC_SO_MASK;
constexpr std::uint32_t kUnprintable = U_GC_CN_MASK | U_GC_CC_MASK | U_GC_CF_MASK | U_GC_CS_MASK;

bool IsSpacingControl(UChar32 c) {
    return (c >= 0x09 && c <= 0x0D) || c == 0x85;
}

// Returns true for an ASCII or full-width digit, or a hexadecimal letter.
bool IsHexDigit(UChar32 c) {
    const UChar32 ascii = c >= 0xFF01 && c <= 0xFF5E ? c - 0xFF01 + 0x21 : c;
    return (ascii >= '0' && ascii <= '9') || (ascii >= 'A' && ascii <= 'F') ||
           (ascii >= 'a' && ascii <= 'f');
}

// Superscript letters and ordinal signs, which are small letters without a capital.
bool IsSmallModifier(UChar32 c) {
    return c == 0xAA || c == 0xBA || c == 0x2071 || c == 0x207F;
}

// Among the first 256 characters, every character that is neither a letter nor a control character
// is punctuation, and so are the ordinal signs, the micro sign and the soft hyphen.
bool IsPunct(UChar32 c, std::uint32_t category) {
    if (category & U_GC_P_MASK) return true;
    if (c > 0xFF) return false;
    return (category & (kSymbols | U_GC_NO_MASK | U_GC_CF_MASK)) || c == 0xAA || c == 0xB5 ||
           c == 0xBA;
}

std::uint8_t ClassesOf(UChar32 c) {
    const std::uint32_t category = U_GET_GC_MASK(c);
    unsigned classes = 0;
    if (category & (U_GC_L_MASK | U_GC_NL_MASK)) classes |= kAlpha;
    if (category & (U_GC_LU_MASK | U_GC_LT_MASK)) classes |= kUpper;
    if ((category & (U_GC_LL_MASK | U_GC_LT_MASK)) || IsSmallModifier(c)) classes |= kLower;
    // The superscripts among the first 256 characters are digits; later ones are not.
    if (category & U_GC_ND_MASK || c == 0xB2 || c == 0xB3 || c == 0xB9) classes |= kDigit;
    if (category & U_GC_Z_MASK || IsSpacingControl(c)) classes |= kSpace;
    if (IsHexDigit(c)) classes |= kHexDigit;
    if (IsPunct(c, category)) classes |= kPunct;
    if (!(category & kUnprintable)) classes |= kPrint;
    return static_cast<std::uint8_t>(classes);
}

}  // namespace

void ReadCharacterClasses(unsigned page, std::uint8_t* classes) {
    for (unsigned i = 0; i < 256; ++i) classes[i] = ClassesOf(static_cast<UChar32>(page << 8 | i));
}

}  // namespace genutil::platform

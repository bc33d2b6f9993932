// The user's locale from the environment, and letter case and collation from ICU.
#include "osutil/platform/locale/locales.h"

#include <unicode/uchar.h>
#include <unicode/ucol.h>

#include <cstdlib>
#include <cstring>

#include "osutil/platform/posix/locale/user_collator.h"

namespace genutil::platform {

namespace {

// Returns the first variable that is set and not empty, in the order of POSIX, or "" if there is
// none.
const char* LocaleFromEnvironment(const char* category) {
    for (const char* variable : {"LC_ALL", category, "LANG"}) {
        const char* value = std::getenv(variable);
        if (value && *value) return value;
    }
    return "";
}

// Copies "language_COUNTRY" of "language_COUNTRY.charset@modifier". The result is empty for the C
// locale.
void CopyPlainName(char* out, std::size_t size, const char* locale) {
    const std::size_t length = std::strcspn(locale, ".@");
    const bool isC =
        (length == 1 && locale[0] == 'C') || (length == 5 && std::memcmp(locale, "POSIX", 5) == 0);
    out[0] = 0;
    if (isC || length >= size) return;
    std::memcpy(out, locale, length);
    out[length] = 0;
}

UCollator* OpenCollator() {
    char name[32];
    CopyPlainName(name, sizeof name, LocaleFromEnvironment("LC_COLLATE"));
    UErrorCode error = U_ZERO_ERROR;
    return ucol_open(*name ? name : "root", &error);
}

static_assert(sizeof(UChar) == sizeof(std::uint16_t));
const UChar* AsUnits(const std::uint16_t* text) {
    return reinterpret_cast<const UChar*>(text);
}

// Maps case as Windows does: only if the reverse mapping returns to the character, so neither the
// micro sign nor the dotless i has a capital, and only within 16 bits.
std::uint16_t MapCase(std::uint16_t character, UChar32 (*map)(UChar32), UChar32 (*back)(UChar32)) {
    const UChar32 mapped = map(character);
    const bool both = mapped >= 0 && mapped <= 0xFFFF && back(mapped) == character;
    return both ? static_cast<std::uint16_t>(mapped) : character;
}

}  // namespace

const UCollator* UserCollator() {
    static const UCollator* const collator = OpenCollator();
    return collator;
}

const UCollator* OpenUserCollator(bool digitsAsNumbers) {
    UCollator* const collator = OpenCollator();
    UErrorCode error = U_ZERO_ERROR;
    if (!collator) return nullptr;
    ucol_setAttribute(collator, UCOL_NORMALIZATION_MODE, UCOL_ON, &error);
    if (digitsAsNumbers) ucol_setAttribute(collator, UCOL_NUMERIC_COLLATION, UCOL_ON, &error);
    return collator;
}

UserLocale GetUserLocale() {
    UserLocale locale{};
    CopyPlainName(locale.name, sizeof locale.name, LocaleFromEnvironment("LC_CTYPE"));
    return locale;
}

UserLocale GetUserDefaultLocale() {
    return GetUserLocale();
}

unsigned AnsiCodePageOfLanguage(std::uint16_t) {
    return 0;
}

bool HasTimeZoneRegistry() {
    return false;
}

std::uint16_t ToUpper(std::uint16_t character) {
    return MapCase(character, u_toupper, u_tolower);
}
std::uint16_t ToLower(std::uint16_t character) {
    return MapCase(character, u_tolower, u_toupper);
}

bool HasCollation() {
    static const bool has = [] {
        char name[32];
        CopyPlainName(name, sizeof name, LocaleFromEnvironment("LC_COLLATE"));
        return *name != 0;
    }();
    return has;
}

int Collate(const std::uint16_t* a, std::size_t aLength, const std::uint16_t* b,
            std::size_t bLength) {
    if (const UCollator* collator = UserCollator())
        return ucol_strcoll(collator, AsUnits(a), static_cast<int32_t>(aLength), AsUnits(b),
                            static_cast<int32_t>(bLength));
    for (; aLength && bLength; ++a, ++b, --aLength, --bLength)
        if (*a != *b) return *a < *b ? -1 : 1;
    return aLength ? 1 : bLength ? -1 : 0;
}

}  // namespace genutil::platform

// The user's locale from Windows.
#include "osutil/platform/locale/locales.h"

#include "osutil/platform/win32/scoped_handle.h"

namespace genutil::platform {

namespace {

// CharUpperW and CharLowerW take a pointer whose high word is zero to denote the character itself,
// which no compiler can check. LCMapStringW does the same with a plain text.
std::uint16_t MapCase(std::uint16_t character, DWORD flag) {
    const WCHAR in = static_cast<WCHAR>(character);
    WCHAR out = in;
    return LCMapStringW(LOCALE_INVARIANT, flag, &in, 1, &out, 1) == 1 ? out : character;
}

static_assert(sizeof(WCHAR) == sizeof(std::uint16_t));
const WCHAR* AsWide(const std::uint16_t* text) {
    return reinterpret_cast<const WCHAR*>(text);
}

}  // namespace

// A thread with a locale of its own uses that one. A thread with the system's locale uses the
// user's, which the user has chosen and which may differ from the system's default.
UserLocale GetUserLocale() {
    LCID locale = GetThreadLocale();
    if (locale == GetSystemDefaultLCID()) locale = GetUserDefaultLCID();
    return {LANGIDFROMLCID(locale), GetACP(), ""};
}

UserLocale GetUserDefaultLocale() {
    return {GetUserDefaultLangID(), GetACP(), ""};
}

unsigned AnsiCodePageOfLanguage(std::uint16_t language) {
    char digits[8] = {};
    if (GetLocaleInfoA(MAKELCID(language, SORT_DEFAULT), LOCALE_IDEFAULTANSICODEPAGE, digits,
                       sizeof digits) == 0)
        return 0;
    unsigned number = 0;
    for (const char* p = digits; *p >= '0' && *p <= '9'; ++p)
        number = number * 10 + static_cast<unsigned>(*p - '0');
    return number;
}

bool HasTimeZoneRegistry() {
    const ScopedKey key(HKEY_LOCAL_MACHINE,
                        "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Time Zones",
                        KEY_QUERY_VALUE);
    return key.Get() != nullptr;
}

std::uint16_t ToUpper(std::uint16_t character) {
    return MapCase(character, LCMAP_UPPERCASE);
}
std::uint16_t ToLower(std::uint16_t character) {
    return MapCase(character, LCMAP_LOWERCASE);
}

bool HasCollation() {
    return true;
}

int Collate(const std::uint16_t* a, std::size_t aLength, const std::uint16_t* b,
            std::size_t bLength) {
    const int result = CompareStringW(LOCALE_USER_DEFAULT, 0, AsWide(a), static_cast<int>(aLength),
                                      AsWide(b), static_cast<int>(bLength));
    return result == 0 ? 0 : result - CSTR_EQUAL;
}

}  // namespace genutil::platform

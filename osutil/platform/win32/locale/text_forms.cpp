// Normal forms and order of texts, through the Windows API.
#include "osutil/platform/locale/text_forms.h"

#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

namespace {

static_assert(sizeof(WCHAR) == sizeof(std::uint16_t));
const WCHAR* AsWide(const std::uint16_t* text) {
    return reinterpret_cast<const WCHAR*>(text);
}

std::uint16_t MapCase(std::uint16_t character, DWORD flag) {
    const WCHAR in = static_cast<WCHAR>(character);
    WCHAR out = in;
    return LCMapStringW(LOCALE_INVARIANT, flag, &in, 1, &out, 1) == 1 ? out : character;
}

// Not every version of Windows accepts the flag for digits. If it is refused, callers try again
// with FlagsOf(options & ~kDigitsAsNumbers).
DWORD FlagsOf(unsigned options) {
    constexpr DWORD kSortDigitsAsNumbers = 8;
    return (options & kIgnoreCase ? DWORD{NORM_IGNORECASE} : 0) |
           (options & kIgnoreWidth ? DWORD{NORM_IGNOREWIDTH} : 0) |
           (options & kIgnoreKana ? DWORD{NORM_IGNOREKANATYPE} : 0) |
           (options & kDigitsAsNumbers ? kSortDigitsAsNumbers : 0);
}

}  // namespace

// Windows maps case only where it maps there and back, so letters with several forms are listed.
std::uint16_t FoldCase(std::uint16_t character) {
    static constexpr std::uint16_t kForms[][2] = {
        {0x00B5, 0x03BC}, {0x017F, 's'},    {0x03C2, 0x03C3}, {0x03D0, 0x03B2}, {0x03D1, 0x03B8},
        {0x03D5, 0x03C6}, {0x03D6, 0x03C0}, {0x03F0, 0x03BA}, {0x03F1, 0x03C1}, {0x03F5, 0x03B5},
        {0x1E9B, 0x1E61}, {0x1FBE, 0x03B9}, {0x2126, 0x03C9}, {0x212A, 'k'},    {0x212B, 0x00E5}};
    for (const auto& [form, folded] : kForms)
        if (form == character) return folded;
    return MapCase(character, LCMAP_LOWERCASE);
}

std::int64_t Normalize(NormalForm form, const std::uint16_t* text, std::size_t length,
                       std::uint16_t* out, std::size_t room) {
    static constexpr NORM_FORM kForms[] = {NormalizationC, NormalizationD, NormalizationKC,
                                           NormalizationKD};
    if (length == 0) return 0;
    const NORM_FORM windowsForm = kForms[static_cast<unsigned>(form)];
    const int size = static_cast<int>(length);
    // Without a buffer the returned length is an estimate, so a buffer is passed even to find the
    // length.
    int written = NormalizeString(windowsForm, AsWide(text), size, reinterpret_cast<WCHAR*>(out),
                                  static_cast<int>(room));
    if (written > 0) return written;
    if (GetLastError() != ERROR_INSUFFICIENT_BUFFER) return -1;
    written = -written;
    const auto more = static_cast<std::int64_t>(room) * 2 + 16;
    return written > static_cast<std::int64_t>(room) ? written : more;
}

int CompareTexts(const std::uint16_t* a, std::size_t aLength, const std::uint16_t* b,
                 std::size_t bLength, unsigned options) {
    const auto compare = [&](unsigned with) {
        return CompareStringW(LOCALE_USER_DEFAULT, FlagsOf(with), AsWide(a),
                              static_cast<int>(aLength), AsWide(b), static_cast<int>(bLength));
    };
    int result = compare(options);
    if (result == 0) result = compare(options & ~unsigned{kDigitsAsNumbers});
    return result == 0 ? 0 : result - CSTR_EQUAL;
}

std::int64_t SortKey(const std::uint16_t* text, std::size_t length, unsigned options, char* out,
                     std::size_t room) {
    // An empty text is equal to one of ignorable characters, so it needs a key too. The system
    // makes one only for a text without a length.
    const WCHAR* const characters = length == 0 ? L"" : AsWide(text);
    const int count = length == 0 ? -1 : static_cast<int>(length);
    const auto map = [&](unsigned with, char* key, std::size_t size) {
        return LCMapStringW(LOCALE_USER_DEFAULT, LCMAP_SORTKEY | FlagsOf(with), characters, count,
                            reinterpret_cast<WCHAR*>(key), static_cast<int>(size));
    };
    unsigned with = options;
    int needed = map(with, nullptr, 0);
    if (needed == 0) needed = map(with &= ~unsigned{kDigitsAsNumbers}, nullptr, 0);
    if (needed == 0) return -1;
    if (static_cast<std::size_t>(needed) <= room) map(with, out, room);
    return needed - 1;  // excluding the terminator, for which there must be room
}

}  // namespace genutil::platform

// The locale query of Windows, answered from the library's locale facts.
#include "osutil/platform/locale/locale_info.h"

#include <cstdio>
#include <cstring>

#include "genutil/locale/locale_facts.h"
#include "genutil/mbutil/code_set.h"

namespace genutil::platform {

namespace {

constexpr unsigned long kUserCodePage = 0x40000000, kAsNumber = 0x20000000,
                        kWithoutOverride = 0x80000000;
constexpr unsigned long kLanguageNumber = 0x01;

struct TextItem {
    std::uint16_t first, count;  // first type and number of consecutive types
    LocaleText text;
};
constexpr TextItem kTexts[] = {
    {0x03, 1, kLanguageAbbreviation},
    {0x04, 1, kNativeLanguage},
    {0x08, 1, kNativeCountry},
    {0x0E, 1, kDecimalSymbol},
    {0x0F, 1, kGroupSeparator},
    {0x10, 1, kGrouping},
    {0x14, 1, kCurrencySymbol},
    {0x15, 1, kCurrencyCode},
    {0x1D, 1, kDateSeparator},
    {0x1E, 1, kTimeSeparator},
    {0x1F, 1, kShortDate},
    {0x20, 1, kLongDate},
    {0x28, 1, kAm},
    {0x29, 1, kPm},
    {0x2A, 7, kDayName},
    {0x31, 7, kDayAbbreviation},
    {0x38, 12, kMonthName},
    {0x44, 12, kMonthAbbreviation},
    {0x51, 1, kNegativeSign},
    {0x59, 1, kIso639},
    {0x5A, 1, kIso3166},
    {0x1001, 1, kEnglishLanguage},
    {0x1002, 1, kEnglishCountry},
    {0x1003, 1, kTimeFormat},
    {0x100E, 1, static_cast<LocaleText>(kMonthName + 12)},
    {0x100F, 1, static_cast<LocaleText>(kMonthAbbreviation + 12)},
};

struct NumberItem {
    std::uint16_t type;
    LocaleNumber number;
};
constexpr NumberItem kNumbers[] = {
    {0x11, kFractionDigits},   {0x12, kLeadingZero},       {0x19, kCurrencyDigits},
    {0x21, kShortDateOrder},   {0x22, kLongDateOrder},     {0x23, kTime24},
    {0x24, kCentury},          {0x25, kHourLeadingZero},   {0x26, kDayLeadingZero},
    {0x27, kMonthLeadingZero}, {0x1005, kTimeMarkerFirst}, {0x1009, kCalendar},
    {0x100C, kFirstDayOfWeek}, {0x1010, kNegativeFormat},
};

const char* FindText(const LocaleFacts& facts, unsigned long type) {
    for (const TextItem& item : kTexts)
        if (type >= item.first && type < item.first + item.count)
            return facts.text[item.text + (type - item.first)];
    return nullptr;
}

// Returns -1 if the type is not a number or is unknown.
long FindNumber(const LocaleFacts& facts, unsigned long type) {
    if (type == kLanguageNumber) return static_cast<long>(facts.language);
    for (const NumberItem& item : kNumbers)
        if (type == item.type) return facts.number[item.number];
    return -1;
}

int Store(const void* bytes, std::size_t length, char* out, int size) {
    if (size == 0) return static_cast<int>(length);
    if (!out || size < 0 || static_cast<std::size_t>(size) < length) return 0;
    std::memcpy(out, bytes, length);
    return static_cast<int>(length);
}

}  // namespace

int AskLocale(unsigned long locale, unsigned long type, char* out, int size) {
    const std::uint32_t language = LanguageOfLocaleId(static_cast<std::uint32_t>(locale));
    const int codeSet = type & kUserCodePage ? UserAnsiCodeSet() : CodeSetOfLocaleTexts(language);
    const LocaleFacts* facts = FindLocaleFacts(language, codeSet);
    if (!facts) return 0;
    const bool asNumber = type & kAsNumber;
    type &= 0xFFFFFFFF & ~(kUserCodePage | kAsNumber | kWithoutOverride);
    const long number = FindNumber(*facts, type);
    if (asNumber) {
        const auto bits = static_cast<std::uint32_t>(number);
        return number < 0 ? 0 : Store(&bits, sizeof bits, out, size);
    }
    char digits[16];
    const char* text = FindText(*facts, type);
    if (number >= 0) {
        std::snprintf(digits, sizeof digits, type == kLanguageNumber ? "%04lx" : "%ld", number);
        text = digits;
    }
    return text ? Store(text, std::strlen(text) + 1, out, size) : 0;
}

}  // namespace genutil::platform

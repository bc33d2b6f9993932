// Facts of the platform about the locales in the library's table, in their code sets.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <string>

#include "genutil/locale/best_fit_text.h"
#include "genutil/locale/locale_facts.h"
#include "genutil/mbutil/code_set.h"
#include "osutil/platform/locale/icu_pattern.h"
#include "tests/support/allocation_gate.h"
#include "tests/support/reported_failures.h"
#include "tests/support/worker.h"

using namespace genutil;

namespace {

template <class See>
void ForEachLocale(See see) {
    for (const LocaleRow* row = kLocaleTable; row->language; ++row) {
        if ((row->language & 0x3FF) == 0) continue;  // the user's and the system's
        SCOPED_TRACE(row->name);
        SCOPED_TRACE(row->language);
        see(*row);
    }
}

// The users of the tests have changed no setting, so the formats and numbers belong together.
TEST(LocaleFacts, PlatformFactsAreCompleteAndConsistent) {
    const auto record = std::make_unique<platform::LocaleRecord>();
    ForEachLocale([&](const LocaleRow& row) {
        ASSERT_TRUE(platform::ReadLocaleFacts(row.language, row.name, record.get()));
        EXPECT_EQ(record->known, (1ull << kLocaleTexts) - 1);
        const std::int32_t* number = record->number;
        for (const std::int32_t value : record->number) EXPECT_GE(value, 0);
        const std::uint16_t* date = record->text[kShortDate];
        const std::uint16_t* time = record->text[kTimeFormat];
        EXPECT_EQ(number[kShortDateOrder], platform::OrderOfPattern(date));
        EXPECT_EQ(number[kLongDateOrder], platform::OrderOfPattern(record->text[kLongDate]));
        EXPECT_EQ(number[kDayLeadingZero], platform::RunInPattern(date, 'd', 2) == 2);
        EXPECT_EQ(number[kMonthLeadingZero], platform::RunInPattern(date, 'M', 2) == 2);
        EXPECT_EQ(number[kTime24], platform::RunInPattern(time, 'H', 2) > 0);
        EXPECT_EQ(number[kTimeMarkerFirst], platform::MarkerIsFirst(time));
        EXPECT_EQ(platform::RunInPattern(date, 'y', 9), 4);
        EXPECT_EQ(number[kCentury], 1);
        EXPECT_EQ(platform::RunInPattern(record->text[kLongDate], 'y', 9), 4);
        EXPECT_EQ(platform::RunInPattern(time, 'm', 9), 2);
        EXPECT_EQ(platform::RunInPattern(time, 't', 9) == 2, number[kTime24] == 0);
        EXPECT_EQ(record->text[kMonthName + 12][0], 0);
    });
    EXPECT_FALSE(platform::ReadLocaleFacts(0x7777, nullptr, record.get()));
    constexpr std::int32_t kMonday = 0, kSunday = 6;
    ASSERT_TRUE(platform::ReadLocaleFacts(0x0407, "de_DE", record.get()));
    EXPECT_EQ(record->number[kFirstDayOfWeek], kMonday);
    ASSERT_TRUE(platform::ReadLocaleFacts(0x0409, "en_US", record.get()));
    EXPECT_EQ(record->number[kFirstDayOfWeek], kSunday);
}

std::size_t Lost(const std::string& text, int codeSet) {
    mbConversion conversion = {};
    char* out = nullptr;
    if (!mbConvertAlloc(text.data(), text.size(), codeSet, &out, mbUtf8, &conversion)) return 999;
    std::free(out);
    return conversion.lost;
}

TEST(LocaleFacts, TextsAreInTheCodeSetOfTheLocale) {
    ForEachLocale([&](const LocaleRow& row) {
        const LocaleFacts* facts = FindLocaleFacts(row.language, row.codeSet);
        ASSERT_NE(facts, nullptr);
        EXPECT_EQ(facts->codeSet, row.codeSet);
        EXPECT_NE(facts->languageClass, clcNoLanguage);
        for (int i = 0; i < kLocaleTexts; ++i) {
            ASSERT_NE(facts->text[i], nullptr) << i;
            const bool mayBeEmpty =
                i == kMonthName + 12 || i == kMonthAbbreviation + 12 || i == kAm || i == kPm;
            EXPECT_TRUE(mayBeEmpty || *facts->text[i]) << i;
            EXPECT_EQ(std::strchr(facts->text[i], '?'), nullptr) << i;
            EXPECT_EQ(Lost(facts->text[i], row.codeSet), 0u) << i;
        }
        const std::set<std::string> months(facts->text + kMonthName, facts->text + kMonthName + 12);
        const std::set<std::string> days(facts->text + kDayName, facts->text + kDayName + 7);
        EXPECT_EQ(months.size(), 12u);
        EXPECT_EQ(days.size(), 7u);
    });
}

TEST(LocaleFacts, AreReadOnce) {
    const LocaleFacts* croatian = FindLocaleFacts(0x041A, mbWindows1250);
    {
        const AllocationGate nothingIsMade(0);
        EXPECT_EQ(FindLocaleFacts(0x041A, mbWindows1250), croatian);
        EXPECT_EQ(nothingIsMade.Count(), 0);
    }
    EXPECT_EQ(RefreshLocaleFacts(0x041A, mbWindows1250), croatian);  // nothing changed
    const LocaleFacts* cyrillic = FindLocaleFacts(0x041A, mbWindows1251);
    EXPECT_NE(cyrillic, croatian);
    EXPECT_STREQ(croatian->text[kMonthName],
                 "sije\xE8"
                 "anj");
    EXPECT_STREQ(cyrillic->text[kMonthName], "sijecanj");
    EXPECT_EQ(FindLocaleFacts(0x7777, 0), nullptr);
    EXPECT_EQ(FindLocaleFacts(0, 0), nullptr);
    // No language is written in escape sequences or in units of 16 bits here.
    EXPECT_EQ(FindLocaleFacts(0x0407, mbUtf16), FindLocaleFacts(0x0407, mbWestern));
}

TEST(LocaleFacts, ThreadsShareThem) {
    constexpr int kThreads = 4;
    const LocaleFacts* found[kThreads] = {};
    AtTheSameTime(kThreads, [&](int i) { found[i] = FindLocaleFacts(0x0415, mbWestern); });
    ASSERT_NE(found[0], nullptr);
    for (const LocaleFacts* facts : found) EXPECT_EQ(facts, found[0]);
}

TEST(LocaleFacts, ReadAgainAfterAFailedAllocation) {
    FindLocaleFacts(0x0407, mb8859_15);  // the tables of the code set are there
    for (int passing : {0, 1}) {
        const ReportedFailures failures;
        const AllocationGate gate(passing);
        EXPECT_EQ(FindLocaleFacts(0x0410, mb8859_15), nullptr) << passing;
        EXPECT_EQ(failures.Count(), 1) << passing;
    }
    EXPECT_NE(FindLocaleFacts(0x0410, mb8859_15), nullptr);
}

TEST(LocaleFacts, UseBestFitCharacters) {
    static const struct {
        int line, codeSet;
        const char16_t* text;
        const char* written;  // null: cannot be
    } kRows[] = {
        {__LINE__, mbWestern, u"M\u00E4rz \u2019\u00A0", "M\xE4rz \x92\xA0"},
        {__LINE__, mbWestern, u"sije\u010Danj \u0141\u0259", "sijecanj Le"},
        {__LINE__, mbWestern, u"\u200Fd\u202F\u22121", "d -1"},
        {__LINE__, mbWindows1258, u"Th\u1EE9 B\u1EA3y", "Th\xFD\xEC B\x61\xD2y"},
        {__LINE__, mbWindows1250, u"\u0219i", "\xBAi"},
        {__LINE__, mbWindows1251, u"\u049B\u0430\u04A3", "\xEA\xE0\xED"},
        {__LINE__, mbWindows1256, u"\u062F\u06CC", "\xCF\xED"},
        {__LINE__, mbKorean, u"\u20A9", "\xA3\xDC"},
        {__LINE__, mbShiftJis, u"\u5348\u524D", "\x8C\xDF\x91\x4F"},
        {__LINE__, mbWestern, u"m\u1ED9t", "mot"},  // its tone mark is lacking, not its letter
        {__LINE__, mbWestern, u"a\u0939", nullptr},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        char out[32];
        const auto* units = reinterpret_cast<const std::uint16_t*>(row.text);
        const CodePage& page = *FindCodePage(row.codeSet);
        const long length = ToNearestText(page, units, out, sizeof out);
        if (!row.written) {
            EXPECT_EQ(length, -1);
            continue;
        }
        EXPECT_STREQ(out, row.written);
        EXPECT_EQ(length, static_cast<long>(std::strlen(row.written)));
        // One byte less than it takes, terminator included, is too little.
        const auto size = static_cast<std::size_t>(length);
        EXPECT_EQ(ToNearestText(page, units, out, size), -1);
        EXPECT_EQ(ToNearestText(page, units, out, size + 1), length);
    }
}

TEST(LocaleFacts, DistinguishLanguages) {
    static const struct {
        std::uint32_t identifier;
        CLCLanguage language;
        const char* name;
    } kRows[] = {
        {0x0409, clcEnglish, "English"},     {0x0809, clcEnglish, "English"},
        {0x0411, clcJapanese, "Japanese"},   {0x041A, clcCroatian, "Croatian"},
        {0x081A, clcSerbian, "Serbian"},     {0x101A, clcCroatian, "Croatian"},
        {0x0814, clcNorwegian, "Norwegian"}, {0x03FF, clcNoLanguage, ""},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(LanguageOf(row.identifier), row.language) << row.identifier;
        EXPECT_STREQ(LanguageName(row.language), row.name);
    }
    EXPECT_EQ(clcEnglish, 13);
    EXPECT_EQ(clcJapanese, 30);
    EXPECT_EQ(LanguageOfLocaleId(0x10407), 0x0407u);  // another order of sorting
    EXPECT_EQ(LanguageOfLocaleId(0x0011), 0x0411u);
}

}  // namespace

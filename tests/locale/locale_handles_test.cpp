// Locales by name: opening them, their parts, the list of them.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <set>
#include <string>

#include "mbutil.h"
#include "tests/support/code_set_guard.h"

namespace {

std::string g_traced;

std::string Part(mbLocale locale, int part) {
    char text[32];
    mbGetLocalePart(locale, part, text, sizeof text);
    return text;
}

std::string Display(const char* name, int style) {
    char text[128];
    mbDisplayLocale(text, sizeof text, name, style);
    return text;
}

}  // namespace

TEST(LocaleHandles, FindsNamesAccordingToTheKind) {
    const struct {
        int line;
        const char* name;
        const char* found[3];  // for the three kinds; null when nothing is
        int codeSet;
    } kRows[] = {
        {__LINE__, "ja_JP", {"ja_JP", "ja_JP", "ja_JP"}, mbShiftJis},
        {__LINE__, "ja_JP.eucJP@x", {"ja_JP", "ja_JP", "ja_JP"}, mbEucJp},
        {__LINE__, "ja_JP@x.eucJP", {"ja_JP", "ja_JP", "ja_JP"}, mbShiftJis},
        {__LINE__, "ja_JP.no-such", {"ja_JP", "ja_JP", "ja_JP"}, mbShiftJis},
        {__LINE__, "ru_RU.1252", {"ru_RU", "ru_RU", "ru_RU"}, mbWestern},
        {__LINE__, "en_US.UTF-8", {"en_US", "en_US", "en_US"}, mbUtf8},
        {__LINE__, "DE-ch", {nullptr, "de_CH", "de_CH"}, mbWestern},
        {__LINE__, "es-es-t", {nullptr, "es_ES_T", "es_ES_T"}, mbWestern},
        {__LINE__, "0x0411", {nullptr, "ja_JP", "ja_JP"}, mbShiftJis},
        {__LINE__, "1031", {nullptr, "de_DE", "de_DE"}, mbWestern},
        {__LINE__, "de", {nullptr, nullptr, "de_DE"}, mbWestern},
        {__LINE__, "en_XX", {nullptr, nullptr, "en_US"}, mbWestern},
        {__LINE__, "zh", {nullptr, nullptr, "zh_CN"}, mbGb2312},
        {__LINE__, "es", {nullptr, nullptr, "es_ES"}, mbWestern},
        {__LINE__, "kok", {nullptr, nullptr, "kok_IN"}, mbWestern},
        {__LINE__, "k", {nullptr, nullptr, nullptr}, 0},
        {__LINE__, "xx_XX", {nullptr, nullptr, nullptr}, 0},
        {__LINE__, "0x10411", {nullptr, nullptr, nullptr}, 0},
        {__LINE__, "0", {nullptr, nullptr, nullptr}, 0},
        {__LINE__, "a-very-long-name-that-is-no-locale", {nullptr, nullptr, nullptr}, 0},
    };
    for (const auto& row : kRows)
        for (int kind : {mbOpenExact, mbOpenSpelled, mbOpenBest}) {
            mbLocale locale = mbOpenLocale(row.name, kind, nullptr);
            ASSERT_EQ(locale != nullptr, row.found[kind] != nullptr) << row.line << " " << kind;
            if (!locale) continue;
            EXPECT_EQ(Part(locale, mbPartName), row.found[kind]) << row.line;
            EXPECT_EQ(mbLocaleCodeSet(locale), row.codeSet) << row.line;
            EXPECT_EQ(mbLocaleLCID(locale), mbGetLCID(row.found[kind])) << row.line;
            mbCloseLocale(locale);
        }
}

TEST(LocaleHandles, HasPartsAndACurrentLocale) {
    const int before = mbGetLocaleCodeSet();
    mbLocale spanish = mbOpenLocale("es_ES_T.8859-15@euro", mbOpenExact,
                                    [](const char* line) { g_traced = line; });
    EXPECT_EQ(g_traced, "locale \"es_ES_T.8859-15@euro\": es_ES_T, identifier 0x040a, code set 2");
    EXPECT_EQ(Part(spanish, mbPartLanguage) + Part(spanish, mbPartCountry), "esES");
    EXPECT_EQ(Part(spanish, mbPartVariant) + Part(spanish, mbPartCharset), "T8859-15");
    EXPECT_EQ(Part(spanish, 5) + Part(spanish, -1), "");
    char tiny[3] = "?";
    EXPECT_EQ(mbGetLocalePart(spanish, mbPartName, tiny, sizeof tiny), 0);
    EXPECT_STREQ(tiny, "");
    mbLocale plain = mbOpenLocale("no", mbOpenExact, nullptr);
    EXPECT_EQ(Part(plain, mbPartLanguage) + "," + Part(plain, mbPartCountry), "no,");

    EXPECT_EQ(mbSetCurrentLocale(spanish), nullptr);
    EXPECT_EQ(mbGetLCID(nullptr), 0x40au);
    EXPECT_EQ(mbSetCurrentLocale(plain), spanish);
    mbCloseLocale(spanish);
    EXPECT_EQ(mbGetCurrentLocale(), plain);
    mbLocale russian = mbOpenLocale("ru_RU", mbOpenExact, nullptr);
    mbSetCurrentLocale(russian);
    char* utf8 = nullptr;
    EXPECT_EQ(mbConvertToUTF8("\xD0", &utf8, nullptr), 1);
    EXPECT_STREQ(utf8, "\xD0\xA0");
    std::free(utf8);
    EXPECT_NE(mbLocaleLCID(nullptr), mbLocaleLCID(russian));  // the user's in any case
    mbCloseLocale(russian);
    EXPECT_EQ(mbGetLCID(""), mbLocaleLCID(nullptr));
    mbCloseLocale(plain);
    EXPECT_EQ(mbGetCurrentLocale(), nullptr);
    mbCloseLocale(nullptr);
    EXPECT_EQ(mbGetLocaleCodeSet(), before);

    EXPECT_EQ(mbOpenLocale("nowhere", mbOpenBest, [](const char* line) { g_traced = line; }),
              nullptr);
    EXPECT_EQ(g_traced, "locale \"nowhere\": not known");
    const std::string user = std::getenv("TEST_LANGUAGE");
    EXPECT_EQ(Part(nullptr, mbPartName), user);
    mbLocale users = mbOpenLocale(nullptr, mbOpenExact, nullptr);
    EXPECT_EQ(mbLocaleLCID(users), mbLocaleLCID(nullptr));
    EXPECT_EQ(mbLocaleCodeSet(users), user == "ja_JP" ? mbShiftJis : mbWestern);
    mbCloseLocale(users);
}

TEST(LocaleHandles, ListsEachNameOnce) {
    const CodeSetGuard guard(mbWindows1251);
    for (int select : {0, 1, 2, 99}) {
        std::set<std::string> names;
        char name[16];
        int row = -1, number = -1, listed = 0;
        for (; int length = mbGetNextLocaleEx(name, sizeof name, &row, &number, select); ++listed) {
            EXPECT_TRUE(names.insert(name).second) << name;
            EXPECT_EQ(length, static_cast<int>(std::strlen(name)));
            EXPECT_EQ(number, listed);
            EXPECT_NE(mbGetLCID(name), 0u) << name;
            EXPECT_NE(Display(name, mbStyleNative), "") << name;
            EXPECT_EQ(Display(name, mbStyleEnglish).find(Display(name, mbStyleLanguage)), 0u);
        }
        EXPECT_EQ(mbGetNextLocaleEx(name, sizeof name, &row, &number, select), 0);
        EXPECT_EQ(names.count("ru_RU"), 1u);
        EXPECT_EQ(names.count("ja_JP"), select != mbSelectCodeSet);
        EXPECT_GE(names.size(), select == mbSelectCodeSet ? 9u : 120u) << select;
        EXPECT_EQ(names.size() == 152, select >= mbSelectAll);
    }
    char name[4] = "?";
    int row = -1, number = -1;
    EXPECT_EQ(mbGetNextLocaleEx(name, sizeof name, &row, &number, mbSelectAll), 5);
    EXPECT_STREQ(name, "");
    row = 100000;
    EXPECT_EQ(mbGetNextLocaleEx(name, sizeof name, &row, &number, mbSelectAll), 0);
}

TEST(LocaleHandles, DescribesLocales) {
    const CodeSetGuard guard(mbShiftJis);
    EXPECT_EQ(Display("en_US", mbStyleEnglish), "English (United States)");
    EXPECT_EQ(Display("de_AT@euro", mbStyleLanguage), "German");
    EXPECT_EQ(Display("ja_JP", mbStyleNative).substr(0, 6), "\x93\xFA\x96\x7B\x8C\xEA");
    EXPECT_EQ(Display("th_TH", mbStyleNative), "Thai (Thailand)");  // no letters for it
    EXPECT_EQ(Display("nb", mbStyleEnglish), "Norwegian Bokmal");
    InitMbutilExt(mbWestern);
    EXPECT_EQ(Display("nb", mbStyleEnglish), "Norwegian Bokm\xE5l");
    char text[9] = "?";
    EXPECT_EQ(mbDisplayLocale(text, sizeof text, "de_DE", mbStyleEnglish), 1);
    EXPECT_STREQ(text, "German (");
    EXPECT_EQ(mbDisplayLocale(text, sizeof text, "xx", mbStyleEnglish), 0);
    EXPECT_STREQ(text, "");
}

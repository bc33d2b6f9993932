// The user's locale and the table of locales.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "genutil/mbutil/code_set.h"
#include "genutil/mbutil/step.h"
#include "osutil/platform/locale/locales.h"

using namespace genutil;

// One of the two ways of naming a locale answers, and it is that of the user who runs this.
TEST(Locales, UserLocaleIsTheEnvironments) {
    const char* language = std::getenv("TEST_LANGUAGE");
    if (!language) GTEST_SKIP() << "TEST_LANGUAGE is not set";
    const bool japanese = std::strcmp(language, "ja_JP") == 0;
    const platform::UserLocale user = platform::GetUserLocale();
    if (user.language == 0) {
        EXPECT_STREQ(user.name, language);
        EXPECT_EQ(user.ansiCodePage, 0u);
        EXPECT_FALSE(platform::HasTimeZoneRegistry());  // such a system has none
    } else {
        EXPECT_EQ(user.language, japanese ? 0x0411 : 0x0409);
        EXPECT_EQ(user.ansiCodePage, japanese ? 932u : 1252u);
        EXPECT_EQ(platform::AnsiCodePageOfLanguage(0x0411), 932u);
        EXPECT_EQ(platform::AnsiCodePageOfLanguage(0x0415), 1250u);
    }
}

TEST(Locales, TableHasItsChecksum) {
    std::uint32_t all = 0;  // names, identifiers and code sets of the table
    int rows = 0;
    for (const LocaleRow* row = kLocaleTable; row->language; ++row, ++rows) {
        for (const char* c = row->name; *c; ++c) all = all * 31 + static_cast<unsigned>(*c);
        all = (all * 31 + row->language) * 31 + static_cast<unsigned>(row->codeSet);
    }
    EXPECT_EQ(rows, 156);
    EXPECT_EQ(all, 732969866u);
    // A language without a country means its first row; of several rows the first decides.
    for (const auto& [language, codeSet] :
         {std::pair{0x11u, 5}, {0x411u, 5}, {0u, 0}, {0x4u, 9}, {0x41au, 24}, {0x811u, 0}})
        EXPECT_EQ(CodeSetOfLanguage(language), codeSet) << language;
    EXPECT_EQ(CodeSetOfCodePage(65001), mbUtf8);
    EXPECT_EQ(CodeSetOfCodePage(437), -1);
}

TEST(Locales, FirstCallOverridesAnEarlierChoice) {
    g_codeSetState = {};
    g_currentStep = nullptr;
    EXPECT_EQ(mbidxtype("z\x82\xA0", 2, mbShiftJis), 1u);  // the flag is on before
    EXPECT_EQ(InitMbutilExt(mbKorean), mbWestern);
    EXPECT_EQ(mbGetLocaleCodeSet(), mbKorean);
    mbnextidx("zz", 0);
    EXPECT_EQ(mbGetLocaleCodeSet(), CodeSetOfLanguage(UserLanguage()));
    EXPECT_EQ(InitMbutilExt(mbKorean), CodeSetOfLanguage(UserLanguage()));
    EXPECT_EQ(mbnextidx("\x82\xA0z", 0), 2u);  // an explicit choice is now kept
    InitMbutil();
}

// What the platform says of the user and of letters.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "genutil/mbutil/code_set.h"
#include "genutil/mbutil/step.h"
#include "osutil/platform/locales.h"

using namespace genutil;

namespace {

int Compare(const std::u16string& a, const std::u16string& b) {
    return platform::Collate(reinterpret_cast<const std::uint16_t*>(a.data()), a.size(),
                             reinterpret_cast<const std::uint16_t*>(b.data()), b.size());
}

}  // namespace

// One of the two ways of naming a locale answers, and it is that of the user who runs this.
TEST(Locales, UserIsTheOneOfTheEnvironment) {
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

TEST(Locales, SimpleCaseMapping) {
    EXPECT_EQ(platform::ToUpper(0xFF), 0x178);
    std::uint32_t all = 0;  // the same on every platform
    for (std::uint32_t c = 1; c <= 0xFFFF; ++c) {
        const auto character = static_cast<std::uint16_t>(c);
        all = all * 31 + platform::ToUpper(character);
        all = all * 31 + platform::ToLower(character);
    }
    EXPECT_EQ(all, 2227320022u);
    for (const std::uint16_t plain : {0xB5, 0x131, 0x3C2, 0xDF})  // not there and back
        EXPECT_EQ(platform::ToUpper(plain), plain);
}

TEST(Locales, CollationOrdersWordsNotBytes) {
    EXPECT_EQ(Compare(u"", u""), 0);
    EXPECT_LT(Compare(u"", u"a"), 0);
    EXPECT_LT(Compare(u"apple", u"Banana"), 0);
    EXPECT_GT(Compare(u"Banana", u"apple"), 0);
    EXPECT_LT(Compare(u"\u00E9a", u"f"), 0);
    EXPECT_LT(Compare(u"z", u"\u3042"), 0);
    EXPECT_LT(Compare(u"\u3042", u"\u3044"), 0);
}

TEST(Locales, TheirCodeSets) {
    std::string others;
    int rows = 0, languages = 0;
    for (const LocaleRow* row = kLocaleTable; row->language; ++row, ++rows) {
        languages += row->language;
        if (row->codeSet) others += row->name + (' ' + std::to_string(row->codeSet)) + ' ';
    }
    EXPECT_EQ(rows, 156);
    EXPECT_EQ(languages, 613338);
    EXPECT_EQ(
        others,
        "ar_SA 28 ar_IQ 28 ar_EG 28 ar_LY 28 ar_DZ 28 ar_MA 28 ar_TN 28 ar_OM 28 ar_YE 28 ar_SY 28 "
        "ar_JO 28 ar_LB 28 ar_KW 28 ar_AE 28 ar_BH 28 ar_QA 28 bg_BG 24 zh_TW 9 zh_CN 7 zh_HK 9 "
        "zh_SG 7 zh_MO 7 cs_CZ 23 el_GR 25 he_IL 27 iw_IL 27 hu_HU 23 ja_JP 5 ko_KR 11 pl_PL 23 "
        "ro_RO 23 ru_RU 24 sh_YU 23 sr_YU 24 sr_YU 24 hr_YU 23 hr_HR 23 sk_SK 23 sq_AL 23 th_TH 40 "
        "tr_TR 26 ur_PK 28 ur_IN 28 uk_UA 24 be_BY 24 sl_SI 23 et_EE 29 lv_LV 29 lt_LT 29 fa_IR 28 "
        "vi_VN 30 az_AZ_C 26 az_AZ_C 24 mk_MK 24 fo_FO 23 kk_KZ 24 uz_UZ_C 24 tt_RU 24 ");
    // A language without a country stands for its first; of several locales the first row decides.
    for (const auto& [language, codeSet] :
         {std::pair{0x11u, 5}, {0x411u, 5}, {0u, 0}, {0x4u, 9}, {0x41au, 24}, {0x811u, 0}})
        EXPECT_EQ(CodeSetOfLanguage(language), codeSet) << language;
    EXPECT_EQ(CodeSetOfCodePage(65001), mbUtf8);
    EXPECT_EQ(CodeSetOfCodePage(437), -1);
}

TEST(Locales, TheFirstCallOverridesAnEarlierChoice) {
    g_codeSetState = {};
    g_currentStep = nullptr;
    EXPECT_EQ(mbidxtype("z\x82\xA0", 2, mbShiftJis), 1u);  // the flag is on before
    EXPECT_EQ(InitMbutilExt(mbKorean), mbWestern);
    EXPECT_EQ(mbGetLocaleCodeSet(), mbKorean);
    mbnextidx("zz", 0);
    EXPECT_EQ(mbGetLocaleCodeSet(), CodeSetOfLanguage(UserLanguage()));
    EXPECT_EQ(InitMbutilExt(mbKorean), CodeSetOfLanguage(UserLanguage()));
    EXPECT_EQ(mbnextidx("\x82\xA0z", 0), 2u);  // an explicit choice now stays
    InitMbutil();
}

// The catalogue of locales.
#include <gtest/gtest.h>

#include <cstring>

#include "genlocale.h"
#include "tests/support/code_set_guard.h"

namespace {

class Catalogue : public testing::Test {
  protected:
    Catalogue() : m_guard(mbWestern) { LocaleInfo::Free(); }
    ~Catalogue() override { LocaleInfo::Free(); }

  private:
    CodeSetGuard m_guard;
};

}  // namespace

TEST_F(Catalogue, ListsLocalesWithAUsefulDescription) {
    CGNString name("kept"), description;
    EXPECT_EQ(LocaleInfo::GetLocaleInfoItem(0), nullptr);
    const long count = LocaleInfo::GetLocaleInfoCount(mbSelectAll);
    EXPECT_EQ(count, 150);  // of 152 names two have less than 13 bytes
    for (long i = 0; i < count; ++i) {
        const LocaleInfo* row = LocaleInfo::GetLocaleInfoItem(i);
        EXPECT_GE(row->GetDescription().GetLength(), 13u);
        EXPECT_EQ(row->GetLocaleId(), mbGetLCID(row->GetName()));
    }
    EXPECT_EQ(LocaleInfo::GetLocaleInfoItem(count), nullptr);
    EXPECT_FALSE(LocaleInfo::GetLocale(0x0820, name));  // "Urdu (India)", 12 bytes
    EXPECT_TRUE(name == "kept");
    EXPECT_TRUE(LocaleInfo::GetLocale(0x0448, name));  // 13 bytes
    EXPECT_TRUE(name == "or_IN");
}

TEST_F(Catalogue, FindsLocalesByNameAndDescription) {
    CGNString name("?"), description("GERMAN (austria)"), empty;
    EXPECT_TRUE(LocaleInfo::GetLocaleFromLocaleDescription(description, name, mbSelectAll));
    EXPECT_TRUE(name == "de_AT");
    description = "Klingon (Kronos)";
    EXPECT_FALSE(LocaleInfo::GetLocaleFromLocaleDescription(description, name, mbSelectAll));
    EXPECT_TRUE(name == "");
    name = "?";
    EXPECT_TRUE(LocaleInfo::GetLocaleFromLocaleDescription(empty, name, mbSelectAll));
    EXPECT_TRUE(name == "");

    name = "JA_jp";
    EXPECT_TRUE(LocaleInfo::GetLocaleDescriptionFromLocale(name, description, mbSelectAll));
    EXPECT_TRUE(description == "Japanese (Japan)");
    name = "xx_XX";
    EXPECT_FALSE(LocaleInfo::GetLocaleDescriptionFromLocale(name, description, mbSelectAll));
    EXPECT_TRUE(description == "Japanese (Japan)");
    EXPECT_TRUE(LocaleInfo::GetLocaleDescriptionFromLocale(empty, description, mbSelectAll));
    EXPECT_TRUE(description == "");
}

TEST_F(Catalogue, KeepsTheSelectionOfTheFirstCall) {
    InitMbutilExt(mbShiftJis);
    const long japanese = LocaleInfo::GetLocaleInfoCount(mbSelectCodeSet);
    EXPECT_EQ(japanese, 1);
    EXPECT_EQ(LocaleInfo::GetLocaleInfoCount(mbSelectAll), japanese);
    LocaleInfo::Free();
    EXPECT_GT(LocaleInfo::GetLocaleInfoCount(mbSelectAll), japanese);
    LocaleInfo own;
    own.SetName("own");
    CGNString name("OWN"), description;
    EXPECT_TRUE(LocaleInfo::GetLocaleDescriptionFromLocale(name, description, mbSelectAll));
}

// The current code set and the names of code sets.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

#include "mbutil.h"
#include "tests/support/code_set_guard.h"

namespace {

bool JapaneseUser() {
    const char* language = std::getenv("TEST_LANGUAGE");
    return language && !std::strcmp(language, "ja_JP");
}

TEST(CodeSet, FollowsTheUsersLocale) {
    InitMbutilExt(11);
    EXPECT_EQ(InitMbutil(), 11);
    EXPECT_EQ(mbGetLocaleCodeSet(), JapaneseUser() ? 5 : 0);
    EXPECT_EQ(mbIsJapanese(), JapaneseUser() ? 1 : 0);
    EXPECT_EQ(mbIsMultiByte(), JapaneseUser());
    EXPECT_EQ(mbGetLCID(""), JapaneseUser() ? 0x411u : 0x409u);
}

TEST(CodeSet, NamesAndFlags) {
    static const struct {
        int codeSet;
        const char* name;
        bool multiByte, japanese;
    } kRows[] = {{0, "WESTERN", false, false},     {3, "2022_JP", true, true},
                 {4, "EUC", true, true},           {5, "SJIS", true, true},
                 {6, "SJIS", false, false},        {7, "GB2312", true, false},
                 {10, "EUC_H", true, false},       {11, "KSC_5601_87", true, false},
                 {12, "KSC_5601_92", true, false}, {13, "EUC_K", true, false},
                 {22, "8859_10", false, false},    {25, "1253", false, false},
                 {30, "1258", false, false},       {40, "874", false, false},
                 {42, "2022_KR", false, false},    {65, "UTF8", false, false},
                 {31, "", false, false},           {-7, "", false, false}};
    for (const auto& row : kRows) {
        const CodeSetGuard guard(row.codeSet);
        char name[12];
        EXPECT_STREQ(SetCodePage(0, name), row.name);
        EXPECT_EQ(mbIsMultiByte(), row.multiByte) << row.codeSet;
        EXPECT_EQ(mbIsJapanese(), row.japanese) << row.codeSet;
        EXPECT_EQ(mbGetLocaleCodeSet(), row.codeSet);
    }
}

TEST(CodeSet, FreeFormNames) {
    static const struct {
        int codeSet;
        const char* names;
    } kRows[] = {{0, "KOI8-R cp1252 western-932"},
                 {1, "iso_8859-1"},
                 {2, "ISO-8859-15"},
                 {3, "ISO-2022-JP jis"},
                 {4, "eucJP"},
                 {5, "Shift-JIS x-sjis ibm-943 cp932"},
                 {7, "GBK x936"},
                 {8, "EUC_ZH euc-cn"},
                 {9, "big5 cp950"},
                 {10, "euc-tw EUC_H"},
                 {11, "KSC_5601_92 x-windows-949"},
                 {13, "EUC-KR"},
                 {14, "8859-2"},
                 {18, "8859-6"},
                 {21, "8859_9"},
                 {22, "8859-10"},
                 {23, "cp1250"},
                 {27, "1255"},
                 {30, "cp1258"},
                 {40, "TIS-874"},
                 {41, "iso-2022-cn"},
                 {42, "iso-2022-kr"},
                 {64, "ucs-2 utf-16le UCS2"},
                 {65, "utf-8 UTF8"}};
    for (const auto& row : kRows) {
        std::istringstream names(row.names);
        for (std::string name; names >> name;)
            EXPECT_EQ(mbGetCodeSet(name.c_str()), row.codeSet) << name;
    }
    EXPECT_EQ(mbGetCodeSet(nullptr), 0);
    EXPECT_EQ(mbGetCodeSet(""), 0);
    const std::string longName = std::string(100000, 'x') + "utf8";
    EXPECT_EQ(mbGetCodeSet(longName.c_str()), 65);
}

TEST(CodeSet, CharsetNames) {
    static const struct {
        const char* name;
        int codeSet;
    } kRows[] = {{"Shift_JIS", 5},    {"x-sjis", 5}, {"euc-kr", 11}, {"cp949", 11},
                 {"gb2312", 7},       {"EUC-CN", 8}, {"big5", 9},    {"utf-16", 64},
                 {"windows-874", 40}, {nullptr, 0},  {"", 0},        {"no such", 0}};
    for (const auto& row : kRows)
        EXPECT_EQ(mbGetCodeSetFromCharset(row.name), row.codeSet) << row.name;

    static const struct {
        int codeSet;
        const char* name;
    } kNames[] = {{13, "euc-kr"},    {11, "euc-kr"},      {12, ""},           {6, ""},
                  {1, "iso-8859-1"}, {0, "windows-1252"}, {3, "iso-2022-jp"}, {65, "utf-8"},
                  {1000, ""}};
    for (const auto& row : kNames) {
        char name[22];
        SetCharset(name, row.codeSet);
        EXPECT_STREQ(name, row.name) << row.codeSet;
    }
}

TEST(CodeSet, WindowsNamesOfIsoCharsets) {
    static const struct {
        const char *name, *windows;
        bool result;
    } kRows[] = {{"utf-8", "utf-8", false},
                 {"iso-8859-15", "windows-1252", true},
                 {"iso-8859-2", "windows-1250", true},
                 {"iso-8859-9", "windows-1254", true},
                 {"iso-8859-3", "iso-8859-3", true},
                 {"ISO-8859-1", "ISO-8859-1", true}};
    for (const auto& row : kRows) {
        char name[16];
        std::strcpy(name, row.name);
        EXPECT_EQ(MapToWindowsCharsetName(name) != nullptr, row.result) << row.name;
        EXPECT_STREQ(name, row.windows);
    }
}

TEST(CodeSet, LocaleIdentifiers) {
    static const struct {
        const char* name;
        unsigned long id;
    } kRows[] = {{"en_US", 0x409},      {"ja_JP", 0x411}, {"ja_JP.SJIS", 0x411},
                 {"de_DE@euro", 0x407}, {"sr_YU", 0xc1a}, {"az_AZ_C", 0x42c},
                 {"es_ES", 0xc0a},      {"xx_XX", 0},     {"en", 0}};
    for (const auto& row : kRows) EXPECT_EQ(mbGetLCID(row.name), row.id) << row.name;
}

}  // namespace

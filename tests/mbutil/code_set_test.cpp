// The current code set and the names of code sets.
#include <gtest/gtest.h>

#include <cstdio>
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

TEST(CodeSet, FollowsTheLocaleOfTheUser) {
    InitMbutilExt(11);
    EXPECT_EQ(InitMbutil(), 11);
    EXPECT_EQ(mbGetLocaleCodeSet(), JapaneseUser() ? 5 : 0);
    EXPECT_EQ(mbIsJapanese(), JapaneseUser() ? 1 : 0);
    EXPECT_EQ(mbIsMultiByte(), JapaneseUser());
    EXPECT_EQ(mbGetLCID(""), JapaneseUser() ? 0x411u : 0x409u);
}

TEST(CodeSet, HasNamesAndFlags) {
    std::string all;
    for (int codeSet = -7; codeSet < 100; ++codeSet) {
        const CodeSetGuard guard(codeSet);
        char name[12];
        EXPECT_EQ(SetCodePage(0, name), name);
        EXPECT_EQ(mbGetLocaleCodeSet(), codeSet);
        const std::string flags = mbIsJapanese() ? "/mj" : mbIsMultiByte() ? "/m" : "";
        if (*name) all += std::to_string(codeSet) + ' ' + name + flags + ' ';
        EXPECT_TRUE(mbIsMultiByte() || !mbIsJapanese());
    }
    EXPECT_EQ(all,
              "0 WESTERN 1 8859_1 2 8859_15 3 2022_JP/mj 4 EUC/mj 5 SJIS/mj 6 SJIS 7 GB2312/m 8 "
              "EUC_C/m 9 BIG5/m 10 EUC_H/m 11 KSC_5601_87/m 12 KSC_5601_92/m 13 EUC_K/m 14 8859_2 "
              "15 8859_3 16 8859_4 17 8859_5 18 8859_6 19 8859_7 20 8859_8 21 8859_9 22 8859_10 23 "
              "1250 24 1251 25 1253 26 1254 27 1255 28 1256 29 1257 30 1258 40 874 41 2022_CN 42 "
              "2022_KR 64 UTF16 65 UTF8 ");
}

TEST(CodeSet, FindsFreeFormNames) {
    std::istringstream rows(
        "0 KOI8-R 0 cp1252 0 western-932 1 iso_8859-1 2 ISO-8859-15 3 ISO-2022-JP 3 jis 4 eucJP "
        "5 Shift-JIS 5 x-sjis 5 ibm-943 5 cp932 7 GBK 7 x936 8 EUC_ZH 8 euc-cn 9 big5 9 cp950 "
        "10 euc-tw 10 EUC_H 11 KSC_5601_92 11 x-windows-949 13 EUC-KR 14 8859-2 15 8859-3 16 "
        "8859-4 "
        "17 8859-5 18 8859-6 19 8859-7 20 8859-8 21 8859_9 22 8859-10 23 cp1250 24 1251 25 1253 "
        "26 1254 27 1255 28 1256 29 1257 30 cp1258 40 TIS-874 41 iso-2022-cn 42 iso-2022-kr "
        "64 ucs-2 64 utf-16le 64 UCS2 64 UTF16 65 utf-8 65 UTF8");
    int codeSet;
    for (std::string name; rows >> codeSet >> name;)
        EXPECT_EQ(mbGetCodeSet(name.c_str()), codeSet) << name;
    EXPECT_TRUE(rows.eof());
    EXPECT_EQ(mbGetCodeSet(nullptr), 0);
    EXPECT_EQ(mbGetCodeSet(""), 0);
    const std::string longName = std::string(100000, 'x') + "utf8";
    EXPECT_EQ(mbGetCodeSet(longName.c_str()), 65);
}

TEST(CodeSet, HasCharsetNames) {
    static const struct {
        const char* name;
        int codeSet;
    } kRows[] = {{"Shift_JIS", 5},
                 {"x-sjis", 5},
                 {"euc-kr", 11},
                 {"cp949", 11},
                 {"gb2312", 7},
                 {"EUC-CN", 8},
                 {"big5", 9},
                 {"utf-16", 64},
                 {"windows-874", 40},
                 {nullptr, 0},
                 {"", 0},
                 {"no such", 0},
                 {"latin1", 1},
                 {"ISO-8859-11", 101},
                 {"iso-8859-16", 104},
                 {"KOI8-R", 105},
                 {"windows-31j", 5},
                 {"uhc", 11},
                 {"johab", 12},
                 {"cp866", 110},
                 {"gb18030", 100},
                 {"gbk", 7},
                 {"UTF-32BE", 113}};
    for (const auto& row : kRows)
        EXPECT_EQ(mbGetCodeSetFromCharset(row.name), row.codeSet) << row.name;
    std::string all;
    for (int codeSet = -1; codeSet < 70; ++codeSet) {
        char name[22];
        SetCharset(name, codeSet);
        if (*name) all += std::to_string(codeSet) + ' ' + name + ' ';
    }
    EXPECT_EQ(all,
              "0 windows-1252 1 iso-8859-1 2 iso-8859-15 3 iso-2022-jp 4 euc-jp 5 shift_jis 7 "
              "gb2312 8 euc-cn 9 big5 10 euc-tw 11 euc-kr 13 euc-kr 14 iso-8859-2 15 iso-8859-3 16 "
              "iso-8859-4 17 iso-8859-5 18 iso-8859-6 19 iso-8859-7 20 iso-8859-8 21 iso-8859-9 23 "
              "windows-1250 24 windows-1251 25 windows-1253 26 windows-1254 27 windows-1255 28 "
              "windows-1256 29 windows-1257 30 windows-1258 40 windows-874 41 iso-2022-cn 42 "
              "iso-2022-kr 64 utf-16 65 utf-8 ");
    for (int codeSet = 100; codeSet <= 113; ++codeSet) {  // the names of the others denote them too
        char name[22];
        SetCharset(name, codeSet);
        EXPECT_EQ(mbGetCodeSetFromCharset(name), codeSet) << name;
        const CodeSetGuard guard(codeSet);  // as an unlisted number
        EXPECT_STREQ(SetCodePage(0, name), "");
        EXPECT_FALSE(mbIsMultiByte());
    }
}

TEST(CodeSet, MapsIsoCharsetsToWindowsNames) {
    std::string all;
    for (int part = 1; part <= 16; ++part) {
        char name[24];
        std::snprintf(name, sizeof name, "iso-8859-%d", part);
        EXPECT_EQ(MapToWindowsCharsetName(name), name);
        all += name + std::string(" ");
    }
    EXPECT_EQ(all,
              "windows-1252 windows-1250 iso-8859-3 windows-1257 windows-1251 windows-1256 "
              "windows-1253 windows-1255 windows-1254 iso-8859-10 iso-8859-11 iso-8859-12 "
              "iso-8859-13 iso-8859-14 windows-1252 iso-8859-16 ");
    char capital[] = "ISO-8859-1", other[] = "utf-8";
    EXPECT_STREQ(MapToWindowsCharsetName(capital), "ISO-8859-1");
    EXPECT_EQ(MapToWindowsCharsetName(other), nullptr);
    EXPECT_STREQ(other, "utf-8");
}

TEST(CodeSet, FindsLocaleIdentifiers) {
    EXPECT_EQ(mbGetLCID("en_US"), 0x409u);
    EXPECT_EQ(mbGetLCID("ja_JP.SJIS"), 0x411u);
    EXPECT_EQ(mbGetLCID("de_DE@euro"), 0x407u);
    EXPECT_EQ(mbGetLCID("sr_YU"), 0xc1au);
    for (const char* unknown : {"xx_XX", "en"}) EXPECT_EQ(mbGetLCID(unknown), 0u) << unknown;
    char name[16] = "?";
    EXPECT_EQ(mbDefaultCodePageForLocale(name, 10, "ja_JP.EUC"), 9);
    EXPECT_STREQ(name, "shift_jis");
    EXPECT_EQ(mbDefaultCodePageForLocale(name, 9, "ja_JP"), 0);
    EXPECT_STREQ(name, "");
    EXPECT_EQ(mbDefaultCodePageForLocale(name, sizeof name, ""), JapaneseUser() ? 9 : 12);
}

}  // namespace

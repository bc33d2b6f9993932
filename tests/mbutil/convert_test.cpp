// Conversion between code sets: who converts what, sizes, reports.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "mbutil.h"
#include "tests/support/code_set_guard.h"

namespace {

std::string Related(const std::string& text, int from, int to) {
    std::string dst(3 * text.size() + 2, '#');
    EXPECT_EQ(convertStrExt(text.c_str(), from, dst.data(), to), dst.data());
    EXPECT_EQ(dst.back(), '#');  // nothing after 3 n + 1
    return dst.c_str();
}

TEST(Convert, ConvertsRelatedCodeSetsOnly) {
    static const struct {
        int line, from, to;
        const char *text, *expected;
    } kRows[] = {
        {__LINE__, 5, 4, "\x88\x9F\xB1", "\xB0\xA1\x8E\xB1"},
        {__LINE__, 3, 4, "\x1B$B0!\x1B(Bz", "\xB0\xA1z"},
        {__LINE__, 5, 3, "\x88\x9F", "\x1B$B0!"},  // no room for the closing escape
        {__LINE__, 17, 24, "\xB0\xA1\xF1", "\xC0\xA8\xB8"},
        {__LINE__, 9, 24, "\xB0\xA1", "\xC0\xA8"},  // as 17 to 24: programs depend on it
        {__LINE__, 10, 24, "\xB0\xA1", "\xC0\xA8"},
        {__LINE__, 24, 9, "\xC0\xA8", "\xC0\xA8"},
        {__LINE__, 5, 65, "\x88\x9F", "\x88\x9F"},
        {__LINE__, 5, 5, "\x88\xFF", "\x88\xFF"},
        {__LINE__, 3, 4, "", ""},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(Related(row.text, row.from, row.to), row.expected) << row.line;
}

TEST(Convert, ConvertsFromTheCurrentCodeSet) {
    char dst[16];
    for (int current : {4, 5}) {
        const CodeSetGuard guard(current);
        EXPECT_STREQ(UnixCodingToWindowsCodingExt("\xB0\xA1", dst), "\x88\x9F");
        EXPECT_STREQ(WindowsCodingToUnixCodingExt("\x88\x9F", dst), "\xB0\xA1");
    }
    const CodeSetGuard guard(3);
    EXPECT_STREQ(UnixCodingToWindowsCodingExt("\xB0\xA1", dst), "\xB0\xA1");
    EXPECT_EQ(UnixCodingToWindowsCodingExt(nullptr, dst), nullptr);
    EXPECT_EQ(WindowsCodingToUnixCodingExt("a", nullptr), nullptr);
    {
        const CodeSetGuard sjis(5);
        EXPECT_EQ(mbconvertnativestring(dst, "\x88\x9F", 4), 1);
        EXPECT_STREQ(dst, "\xB0\xA1");
    }
    const CodeSetGuard western(17);
    EXPECT_EQ(mbconvertnativestring(dst, "\xB0\xA1", 24), 1);
    EXPECT_STREQ(dst, "\xB0\xA1");  // a single-byte current code set copies
    EXPECT_EQ(mbconvertnativestring(nullptr, "a", 4), 0);
    EXPECT_EQ(mbconvertnativestring(dst, nullptr, 4), 0);
}

TEST(Convert, ReportsEachLostCharacterAndTheRoomUsed) {
    const std::string text =
        "a\x82\xA0\xE0\x40\x85\x40\x82";  // a code without character, a lone lead
    std::size_t lostAt[1];
    mbConversion report = {lostAt, 1, 0, 0, 0};
    char dst[64];
    ASSERT_EQ(mbConvert(text.data(), text.size(), 5, dst, sizeof dst, 65, &report), 1);
    EXPECT_STREQ(dst, "a\xE3\x81\x82\xE6\xBC\xBE\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(report.consumed, text.size());
    EXPECT_EQ(report.produced, std::strlen(dst));
    EXPECT_EQ(report.lost, 2u);
    EXPECT_EQ(lostAt[0], 5u);

    // A copy within one code set, too, holds no part of a character.
    static const struct {
        int line, codeSet;
        const char* text;
        std::size_t room, whole;
    } kCopies[] = {
        {__LINE__, 5, "a\x82\xA0", 4, 3},         {__LINE__, 5, "a\x82\xA0", 3, 1},
        {__LINE__, 65, "\xF0\x9F\x98\x80", 4, 0}, {__LINE__, 65, "a\xE3\x81\x82", 2, 1},
        {__LINE__, 64, "\x3D\xD8\x01\xDE", 5, 0}, {__LINE__, 64, "ab\x3D\xD8\x01\xDE", 7, 2},
        {__LINE__, 3, "\x1B$B0!0!\x1B(B", 9, 8},
    };
    for (const auto& row : kCopies) {
        SCOPED_TRACE(row.line);
        const std::size_t length = std::strlen(row.text);
        EXPECT_EQ(mbConvert(row.text, length, row.codeSet, dst, row.room, row.codeSet, &report),
                  row.whole == length);
        EXPECT_EQ(report.produced, row.whole);
    }
    EXPECT_EQ(mbConvert(text.data(), text.size(), 5, dst, 0, 65, &report), 0);
    EXPECT_EQ(mbConvert("a", 1, 5, dst, sizeof dst, 50, &report), 0);
    for (const int unknown : {-1, 31, 43, 66})
        EXPECT_EQ(mbConvert("a", 1, unknown, dst, sizeof dst, 5, &report), 0);
    EXPECT_EQ(mbConvert(nullptr, 0, 5, dst, sizeof dst, 4, nullptr), 1);
    EXPECT_EQ(mbConvert(nullptr, 1, 5, dst, sizeof dst, 4, nullptr), 0);
    ASSERT_EQ(mbConvert("z\xC3\x81\x82\xE3\x81", 6, 65, dst, sizeof dst, 65, &report), 1);
    EXPECT_STREQ(dst, "z\xC3\x81\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(report.lost, 2u);
}

// What replaces lost characters, and where a converter stops. fuzz/converter_fuzz.cpp compares
// pieces of every size with one call.
TEST(Converter, ReplacesLostCharacters) {
    static const struct {
        int line, from, to;
        unsigned flags;
        const char *text, *expected;
        std::size_t lost;
    } kRows[] = {
        {__LINE__, 65, 0, mbConvertBestFit, "\xC5\x8D\xC3\xA9\xE6\xBC\xA2", "o\xE9?", 2},
        {__LINE__, 65, 0, mbConvertUnicodeEscapes, "\xE6\xBC\xA2\xF0\x9F\x98\x80\xFF",
         "\\u6F22\\uD83D\\uDE00?", 3},
        {__LINE__, 65, 5, mbConvertHtmlEscapes | mbConvertBestFit, "\xC3\xA9\xF0\x9F\x98\x80",
         "e&#128512;", 2},
        {__LINE__, 4, 5, mbConvertHtmlEscapes, "\x8F\xB0\xA1z", "&#19970;z", 1},
        {__LINE__, 4, 3, mbConvertUnicodeEscapes, "\xA4\xA2\x0E", "\x1B$B$\"\x1B(B\\u000E", 1},
        {__LINE__, 23, 14, mbConvertBestFit, "\x8A\x85\x93", "\xA9?\"", 2},
        {__LINE__, 5, 65, mbConvertMark, "z", "\xEF\xBB\xBFz", 0},
        {__LINE__, 65, 65, mbConvertMark, "\xEF\xBB\xBFz", "\xEF\xBB\xBFz", 0},
        {__LINE__, 65, 65, mbConvertNoMark, "\xEF\xBB\xBFz", "z", 0},
        {__LINE__, 64, 64, mbConvertMark, "\xFE\xFF\x61\x62", "\xFF\xFE\x62\x61", 0},
        {__LINE__, 5, 4, mbConvertStop, "a\x82\xA0\xF0\x40z", "a\xA4\xA2", 0},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        mbConverter* const converter = mbOpenConverter(row.from, row.to, row.flags);
        ASSERT_NE(converter, nullptr);
        char out[64];
        mbConversion report = {};
        const char* src = row.text;
        char* dst = out;
        std::size_t left = std::strlen(src), room = sizeof out;
        const bool stops = (row.flags & mbConvertStop) != 0;
        EXPECT_EQ(mbConvertNext(converter, &src, &left, &dst, &room, 1, &report),
                  stops ? mbNextLost : mbNextDone);
        EXPECT_EQ(std::string(out, dst), row.expected);
        EXPECT_EQ(report.lost, row.lost);
        EXPECT_EQ(left, stops ? 3u : 0u);
        mbCloseConverter(converter);
    }
    EXPECT_EQ(mbOpenConverter(5, 63, 0), nullptr);
    mbCloseConverter(nullptr);
}

// Vector stores must not overrun text that is unread.
TEST(Convert, ConvertsInPlace) {
    std::string jis = "\x1B$B", expected;
    for (int i = 0; i < 40; ++i) jis += "$\"", expected += "\x82\xA0";
    std::string text = jis + "\x1B(Bz";
    text.resize(3 * text.size() + 1);
    EXPECT_STREQ(convertStrExt(text.c_str(), 3, text.data(), 5), (expected + "z").c_str());
    EXPECT_STREQ(convertStrExt(text.c_str(), 5, text.data(), 3), (jis + "\x1B(Bz").c_str());
}

TEST(Convert, AllocatesTheResult) {
    char* out = nullptr;
    mbConversion report = {nullptr, 0, 0, 0, 0};
    const std::string text(100000, '\xB1');
    ASSERT_EQ(mbConvertAlloc(text.data(), text.size(), 5, &out, 3, &report), 1);
    EXPECT_EQ(report.produced, text.size() + 6);
    EXPECT_EQ(std::string(out).substr(0, 5), "\x1B(I11");
    std::free(out);
    ASSERT_EQ(mbConvertAlloc("\xE9", 1, 0, &out, 64, &report), 1);
    EXPECT_EQ(std::string(out, 4), std::string("\xE9\0\0\0", 4));
    std::free(out);
}

TEST(Convert, ConvertsBetweenUtf8AndALocale) {
    const bool japanese = mbGetLCID(nullptr) == 0x411;
    static const struct {
        const char *text, *locale, *utf8;
    } kRows[] = {{"\x82\xA0", "ja_JP", "\xE3\x81\x82"},
                 {"\xD0", "ru_RU", "\xD0\xA0"},
                 {japanese ? "\xB1" : "\xE9", nullptr, japanese ? "\xEF\xBD\xB1" : "\xC3\xA9"}};
    for (const auto& row : kRows) {
        char *out = nullptr, *back = nullptr;
        ASSERT_EQ(mbConvertToUTF8(row.text, &out, row.locale), 1);
        EXPECT_STREQ(out, row.utf8);
        ASSERT_EQ(mbConvertFromUTF8(out, &back), 1);
        EXPECT_STREQ(row.locale ? row.text : back, row.text);
        std::free(out);
        std::free(back);
    }
    char* out = nullptr;
    EXPECT_EQ(mbConvertToUTF8("a", &out, "xx_XX") + mbConvertToUTF8(nullptr, &out, "ja_JP"), 0);
    EXPECT_EQ(mbConvertFromUTF8(nullptr, &out) + mbConvertFromUTF8("a", nullptr), 0);
    EXPECT_EQ(out, nullptr);
}

TEST(Measure, FindsUtf8Boundaries) {
    EXPECT_EQ(UTF8Limit("a\xE3\x81\x82", 3), 1u);
    EXPECT_EQ(UTF8Limit("a\xE3\x81\x82", 4), 4u);
    EXPECT_EQ(UTF8Limit("\xF0\x9F\x98\x80z", 4), 4u);
    EXPECT_EQ(UTF8Limit("\xF0\x9F\x98\x80z", 3), 0u);
    EXPECT_EQ(UTF8Limit("\x80\x80\x80\x80", 2), 2u);
    EXPECT_EQ(UTF8Limit("\xFF\xFE\xC3\xA9", 3), 2u);
    EXPECT_EQ(UTF8Limit("\xFC\x80\x80\x80\x80\x80z", 5), 0u);
    EXPECT_EQ(UTF8Limit("abc", 0), 0u);
    EXPECT_EQ(UTF8Limit("abc", 0xFFFFFFFF), 3u);
    EXPECT_EQ(UTF8Limit(nullptr, 5), 0u);
}

TEST(Measure, DecodesPercentEscapes) {
    char* out = nullptr;
    EXPECT_EQ(mbUrlDecode("%%41%4g%2F%2f+%4G%G4a%00%4", &out), 20u);
    EXPECT_EQ(std::string(out, 20), std::string("%A%4g/%2f+%4G%G4a\0%4", 20));
    std::free(out);
    EXPECT_EQ(mbUrlDecode(nullptr, &out), 0u);
}

TEST(Measure, FindsTheLongerOfTwoEncodings) {
    const auto longest = [](int codeSet, const char* text) {
        const CodeSetGuard guard(codeSet);
        return MaxStringLengthOnWinAndUnix(text);
    };
    EXPECT_EQ(longest(5, "\xA1\xB2\xDF"), 6u);
    EXPECT_EQ(longest(5, "a\x82\xA0"), 3u);
    EXPECT_EQ(longest(5, "\x82"), 2u);
    EXPECT_EQ(longest(5, "\x82\xB1"), 2u);
    EXPECT_EQ(longest(4, "\x8E\xB1"), 2u);
    EXPECT_EQ(longest(9, "\xA4\x40\xC9\x40"), 6u);
    EXPECT_EQ(longest(10, "\x8E\xA2\xA1\xA1"), 4u);
    EXPECT_EQ(AccumulateAsciiForStr("ab\xFF"), 97u + 98u + 255u);
    EXPECT_EQ(AccumulateAsciiForStr(nullptr), 0u);
}

}  // namespace

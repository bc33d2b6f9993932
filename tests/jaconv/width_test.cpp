// Half-width and full-width characters.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "mbutil.h"
#include "tests/support/code_set_guard.h"

namespace {

// Into a buffer of exactly `factor` times the text and a terminator.
std::string Apply(char* (*function)(const char*, char*), const std::string& text,
                  std::size_t factor) {
    const std::vector<char> src(text.c_str(), text.c_str() + text.size() + 1);
    std::vector<char> dst(factor * text.size() + 1, '#');
    EXPECT_EQ(function(src.data(), dst.data()), dst.data());
    return dst.data();
}

std::string InEuc(const std::string& shiftJis) {
    std::vector<char> dst(3 * shiftJis.size() + 1);
    return convertStrExt(shiftJis.c_str(), mbShiftJis, dst.data(), mbEucJp);
}

}  // namespace

TEST(HanToZen, WidensAsciiAndKatakana) {
    const struct {
        int line;
        std::string text, expected;  // in Shift-JIS
    } kRows[] = {
        {__LINE__, "", ""},
        {__LINE__, " !09AZaz", "\x81\x40\x81\x49\x82\x4F\x82\x58\x82\x60\x82\x79\x82\x81\x82\x9A"},
        {__LINE__, "\\~\"'", "\x81\x5F\x81\x60\x81\x68\x81\x66"},
        {__LINE__, "\t\n\x7F", "\t\n\x7F"},
        {__LINE__, "\xA1\xB1\xDD\xDF", "\x81\x42\x83\x41\x83\x93\x81\x4B"},
        {__LINE__, "\xB6\xDE\xC4\xDE\xCA\xDE\xCE\xDE", "\x83\x4B\x83\x68\x83\x6F\x83\x7B"},
        {__LINE__, "\xCA\xDF\xCE\xDF\xB3\xDE", "\x83\x70\x83\x7C\x83\x94"},
        {__LINE__, "\xB6\xDF\xB1\xDE\xC5\xDE\xDE",
         "\x83\x4A\x81\x4B\x83\x41\x81\x4A\x83\x69\x81\x4A\x81\x4A"},
        {__LINE__, "\xB6\x82\xDE\xDE", "\x83\x4A\x82\xDE\x81\x4A"},
        {__LINE__, "\x82\xA0\x83\x5C", "\x82\xA0\x83\x5C"},
        {__LINE__, "\xB6", "\x83\x4A"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        {
            const CodeSetGuard shiftJis(mbShiftJis);
            EXPECT_EQ(Apply(mbHanToZenStr, row.text, 2), row.expected);
        }
        const CodeSetGuard euc(mbEucJp);
        EXPECT_EQ(Apply(mbHanToZenStr, InEuc(row.text), 2), InEuc(row.expected));
    }
}

TEST(HanToZen, KeepsCharactersWithoutWidth) {
    const CodeSetGuard euc(mbEucJp);
    EXPECT_EQ(Apply(mbHanToZenStr, "\x8F\xB0\xA1\xFF\x8E", 2), "\x8F\xB0\xA1\xFF\x8E");
    EXPECT_EQ(mbHanToZenStr(nullptr, nullptr), nullptr);
    InitMbutilExt(mbWestern);
    EXPECT_EQ(Apply(mbHanToZenStr, "ab 12", 1), "ab 12");
}

TEST(NumberWidth, ConvertsBothWaysInEveryCodeSet) {
    const struct {
        int codeSet;
        std::string full;  // of +-.,019
    } kRows[] = {
        {mbEucJp, "\xA1\xDC\xA1\xDD\xA1\xA5\xA1\xA4\xA3\xB0\xA3\xB1\xA3\xB9"},
        {mbShiftJis, "\x81\x7B\x81\x7C\x81\x44\x81\x43\x82\x4F\x82\x50\x82\x58"},
        {mbGb2312, "\xA3\xAB\xA3\xAD\xA3\xAE\xA3\xAC\xA3\xB0\xA3\xB1\xA3\xB9"},
        {mbEucCn, "\xA3\xAB\xA3\xAD\xA3\xAE\xA3\xAC\xA3\xB0\xA3\xB1\xA3\xB9"},
        {mbBig5, "\xA1\xCF\xA1\xD0\xA1\x44\xA1\x41\xA2\xAF\xA2\xB0\xA2\xB8"},
        {mbEucTw, "\xA2\xB0\xA2\xB1\xA1\xA5\xA1\xA2\xA4\xA1\xA4\xA2\xA4\xAA"},
        {mbKorean, "\xA3\xAB\xA3\xAD\xA3\xAE\xA3\xAC\xA3\xB0\xA3\xB1\xA3\xB9"},
        {mbEucKr, "\xA3\xAB\xA3\xAD\xA3\xAE\xA3\xAC\xA3\xB0\xA3\xB1\xA3\xB9"},
    };
    const std::string half = "+-.,019";
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.codeSet);
        const CodeSetGuard guard(row.codeSet);
        EXPECT_EQ(Apply(ConvertSBNumberToMBNumber, "a" + half + "/:", 2), "a" + row.full + "/:");
        EXPECT_EQ(Apply(ConvertMBNumberToSBNumber, "a" + row.full + "1:", 1), "a" + half + "1:");
        // The same characters by way of Unicode.
        char utf8[64];
        ASSERT_EQ(mbConvert(row.full.data(), row.full.size(), row.codeSet, utf8, sizeof utf8,
                            mbUtf8, nullptr),
                  1);
        EXPECT_STREQ(utf8,
                     "\xEF\xBC\x8B\xEF\xBC\x8D\xEF\xBC\x8E\xEF\xBC\x8C\xEF\xBC\x90\xEF\xBC\x91"
                     "\xEF\xBC\x99");
    }
    for (const int codeSet : {mbWestern, mbJis, mbJohab, mbUtf8}) {
        const CodeSetGuard guard(codeSet);
        EXPECT_EQ(Apply(ConvertSBNumberToMBNumber, half, 1), half);
        EXPECT_EQ(Apply(ConvertMBNumberToSBNumber, kRows[0].full, 1), kRows[0].full);
    }
}

TEST(NumberWidth, ConvertsWholeCharactersInPlace) {
    const CodeSetGuard guard(mbShiftJis);
    // The second byte of a kanji is no digit, and half a number is none.
    EXPECT_EQ(Apply(ConvertSBNumberToMBNumber, "\x83\x2B\x83\x5C", 2), "\x83\x81\x7B\x83\x5C");
    EXPECT_EQ(Apply(ConvertMBNumberToSBNumber, "\x82\xA0\x82\x59\x82", 1), "\x82\xA0\x82\x59\x82");
    char text[] = "No. \x82\x50\x82\x51\x81\x43\x82\x52\x82\xA0";
    EXPECT_STREQ(ConvertMBNumberToSBNumber(text, text), "No. 12,3\x82\xA0");
    EXPECT_EQ(ConvertMBNumberToSBNumber(nullptr, text), nullptr);
    EXPECT_EQ(ConvertSBNumberToMBNumber(text, nullptr), nullptr);
}

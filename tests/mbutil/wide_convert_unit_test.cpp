// Text of the current code set as 16-bit characters and back; fuzz/wide_unit_fuzz.cpp tries every
// room.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "genutil/mbutil/wide_convert.h"
#include "mbutil.h"
#include "tests/support/code_set_guard.h"

using namespace genutil;

namespace {

using Units = std::u16string;

const unsigned short* Wide(const Units& units) {
    return reinterpret_cast<const unsigned short*>(units.c_str());
}

}  // namespace

TEST(WideText, ConvertsBothWays) {
    const struct {
        int line, codeSet;
        std::string bytes;
        Units units;
    } kRows[] = {
        {__LINE__, mbWestern, "caf\xE9 \x80", u"caf\u00E9 \u20AC"},
        {__LINE__, 77, "caf\xE9", u"caf\u00E9"},
        {__LINE__, mbUtf16, "caf\xE9", u"caf\u00E9"},
        {__LINE__, mbShiftJis, "0123456789abcdef\x82\xA0\xB1z\x89\xBF",
         u"0123456789abcdef\u3042\uFF71z\u4FA1"},
        {__LINE__, mbEucJp, "\xA4\xA2\x8E\xB1\x8F\xB0\xA1", u"\u3042\uFF71\u4E02"},
        {__LINE__, mbJis, "a\x1B$B$\"\x1B(I1\x1B$(D0!\x1B(Bz", u"a\u3042\uFF71\u4E02z"},
        {__LINE__, mbGb2312, "\x80\xC4\xE3\x81\x40", u"\u20AC\u4F60\u4E02"},
        {__LINE__, mbEucTw, "\xC4\xA1\x8E\xA2\xA1\xA1", u"\u4E00\u4E42"},
        {__LINE__, mbIso2022Kr, "\x1B$)Cab\x0E\x30!\x0Fz", u"ab\uAC00z"},
        {__LINE__, mbIso2022Cn, "\x1B$)A\x0E\x44\x63\x0F\n\x1B$)G\x0E\x44!\x0F", u"\u4F60\n\u4E00"},
        {__LINE__, mbUtf8, "a\xC3\xA9\xE3\x81\x82\xF0\x9F\x98\x80", u"a\u00E9\u3042\U0001F600"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        const CodeSetGuard guard(row.codeSet);
        const long characters = static_cast<long>(row.units.size());
        ASSERT_EQ(WideLength(row.bytes.c_str(), row.bytes.size()), characters);
        std::vector<unsigned short> wide(row.units.size() + 1, 0xAAAA);
        ASSERT_EQ(ToWide(wide.data(), wide.size(), row.bytes.c_str(), row.bytes.size()),
                  characters);
        EXPECT_EQ(Units(wide.begin(), wide.end() - 1), row.units);
        EXPECT_EQ(wide.back(), 0);

        const long bytes = static_cast<long>(row.bytes.size());
        if (row.codeSet == mbIso2022Cn) continue;  // there are other ways to write it
        ASSERT_EQ(NarrowLength(Wide(row.units)), bytes);
        std::string narrow(row.bytes.size() + 1, '#');
        ASSERT_EQ(ToNarrow(narrow.data(), narrow.size(), Wide(row.units)), bytes);
        EXPECT_EQ(narrow, row.bytes + '\0');
    }
}

TEST(WideText, StopsAtTerminatorAndByteCount) {
    const CodeSetGuard guard(mbShiftJis);
    EXPECT_EQ(WideLength("ab\0cd", 5), 2);
    EXPECT_EQ(WideLength("ab\x82\xA0", 2), 2);
    EXPECT_EQ(WideLength("ab", static_cast<std::size_t>(-1) / 2), 2);
    EXPECT_EQ(WideLength("\x82\0\xA0", 3), -1);  // the terminator is no trail byte
    EXPECT_EQ(WideLength("", 0), 0);
}

TEST(WideText, RefusesInvalidText) {
    const auto expectInvalid = [](int codeSet, std::initializer_list<const char*> texts) {
        const CodeSetGuard guard(codeSet);
        unsigned short out[8];
        for (const char* text : texts) {
            EXPECT_EQ(WideLength(text, std::strlen(text)), -1) << text;
            EXPECT_EQ(ToWide(out, 8, text, std::strlen(text)), -1) << text;
        }
    };
    expectInvalid(mbShiftJis, {"a\x82", "\x82\x3F", "\x81\xAD"});
    expectInvalid(mbEucJp, {"\x8E\xE0", "\x80"});
    expectInvalid(mbUtf8,
                  {"\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE3\x81"});
    expectInvalid(mb8859_7, {"\xAE"});
    expectInvalid(mbJis, {"\x1B$B$"});
    expectInvalid(mbIso2022Kr, {"\x0E\x30!"});
    expectInvalid(mbEucTw, {"\x8E\xA4\xA1\xA1"});
    const CodeSetGuard guard(mbShiftJis);
    for (const Units& units :
         {Units(u"a\u0E01"), Units(u"\xD800"), Units(u"\xDE00"), Units(u"\U0001F600")}) {
        char narrow[16];
        EXPECT_EQ(NarrowLength(Wide(units)), -1);
        EXPECT_EQ(ToNarrow(narrow, sizeof narrow, Wide(units)), -1);
    }
}

TEST(WideText, InvalidBytesComeBackUnchanged) {
    for (const int codeSet : {0, 3, 4, 5, 7, 8, 9, 10, 11, 12, 13, 19, 41, 42, 64, 65}) {
        const CodeSetGuard guard(codeSet);
        std::string bytes;
        for (unsigned byte = 1; byte < 256; ++byte)
            if (codeSet != mbIso2022Kr || byte >= 0x80) bytes += static_cast<char>(byte);
        std::vector<unsigned short> wide(bytes.size() + 1);
        ToWideBytewise(wide.data(), bytes.c_str(), bytes.size());
        const bool escapes = codeSet == mbJis || codeSet == mbIso2022Cn || codeSet == mbIso2022Kr;
        if (escapes)  // three controls have no code of their own there
            for (unsigned short& unit : wide)
                if (unit == 0x1B || unit == 0x0E || unit == 0x0F)
                    unit = static_cast<unsigned short>(kRawByte + unit);
        std::string back(bytes.size(), '#');
        EXPECT_EQ(ToNarrow(back.data(), back.size(), wide.data()), static_cast<long>(bytes.size()))
            << codeSet;
        EXPECT_EQ(back, bytes) << codeSet;
    }
    const CodeSetGuard guard(mbUtf8);
    const Units pair = u"\U0001F480";  // its low half must not be taken for a raw byte
    EXPECT_EQ(NarrowLength(Wide(pair)), 4);
}

TEST(WideText, LossyConversionReplacesCharacters) {
    const CodeSetGuard guard(mbShiftJis);
    char out[16];
    const auto narrow = [&](const Units& units, std::size_t limit) {
        return ToNarrowLossy(out, limit, Wide(units), units.size());
    };
    EXPECT_EQ(narrow(u"a\u0E01\u3042\U0001F600\xD800", 16), 6);
    EXPECT_STREQ(out, "a?\x82\xA0??");
    InitMbutilExt(mbJis);
    EXPECT_EQ(narrow(u"\u3042\u0E01", 16), 9);
    EXPECT_STREQ(out, "\x1B$B$\"\x1B(B?");
    EXPECT_EQ(narrow(u"\u3042\u3042", 8), 8);
}

TEST(WideText, ConvertsSingleCharacters) {
    unsigned short unit = 0;
    char bytes[4];
    const CodeSetGuard guard(mbShiftJis);
    EXPECT_EQ(ToWideCharacter(&unit, "\x82\xA0\x82", 3), 2);
    EXPECT_EQ(unit, 0x3042);
    EXPECT_EQ(ToWideCharacter(&unit, "\x82\xA0", 1), -1);
    EXPECT_EQ(ToWideCharacter(&unit, "", 1), 0);
    EXPECT_EQ(ToWideCharacter(&unit, "a", 0), 0);
    EXPECT_EQ(ToNarrowCharacter(bytes, 0x3042), 2);
    EXPECT_EQ(ToNarrowCharacter(bytes, 0x0E01), -1);
    EXPECT_EQ(ToNarrowCharacter(bytes, kRawByte + 0x82), 1);
    EXPECT_EQ(static_cast<unsigned char>(bytes[0]), 0x82);
    InitMbutilExt(mbEucTw);
    EXPECT_EQ(ToNarrowCharacter(bytes, 0x4E42), 4);
    InitMbutilExt(mbUtf8);
    EXPECT_EQ(ToWideCharacter(&unit, "\xF0\x9F\x98\x80", 4), -1);  // takes two units
    EXPECT_EQ(ToWideCharacter(&unit, "\xE3\x81\x82", 3), 3);
    InitMbutilExt(mbJis);
    EXPECT_EQ(ToWideCharacter(&unit, "\x1B$B$\"\x1B(B", 8), 5);
    EXPECT_EQ(unit, 0x3042);
    EXPECT_EQ(ToWideCharacter(&unit, "\x1B[m", 3), 1);  // no escape sequence
    EXPECT_EQ(unit, 0x1B);
    EXPECT_EQ(ToNarrowCharacter(bytes, 0x3042), -1);  // would need escapes around it
    InitMbutilExt(mbIso2022Kr);
    EXPECT_EQ(ToNarrowCharacter(bytes, 'a'), 1);
}

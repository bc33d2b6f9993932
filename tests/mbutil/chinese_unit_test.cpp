// Big5 and CNS 11643: the correspondence, and conversion to and from EUC-TW.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>

#include "genutil/mbutil/chinese.h"
#include "tests/support/run_converter.h"

using namespace genutil;

namespace {

std::map<unsigned, unsigned> AllOfCns() {
    std::map<unsigned, unsigned> table;
    for (unsigned cns = 0; cns < 0x50000; ++cns)
        if (const unsigned code = Big5FromCns(cns)) table[cns] = code;
    return table;
}

std::string EucTw(unsigned cns) {
    const std::string pair = Pair((cns & 0xFFFF) | 0x8080);
    return cns >> 16 == 1 ? pair : Pair(0x8EA0 + (cns >> 16)) + pair;
}

}  // namespace

// 408 + 63 symbols (33 of them for control characters), 5401 and 7652 hanzi, and of the common
// extension 30 digits, 25 radicals, 7 hanzi and 8 line-drawing characters.
TEST(Chinese, TablesHaveThePublishedChecksums) {
    std::size_t big5 = 0, cns = 0;
    std::uint32_t sum = 2166136261u;
    const auto add = [&](unsigned key, unsigned value) {
        for (const unsigned part : {key, value}) sum = (sum ^ part) * 16777619u;
    };
    for (unsigned code = 0; code < 0x10000; ++code)
        if (const unsigned found = CnsFromBig5(code)) ++big5, add(code, found);
    EXPECT_EQ(sum, 0x4ed98f76u);
    sum = 2166136261u;
    for (const auto& [key, code] : AllOfCns()) ++cns, add(key, code);
    EXPECT_EQ(sum, 0xf1a2971du);
    EXPECT_EQ(big5, 13564u);
    EXPECT_EQ(cns, big5 - 2 - 8) << "Big5 has some characters twice";
}

TEST(Chinese, EveryCharacterConvertsAndComesBack) {
    EXPECT_EQ(CnsFromBig5(0x1A440) + CnsFromBig5(0x2440) + Big5FromCns(0x412121), 0u);
    std::string big5, eucTw;
    for (const auto& [cns, code] : AllOfCns()) {
        EXPECT_EQ(CnsFromBig5(code), cns);
        EXPECT_EQ(RunConverter(Big5ToEucTw, Pair(code)).text, EucTw(cns));
        big5 += Pair(code) + "a";
        eucTw += EucTw(cns) + "a";
    }
    for (const std::string& gap : {std::string(), std::string(5, ' '), std::string(40, 'x')}) {
        const Converted there = RunConverter(Big5ToEucTw, big5 + gap + big5);
        EXPECT_EQ(there.text, eucTw + gap + eucTw);
        const Converted back = RunConverter(EucTwToBig5, there.text);
        EXPECT_EQ(back.text, big5 + gap + big5);
        EXPECT_EQ(there.lostAt + back.lostAt, "");
    }
}

TEST(Chinese, ReplacesEachLostCharacter) {
    using std::string_literals::operator""s;
    ExpectRows(
        RelatedConverter,
        {
            {__LINE__, 9, 10, "a\0b"s, "a\0b"s},
            {__LINE__, 9, 10, "z\xFE\xFEz", "z?z", "1 "},  // valid, without counterpart
            {__LINE__, 9, 10, "\xA4", "?", "0 "},          // cut short
            {__LINE__, 9, 10, "\xA4 \xA4\x40\xA4\x7F", "? \xC4\xA1?\x7F",
             "0 4 "},  // no trail bytes
            {__LINE__, 9, 10, "\x80\xA0\xFF\x81\x40", "????@", "0 1 2 3 "},
            {__LINE__, 9, 10, "\xC9\x40\xF9\xD6", "\x8E\xA2\xA1\xA1\x8E\xA3\xC3\xB7"},
            {__LINE__, 10, 9, "a\0b"s, "a\0b"s},
            {__LINE__, 10, 9, "\x8E\xA1\xC4\xA1", "\xA4\x40"},  // plane 1 in the long form
            {__LINE__, 10, 9, "\x8E\xA3\xA1\xA1\x8E\xB0\xA1\xA1", "??", "0 4 "},
            {__LINE__, 10, 9, "\xC4z\xC4", "?z?", "0 2 "},
            {__LINE__, 10, 9, "\x8E\xA2\xC4", "?\xA1\xE3", "0 "},  // cut short: 8E, then A2 C4
            {__LINE__, 10, 9, "\x8E\xB1z", "??z", "0 1 "},
            {__LINE__, 10, 9, "\xFE\xFE\x80\x8F\xA0\xFF", "?????", "0 2 3 4 5 "},
        });
}

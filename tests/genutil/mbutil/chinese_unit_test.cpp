// Big5 and CNS 11643: the correspondence, and conversion to and from EUC-TW.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>

#include "genutil/mbutil/chinese.h"
#include "tests/support/run_converter.h"

using namespace genutil;

namespace {

std::uint32_t Checksum(const std::map<unsigned, unsigned>& table) {
    std::uint32_t sum = 2166136261u;
    for (const auto& [key, value] : table)
        for (const unsigned part : {key, value}) sum = (sum ^ part) * 16777619u;
    return sum;
}

std::map<unsigned, unsigned> AllOfBig5() {
    std::map<unsigned, unsigned> table;
    for (unsigned code = 0; code < 0x10000; ++code)
        if (const unsigned cns = CnsFromBig5(code)) table[code] = cns;
    return table;
}

std::map<unsigned, unsigned> AllOfCns() {
    std::map<unsigned, unsigned> table;
    for (unsigned cns = 0; cns < 0x50000; ++cns)
        if (const unsigned code = Big5FromCns(cns)) table[cns] = code;
    return table;
}

std::string Pair(unsigned code) {
    return {static_cast<char>(code >> 8), static_cast<char>(code)};
}

std::string EucTw(unsigned cns) {
    const std::string pair = Pair((cns & 0xFFFF) | 0x8080);
    return cns >> 16 == 1 ? pair : Pair(0x8EA0 + (cns >> 16)) + pair;
}

}  // namespace

// 408 + 63 symbols (33 of them for control characters), 5401 and 7652 hanzi, and of the common
// extension 30 digits, 25 radicals, 7 hanzi and 8 line-drawing characters.
TEST(Chinese, TableIsThePublishedOne) {
    const auto big5 = AllOfBig5(), cns = AllOfCns();
    EXPECT_EQ(big5.size(), 13564u);
    EXPECT_EQ(cns.size(), big5.size() - 2 - 8) << "what Big5 has twice";
    EXPECT_EQ(Checksum(big5), 0x4ed98f76u);
    EXPECT_EQ(Checksum(cns), 0xf1a2971du);
}

// Hanzi that Big5 has twice, variants, and what lies outside of the table.
TEST(Chinese, CharactersOutOfOrder) {
    const struct {
        unsigned big5, cns, back;
    } kRows[] = {{0xC255, 0x17641, 0xC255}, {0xC94A, 0x14442, 0xA461},
                 {0xDDFC, 0x24176, 0xDCD1}, {0xF9D6, 0x34337, 0xF9D6},
                 {0xF9F9, 0x12344, 0xA2A4}, {0xA3E1, 0, 0},
                 {0x1A440, 0, 0},           {0x2440, 0, 0}};
    for (const auto& row : kRows) {
        EXPECT_EQ(CnsFromBig5(row.big5), row.cns);
        EXPECT_EQ(Big5FromCns(row.cns), row.back);
    }
}

TEST(Chinese, EveryCharacterConvertsAndComesBack) {
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

TEST(Chinese, LosesOneSubstitutePerCharacter) {
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

// Every room that is too small gives the characters that fit, and no more is written.
TEST(Chinese, StopsBeforeACharacterWithoutRoom) {
    const std::string big5 = "ab\xA4\x40\xA4\x41\xC9\x40, plain text of some length\xFF\xA4\x40z";
    const std::string eucTw = RunConverter(Big5ToEucTw, big5).text;
    const struct {
        Converter converter;
        const std::string &text, whole;
    } kRows[] = {{Big5ToEucTw, big5, eucTw},
                 {EucTwToBig5, eucTw, RunConverter(EucTwToBig5, eucTw).text}};
    for (const auto& row : kRows) {
        std::size_t last = 0;
        for (std::size_t room = 0; room <= row.whole.size(); ++room) {
            const Converted outcome = RunConverter(row.converter, row.text, room);
            EXPECT_EQ(outcome.all, room == row.whole.size()) << room;
            EXPECT_EQ(outcome.text, row.whole.substr(0, outcome.text.size())) << room;
            EXPECT_LE(room - outcome.text.size(), 3u) << room;
            EXPECT_GE(outcome.text.size(), last) << room;
            last = outcome.text.size();
        }
    }
}

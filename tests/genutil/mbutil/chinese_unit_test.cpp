// Big5 and CNS 11643: the correspondence, and conversion to and from EUC-TW.
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

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

TEST(Chinese, CharactersOutOfOrder) {
    const struct {
        int line;
        unsigned big5, cns, back;
    } kRows[] = {
        {__LINE__, 0xA140, 0x12121, 0xA140},
        {__LINE__, 0xA1F5, 0x12256, 0xA1F5},
        {__LINE__, 0xA1F6, 0x12258, 0xA1F6},
        {__LINE__, 0xA1F7, 0x12257, 0xA1F7},
        {__LINE__, 0xA2CC, 0x1243E, 0xA2CC},  // numerals that look like hanzi
        {__LINE__, 0xA2CE, 0x12440, 0xA2CE},
        {__LINE__, 0xA3E0, 0x14241, 0xA3E0},
        {__LINE__, 0xA3E1, 0, 0},  // the euro sign came later
        {__LINE__, 0xA440, 0x14421, 0xA440},
        {__LINE__, 0xACFE, 0x15753, 0xACFE},
        {__LINE__, 0xBE52, 0x16B50, 0xBE52},
        {__LINE__, 0xC1AA, 0x17534, 0xC1AA},
        {__LINE__, 0xC255, 0x17641, 0xC255},  // not its variant in plane 3
        {__LINE__, 0xC2CB, 0x17535, 0xC2CB},
        {__LINE__, 0xC3B9, 0x17865, 0xC3B9},
        {__LINE__, 0xC3BA, 0x17864, 0xC3BA},
        {__LINE__, 0xC456, 0x1782D, 0xC456},
        {__LINE__, 0xC67E, 0x17D4B, 0xC67E},
        {__LINE__, 0xC6A1, 0x12621, 0xC6A1},
        {__LINE__, 0xC6D7, 0x1286C, 0xC6D7},
        {__LINE__, 0xC6D8, 0, 0},
        {__LINE__, 0xC940, 0x22121, 0xC940},
        {__LINE__, 0xA461, 0x14442, 0xA461},
        {__LINE__, 0xC94A, 0x14442, 0xA461},  // hanzi that Big5 has twice
        {__LINE__, 0xDCD1, 0x24176, 0xDCD1},
        {__LINE__, 0xDDFC, 0x24176, 0xDCD1},
        {__LINE__, 0xD77A, 0x23F6A, 0xD77A},
        {__LINE__, 0xF9C6, 0x27240, 0xF9C6},
        {__LINE__, 0xF9D5, 0x27244, 0xF9D5},
        {__LINE__, 0xF9D6, 0x34337, 0xF9D6},
        {__LINE__, 0xF9DC, 0x34B5C, 0xF9DC},
        {__LINE__, 0xF9DD, 0, 0},
        {__LINE__, 0xF9F9, 0x12344, 0xA2A4},
        {__LINE__, 0xF9FE, 0, 0},
        {__LINE__, 0x8140, 0, 0},
        {__LINE__, 0xFEFE, 0, 0},
        {__LINE__, 0x1A440, 0, 0},
        {__LINE__, 0x2440, 0, 0},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
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
        EXPECT_TRUE(there.lostAt.empty() && back.lostAt.empty());
    }
}

TEST(Chinese, LosesOneSubstitutePerCharacter) {
    using std::string_literals::operator""s;
    const struct {
        int line;
        Converter converter;
        std::string text, expected;
        std::vector<std::size_t> lostAt;
    } kRows[] = {
        {__LINE__, Big5ToEucTw, "", "", {}},
        {__LINE__, Big5ToEucTw, "a\0b"s, "a\0b"s, {}},
        {__LINE__,
         Big5ToEucTw,
         "a\xFE\xFE"
         "b",
         "a?b",
         {1}},                                                        // valid, without counterpart
        {__LINE__, Big5ToEucTw, "\xA4", "?", {0}},                    // cut short
        {__LINE__, Big5ToEucTw, "\xA4 \xA4\x40", "? \xC4\xA1", {0}},  // not a trail byte
        {__LINE__, Big5ToEucTw, "\xA4\x7F", "?\x7F", {0}},
        {__LINE__, Big5ToEucTw, "\x80\xA0\xFF\x81\x40", "????@", {0, 1, 2, 3}},
        {__LINE__, Big5ToEucTw, "\xC9\x40\xF9\xD6", "\x8E\xA2\xA1\xA1\x8E\xA3\xC3\xB7", {}},
        {__LINE__, EucTwToBig5, "a\0b"s, "a\0b"s, {}},
        {__LINE__, EucTwToBig5, "\x8E\xA1\xC4\xA1", "\xA4\x40", {}},  // plane 1 in the long form
        {__LINE__, EucTwToBig5, "\x8E\xA3\xA1\xA1\x8E\xB0\xA1\xA1", "??", {0, 4}},
        {__LINE__, EucTwToBig5, "\xC4", "?", {0}},
        {__LINE__, EucTwToBig5, "\xC4z", "?z", {0}},
        {__LINE__, EucTwToBig5, "\x8E\xA2\xC4", "?\xA1\xE3", {0}},  // cut short: 8E, then A2 C4
        {__LINE__, EucTwToBig5, "\x8E\xB1z", "??z", {0, 1}},
        {__LINE__, EucTwToBig5, "\xFE\xFE", "?", {0}},
        {__LINE__, EucTwToBig5, "\x80\x8F\xA0\xFF", "????", {0, 1, 2, 3}},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        const Converted outcome = RunConverter(row.converter, row.text);
        EXPECT_TRUE(outcome.all);
        EXPECT_EQ(outcome.text, row.expected);
        EXPECT_EQ(outcome.lostAt, row.lostAt);
    }
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

// Shift-JIS, EUC-JP and JIS among each other. fuzz/japanese_fuzz.cpp compares the fast loops with
// single characters and tries any room.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "genutil/jaconv/jis.h"
#include "mbutil.h"
#include "tests/support/run_converter.h"

using namespace genutil;
using std::string_literals::operator""s;

namespace {

const std::string kKanjiIn = "\x1B$B", kAsciiIn = "\x1B(B";

// The trail bytes of Shift-JIS in order, 188 to a lead byte: two rows of JIS.
std::vector<unsigned> TrailBytes() {
    std::vector<unsigned> trails;
    for (unsigned b = 0x40; b <= 0xFC; ++b)
        if (b != 0x7F) trails.push_back(b);
    return trails;
}

// One character in the three encodings; JIS without escapes.
struct Character {
    std::string shiftJis, euc, jis;
};

// All 94 rows in the order of each encoding.
std::vector<Character> AllKanji() {
    std::vector<Character> all;
    const auto trails = TrailBytes();
    unsigned row = 0x21, cell = 0x21;
    for (unsigned lead = 0x81; lead <= 0xEF; ++lead) {
        if (lead == 0xA0) lead = 0xE0;
        for (const unsigned trail : trails) {
            const unsigned jis = row << 8 | cell;
            all.push_back({Pair(lead << 8 | trail), Pair(jis | 0x8080), Pair(jis)});
            if (++cell == 0x7F) {
                cell = 0x21;
                ++row;
            }
        }
    }
    return all;
}

void ExpectLossless(Converter converter, const std::string& text, const std::string& expected) {
    EXPECT_EQ(RunConverter(converter, text), (Converted{expected, "", true, text.size()}));
}

}  // namespace

TEST(JapaneseConversion, ConvertsEveryKanjiAloneAndInARun) {
    const auto all = AllKanji();
    ASSERT_EQ(all.size(), 94u * 94u);
    Character run;
    for (const Character& c : all) {
        ExpectLossless(ShiftJisToEucJp, c.shiftJis, c.euc);
        ExpectLossless(EucJpToShiftJis, c.euc, c.shiftJis);
        ExpectLossless(ShiftJisToJis, c.shiftJis, kKanjiIn + c.jis + kAsciiIn);
        ExpectLossless(JisToEucJp, kKanjiIn + c.jis + kAsciiIn, c.euc);
        run.shiftJis += c.shiftJis;
        run.euc += c.euc;
        run.jis += c.jis;
    }
    // At every position in a block of 16 bytes.
    for (unsigned shift = 0; shift < 16; ++shift) {
        const std::string plain(shift, 'x'), jis = plain + kKanjiIn + run.jis + kAsciiIn;
        ExpectLossless(ShiftJisToEucJp, plain + run.shiftJis, plain + run.euc);
        ExpectLossless(EucJpToShiftJis, plain + run.euc, plain + run.shiftJis);
        ExpectLossless(ShiftJisToJis, plain + run.shiftJis, jis);
        ExpectLossless(EucJpToJis, plain + run.euc, jis);
        ExpectLossless(JisToShiftJis, jis, plain + run.shiftJis);
        ExpectLossless(JisToEucJp, jis, plain + run.euc);
    }
}

// Shift-JIS has 388 characters twice.
TEST(JapaneseConversion, DuplicateCodesKeepTheirCharacters) {
    std::set<std::string> seen;
    for (unsigned lead = 0xFA; lead <= 0xFC; ++lead)
        for (const unsigned trail : TrailBytes()) {
            const std::string code = Pair(lead << 8 | trail);
            if (code > "\xFC\x4B") break;
            const Converted euc = RunConverter(ShiftJisToEucJp, code);
            EXPECT_EQ(euc.lostAt, "");
            EXPECT_TRUE(seen.insert(euc.text).second);
            EXPECT_EQ(RunConverter(ThroughUnicode(mbEucJp, mbUtf16), euc.text).text,
                      RunConverter(ThroughUnicode(mbShiftJis, mbUtf16), code).text);
        }
    EXPECT_EQ(seen.size(), 388u);
}

TEST(JapaneseConversion, ConvertsKnownTexts) {
    ExpectRows(
        RelatedConverter,
        {
            // Supplementary kanji are in EUC-JP and JIS only.
            {__LINE__, 4, 3, "\x8F\xB0\xA1\x8F\xED\xE3z", "\x1B$(D0!mc\x1B(Bz"},
            {__LINE__, 3, 4, "\x1B$(D0!mc\x1B(Bz", "\x8F\xB0\xA1\x8F\xED\xE3z"},
            {__LINE__, 4, 3, "\x8F\xB0\xA1\xB0\xA1\x8E\xB1\x8F\xB0\xA1",
             "\x1B$(D0!\x1B$B0!\x1B(I1\x1B$(D0!\x1B(B"},
            {__LINE__, 4, 5, "z\x8F\xB0\xA1z", "z\x81\xACz", "1 "},
            {__LINE__, 3, 5, "\x1B$(D0!0\"", "\x81\xAC\x81\xAC", "4 6 "},
            // One substitute for each character or invalid byte.
            {__LINE__, 5, 4, "", ""},
            {__LINE__, 5, 4, "z\0\x82\xA0\0"s, "z\0\xA4\xA2\0"s},
            {__LINE__, 5, 4, "\x80\xA0\xFD\xFF", "\xA2\xAE\xA2\xAE\xA2\xAE\xA2\xAE", "0 1 2 3 "},
            {__LINE__, 5, 4, "z\x82", "z\xA2\xAE", "1 "},    // cut short
            {__LINE__, 5, 4, "\x82\n", "\xA2\xAE\n", "0 "},  // not a trail byte
            {__LINE__, 5, 4, "\x82\x7F", "\xA2\xAE", "0 "},  // stepped as one
            {__LINE__, 5, 4, "\x82\xFD\x82\xA0", "\xA2\xAE\xA2\xAE\xA4\xA2", "0 1 "},
            {__LINE__, 5, 4, "\xF0\x40\xF9\xFCz", "\xA2\xAE\xA2\xAEz", "0 2 "},  // the user's
            {__LINE__, 5, 4, "\xFC\x4C\xF0\x7F", "\xA2\xAE\xA2\xAE\x7F", "0 2 "},
            {__LINE__, 4, 5, "\x80\x90\xA0\xFF", "\x81\xAC\x81\xAC\x81\xAC\x81\xAC", "0 1 2 3 "},
            {__LINE__, 4, 5, "\xA4z\xA4\xA2\xA4", "\x81\xACz\x82\xA0\x81\xAC", "0 4 "},
            {__LINE__, 4, 5, "\x8E\xE0\xA1\x8E", "\x81\xAC\xE0\x9F\x81\xAC", "0 3 "},
            {__LINE__, 4, 5, "\x8F\xB0\xA1\x8F\xB0", "\x81\xAC\x81\xAC\x81\xAC", "0 3 4 "},
            {__LINE__, 5, 3, "z\xFF\xF0\x40z", "z\x1B$B\".\".\x1B(Bz", "1 2 "},
            {__LINE__, 3, 5, "\x1B$B$\xFF$\"$", "\x81\xAC\x81\xAC\x82\xA0\x81\xAC", "3 4 7 "},
            {__LINE__, 3, 5, "\x1B(I1`~2", "\xB1\x81\xAC\x81\xAC\xB2", "4 5 "},
            {__LINE__, 3, 5, "\x80\xA0\xE0", "\x81\xAC\x81\xAC\x81\xAC", "0 1 2 "},
            // Variants seen in JIS texts.
            {__LINE__, 3, 5, "z\x1B$@$\"\x1B(Jz\x1B&@\x1B$B$\"\x1B(H", "z\x82\xA0z\x82\xA0"},
            {__LINE__, 3, 5, "\x1B$(B$\"\x1B(Bz\x1B$(@$\"", "\x82\xA0z\x82\xA0"},
            {__LINE__, 3, 5, "\x1B(I1 2\t3\x1B(Bz", "\xB1 \xB2\t\xB3z"},
            {__LINE__, 3, 5, "z\x0E\x31\x0F\x1B$B$\"\x0E\x31\x0F$\"", "z\xB1\x82\xA0\xB1\x82\xA0"},
            {__LINE__, 3, 5, "z\xB1\x1B$B$\"\xB1$\"", "z\xB1\x82\xA0\xB1\x82\xA0"},
            {__LINE__, 3, 5, "\x1B$B$\"\nzz\r\x1B(I1\rzz", "\x82\xA0\nzz\r\xB1\rzz"},
            {__LINE__, 3, 5, "\x1B$B$\" $\"\0$\""s, "\x82\xA0 \x82\xA0\0\x82\xA0"s},
            // An escape byte that begins none of the sequences is a character.
            {__LINE__, 3, 5, "\x1B[1m\x1B(A\x1B", "\x1B[1m\x1B(A\x1B"},
            {__LINE__, 3, 5, "\x1B$B$\"\x1B\x1B(B$", "\x82\xA0\x1B$"},
            // Portable JIS; bytes that would be read as shifts are lost.
            {__LINE__, 5, 3, "\x82\xA0\n\x82\xA0", "\x1B$B$\"\x1B(B\n\x1B$B$\"\x1B(B"},
            {__LINE__, 5, 3, "\x82\xA0\xB1z\0z"s, "\x1B$B$\"\x1B(I1\x1B(Bz\0z"s},
            {__LINE__, 5, 3, "\x1B[1m", "\x1B[1m"},
            {__LINE__, 5, 3, "\x1B(B", "\x1B$B\".\x1B(B(B", "0 "},
            {__LINE__, 5, 3, "\x82\xA0\x0E\x82\xA0", "\x1B$B$\"\".$\"\x1B(B", "2 "},
            {__LINE__, 5, 3, "some plain text\x0E, and\x0F",
             "some plain text\x1B$B\".\x1B(B, and\x1B$B\".\x1B(B", "15 21 "},
        });
}

// The worst cases: no byte is left after a kanji at the end.
TEST(JapaneseConversion, JisFitsInThreeTimesTheSource) {
    const auto tight = [](Transfer& t) {
        t.threefold = true;
        return ShiftJisToJis(t);
    };
    std::string text;
    for (unsigned n = 1; n < 50; ++n) {
        text += "\x82\xA0z";
        EXPECT_EQ(RunConverter(tight, text, 3 * text.size()).text,
                  RunConverter(ShiftJisToJis, text).text);
    }
    EXPECT_EQ(RunConverter(tight, "\x82\xA0", 6).text, "\x1B$B$\"");
    EXPECT_EQ(RunConverter(tight, "\xB1", 3).text, "\xB1");
    EXPECT_EQ(RunConverter(tight, "\xFF", 3).text, "?");
}

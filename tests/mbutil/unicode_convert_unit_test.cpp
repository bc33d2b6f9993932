// Conversion through Unicode. fuzz/unicode_fuzz.cpp compares the fast loops with single characters
// and tries any room.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "genutil/mbutil/code_page.h"
#include "mbutil.h"
#include "tests/support/run_converter.h"

using namespace genutil;
using std::string_literals::operator""s;

namespace {

Converted Convert(const std::string& text, int from, int to, std::size_t room) {
    return RunConverter(ThroughUnicode(from, to), text, room);
}
Converted Convert(const std::string& text, int from, int to) {
    return RunConverter(ThroughUnicode(from, to), text);
}

std::string Units(const char16_t* units, std::size_t length) {
    return std::string(reinterpret_cast<const char*>(units), length * 2);
}

#define UNITS(text) Units(text, sizeof(text) / 2 - 1)

}  // namespace

TEST(UnicodeConvert, ConvertsKnownTexts) {
    ExpectRows(
        ThroughUnicode,
        {
            {__LINE__, 5, 65, "\x81\x60\x81\x7C\\\xB1\xF0\x40",
             "\xEF\xBD\x9E\xEF\xBC\x8D\\\xEF\xBD\xB1\xEE\x80\x80"},
            {__LINE__, 65, 5, "\xE3\x80\x9C\xE2\x88\x92\xEF\xBD\x9E", "\x81\x60\x81\x7C\x81\x60"},
            {__LINE__, 5, 64, "z\x82\xA0", UNITS(u"z\u3042")},
            {__LINE__, 64, 5, UNITS(u"z\u3042"), "z\x82\xA0"},
            {__LINE__, 0, 65, "\x80\xE9", "\xE2\x82\xAC\xC3\xA9"},
            {__LINE__, 7, 5, "\xC8\xD5\xB1\xBE", "\x93\xFA\x96{"},
            {__LINE__, 11, 12, "\xB0\xA1\xA4\xBB", "\x88\x61\xC4\x41"},
            {__LINE__, 12, 11, "\xC4\x41\x84\x44\xDA\xFE", "\xA4\xBB\xA4\xA3\xA4\xFE"},
            {__LINE__, 65, 64, "z\xF0\x9F\x98\x80", UNITS(u"z\U0001F600")},
            {__LINE__, 64, 65, UNITS(u"z\U0001F600"), "z\xF0\x9F\x98\x80"},
            {__LINE__, 100, 65, "\xC4\xE3\xA8\xBC\x81\x35\xF4\x37\x81\x30\x81\x30\x95\x32\x82\x36z",
             "\xE4\xBD\xA0\xE1\xB8\xBF\xEE\x9F\x87\xC2\x80\xF0\xA0\x80\x80z"},
            {__LINE__, 65, 100, "\xE4\xBD\xA0\xE1\xB8\xBF\xEE\x9F\x87\xC2\x80\xF0\xA0\x80\x80z",
             "\xC4\xE3\xA8\xBC\x81\x35\xF4\x37\x81\x30\x81\x30\x95\x32\x82\x36z"},
            {__LINE__, 100, 65, "\x80\x84\x32\x81\x30z\x81",
             "\xEF\xBF\xBD\xEF\xBF\xBDz\xEF\xBF\xBD", "0 1 6 "},
            {__LINE__, 105, 110, "\xC1\xF1\xA3", "\xA0\x9F\xF1"},
            {__LINE__, 112, 65, "\xFF\xFE\0\0z\0\0\0\0\xF6\x01\0\0\xD8\0\0z"s,
             "z\xF0\x9F\x98\x80\xEF\xBF\xBD\xEF\xBF\xBD", "12 16 "},
            {__LINE__, 65, 113, "z\xF0\x9F\x98\x80", "\0\0\0z\0\1\xF6\0"s},
            {__LINE__, 112, 111, "\0\0\xFE\xFF\0\1\xF6\0"s, "\xD8\x3D\xDE\0"s},
            // Losses: one mark for a character of any length, one for each invalid byte.
            {__LINE__, 65, 5, "\xF0\x9F\x98\x80z\xE0\xB8\x81", "\x81\xACz\x81\xAC", "0 5 "},
            {__LINE__, 65, 4, "\xE0\xB8\x81", "\xA2\xAE", "0 "},
            {__LINE__, 65, 3, "z\xE0\xB8\x81z", "z\x1B$B\".\x1B(Bz", "1 "},
            {__LINE__, 65, 9, "\xE0\xB8\x81", "?", "0 "},
            {__LINE__, 5, 65, "\x82\x3F\x81\xAD\x82", "\xEF\xBF\xBD?\xEF\xBF\xBD\xEF\xBF\xBD",
             "0 2 4 "},
            {__LINE__, 65, 64, "\xE3\x81", UNITS(u"\uFFFD"), "0 "},
            {__LINE__, 65, 5, "\xF0\x9F\x98z\xED\xA0\x80\xC1\x80",
             "\x81\xACz\x81\xAC\x81\xAC\x81\xAC\x81\xAC\x81\xAC", "0 4 5 6 7 8 "},
            {__LINE__, 64, 65, "\x3D\xD8z\0\0\xDEz"s, "\xEF\xBF\xBDz\xEF\xBF\xBD\xEF\xBF\xBD",
             "0 4 6 "},
            {__LINE__, 4, 0, "\x8F\xB0\xA1\x8E\xB1\x8F\xA1\xA1", "???", "0 3 5 "},
            {__LINE__, 10, 65, "\x8E\xA1\xC4\xA1\xC4\xA1", "\xE4\xB8\x80\xE4\xB8\x80"},
            {__LINE__, 10, 65, "\x8E\xA2\xA1\xA1\x8E\xA5\xA1\xA1", "\xE4\xB9\x82\xEF\xBF\xBD",
             "4 "},
            // Escapes: positions are those of characters, each line has its own, texts end in
            // ASCII.
            {__LINE__, 3, 65, "\x1B$B$\"!)\x1B(Bz\x1B(I1", "\xE3\x81\x82\xEF\xBC\x9Fz\xEF\xBD\xB1"},
            {__LINE__, 3, 0, "A\x1B$B$\"\x1B(JB", "A?B", "4 "},
            {__LINE__, 3, 65, "\xB1\x1B$@$\"\x1B[B",
             "\xEF\xBD\xB1\xE3\x81\x82\x1B\xE6\x9D\xAA"},  // no escape, so the set is unchanged
            {__LINE__, 3, 65, "\x1B(I1\x0E\x31\x0F\n1\x1B&@\x1B$(B$\"\n\x1B(Hz\x1B",
             "\xEF\xBD\xB1\xEF\xBD\xB1\n1\xE3\x81\x82\nz\x1B"},
            {__LINE__, 65, 3, "\x1B[\x1B(\x1B$(D\x1B(B",
             "\x1B[\x1B(\x1B$(\x1B$B\".\x1B(B\x1B(\x1B$B\".\x1B(B", "7 10 "},
            {__LINE__, 65, 41, "\xE4\xBD\xA0\n\xE4\xBD\xA0\xE4\xB9\x82",
             "\x1B$)A\x0E\x44\x63\x0F\n\x1B$)A\x0E\x44\x63\x1B$*H\x1BN!!\x0F"},
            {__LINE__, 41, 65, "\x1B$)A\x0E\x44\x63\x1B$*H\x1BN!!\x0F", "\xE4\xBD\xA0\xE4\xB9\x82"},
            {__LINE__, 65, 42, "z\xEA\xB0\x80z", "\x1B$)Cz\x0E\x30!\x0Fz"},
            {__LINE__, 5, 42, "\x1B$B", "\x1B$)C?$B", "0 "},
            // A byte-order mark is dropped and decides the byte order.
            {__LINE__, 65, 5, "\xEF\xBB\xBFz", "z"},
            {__LINE__, 64, 65, "\xFF\xFEz\0"s, "z"},
            {__LINE__, 64, 65, "\xFE\xFF\0z0B"s, "z\xE3\x81\x82"},
            {__LINE__, 64, 5, "\xFE\xFF\x30\x42", "\x82\xA0"},
            {__LINE__, 65, 64, "\xEF\xBB\xBF\xEF\xBB\xBF", UNITS(u"\uFEFF")},
            {__LINE__, 65, 9, "", ""},
        });
}

// One long text of all characters of a code set, to Unicode and back by the fast loops and the
// pivot.
TEST(UnicodeConvert, EveryCharacterComesBack) {
    for (int codeSet = 0; codeSet < kCodePageSlots; ++codeSet) {
        if (!FindListedCodePage(codeSet)) continue;
        SCOPED_TRACE(codeSet);
        std::string everything;
        for (unsigned c = 0x20; c < 0xFFFE; ++c) {
            if (c >= 0xD800 && c < 0xE000) continue;
            const char16_t unit[2] = {static_cast<char16_t>(c), u'\n'};
            everything += Units(unit, 2);
        }
        const Converted encoded = Convert(everything, mbUtf16, codeSet);
        ASSERT_TRUE(encoded.all);
        for (const int pivot : {mbUtf16, mbUtf8}) {
            const Converted decoded = Convert(encoded.text, codeSet, pivot);
            EXPECT_EQ(decoded.lostAt, "");
            const Converted again = Convert(decoded.text, pivot, codeSet);
            EXPECT_EQ(again.lostAt, "");
            EXPECT_TRUE(again.text == encoded.text) << "through " << pivot;
        }
        // All other characters were reported lost.
        const Converted wide = Convert(encoded.text, codeSet, mbUtf16);
        std::size_t same = 0, characters = everything.size() / 4;
        ASSERT_EQ(wide.text.size(), everything.size());
        for (std::size_t i = 0; i < wide.text.size(); i += 4)
            same += wide.text.compare(i, 2, everything, i, 2) == 0;
        const std::size_t variants = codeSet >= mbJis && codeSet <= mbShiftJis ? 7
                                     : codeSet == mbJohab                      ? 94
                                                                               : 0;
        EXPECT_EQ(characters - same, static_cast<std::size_t>(std::count(
                                         encoded.lostAt.begin(), encoded.lostAt.end(), ' ')) +
                                         variants);
    }
}

// Between code sets that convert in chunks: losses far apart, in a row and at the ends of chunks.
TEST(UnicodeConvert, ReportsEachLostCharacterOfLongTexts) {
    for (const unsigned gap : {0u, 1u, 7u, 8u, 255u, 256u, 257u, 1000u}) {
        std::string text, expected, lostAt;
        while (text.size() < 5000) {
            for (unsigned i = 0; i < gap; ++i) text += "\xA4\xA2", expected += "\x82\xA0";
            lostAt += std::to_string(text.size()) + ' ';
            text += "\xA8\xC0";  // a letter that only Chinese has
            expected += "\x81\xAC";
        }
        EXPECT_EQ(Convert(text, mbGb2312, mbShiftJis),
                  (Converted{expected, lostAt, true, text.size()}))
            << gap;
    }
}

// Every byte, in several sizes of room.
TEST(ByteConvert, AgreesWithConversionThroughUnicode) {
    std::string text;
    for (int i = 0; i < 512; ++i) text += static_cast<char>(i % 256 ^ i / 256 * 3);
    for (const auto& [from, to] : {std::pair{14, 23}, {23, 14}, {17, 24}, {24, 17}}) {
        ASSERT_NE(RelatedConverter(from, to), RelatedConverter(from, from));
        for (const std::size_t room : {512u, 511u, 300u, 15u, 0u})
            EXPECT_EQ(RunConverter(RelatedConverter(from, to), text, room),
                      Convert(text, from, to, room));
    }
}

// Conversion through Unicode, against expected texts and against itself done the slow way.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "genutil/mbutil/code_page.h"
#include "genutil/mbutil/transcode.h"
#include "mbutil.h"

using namespace genutil;

namespace {

struct Outcome {
    std::string text;
    std::vector<std::size_t> lostAt;
    std::size_t consumed = 0;
    bool all = false;

    bool operator==(const Outcome&) const = default;
};

void PrintTo(const Outcome& outcome, std::ostream* out) {
    for (const char c : outcome.text) *out << std::hex << (static_cast<unsigned>(c) & 0xFF) << ' ';
    *out << std::dec << "consumed " << outcome.consumed << " lost at";
    for (const std::size_t at : outcome.lostAt) *out << ' ' << at;
}

const unsigned char* Bytes(const std::vector<char>& text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

// From and into buffers of exactly the sizes needed, so that a sanitizer sees a step too far.
Outcome Convert(const std::string& text, int from, int to, std::size_t room) {
    const std::vector<char> exact(text.begin(), text.end());
    std::vector<unsigned char> dst(room);
    std::vector<std::size_t> lostAt(text.size());
    Transfer t{Bytes(exact), Bytes(exact) + exact.size(), dst.data(), dst.data() + room,
               Losses(Bytes(exact), lostAt.data(), lostAt.size())};
    bool known = false;
    Outcome outcome;
    outcome.all = ConvertThroughUnicode(t, from, to, &known);
    EXPECT_TRUE(known);
    lostAt.resize(t.losses.Count());
    outcome.lostAt = lostAt;
    outcome.consumed = static_cast<std::size_t>(t.src - Bytes(exact));
    outcome.text.assign(dst.data(), t.dst);
    return outcome;
}

Outcome Convert(const std::string& text, int from, int to) {
    return Convert(text, from, to, text.size() * 10 + 16);
}

// The same with room for one character at a time, where no fast loop runs.
Outcome ConvertSlowly(const std::string& text, int from, int to) {
    Outcome outcome;
    while (outcome.consumed < text.size()) {
        Outcome piece;
        for (std::size_t room = 1; room <= 4 && piece.consumed == 0; ++room)
            piece = Convert(text.substr(outcome.consumed), from, to, room);
        for (const std::size_t at : piece.lostAt) outcome.lostAt.push_back(outcome.consumed + at);
        outcome.text += piece.text;
        outcome.consumed += piece.consumed;
        if (piece.consumed == 0) return outcome;
    }
    outcome.all = true;
    return outcome;
}

std::string Units(const char16_t* units, std::size_t length) {
    return std::string(reinterpret_cast<const char*>(units), length * 2);
}

#define UNITS(text) Units(text, sizeof(text) / 2 - 1)

const std::vector<int> kPlain = {0,  1,  2,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16, 17,
                                 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 40, 64, 65};

}  // namespace

TEST(UnicodeConvert, KnownTexts) {
    const struct {
        int line, from, to;
        std::string text, expected;
        std::vector<std::size_t> lostAt;
    } rows[] = {
        {__LINE__,
         5,
         65,
         "\x81\x60\x81\x7C\\\xB1\xF0\x40",
         "\xEF\xBD\x9E\xEF\xBC\x8D\\\xEF\xBD\xB1\xEE\x80\x80",
         {}},
        {__LINE__, 65, 5, "\xE3\x80\x9C\xE2\x88\x92\xEF\xBD\x9E", "\x81\x60\x81\x7C\x81\x60", {}},
        {__LINE__, 5, 64, "a\x82\xA0", UNITS(u"a\u3042"), {}},
        {__LINE__, 64, 5, UNITS(u"a\u3042"), "a\x82\xA0", {}},
        {__LINE__, 0, 65, "\x80\xE9", "\xE2\x82\xAC\xC3\xA9", {}},
        {__LINE__, 7, 5, "\xC8\xD5\xB1\xBE", "\x93\xFA\x96{", {}},
        {__LINE__, 11, 12, "\xB0\xA1", "\x88\x61", {}},
        {__LINE__, 65, 64, "a\xF0\x9F\x98\x80", UNITS(u"a\U0001F600"), {}},
        {__LINE__, 64, 65, UNITS(u"a\U0001F600"), "a\xF0\x9F\x98\x80", {}},
        // What is lost: one mark for a character, however long; one for each invalid byte.
        {__LINE__, 65, 5, "\xF0\x9F\x98\x80z\xE0\xB8\x81", "\x81\xACz\x81\xAC", {0, 5}},
        {__LINE__, 65, 4, "\xE0\xB8\x81", "\xA2\xAE", {0}},
        {__LINE__,
         65,
         3,
         "a\xE0\xB8\x81"
         "b",
         "a\x1B$B\".\x1B(Bb",
         {1}},
        {__LINE__, 65, 9, "\xE0\xB8\x81", "?", {0}},
        {__LINE__,
         5,
         65,
         "\x82\x3F\x81\xAD\x82",
         "\xEF\xBF\xBD?\xEF\xBF\xBD\xEF\xBF\xBD",
         {0, 2, 4}},
        {__LINE__, 65, 64, "\xE3\x81", UNITS(u"\uFFFD\uFFFD"), {0, 1}},
        {__LINE__,
         64,
         65,
         UNITS(u"\xD83D"
               u"a\xDE00") +
             "b",
         "\xEF\xBF\xBD"
         "a\xEF\xBF\xBD\xEF\xBF\xBD",
         {0, 4, 6}},
        {__LINE__, 4, 0, "\x8F\xB0\xA1\x8E\xB1\x8F\xA1\xA1", "???", {0, 3, 5}},
        {__LINE__, 10, 65, "\x8E\xA2\xA1\xA1\x8E\xA5\xA1\xA1", "\xE4\xB9\x82\xEF\xBF\xBD", {4}},
        // Escapes: positions are those of characters, lines stand alone, texts end in ASCII.
        {__LINE__,
         3,
         65,
         "\x1B$B$\"!)\x1B(BA\x1B(I1",
         "\xE3\x81\x82\xEF\xBC\x9F"
         "A\xEF\xBD\xB1",
         {}},
        {__LINE__, 3, 0, "A\x1B$B$\"\x1B(JB", "A?B", {4}},
        {__LINE__,
         3,
         65,
         "\xB1\x1B$@$\"\x1B[B",  // no escape, so the set stays
         "\xEF\xBD\xB1\xE3\x81\x82\xEF\xBF\xBD\xE6\x9D\xAA",
         {6}},
        {__LINE__,
         65,
         41,
         "\xE4\xBD\xA0\n\xE4\xBD\xA0\xE4\xB9\x82",
         "\x1B$)A\x0E"
         "Dc\x0F\n\x1B$)A\x0E"
         "Dc\x1B$*H\x1BN!!\x0F",
         {}},
        {__LINE__,
         41,
         65,
         "\x1B$)A\x0E"
         "Dc\x1B$*H\x1BN!!\x0F",
         "\xE4\xBD\xA0\xE4\xB9\x82",
         {}},
        {__LINE__,
         65,
         42,
         "a\xEA\xB0\x80"
         "b",
         "\x1B$)Ca\x0E"
         "0!\x0F"
         "b",
         {}},
        {__LINE__, 5, 42, "\x1B$B", "\x1B$)C?$B", {0}},
        // A byte-order mark belongs to its own code set, and tells the byte order.
        {__LINE__,
         65,
         5,
         "\xEF\xBB\xBF"
         "a",
         "a",
         {}},
        {__LINE__,
         64,
         65,
         "\xFF\xFE"
         "a" +
             std::string(1, '\0'),
         "a",
         {}},
        {__LINE__, 64, 65, "\xFE\xFF" + std::string(1, '\0') + "a0B", "a\xE3\x81\x82", {}},
        {__LINE__,
         64,
         5,
         "\xFE\xFF"
         "0B",
         "\x82\xA0",
         {}},
        {__LINE__, 65, 64, "\xEF\xBB\xBF\xEF\xBB\xBF", UNITS(u"\uFEFF"), {}},
        {__LINE__, 65, 9, "", "", {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Convert(row.text, row.from, row.to),
                  (Outcome{row.expected, row.lostAt, row.text.size(), true}))
            << "row of line " << row.line;
}

TEST(UnicodeConvert, UnknownCodeSetsAreRefused) {
    for (const int codeSet : {-1, 31, 43, 66}) {
        Transfer t{nullptr, nullptr, nullptr, nullptr, {}};
        bool known = true;
        EXPECT_FALSE(ConvertThroughUnicode(t, codeSet, mbUtf8, &known));
        EXPECT_FALSE(known);
        known = true;
        EXPECT_FALSE(ConvertThroughUnicode(t, mbUtf8, codeSet, &known));
        EXPECT_FALSE(known);
    }
}

// Every character of a code set, in one long text, to Unicode and back: what comes back is what the
// table says, so both the fast loops and the pivot carry everything.
TEST(UnicodeConvert, WholeRepertoireSurvives) {
    for (int codeSet = 0; codeSet <= mbUtf8; ++codeSet) {
        if (!FindListedCodePage(codeSet)) continue;
        SCOPED_TRACE(codeSet);
        std::string everything;
        for (unsigned c = 0x20; c < 0xFFFE; ++c) {
            if (c >= 0xD800 && c < 0xE000) continue;
            const char16_t unit[2] = {static_cast<char16_t>(c), u'\n'};
            everything += Units(unit, 2);
        }
        const Outcome encoded = Convert(everything, mbUtf16, codeSet);
        ASSERT_TRUE(encoded.all);
        for (const int pivot : {mbUtf16, mbUtf8}) {
            const Outcome decoded = Convert(encoded.text, codeSet, pivot);
            EXPECT_TRUE(decoded.lostAt.empty());
            const Outcome again = Convert(decoded.text, pivot, codeSet);
            EXPECT_TRUE(again.lostAt.empty());
            EXPECT_EQ(again.text == encoded.text, true) << "through " << pivot;
        }
        // As many characters survived as were not reported lost.
        const Outcome wide = Convert(encoded.text, codeSet, mbUtf16);
        std::size_t same = 0, characters = everything.size() / 4;
        ASSERT_EQ(wide.text.size(), everything.size());
        for (std::size_t i = 0; i < wide.text.size(); i += 4)
            same += wide.text.compare(i, 2, everything, i, 2) == 0;
        const std::size_t variants = codeSet >= mbJis && codeSet <= mbShiftJis ? 7 : 0;
        EXPECT_EQ(characters - same, encoded.lostAt.size() + variants);
    }
}

// Random text of every kind, whole and character by character, at every alignment.
TEST(UnicodeConvert, FastLoopsAgreeWithSingleCharacters) {
    std::mt19937 random(20261121);
    for (const int from : kPlain) {
        for (const int to : {5, 4, 10, 0, 64, 65}) {
            if (from == to) continue;
            std::string text(random() % 3, 'x');
            while (text.size() < 150) {
                switch (random() % 4) {
                    case 0:
                        text.append(random() % 40, static_cast<char>('a' + random() % 26));
                        break;
                    case 1:
                        for (int i = 0; i < 4; ++i) text += static_cast<char>(random());
                        break;
                    default: {
                        const char16_t units[] = {static_cast<char16_t>(0x3041 + random() % 80),
                                                  static_cast<char16_t>(0x4E00 + random() % 3000),
                                                  static_cast<char16_t>(0xA0 + random() % 0x400),
                                                  static_cast<char16_t>(0xAC00 + random() % 3000)};
                        text += Convert(Units(units, 4), mbUtf16, from).text;
                    }
                }
            }
            EXPECT_EQ(Convert(text, from, to), ConvertSlowly(text, from, to))
                << from << " to " << to;
        }
    }
}

// With too little room: a beginning of the whole result that still reads as text, and a consumed
// count at a character's end.
TEST(UnicodeConvert, EveryRoomHoldsWholeCharacters) {
    const std::string utf8 =
        "abc\xE3\x81\x82\xEF\xBD\xB1\xE4\xB8\x82\xE0\xB8\x81 xyz\n\xEA\xB0\x80\xF0\x9F\x98\x80 "
        "0123456789abcdef\xE6\xBC\xA2\xE5\xAD\x97";
    for (int to = 0; to < mbUtf8; ++to) {
        if (!FindListedCodePage(to)) continue;
        SCOPED_TRACE(to);
        const Outcome whole = Convert(utf8, mbUtf8, to);
        for (std::size_t room = 0; room < whole.text.size(); ++room) {
            const Outcome part = Convert(utf8, mbUtf8, to, room);
            EXPECT_FALSE(part.all);
            EXPECT_LE(part.text.size(), room);
            const Outcome same = Convert(utf8.substr(0, part.consumed), mbUtf8, to);
            EXPECT_EQ(part.text, same.text) << room;
            EXPECT_EQ(part.lostAt, same.lostAt) << room;
        }
        EXPECT_TRUE(Convert(utf8, mbUtf8, to, whole.text.size()).all);
    }
}

// Between code sets that meet only by chunks: losses far apart, in a row, and at chunks' edges.
TEST(UnicodeConvert, LossesAreFoundInLongTexts) {
    for (const unsigned gap : {0u, 1u, 7u, 8u, 255u, 256u, 257u, 1000u}) {
        std::string text, expected;
        std::vector<std::size_t> lostAt;
        while (text.size() < 5000) {
            for (unsigned i = 0; i < gap; ++i) text += "\xA4\xA2", expected += "\x82\xA0";
            lostAt.push_back(text.size());
            text += "\xA8\xC0";  // a letter that only Chinese has
            expected += "\x81\xAC";
        }
        EXPECT_EQ(Convert(text, mbGb2312, mbShiftJis),
                  (Outcome{expected, lostAt, text.size(), true}))
            << gap;
    }
}

TEST(ByteConvert, PublishedCounterparts) {
    const struct {
        int line;
        Converter convert;
        std::string text, expected;
        std::size_t lost;
    } rows[] = {
        {__LINE__, Latin2ToWindows1250, "Za\xBF\xF3\xB3\xE6 g\xEA\xB6l\xB1 ja\xBC\xF1",
         "Za\xBF\xF3\xB3\xE6 g\xEA\x9Cl\xB9 ja\x9F\xF1", 0},
        {__LINE__, Windows1250ToLatin2, "Za\xBF\xF3\xB3\xE6 g\xEA\x9Cl\xB9 ja\x9F\xF1",
         "Za\xBF\xF3\xB3\xE6 g\xEA\xB6l\xB1 ja\xBC\xF1", 0},
        {__LINE__, Windows1250ToLatin2, "\x80 \x84 0123456789abcdef\x93", "? ? 0123456789abcdef?",
         3},
        {__LINE__, Cyrillic8859ToWindows1251, "\xBF\xE0\xD8\xD2\xD5\xE2, \xF1\xA1\xF0",
         "\xCF\xF0\xE8\xE2\xE5\xF2, \xB8\xA8\xB9", 0},
        {__LINE__, Windows1251ToCyrillic8859, "\xCF\xF0\xE8\xE2\xE5\xF2, \xB8\xA8\xB9",
         "\xBF\xE0\xD8\xD2\xD5\xE2, \xF1\xA1\xF0", 0},
        {__LINE__, Windows1251ToCyrillic8859, std::string(40, '\xDF') + '\0' + "\x88",
         std::string(40, '\xCF') + '\0' + "?", 1},
    };
    for (const auto& row : rows) {
        for (std::size_t room = 0; room <= row.text.size(); ++room) {
            const std::vector<char> text(row.text.begin(), row.text.end());
            std::vector<unsigned char> dst(room);
            Transfer t{Bytes(text), Bytes(text) + text.size(), dst.data(), dst.data() + room, {}};
            EXPECT_EQ(row.convert(t), room == text.size());
            EXPECT_EQ(std::string(dst.begin(), dst.end()), row.expected.substr(0, room))
                << row.line;
            EXPECT_EQ(t.src - Bytes(text), static_cast<std::ptrdiff_t>(room));
            EXPECT_LE(t.losses.Count(), row.lost) << row.line;
            if (room < text.size()) continue;
            EXPECT_EQ(t.losses.Count(), row.lost) << row.line;
        }
    }
}

// The arithmetic and the table inside say what the way through Unicode says, of every byte.
TEST(ByteConvert, AgreesWithTheWayThroughUnicode) {
    const struct {
        Converter convert;
        int from, to;
    } rows[] = {{Latin2ToWindows1250, 14, 23},
                {Windows1250ToLatin2, 23, 14},
                {Cyrillic8859ToWindows1251, 17, 24},
                {Windows1251ToCyrillic8859, 24, 17}};
    std::string text;
    for (int i = 0; i < 512; ++i) text += static_cast<char>(i % 256 ^ i / 256 * 3);
    for (const auto& row : rows) {
        std::vector<unsigned char> dst(text.size());
        const auto src = reinterpret_cast<const unsigned char*>(text.data());
        std::vector<std::size_t> lostAt(text.size());
        Transfer t{src, src + text.size(), dst.data(), dst.data() + dst.size(),
                   Losses(src, lostAt.data(), lostAt.size())};
        EXPECT_TRUE(row.convert(t));
        const Outcome other = Convert(text, row.from, row.to);
        lostAt.resize(t.losses.Count());
        EXPECT_EQ(std::string(dst.begin(), dst.end()), other.text);
        EXPECT_EQ(lostAt, other.lostAt);
    }
}

// Stepping: the rules of each code set. The fast walks are held against a slow one by
// fuzz/text_fuzz.cpp.
#include <gtest/gtest.h>

#include <string>

#include "mbutil.h"
#include "tests/support/code_set_guard.h"

namespace {

const unsigned char* U(const char* s) {
    return reinterpret_cast<const unsigned char*>(s);
}

TEST(Step, FindsTheLengthOfACharacter) {
    static const struct {
        int codeSet;
        const char* bytes;
        unsigned n;
        int length;
    } kRows[] = {{5, "\x82", 1, 2},
                 {5, "", 4, 0},
                 {5, "a", 0, 0},
                 {4, "\x8F\xA1", 2, 3},
                 {4, "\x8F\xA1\x41", 2, 3},
                 {4, "\x8E\xE0", 1, 2},

                 {10, "\x8E\xA2", 1, 4},
                 {0, "", 4, 1},
                 {3, "\x1B$B", 3, 1},
                 {65, "\xE3\x81\x82", 3, 1},
                 {99, "\xFF", 0, 1}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(&row - kRows);
        const CodeSetGuard guard(row.codeSet);
        EXPECT_EQ(mblenExt(U(row.bytes), row.n, row.codeSet), row.length);
        EXPECT_EQ(mb_mblen(U(row.bytes), row.n), row.length);
    }
    EXPECT_EQ(mblenExt(nullptr, 3, 5), 0);
    EXPECT_EQ(mblenExt(nullptr, 3, 0), 1);
}

TEST(Step, LeadBytesBeginLongerCharacters) {
    for (int codeSet = -1; codeSet <= 70; ++codeSet) {
        int most = 1;
        for (int c = -2; c < 258; ++c) {
            const unsigned char lead[2] = {static_cast<unsigned char>(c), 0};
            const int promised = c > 0 && c < 256 ? mblenExt(lead, 1, codeSet) : 1;
            EXPECT_EQ(isleadbyteExt(c, codeSet), promised > 1) << codeSet << ' ' << c;
            most = std::max(most, promised);
        }
        EXPECT_EQ(mbmaxcharlenExt(codeSet), most) << codeSet;
    }
}

TEST(Step, StepsByBytesInASingleByteCodeSet) {
    const CodeSetGuard guard(0);
    EXPECT_EQ(mbidx("abc", 100), 100u);
    EXPECT_EQ(mbidxtype("\x82\xA0", 1, 5), 1u);  // the current code set decides
    EXPECT_EQ(mbnextidx("ab", 0), 1u);
    EXPECT_EQ(mbnextidx("ab", 1), 0u);
    EXPECT_EQ(mbnextidx("", 0), 0u);
    EXPECT_EQ(mbnextchar("ab", 1), nullptr);
    EXPECT_EQ(mbbytesinchar(U("\x82\xA0")), 1);
}

TEST(Step, StepsInAGivenCodeSet) {
    const CodeSetGuard guard(4);
    EXPECT_EQ(mbidxtype("a\x82\xA0", 2, 5), 1u);
    EXPECT_EQ(mbidxtype("a\x82\xA0", 2, 0), 2u);
    EXPECT_EQ(mbidxtype("a\x82\xA0", 100, 0), 3u);
}

TEST(Step, StepsThroughLongTextsInLinearTime) {
    const CodeSetGuard guard(5);
    std::string text;
    while (text.size() < 400000) text += "\x82\xA0\x88\x9F";
    unsigned at = 0, count = 1;
    for (unsigned next; (next = mbnextidx(text.c_str(), at)) != 0; at = next) ++count;
    EXPECT_EQ(count, text.size() / 2);
}

TEST(Step, ComparesCharacterByCharacter) {
    {
        const CodeSetGuard guard(0);
        EXPECT_EQ(mbcharcmp(U("b"), U("a"), 5), 1);
        EXPECT_EQ(mbcharcmp(U("ab"), U("ac"), 2), 0);    // the first byte only
        EXPECT_EQ(mbcharcmp(U("\xFF"), U("a"), 1), -1);  // as signed chars
    }
    const CodeSetGuard guard(5);
    EXPECT_EQ(mbcharcmp(U("ab"), U("ac"), 1), 0);
    EXPECT_LT(mbcharcmp(U("ab"), U("ac"), 2), 0);
    EXPECT_GT(mbcharcmp(U("\xFF"), U("a"), 1), 0);
    EXPECT_LT(mbcharcmp(U("\x82\xA0"), U("\x82\xA2"), 1), 0);  // the pair counts whole
    EXPECT_EQ(mbcharcmp(U("\x82\0x"), U("\x82\0y"), 9), 0);    // nothing after a terminator
    EXPECT_LT(mbcharcmp(U("\x82"), U("\x82\xA0"), 9), 0);
}

TEST(Step, KnowsCharactersOfOneByte) {
    static const struct {
        int codeSet, c, whole;
    } kRows[] = {{5, 0x7F, 1}, {5, 0x80, 0}, {5, 0xA1, 1}, {5, 0xDF, 1}, {5, 0xE0, 0},
                 {0, 0, 1},    {0, 0xE9, 0}, {4, 0xB1, 0}, {0, -1, 0}};
    for (const auto& row : kRows) {
        const CodeSetGuard guard(row.codeSet);
        EXPECT_EQ(ismbcprint(row.c), row.whole) << row.codeSet << ' ' << row.c;
    }
}

}  // namespace

// The string functions: copying, comparing, searching, tokens, validation. fuzz/text_fuzz.cpp
// compares them with slow ones on any text.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "mbutil.h"
#include "tests/support/code_set_guard.h"

namespace {

// A text in a block of its exact size, so that a sanitizer sees a read after the terminator.
class Exact {
  public:
    explicit Exact(const std::string& text) : m_bytes(new char[text.size() + 1]) {
        std::memcpy(m_bytes.get(), text.c_str(), text.size() + 1);
    }
    operator char*() const { return m_bytes.get(); }

  private:
    std::unique_ptr<char[]> m_bytes;
};

long Offset(const char* found, const char* s) {
    return found ? static_cast<long>(found - s) : -1;
}

TEST(MbCopy, FillsTheRestWithZeros) {
    const CodeSetGuard guard(5);
    const struct {
        int line;
        const char* text;
        unsigned n, copied;
        std::string buffer;
    } kRows[] = {
        {__LINE__, "a\x82\xA0z", 2, 1, std::string("a\0####", 6)},
        {__LINE__, "a\x82\xA0z", 3, 3, "a\x82\xA0###"},
        {__LINE__, "ab", 5, 2, std::string("ab\0\0\0#", 6)},
        {__LINE__, "ab", 0, 0, "######"},
    };
    for (const auto& row : kRows) {
        std::string dst(6, '#'), counted(6, '#');
        EXPECT_EQ(mbstrncpy(dst.data(), row.text, row.n), dst.data());
        EXPECT_EQ(mbstrncpyi(counted.data(), row.text, row.n), row.copied) << row.line;
        EXPECT_EQ(dst, row.buffer) << row.line;
        EXPECT_EQ(counted, row.buffer) << row.line;
    }
    char dst[4] = "xyz";
    EXPECT_EQ(mbstrncpy(dst, nullptr, 3), dst);
    EXPECT_EQ(mbstrncpy(nullptr, "a", 1), nullptr);
    EXPECT_EQ(mbstrncpyi(dst, nullptr, 3), 0u);
    EXPECT_STREQ(dst, "xyz");
}

TEST(MbCompare, IgnoresCase) {
    const auto compare = [](int codeSet, const char* a, const char* b) {
        const CodeSetGuard guard(codeSet);
        return mbstricmp(a, b);
    };
    EXPECT_EQ(compare(5, "ABC", "abc"), 0);
    EXPECT_EQ(compare(5, "ab", "abc"), -1);
    EXPECT_EQ(compare(5, "abc", "AB"), 1);
    EXPECT_EQ(compare(5, "\x83\x41", "\x83\x61"), -1);  // trail bytes are not letters
    EXPECT_EQ(compare(5, "\x82\xA0", "z"), 1);          // more bytes sort after fewer
    EXPECT_EQ(compare(5, "z", "\x82\xA0"), -1);
    EXPECT_EQ(compare(5, "\xB1", "a"), -1);  // bytes order as signed chars
    EXPECT_EQ(compare(0, "\xC9t\xE9", "\xE9T\xC9"), 0);
    EXPECT_EQ(compare(65, "\xC3\x89", "\xC3\xA9"), -1);  // bytes of UTF-8 are no letters here
    EXPECT_EQ(compare(0, nullptr, "a"), 0);
    EXPECT_EQ(compare(5, "a", nullptr), 0);
}

TEST(MbCompare, ComparesUpToACount) {
    const CodeSetGuard guard(5);
    EXPECT_EQ(mbstrnicmp("abX", "ABy", 2), 0);
    EXPECT_LT(mbstrnicmp("abX", "ABy", 3), 0);
    EXPECT_EQ(mbstrnicmp("ab", "abc", 2), -1);  // a that ends at n sorts before a longer b
    EXPECT_EQ(mbstrnicmp("ab", "abc", 3), -1);
    EXPECT_GT(mbstrnicmp("abc", "ab", 3), 0);
    EXPECT_EQ(mbstrnicmp("abc", "abd", 0), 0);
    EXPECT_LT(mbstrnicmp("\x82", "\x82\xA0", 5), 0);
    EXPECT_EQ(mbstrnicmp("\x82", "\x82", 5), 0);
}

TEST(MbCase, MapsLettersOfTheCodeSet) {
    static const struct {
        int line, codeSet;
        const char *text, *upper, *lower;
    } kRows[] = {
        {__LINE__, 0, "aZ\xE9\xDF\xFF\xB5", "AZ\xC9\xDF\x9F\xB5", "az\xE9\xDF\xFF\xB5"},
        {__LINE__, 5, "a\x83\x61Q\xB1", "A\x83\x61Q\xB1", "a\x83\x61q\xB1"},
        {__LINE__, 24, "\xE0\xC0", "\xC0\xC0", "\xE0\xE0"},
        {__LINE__, 65, "a\xC3\xA9", "A\xC3\xA9", "a\xC3\xA9"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        const CodeSetGuard guard(row.codeSet);
        Exact upper(row.text), lower(row.text);
        EXPECT_EQ(mbstrtoupper(upper), std::strlen(row.text));
        EXPECT_STREQ(upper, row.upper);
        EXPECT_EQ(mbstrtolower(lower), std::strlen(row.text));
        EXPECT_STREQ(lower, row.lower);
    }
    EXPECT_EQ(mbstrtoupper(nullptr), 0u);
}

TEST(MbSearch, FindsCharactersByTheirFirstByte) {
    const CodeSetGuard guard(5);
    const char* s = "\x82\xA0\x41\xB1\x83\x41\x41";
    EXPECT_EQ(Offset(mbstrchr(s, 'A'), s), 2);
    EXPECT_EQ(Offset(mbstrrchr(s, 'A'), s), 6);
    EXPECT_EQ(mbstrchr(s, static_cast<signed char>(0xA0)), nullptr);
    EXPECT_EQ(Offset(mbstrchr(s, static_cast<signed char>(0xB1)), s), 3);
    EXPECT_EQ(mbstrchr(s, 0xB1), nullptr);  // only as a plain char promotes
    EXPECT_EQ(Offset(mbstrchr(s, 0), s), 7);
    EXPECT_EQ(mbstrchrEncr(s, 0), nullptr);
    EXPECT_EQ(Offset(mbstrchrEncr(s, 'A'), s), 2);
    EXPECT_EQ(mbstrrchr(s, 0), nullptr);
    EXPECT_EQ(mbstrchr(nullptr, 'a'), nullptr);
    EXPECT_EQ(mbstrrchr(nullptr, 'a'), nullptr);
    const CodeSetGuard single(0);
    EXPECT_EQ(Offset(mbstrchr(s, 0xB1), s), 3);
    EXPECT_EQ(Offset(mbstrchrEncr(s, 0), s), 7);
    EXPECT_EQ(Offset(mbstrrchr(s, 0), s), 7);
}

TEST(MbSearch, FindsEmptyTextsAndNoLongerOnes) {
    const CodeSetGuard guard(5);
    Exact hay("abc");
    EXPECT_EQ(Offset(mbstrstr(hay, ""), hay), 0);
    EXPECT_EQ(Offset(mbstrrstr(hay, ""), hay), 3);
    EXPECT_EQ(mbstrstr(hay, Exact("abcd")), nullptr);
    EXPECT_EQ(mbstrrstr(hay, Exact("abcd")), nullptr);
    EXPECT_EQ(mbstrstr(nullptr, "a"), nullptr);
    EXPECT_STREQ(mbstrstr("a", nullptr), "a");
    EXPECT_STREQ(mbstrrstr("a", nullptr), "a");
}

TEST(MbSearch, FindsCharactersOfASet) {
    const CodeSetGuard guard(5);
    const char* s = "ab\x83\x41\x82\xA0.";
    EXPECT_EQ(mbstrcspn(s, "A."), 6u);
    EXPECT_EQ(mbstrcspn(s, "\x82\xA0"), 4u);
    EXPECT_EQ(mbstrcspn(s, "xyz"), 7u);
    EXPECT_EQ(mbstrcspn(s, ""), 7u);
    EXPECT_EQ(mbstrcspn(s, nullptr), 7u);
    EXPECT_EQ(mbstrpbrk(s, nullptr), nullptr);
    EXPECT_EQ(mbstrpbrk(nullptr, "a"), nullptr);
    EXPECT_EQ(mbstrcspn(nullptr, "a"), 0u);
    EXPECT_EQ(Offset(mbstrpbrk(s, "\x83"), s), 2);  // a lone lead byte matches by itself
}

TEST(MbTokens, SplitsAtWholeCharacters) {
    const auto split = [](int codeSet, const char* s, const char* delimiters) {
        const CodeSetGuard guard(codeSet);
        Exact text(s);
        std::string tokens;
        for (char* t = mbstrtok(text, delimiters); t; t = mbstrtok(nullptr, delimiters))
            tokens += std::string(t) + "|";
        EXPECT_TRUE(codeSet == 0 || !mbstrtok(nullptr, delimiters)) << s;
        return tokens;
    };
    EXPECT_EQ(split(5, ",,a,b", ","), "a|b|");
    EXPECT_EQ(split(5, "\x81\x41x\x81\x41\x81\x41y\x81\x41", "\x81\x41"), "x|y|");
    EXPECT_EQ(split(5, "\x83\x41\x41\x83\x41", "A"), "\x83\x41|\x83\x41|");
    EXPECT_EQ(split(5, ",,,", ","), "");
    EXPECT_EQ(split(5, "", ","), "");
    EXPECT_EQ(split(0, " a  b ", " "), "a|b|");
    const CodeSetGuard guard(5);
    Exact text("x\x81\x41y");
    mbstrtok(text, "\x81\x41");
    EXPECT_EQ(std::string(text, 4), std::string("x\0\0y", 4));  // all bytes of a delimiter
}

TEST(MbValidate, ReportsTheFirstInvalidByte) {
    const CodeSetGuard guard(5);
    for (const std::size_t filling : {0u, 61u, 62u, 63u, 64u, 126u, 300u})
        for (const char* invalid : {"\x82 ", "\x80", "\xA0"}) {
            unsigned bad = 0;
            const Exact text(std::string(filling, 'x') + "\x82\xA0" + invalid);
            EXPECT_EQ(mbvalidatestring(text, &bad, 5), 0);
            EXPECT_EQ(bad, filling + 2) << invalid;
        }
    unsigned bad;
    EXPECT_EQ(mbvalidatestring(nullptr, &bad, 5), 0);
    EXPECT_EQ(mbvalidatestring("a", nullptr, 5), 0);
    const CodeSetGuard single(0);  // in which nothing is examined
    EXPECT_EQ(mbvalidatestring("\x82", &bad, 5), 1);
    EXPECT_EQ(mbvalidatestring(nullptr, nullptr, 5), 1);
}

TEST(MbCollate, OrdersByTheLanguage) {
    const CodeSetGuard guard(5);
    EXPECT_EQ(mbstrcoll("abc", "abc"), 0);
    EXPECT_LT(mbstrcoll("a", "b"), 0);
    EXPECT_LT(mbstrcoll("a", "B"), 0);
    EXPECT_GT(mbstrcoll("b", "A"), 0);
    EXPECT_LT(mbstrcoll("a\x82\xA0", "a\x82\xA2"), 0);
    EXPECT_NE(mbstrcoll("\x82", "\x82\xA0"), 0);  // not even valid text is called equal
    EXPECT_LT(mbstrcoll("a", "Z\x82"), 0);        // invalid text, too, has its place in the order
    EXPECT_LT(mbstrcoll("B", "Z\x82"), 0);
}

}  // namespace

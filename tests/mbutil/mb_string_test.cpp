// The string functions: copying, comparing, searching, tokens, validation.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "mbutil.h"
#include "tests/support/code_set_guard.h"

namespace {

// A text in a block of exactly its size, so that a sanitizer sees a read behind the terminator.
class Exact {
  public:
    explicit Exact(const std::string& text) : m_bytes(new char[text.size() + 1]) {
        std::memcpy(m_bytes.get(), text.c_str(), text.size() + 1);
    }
    operator char*() { return m_bytes.get(); }

  private:
    std::unique_ptr<char[]> m_bytes;
};

long Offset(const char* found, const char* s) {
    return found ? static_cast<long>(found - s) : -1;
}

TEST(MbCopy, NeverSplitsACharacter) {
    const CodeSetGuard guard(5);
    const auto copy = [](const char* src, unsigned n) {
        std::string dst(6, '#'), counted(6, '#');
        EXPECT_EQ(mbstrncpy(dst.data(), Exact(src), n), dst.data());
        const unsigned copied = mbstrncpyi(counted.data(), Exact(src), n);
        EXPECT_EQ(counted, dst);
        return dst + std::to_string(copied);
    };
    EXPECT_EQ(copy("a\x82\xA0z", 2), std::string("a\0####1", 7));
    EXPECT_EQ(copy("a\x82\xA0z", 3), "a\x82\xA0###3");
    EXPECT_EQ(copy("ab", 5), std::string("ab\0\0\0#2", 7));
    EXPECT_EQ(copy("ab", 2), "ab####2");
    EXPECT_EQ(copy("\x82\xA0", 1), std::string("\0#####0", 7));
    EXPECT_EQ(copy("ab", 0), "######0");
    char dst[4] = "xyz";
    EXPECT_EQ(mbstrncpy(dst, nullptr, 3), dst);
    EXPECT_EQ(mbstrncpy(nullptr, "a", 1), nullptr);
    EXPECT_EQ(mbstrncpyi(dst, nullptr, 3), 0u);
    EXPECT_STREQ(dst, "xyz");
}

TEST(MbCompare, WithoutCase) {
    const auto compare = [](int codeSet, const char* a, const char* b) {
        const CodeSetGuard guard(codeSet);
        return mbstricmp(a, b);
    };
    EXPECT_EQ(compare(5, "ABC", "abc"), 0);
    EXPECT_EQ(compare(5, "ab", "abc"), -1);
    EXPECT_EQ(compare(5, "abc", "AB"), 1);
    EXPECT_EQ(compare(5, "\x83\x41", "\x83\x61"), -1);  // a trail byte is no letter
    EXPECT_EQ(compare(5, "\x82\xA0", "z"), 1);          // more bytes sort behind fewer
    EXPECT_EQ(compare(5, "z", "\x82\xA0"), -1);
    EXPECT_EQ(compare(5, "\xB1", "a"), -1);  // bytes order as signed chars
    EXPECT_EQ(compare(0, "\xC9t\xE9", "\xE9T\xC9"), 0);
    EXPECT_EQ(compare(65, "\xC3\x89", "\xC3\xA9"), -1);  // bytes of UTF-8 are no letters here
    EXPECT_EQ(compare(0, nullptr, "a"), 0);
    EXPECT_EQ(compare(5, "a", nullptr), 0);
}

TEST(MbCompare, UpToACount) {
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

TEST(MbSearch, CharactersByTheirFirstByte) {
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

// Searches of other words are held against a slow one by fuzz/text_fuzz.cpp.
TEST(MbSearch, EmptyWordsAndLongerOnes) {
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

TEST(MbSearch, FindsAWordAtAnyPlace) {
    const CodeSetGuard guard(5);
    for (std::size_t at = 0; at < 1500; ++at) {
        Exact text(std::string(at, 'x') + "\x82\xA0");
        ASSERT_EQ(Offset(mbstrstr(text, "\x82\xA0"), text), static_cast<long>(at));
    }
}

TEST(MbSearch, SetsOfCharacters) {
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

TEST(MbTokens, SplitAtCharacters) {
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
    static const struct {
        int line, codeSet;
        const char* text;
        int bad;  // -1: valid
    } kRows[] = {
        {__LINE__, 5, "\x82\x20", 0},
        {__LINE__, 5, "a\x82\xA0\xB1", -1},
        {__LINE__, 5, "abc\x82", 3},
        {__LINE__, 5, "ab\x80", 2},
        {__LINE__, 4, "\x8F\xA1\xA1\x8E\xB1", -1},
        {__LINE__, 4, "a\x8F\xA1", 1},
        {__LINE__, 4, "\x8E\xE0\xE0", 0},
        {__LINE__, 10, "\x8E\xA2\xA1\xA1\x8E\xA2\xA1", 4},
        {__LINE__, 11, "\x81\x5B", 0},
        {__LINE__, 0, "\x82\x20", -1},
    };
    const CodeSetGuard guard(5);
    for (const auto& row : kRows)
        for (std::size_t filling : {0u, 61u, 62u, 63u, 64u, 126u, 300u}) {
            SCOPED_TRACE(row.line);
            unsigned bad = 12345;
            const bool valid =
                mbvalidatestring(Exact(std::string(filling, 'x') + row.text), &bad, row.codeSet);
            EXPECT_EQ(valid, row.bad < 0);
            EXPECT_EQ(bad, row.bad < 0 ? 12345 : filling + static_cast<unsigned>(row.bad));
        }
    unsigned bad;
    EXPECT_EQ(mbvalidatestring(nullptr, &bad, 5), 0);
    EXPECT_EQ(mbvalidatestring("a", nullptr, 5), 0);
    const CodeSetGuard single(0);
    EXPECT_EQ(mbvalidatestring("\x82", &bad, 5), 1);  // nothing is looked at
    EXPECT_EQ(mbvalidatestring(nullptr, nullptr, 5), 1);
}

TEST(MbCollate, OrdersAsPeopleDo) {
    const CodeSetGuard guard(5);
    EXPECT_EQ(mbstrcoll("abc", "abc"), 0);
    EXPECT_LT(mbstrcoll("a", "b"), 0);
    EXPECT_LT(mbstrcoll("a", "B"), 0);
    EXPECT_GT(mbstrcoll("b", "A"), 0);
    EXPECT_LT(mbstrcoll("a\x82\xA0", "a\x82\xA2"), 0);
    EXPECT_NE(mbstrcoll("\x82", "\x82\xA0"), 0);  // not even valid text is called equal
}

}  // namespace

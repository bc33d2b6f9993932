// CGNString as a caller sees it.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "genutil.h"
#include "tests/support/code_set_guard.h"

namespace {

using Wide = unsigned short;

std::string Bytes(const CGNString& s) {
    return {static_cast<const char*>(s), s.GetLength()};
}

std::string CharacterAt(const CGNString& s, int index) {
    char out[8];
    EXPECT_EQ(s.GetCodePageCharAt(index, out), out);
    return out;
}

unsigned LengthOf(const char* s) {
    return static_cast<unsigned>(std::strlen(s));
}

const char* const kNoText = nullptr;
const Wide* const kNoWide = nullptr;

TEST(String, NullsOfEverySpellingAreEmpty) {
    CGNString strings[] = {CGNString(),     CGNString(NULL, 100), CGNString(nullptr),
                           CGNString(0),    CGNString(kNoText),   CGNString(kNoWide, 7),
                           CGNString("", 0)};
    for (CGNString& s : strings) {
        EXPECT_TRUE(s.IsEmpty() && s == kNoText && s == nullptr && s == NULL && s == "");
        EXPECT_STREQ(s, "");
        EXPECT_EQ(s.GetNumChars(), 0u);
        s += kNoText;
        s += kNoWide;
        s += nullptr;
        s.AppendNChars(nullptr, 3).AppendUntil(nullptr, ',');
        EXPECT_TRUE(s.IsEmpty());
    }
    CGNString full("abc");
    EXPECT_FALSE(full == nullptr);
    EXPECT_TRUE((CGNString(full) = nullptr).IsEmpty());
    EXPECT_TRUE(CGNString(full).CopyNBytes(nullptr, 4).IsEmpty());
    EXPECT_TRUE(CGNString(full).CopyNChars(nullptr, 4).IsEmpty());
    EXPECT_TRUE(CGNString(full).CopyNChars(kNoWide, 4).IsEmpty());
    EXPECT_TRUE(CGNString(full).CopyUntil(nullptr, ",").IsEmpty());
}

TEST(String, ReadsAsAText) {
    const CGNString s("abc");
    EXPECT_EQ(std::string(s), "abc");
    EXPECT_EQ(s[s.GetLength()], 0);
    EXPECT_TRUE("abc" == s && s == "abc" && "abd" != s && s != CGNString("ab"));
}

TEST(String, BytesBehindANulCountInSomeOperationsOnly) {
    CGNString s;
    s.CopyNBytes("ab", 5);
    EXPECT_EQ(Bytes(s), std::string("ab\0\0\0", 5));
    EXPECT_EQ(s.GetNumChars(), 2u);
    EXPECT_TRUE(s == "ab");
    EXPECT_FALSE(s == CGNString("ab"));
    EXPECT_EQ(CGNString(s).GetLength(), 5u);
    EXPECT_EQ((CGNString() = s).GetLength(), 2u);
    EXPECT_EQ(CGNString().Set(s).GetLength(), 2u);
    CGNString appended("x");
    appended += s;
    appended += '\0';
    appended += 'y';
    EXPECT_EQ(Bytes(appended), std::string("xab\0\0\0\0y", 8));
    EXPECT_EQ(Bytes(CGNString().CopyNBytes("abc", 2)), "ab");
    EXPECT_EQ(Bytes(CGNString("x").CopyNBytes("abc", 0)), "");
}

TEST(String, ClearKeepsEmptyReleases) {
    CGNString s("abc", 20);
    s.GetAt(0);
    const char* const data = s;
    s.Clear();
    EXPECT_TRUE(s.IsEmpty());
    EXPECT_EQ(s.GetAt(0), 0);
    s += 'z';
    EXPECT_EQ(static_cast<const char*>(s), data);
    EXPECT_STREQ(s, "z");
    s.Empty();
    EXPECT_EQ(static_cast<const char*>(s), static_cast<const char*>(CGNString()));
}

TEST(String, EmptyStringsShareAByteThatNothingWrites) {
    CGNString s;
    s.SetAt2(0, 'x');
    s.Clear();
    EXPECT_FALSE(s.SetAt(0, 'x'));
    EXPECT_STREQ(CGNString(), "");
    CGNString t("abc");
    t.SetAt2(1, 'X');
    EXPECT_STREQ(t, "aXc");
}

TEST(String, GetStringFillsTheBuffer) {
    const struct {
        int line, codeSet;
        const char* text;
        unsigned size;
        const char* expected;
    } rows[] = {
        {__LINE__, 0, "abcdef", 4, "abc"},
        {__LINE__, 0, "abcdef", 7, "abcdef"},
        {__LINE__, 0, "abcdef", 9, "abcdef"},
        {__LINE__, 0, "abcdef", 1, ""},
        {__LINE__, 0, "", 3, ""},
        {__LINE__, 5, "a\x82\xA0z", 2, "a"},      // byte 2 lies inside a character: cut before it
        {__LINE__, 5, "a\x82\xA0z", 3, "a\x82"},  // byte 3 does not: the last byte is cut anyway
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CodeSetGuard codeSet(row.codeSet);
        char out[12];
        std::memset(out, '#', sizeof out);
        EXPECT_EQ(CGNString(row.text).GetString(out, row.size), LengthOf(row.expected));
        EXPECT_STREQ(out, row.expected);
        EXPECT_EQ(out[row.size], '#');
    }
    char untouched = '#';
    EXPECT_EQ(CGNString("abc").GetString(&untouched, 0), 0u);
    EXPECT_EQ(untouched, '#');
}

TEST(String, CopyUntilFindsWholeCharacters) {
    const struct {
        int line, codeSet;
        const char *text, *delimiter, *expected;
    } rows[] = {
        {__LINE__, 0, "key=value", "=", "key"},
        {__LINE__, 0, "key=value", "==", "key=value"},
        {__LINE__, 0, "=value", "=", ""},
        {__LINE__, 0, "text", "", ""},
        {__LINE__, 0, "text", nullptr, ""},
        {__LINE__, 0, "", "x", ""},
        {__LINE__, 5, "\x95\x5C\\z", "\\", "\x95\x5C"},  // 0x5C is the trail byte of the first
        {__LINE__, 9, "\xA5\x5C\\z", "\\", "\xA5\x5C"},
        {__LINE__, 4, "\xA4\xA2\xA4\xA4=", "\xA4\xA4", "\xA4\xA2"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CodeSetGuard codeSet(row.codeSet);
        CGNString s("before");
        EXPECT_EQ(Bytes(s.CopyUntil(row.text, row.delimiter)), row.expected);
        EXPECT_EQ(Bytes(CGNString("x").AppendUntil(row.text, row.delimiter)),
                  std::string("x") + row.expected);
        if (!row.delimiter || std::strlen(row.delimiter) != 1) continue;
        EXPECT_EQ(Bytes(s.CopyUntil(row.text, row.delimiter[0])), row.expected);
        EXPECT_EQ(Bytes(CGNString("x").AppendUntil(row.text, row.delimiter[0])),
                  std::string("x") + row.expected);
    }
}

// Each code set's characters of every size. The last text of a row is not valid in the code set.
TEST(String, CountsAndReadsCharacters) {
    const struct {
        int line, codeSet;
        const char* text;
        unsigned characters;
        const char* third;
    } rows[] = {
        {__LINE__, 0, "a\xE9\x80z", 4, "\x80"},
        {__LINE__, 4, "a\xA4\xA2\x8F\xB0\xA1\x8E\xB1", 4, "\x8F\xB0\xA1"},
        {__LINE__, 5, "a\x82\xA0\x95\x5C\xB1", 4, "\x95\x5C"},
        {__LINE__, 9, "a\xA4\xA4\xA5\x5Cz", 4, "\xA5\x5C"},
        {__LINE__, 11, "a\xC7\xD1\x81\x41z", 4, "\x81\x41"},
        {__LINE__, 65, "a\xC3\xA9\xE3\x81\x82z", 4, "\xE3\x81\x82"},
        {__LINE__, 65, "\xF0\x9F\x98\x80z", 3, "z"},  // outside the 16-bit range: two positions
        {__LINE__, 5, "\x82\xA0\x82 ", 4, "\x82"},    // invalid: byte by byte
        {__LINE__, 65, "\xC3\xA9\xE9", 3, "\xE9"},
        {__LINE__, 4, "ab\xA4", 3, "\xA4"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CodeSetGuard codeSet(row.codeSet);
        const CGNString s(row.text);
        EXPECT_EQ(s.GetNumChars(), row.characters);
        EXPECT_EQ(s.GetLengthInChars(), row.characters);
        EXPECT_EQ(CharacterAt(s, 2), row.third);
        EXPECT_EQ(s.GetAt(2), row.third[0]);
        EXPECT_EQ(CharacterAt(s, static_cast<int>(row.characters)), "");
        EXPECT_EQ(s.GetAt(row.characters), 0);
        EXPECT_EQ(CharacterAt(s, -1), "");
        EXPECT_EQ(s.GetAt(0xFFFFFFFFu), 0);
        EXPECT_EQ(Bytes(s), row.text);
    }
}

TEST(String, ReplacesOneCharacter) {
    const struct {
        int line, codeSet;
        const char* text;
        int index;
        const char* character;
        bool stored;
        const char* expected;
    } rows[] = {
        {__LINE__, 5, "a\x82\xA0z", 1, "x", true, "axz"},
        {__LINE__, 5, "a\x82\xA0z", 2, "\x95\x5Cq", true, "a\x82\xA0\x95\x5C"},
        {__LINE__, 5, "a\x82\xA0z", 3, "x", false, "a\x82\xA0z"},
        {__LINE__, 5, "a\x82\xA0z", -1, "x", false, "a\x82\xA0z"},
        {__LINE__, 5, "a\x82\xA0z", 1, "\x82", false, "a\x82\xA0z"},
        {__LINE__, 5, "a\x82\xA0z", 1, "", false, "a\x82\xA0z"},
        {__LINE__, 5, "a\x82\xA0z", 1, nullptr, false, "a\x82\xA0z"},
        {__LINE__, 4, "\xA4\xA2z", 1, "\x8F\xB0\xA1", true, "\xA4\xA2\x8F\xB0\xA1"},
        {__LINE__, 65, "abc", 1, "\xE3\x81\x82", true, "a\xE3\x81\x82\x63"},
        {__LINE__, 65, "abc", 1, "\xF0\x9F\x98\x80", false, "abc"},
        {__LINE__, 5, "a\x82 z", 0, "b", true, "b\x82 z"},  // invalid bytes survive
        {__LINE__, 65, "a\xC3\xE3\x81", 0, "b", true, "b\xC3\xE3\x81"},
        {__LINE__, 5, "", 0, "x", false, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CodeSetGuard codeSet(row.codeSet);
        CGNString s(row.text);
        EXPECT_EQ(s.SetCodePageCharAt(row.index, row.character), row.stored);
        EXPECT_EQ(Bytes(s), row.expected);
        if (!row.character || std::strlen(row.character) != 1) continue;
        CGNString t(row.text);
        EXPECT_EQ(t.SetAt(static_cast<unsigned>(row.index), row.character[0]), row.stored);
        EXPECT_TRUE(t == s);
    }
}

TEST(String, CopiesTheFirstCharacters) {
    const struct {
        int line, codeSet;
        const char* text;
        unsigned n;
        const char* expected;
    } rows[] = {
        {__LINE__, 0, "abc", 9, "abc"},
        {__LINE__, 0, "abc", 0, ""},
        {__LINE__, 5, "a\x82\xA0\x95\x5Cz", 2, "a\x82\xA0"},
        {__LINE__, 4, "\x8F\xB0\xA1\xA4\xA2z", 2, "\x8F\xB0\xA1\xA4\xA2"},
        {__LINE__, 65, "a\xF0\x9F\x98\x80", 3, "a\xF0\x9F\x98\x80"},
        {__LINE__, 65, "a\xF0\x9F\x98\x80", 2, "a"},  // half of a character is none
        {__LINE__, 5, "a\x82 \x82\xA0z", 4, "a\x82 \x82"},
        {__LINE__, 5, "\x82", 5, "\x82"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CodeSetGuard codeSet(row.codeSet);
        EXPECT_EQ(Bytes(CGNString("before").CopyNChars(row.text, row.n)), row.expected);
        EXPECT_EQ(Bytes(CGNString("x").AppendNChars(row.text, row.n)),
                  std::string("x") + row.expected);
    }
}

TEST(String, TakesWideText) {
    const Wide text[] = {'a', 0x3042, 0xE9, 'z', 0};
    const struct {
        int line, codeSet;
        const char *expected, *firstTwo;
    } rows[] = {
        {__LINE__, 0, "a?\xE9z", "a?"},
        {__LINE__, 5, "a\x82\xA0?z", "a\x82\xA0"},
        {__LINE__, 65, "a\xE3\x81\x82\xC3\xA9z", "a\xE3\x81\x82"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CodeSetGuard codeSet(row.codeSet);
        const CGNString s(text, 99);
        EXPECT_EQ(Bytes(s), row.expected);
        EXPECT_EQ(Bytes(CGNString("x") += text), std::string("x") + row.expected);
        EXPECT_EQ(Bytes(CGNString("before").CopyNChars(text, 2)), row.firstTwo);
        EXPECT_EQ(Bytes(CGNString("before").CopyNChars(text, 9)), row.expected);
    }
    CodeSetGuard western(0);
    EXPECT_EQ(CharacterAt(CGNString(text), 1), "");  // no bytes of its own in this code set
    const Wide withoutEnd[] = {'a', 'b'};
    EXPECT_EQ(Bytes(CGNString().CopyNChars(withoutEnd, 2)), "ab");
}

TEST(String, ArgumentsMayLieInTheString) {
    CodeSetGuard codeSet(5);
    for (int capacity : {0, 8, 64}) {
        CGNString s("ab\x82\xA0=cd", capacity);
        s += s;
        s += s[0];
        s = s;
        EXPECT_STREQ(s, "ab\x82\xA0=cdab\x82\xA0=cda");
        s.CopyNChars(static_cast<const char*>(s) + 2, 2);
        s.AppendNChars(s, 1);
        EXPECT_STREQ(s, "\x82\xA0=\x82\xA0");
        s.CopyUntil(s, static_cast<const char*>(s) + 2);
        EXPECT_STREQ(s, "\x82\xA0");
    }
}

TEST(String, ComparesWithoutCaseByCharacters) {
    const struct {
        int line, codeSet;
        const char *a, *b;
        bool equal;
    } rows[] = {
        {__LINE__, 0, "", "", true},
        {__LINE__, 0, "Tokyo", "tOKYO", true},
        {__LINE__, 0, "Tokyo", "Tokio", false},
        {__LINE__, 0, "\xE9\xFF", "\xC9\x9F", true},
        {__LINE__, 0, "abc", "abcd", false},
        {__LINE__, 5, "\x82\x81\xB1z", "\x82\x60\xB1Z", true},  // full-width letters
        {__LINE__, 5, "\x95\x61", "\x95\x41", false},           // trail bytes are not letters
        {__LINE__, 65, "\xC3\xA9", "\xC3\x89", true},
        {__LINE__, 65, "\xC3\xA9", "ab", false},  // as many bytes, fewer characters
        {__LINE__, 5, "a\x82", "A\x82", true},
        {__LINE__, 5, "a\x82", "A\x83", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CodeSetGuard codeSet(row.codeSet);
        const CGNString a(row.a), b(row.b);
        EXPECT_EQ(a.IsEqualNoCase(b), row.equal);
        b.GetAt(0);  // the other order, and with the characters of both at hand
        EXPECT_EQ(b.IsEqualNoCase(a), row.equal);
    }
}

TEST(String, CollatesByTheUsersLocale) {
    CodeSetGuard codeSet(0);
    EXPECT_EQ(CGNString("abc").Collate("abc"), 0);
    EXPECT_GT(CGNString("b").Collate("A"), 0);  // letters by their place, not by their bytes
    EXPECT_LT(CGNString("\xE9t\xE9").Collate("f"), 0);
}

}  // namespace

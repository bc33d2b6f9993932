// CGNString as a caller sees it.
#include <gtest/gtest.h>

#include <cstring>
#include <iomanip>
#include <map>
#include <sstream>
#include <string>
#include <unordered_map>

#include "genstringio.h"
#include "genutil.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/texts.h"

namespace {

using Wide = unsigned short;

std::string CharacterAt(const CGNString& s, int index) {
    char out[8];
    EXPECT_EQ(s.GetCodePageCharAt(index, out), out);
    return out;
}

const char* const kNoText = nullptr;
const Wide* const kNoWide = nullptr;

TEST(String, EveryNullIsAnEmptyText) {
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

TEST(String, ConvertsToAText) {
    const CGNString s("abc");
    EXPECT_EQ(std::string(s), "abc");
    EXPECT_EQ(s[s.GetLength()], 0);
    EXPECT_TRUE("abc" == s && s == "abc" && "abd" != s && s != CGNString("ab"));
}

TEST(String, SomeOperationsStopAtANul) {
    CGNString s;
    s.CopyNBytes("ab", 5);
    EXPECT_EQ(Bytes(s), std::string("ab\0\0\0", 5));
    s = *&s;  // itself: nothing happens
    EXPECT_EQ(s.GetLength(), 5u);
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

TEST(String, ClearKeepsTheBufferEmptyReleasesIt) {
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

TEST(String, NothingWritesToTheSharedEmptyText) {
    CGNString s;
    s.SetAt2(0, 'x');
    s.Clear();
    EXPECT_FALSE(s.SetAt(0, 'x'));
    EXPECT_STREQ(CGNString(), "");
    CGNString t("abc");
    t.SetAt2(1, 'X');
    EXPECT_STREQ(t, "aXc");
}

TEST(String, GetStringFitsTheBuffer) {
    CodeSetGuard codeSet(5);
    const auto get = [](const char* text, unsigned size) {
        char out[12];
        std::memset(out, '#', sizeof out);
        const unsigned length = CGNString(text).GetString(out, size);
        EXPECT_EQ(out[size], '#');
        EXPECT_TRUE(length == 0 || out[length] == 0);
        return std::string(out, length);
    };
    EXPECT_EQ(get("abcdef", 4), "abc");
    EXPECT_EQ(get("abcdef", 9), "abcdef");
    EXPECT_EQ(get("abcdef", 1), "");
    EXPECT_EQ(get("abcdef", 0), "");
    EXPECT_EQ(get("", 3), "");
    EXPECT_EQ(get("a\x82\xA0z", 2), "a");      // byte 2 is inside a character: cut before it
    EXPECT_EQ(get("a\x82\xA0z", 3), "a\x82");  // byte 3 does not: the last byte is cut anyway
}

TEST(String, CopiesUpToADelimiter) {
    const struct {
        int line;
        const char *delimiter, *copied;
    } rows[] = {
        {__LINE__, "=", "key"}, {__LINE__, "==", "key=value"}, {__LINE__, "k", ""},
        {__LINE__, "", ""},     {__LINE__, nullptr, ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Bytes(CGNString("before").CopyUntil("key=value", row.delimiter)), row.copied)
            << row.line;
        EXPECT_EQ(Bytes(CGNString("x").AppendUntil("key=value", row.delimiter)),
                  Join({"x", row.copied}))
            << row.line;
    }
    EXPECT_EQ(Bytes(CGNString("before").CopyUntil("key=value", '=')), "key");
    EXPECT_EQ(Bytes(CGNString("x").AppendUntil("key=value", '=')), "xkey");
}
// Characters of every size, and invalid bytes.
TEST(String, CountsAndReadsCharacters) {
    const struct {
        int line, codeSet;
        const char* text;
        unsigned characters;
        const char* third;
    } rows[] = {
        {__LINE__, 65, "\xF0\x9F\x98\x80z", 3, "z"},  // two 16-bit units
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
        const char *character, *changed;  // null: nothing is changed
    } rows[] = {
        {__LINE__, 5, "a\x82\xA0z", 2, "\x95\x5Cq", "a\x82\xA0\x95\x5C"},
        {__LINE__, 5, "a\x82\xA0z", 3, "x", nullptr},
        {__LINE__, 5, "a\x82\xA0z", -1, "x", nullptr},
        {__LINE__, 5, "a\x82\xA0z", 1, "\x82", nullptr},
        {__LINE__, 5, "a\x82\xA0z", 1, "", nullptr},
        {__LINE__, 5, "a\x82\xA0z", 1, nullptr, nullptr},
        {__LINE__, 65, "abc", 1, "\xF0\x9F\x98\x80", "a\xF0\x9F\x98\x80\x63"},
        {__LINE__, 5, "a\x82 \x95\x5C", 4, "x", nullptr},  // the second byte of a character
        {__LINE__, 5, "a\x82 \x95\x5C", 3, "x", "a\x82 x"},
        {__LINE__, 5, "a\x82 z", 0, "b", "b\x82 z"},  // invalid bytes are kept
        {__LINE__, 65, "a\xC3\xE3\x81", 0, "b", "b\xC3\xE3\x81"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CodeSetGuard codeSet(row.codeSet);
        CGNString s(row.text), t(row.text);
        const bool changes = row.changed != nullptr;
        EXPECT_EQ(s.SetCodePageCharAt(row.index, row.character), changes);
        EXPECT_EQ(Bytes(s), changes ? row.changed : row.text);
        if (!row.character || std::strlen(row.character) != 1) continue;
        EXPECT_EQ(t.SetAt(static_cast<unsigned>(row.index), row.character[0]), changes);
        EXPECT_EQ(Bytes(t), Bytes(s));
    }
}

TEST(String, CopiesNoHalfOfACharacter) {
    CodeSetGuard codeSet(65);
    const char* const text = "a\xF0\x9F\x98\x80";  // three positions
    EXPECT_EQ(Bytes(CGNString("before").CopyNChars(text, 3)), text);
    EXPECT_EQ(Bytes(CGNString("x").AppendNChars(text, 2)), "xa");
    CodeSetGuard shiftJis(5);
    EXPECT_EQ(Bytes(CGNString().CopyNChars("a\x82 \x82\xA0z", 5)), "a\x82 \x82\xA0");
    EXPECT_EQ(Bytes(CGNString().CopyNChars("\x82", 1)), "\x82");
}
TEST(String, ConvertsWideText) {
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
    EXPECT_EQ(CharacterAt(CGNString(text), 1), "?");  // as the bytes have it
    const Wide lone[] = {'a', 0xDC5C, 0xDC82, 0xD83D, 'b', 0};
    for (const int inCodeSet : {0, 3, 5, 65}) {
        CodeSetGuard codeSet(inCodeSet);
        EXPECT_EQ(Bytes(CGNString(lone)), "a???b");
        EXPECT_EQ(Bytes(CGNString().CopyNChars(lone, 4)), "a??");
    }
    const Wide withoutEnd[] = {'a', 'b'};
    EXPECT_EQ(Bytes(CGNString().CopyNChars(withoutEnd, 2)), "ab");
}

TEST(String, MeetsTheStandardLibrary) {
    CodeSetGuard codeSet(65);
    using namespace std::string_view_literals;
    CGNString s(std::string("a\0b", 3)), t(u"\u3042"sv), u(u"x"), v("ab"sv);
    EXPECT_EQ(s.View(), "a\0b"sv);
    EXPECT_STREQ(t, "\xE3\x81\x82");
    t += "z"sv;
    t += u"\u3044"sv.substr(0, 1);
    t += u"!";
    EXPECT_STREQ(t, "\xE3\x81\x82z\xE3\x81\x84!");
    u = std::string("y");
    v = u"w";
    EXPECT_TRUE(u == "y"sv && "y"sv == u && std::string("w") == v);
    swap(u, v);
    EXPECT_TRUE(u == "w" && v == "y");

    // A string is moved to as it is assigned to.
    CGNString room("abc", 40), grows;
    grows.AllocateBuffer(10, 1);
    const char* const kept = room;
    room = CGNString("xyz");
    grows = CGNString("more than ten bytes");
    EXPECT_STREQ(room, "xyz");
    EXPECT_EQ(static_cast<const char*>(room), kept);
    EXPECT_STREQ(grows, "more than ten bytes");
    CGNString taken(std::move(room));
    EXPECT_EQ(static_cast<const char*>(taken), kept);
    EXPECT_TRUE(room.IsEmpty() && (room = std::move(taken)) == "xyz" && taken.IsEmpty());
    EXPECT_TRUE((room = std::move(taken)).IsEmpty());

    CGNString padded;
    padded.CopyNBytes("ab", 3);
    std::unordered_map<CGNString, int> counts;
    ++counts["ab"], ++counts["ab"], ++counts[padded];
    EXPECT_EQ(counts["ab"], 2);
    std::map<CGNString, int, CGNStringLess> sorted;
    for (const char* name : {"b", "\xFF", "a", "b"}) ++sorted[name];
    EXPECT_EQ(sorted.size(), 3u);
    EXPECT_TRUE(sorted.begin()->first == "a" && sorted.find("b"sv)->second == 2);
    EXPECT_TRUE(CGNStringLess()("ab", padded) && !CGNStringLess()(padded, "ab"));

    std::ostringstream stream;
    stream << std::setw(5) << s << u;
    EXPECT_EQ(stream.str(), "  a\0bw"sv);
}

TEST(String, IteratesOverWholeCharacters) {
    const auto walk = [](int inCodeSet, const char* text) {
        CodeSetGuard codeSet(inCodeSet);
        std::string all;
        const CGNString s(text);
        for (const CGNCharacter& c : s.Characters()) {
            char point[32];
            std::snprintf(point, sizeof point, "%u:%X ", c.Position(), unsigned(c.CodePoint()));
            all += point;
            char bytes[8];
            EXPECT_EQ(c.Bytes(), s.GetCodePageCharAt(static_cast<int>(c.Position()), bytes));
        }
        return all;
    };
    EXPECT_EQ(walk(65, "a\xF0\x9F\x91\x9C\xC3\xA9"), "0:61 1:1F45C 3:E9 ");
    EXPECT_EQ(walk(65, "\xF0\x9F\x91\x9C\xC3"), "0:1F45C 4:FFFD ");
    EXPECT_EQ(walk(5, "a\x95\x5C\xB1"), "0:61 1:8868 2:FF71 ");
    EXPECT_EQ(walk(5, "\x85\x40\x95\x5C\\"), "0:FFFD 2:8868 4:5C ");
    EXPECT_EQ(walk(0, ""), "");
    CGNCharacter character;
    EXPECT_FALSE(character.Read(CGNString("a"), 1));
}

TEST(String, IgnoresCaseOfCharacters) {
    const auto equal = [](int inCodeSet, const char* x, const char* y) {
        CodeSetGuard codeSet(inCodeSet);
        const CGNString a(x), b(y);
        const bool result = a.IsEqualNoCase(b);
        b.GetAt(0);  // the other order, and with the characters of both at hand
        EXPECT_EQ(b.IsEqualNoCase(a), result);
        return result;
    };
    EXPECT_TRUE(equal(0, "", ""));
    EXPECT_TRUE(equal(0, "Tokyo \xE9\xFF", "tOKYO \xC9\x9F"));
    EXPECT_FALSE(equal(0, "Tokyo", "Tokio"));
    EXPECT_FALSE(equal(0, "abc", "abcd"));
    EXPECT_TRUE(equal(5, "\x82\x81\xB1z", "\x82\x60\xB1Z"));  // full-width letters
    EXPECT_FALSE(equal(5, "\x95\x61", "\x95\x41"));           // trail bytes are not letters
    EXPECT_TRUE(equal(65, "\xC3\xA9", "\xC3\x89"));
    EXPECT_FALSE(equal(65, "\xC3\xA9", "ab"));  // as many bytes, fewer characters
    EXPECT_TRUE(equal(5, "a\x82", "A\x82"));
    EXPECT_FALSE(equal(5, "a\x82", "A\x83"));
}

TEST(String, CollatesInTheLanguageOfTheUser) {
    CodeSetGuard codeSet(0);
    EXPECT_EQ(CGNString("abc").Collate("abc"), 0);
    EXPECT_GT(CGNString("b").Collate("A"), 0);  // by letters, not by bytes
    EXPECT_LT(CGNString("\xE9t\xE9").Collate("f"), 0);
}

}  // namespace

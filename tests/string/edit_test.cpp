// CGNString's operations on characters: search, extraction, trims, case, editing, parts. Ordinary
// arguments are compared with a plain list of characters by fuzz/string_unit_fuzz.cpp.
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

#include "genutil.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/texts.h"

namespace {

TEST(StringEdit, SearchesBeginInsideTheText) {
    CodeSetGuard codeSet(5);
    const CGNString s("a\x95\x5C\\x");
    for (const int start : {-1, 4, INT_MIN, INT_MAX}) {
        EXPECT_EQ(s.Find("x", start), -1);
        EXPECT_EQ(s.Find("", start), -1);
        EXPECT_EQ(s.StrChr(static_cast<unsigned>(start), 'x'), -1);
        EXPECT_EQ(s.FindFirstOf("x", start), 4);
        EXPECT_EQ(s.FindFirstNotOf("x", start), 4);
    }
    EXPECT_EQ(s.Find(nullptr, 3), 3);
    EXPECT_EQ(s.ReverseFind("\\Q"), 2);  // only the first character counts
    for (const char* none : {"Q", "", "\xFF", static_cast<const char*>(nullptr)})
        EXPECT_EQ(s.ReverseFind(none), -1);
    EXPECT_EQ(CGNString().Find("", 0), -1);
}

TEST(StringEdit, NegativeCountsExtractTheRest) {
    CodeSetGuard codeSet(5);
    const CGNString s("a\x95\x5Cxz");
    for (const int count : {-1, INT_MIN, INT_MAX}) {
        CGNString out("before");
        s.SubStr(out, 1, count);
        EXPECT_STREQ(out, "\x95\x5Cxz");
        s.RightString(out, static_cast<unsigned>(count));
        out.Truncate(static_cast<unsigned>(count));
        EXPECT_STREQ(out, s);
        s.MidString(out, -1, 2);
        EXPECT_TRUE(out.IsEmpty());
    }
    CGNString cut(s);
    for (const char* none : {"Q", "", static_cast<const char*>(nullptr)}) cut.TruncateAt(none);
    cut.TruncateAt('\0');
    EXPECT_STREQ(cut, s);
    cut.TruncateAt("zQ");  // only the first character counts
    EXPECT_STREQ(cut, "a\x95\x5Cx");
    cut.TruncateAt('x');
    EXPECT_STREQ(cut, "a\x95\x5C");
}

// In pairs of UTF-8 and in text of which something is invalid, a position inside a character means
// the whole character, and no byte of it is a character of its own.
TEST(StringEdit, PositionsMeanWholeCharacters) {
    const struct {
        int line, codeSet;
        const char* text;
        unsigned at;  // two positions of one character, this and the next
        std::string left, character, rest;
    } rows[] = {
        {__LINE__, 65, "\xF0\x9F\x91\x9C x", 0, "", "\xF0\x9F\x91\x9C", " x"},
        {__LINE__, 65,
         "a\xF0\x9F\x90\xB6"
         "b",
         1, "a", "\xF0\x9F\x90\xB6", "b"},
        {__LINE__, 5, "\x85\x40\x95\x5C\\", 2, "\x85\x40", "\x95\x5C", "\\"},
        {__LINE__, 5, "\x85\x40\x95\x5C\\", 0, "", "\x85\x40", "\x95\x5C\\"},
        {__LINE__, 10, "\x80\xC4\xE3x", 1, "\x80", "\xC4\xE3", "x"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CodeSetGuard codeSet(row.codeSet);
        const CGNString s(row.text);
        const unsigned inside = row.at + 1, count = s.GetNumChars();
        CGNString out;
        s.LeftString(out, inside);
        EXPECT_EQ(Bytes(out), row.left);
        s.RightString(out, count - inside);
        EXPECT_EQ(Bytes(out), row.character + row.rest);
        s.SubStr(out, row.at, 1);
        EXPECT_EQ(Bytes(out), "");
        s.SubStr(out, inside, 2);
        EXPECT_EQ(Bytes(out), row.character + (row.rest[0] == '\x95' ? "" : row.rest.substr(0, 1)));
        char character[8];
        EXPECT_EQ(s.GetCodePageCharAt(static_cast<int>(row.at), character), row.character);
        EXPECT_STREQ(s.GetCodePageCharAt(static_cast<int>(inside), character), "");
        CGNString edited(s);
        edited.Truncate(inside);
        EXPECT_EQ(Bytes(edited), row.left);
        for (const unsigned at : {row.at, inside}) {
            edited = s;
            EXPECT_TRUE(edited.RemoveAt(static_cast<int>(at), 1));
            EXPECT_EQ(Bytes(edited), row.left + row.rest);
            edited = s;
            EXPECT_TRUE(edited.InsertAt(static_cast<int>(at), "-"));
            EXPECT_EQ(Bytes(edited), row.left + "-" + row.character + row.rest);
            edited = s;
            EXPECT_EQ(edited.SetCodePageCharAt(static_cast<int>(at), "-"), at == row.at);
            if (at == row.at) {
                EXPECT_EQ(Bytes(edited), row.left + "-" + row.rest);
            }
        }
        const int first = static_cast<int>(row.at);
        EXPECT_EQ(s.Find(row.character.c_str()), first);
        EXPECT_EQ(s.ReverseFind(row.character.c_str()),
                  row.codeSet == 5 && first == 0 ? -1 : first);
        EXPECT_EQ(s.Find(row.character.substr(1).c_str()), row.character[1] == '\x5C' ? 4 : -1);
        edited = s;
        edited.Replace(row.character.c_str(), "+");
        EXPECT_EQ(Bytes(edited), row.left + "+" + row.rest);
        std::string all;
        for (unsigned i = 0; i < count; ++i)
            all += s.GetCodePageCharAt(static_cast<int>(i), character);
        EXPECT_EQ(all, row.text);
    }
    CodeSetGuard codeSet(65);
    CGNString s("\xE3\x81\x93\xF0\x9F\x98\x80\xE4\xB8\x96\xE7\x95\x8C");
    s.RemoveAt(1, 1);
    EXPECT_STREQ(s, "\xE3\x81\x93\xE4\xB8\x96\xE7\x95\x8C");
    EXPECT_EQ(CGNString("a\xF0\x9F\x98\x80").FindFirstOf("\xF0\x9F\x98\x81"), 3);
    EXPECT_EQ(CGNString("a\xF0\x9F\x98\x80").FindFirstOf("\xF0\x9F\x98\x80"), 1);
    // U+1F48C ends with the unit that also represents the invalid byte 8C.
    EXPECT_EQ(CGNString("\xF0\x9F\x92\x8C").FindFirstNotOf("\x8C", 1), 0);
    CodeSetGuard shiftJis(5);
    CGNString broken("\xFC\x6A");
    broken.ToUpper();
    EXPECT_EQ(broken.FindFirstOf("J"), static_cast<int>(broken.GetNumChars()));
}

TEST(StringEdit, PositionsEndWithTheText) {
    CodeSetGuard codeSet(5);
    CGNString s, out;
    for (const unsigned all : {0x7FFFFFFFu, 0xFFFFFFFFu}) {
        EXPECT_STREQ(CGNString().CopyNChars("a\x95\x5C", all), "a\x95\x5C");
        EXPECT_STREQ(CGNString().CopyNChars(u"ab", all), "ab");
        CGNString("ab").RightStringInBytes(out, all);
        EXPECT_STREQ(out, "ab");
    }
    s.CopyNChars("ab", 5);
    EXPECT_FALSE(s.InsertAt(4, "x"));
    s.RightString(out, 1);
    EXPECT_STREQ(out, "b");
}

// In 2022 code sets one bad byte must not cost the escapes their own.
TEST(StringEdit, InvalidBytesSurvive) {
    for (const int inCodeSet : {3, 4, 5, 10, 12, 41, 42, 65}) {
        SCOPED_TRACE(inCodeSet);
        CodeSetGuard codeSet(inCodeSet);
        const std::string text = "\x1B$)C\x1B$B$\"\x1B(B\x0E\x1B(I1\x0F\xFF\x1Bz\xFF";
        CGNString s(text.c_str()), out;
        s.ToUpper(-1);
        EXPECT_EQ(Bytes(s).size(), text.size());
        s.ToLower(static_cast<int>(text.size()) - 2);
        EXPECT_EQ(Bytes(s).substr(0, text.size() - 2), text.substr(0, text.size() - 2));
        s.InsertAt(static_cast<int>(text.size()), "+");
        s.RemoveAt(static_cast<int>(text.size()), 1);
        s.Replace('z', 'z');
        s.ExpandQuotes('z');
        s.UnexpandQuotes('z');
        EXPECT_EQ(Bytes(s), text);
    }
}

TEST(StringEdit, ExtractsBytesOfWholeCharacters) {
    const struct {
        int line, codeSet;
        const char* text;
        unsigned n;
        std::string left, right;
    } rows[] = {
        {__LINE__, 0, "abcdef", 4, "abcd", "cdef"},
        {__LINE__, 0, "abcdef", 0, "", ""},
        {__LINE__, 0, "abc", 3, "abc", "abc"},
        {__LINE__, 0, "abc", 5, std::string("abc\0\0", 5), "abc"},
        {__LINE__, 5, "a\x82\xA0z", 2, "a", "z"},
        {__LINE__, 5, "a\x82\xA0z", 3, "a\x82\xA0", "\x82\xA0z"},
        {__LINE__, 5, "\x95\x5C\x83\x7C", 1, "", ""},
        {__LINE__, 5, "\x95\x5C\x83\x7C", 3, "\x95\x5C", "\x83\x7C"},
        {__LINE__, 4, "\x8F\xB0\xA1\x8F\xB0\xA1", 5, "\x8F\xB0\xA1", "\x8F\xB0\xA1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CodeSetGuard codeSet(row.codeSet);
        const CGNString s(row.text);
        CGNString out("before"), self(s);
        s.LeftStringInBytes(out, row.n);
        EXPECT_EQ(Bytes(out), row.left);
        s.RightStringInBytes(out, row.n);
        EXPECT_EQ(Bytes(out), row.right);
        self.LeftStringInBytes(self, row.n);
        EXPECT_EQ(Bytes(self), row.left);
        self = s;
        self.RightStringInBytes(self, row.n);
        EXPECT_EQ(Bytes(self), row.right);
    }
    const auto inBytes = [](unsigned start, int count) {
        CGNString s("abcdef");
        s.GetAt(0);
        s.SubStrInBytes(start, count);
        return Bytes(s);
    };
    EXPECT_EQ(inBytes(2, 2), "cd");
    EXPECT_EQ(inBytes(2, -1), "cdef");
    EXPECT_EQ(inBytes(2, INT_MAX), "cdef");
    EXPECT_EQ(inBytes(0, 0), "");
    EXPECT_EQ(inBytes(6, 1), std::string("\0bcdef", 6));  // empty as a text, of the same length
    CGNString empty;
    empty.SubStrInBytes(0, 1);
    EXPECT_TRUE(empty.IsEmpty());
}

TEST(StringEdit, TrimsBlanksAndTabs) {
    CodeSetGuard codeSet(5);
    const struct {
        int line;
        const char *text, *left, *leftTab, *right, *rightTab, *both;
    } rows[] = {
        {__LINE__, "  a b  ", "a b  ", "a b  ", "  a b", "  a b", "a b"},
        {__LINE__, "\t a \t", "\t a \t", "a \t", "\t a \t", "\t a", "\t a \t"},
        {__LINE__, " \ta\t ", "\ta\t ", "a\t ", " \ta\t", " \ta", "\ta\t"},
        {__LINE__, "   ", "", "", "", "", ""},
        {__LINE__, "", "", "", "", "", ""},
        {__LINE__, " \x81\x40 ", "\x81\x40 ", "\x81\x40 ", " \x81\x40", " \x81\x40", "\x81\x40"},
    };
    for (const auto& row : rows) {
        using Trim = void (CGNString::*)(CGNString&) const;
        const std::pair<Trim, const char*> trims[] = {{&CGNString::LeftTrim, row.left},
                                                      {&CGNString::LeftTrimWithTab, row.leftTab},
                                                      {&CGNString::RightTrim, row.right},
                                                      {&CGNString::LeftRightTrim, row.both},
                                                      {&CGNString::RightTrimWithTab, row.rightTab}};
        for (const auto& [trim, expected] : trims) {
            CGNString out("before"), self(row.text);
            (self.*trim)(out);
            (self.*trim)(self);
            EXPECT_EQ(Bytes(out), expected) << row.line;
            EXPECT_EQ(Bytes(self), expected) << row.line;
        }
    }
    CGNString s("ab\t\t"), out;
    EXPECT_EQ(s.GetAt(2), '\t');
    s.RightTrimWithTab(out);
    EXPECT_EQ(Bytes(s), "ab \t");
    EXPECT_EQ(s.GetAt(2), ' ');
}

TEST(StringEdit, MapsCaseInTheCodeSet) {
    const struct {
        int line, codeSet;
        const char *lower, *upper, *lowerAgain;
    } rows[] = {
        {__LINE__, 0, "abc \xE9\xFF\xB5\xDF", "ABC \xC9\x9F\xB5\xDF", "abc \xE9\xFF\xB5\xDF"},
        {__LINE__, 5, "ab\x82\x81\x95\x61\x84\x71\xB1", "AB\x82\x60\x95\x61\x84\x41\xB1",
         "ab\x82\x81\x95\x61\x84\x71\xB1"},
        {__LINE__, 5, "@az[`{9", "@AZ[`{9", "@az[`{9"},
        {__LINE__, 24, "\xE6\xB8", "\xC6\xA8", "\xE6\xB8"},
        {__LINE__, 65, "\xC3\xA9\xD0\xB6", "\xC3\x89\xD0\x96", "\xC3\xA9\xD0\xB6"},
        {__LINE__, 0, "a\x83", "A\x83", "a\x83"},  // a letter whose counterpart the code set lacks
        {__LINE__, 1, "\xFF\xE9", "\xFF\xC9", "\xFF\xE9"},
        {__LINE__, 7, "\xA8\xA1z", "\xA8\xA1Z", "\xA8\xA1z"},
        {__LINE__, 28, "\xE9z", "\xE9Z", "\xE9z"},
    };
    for (const auto& row : rows) {
        CodeSetGuard codeSet(row.codeSet);
        CGNString s(row.lower);
        s.ToUpper(-1);
        EXPECT_EQ(Bytes(s), row.upper) << row.line;
        s.ToLower(-1);
        EXPECT_EQ(Bytes(s), row.lowerAgain) << row.line;
    }
    CodeSetGuard codeSet(5);
    CGNString s("a\x82\x81z");
    s.ToUpper(1);
    for (const int none : {3, -2, INT_MAX}) s.ToUpper(none);
    EXPECT_EQ(Bytes(s), "a\x82\x60z");
    s.ToUpper(2);
    s.ToLower(1);
    EXPECT_EQ(Bytes(s), "a\x82\x81Z");
}
using Test = unsigned char (CGNString::*)(int) const;
const std::pair<char, Test> kTests[] = {
    {'a', &CGNString::IsAlphaAt},  {'n', &CGNString::IsAlphaNumAt}, {'l', &CGNString::IsLowerAt},
    {'u', &CGNString::IsUpperAt},  {'p', &CGNString::IsPrintAt},    {'s', &CGNString::IsSpaceAt},
    {'x', &CGNString::IsXDigitAt}, {'d', &CGNString::IsDigitAt},    {'t', &CGNString::IsPunctAt},
};

std::string ClassesAt(const CGNString& s, int index) {
    std::string classes;
    for (const auto& [name, test] : kTests)
        if ((s.*test)(index)) classes += name;
    return classes;
}

TEST(StringEdit, ClassifiesCharacters) {
    const struct {
        int line, codeSet;
        const char *text, *classes;
    } rows[] = {
        {__LINE__, 0, "e", "anlpx"},       {__LINE__, 0, "Z", "anup"},
        {__LINE__, 0, "7", "npxd"},        {__LINE__, 0, " ", "ps"},
        {__LINE__, 0, "\t", "s"},          {__LINE__, 0, "_", "pt"},
        {__LINE__, 0, "\xE9", "anlp"},     {__LINE__, 0, "\xA7", "pt"},
        {__LINE__, 0, "\xAA", "anlpt"},    {__LINE__, 0, "\xB2", "npdt"},
        {__LINE__, 0, "\x01", ""},         {__LINE__, 5, "\x82\xA0", "anp"},
        {__LINE__, 5, "\x82\x50", "npxd"}, {__LINE__, 5, "\x82\x60", "anupx"},
        {__LINE__, 5, "\x81\x40", "ps"},   {__LINE__, 5, "\x81\x42", "pt"},
        {__LINE__, 4, "\xFF", ""},         {__LINE__, 24, "\xE6", "anlp"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CodeSetGuard codeSet(row.codeSet);
        const CGNString s(row.text), twice(Join({row.text, row.text}).c_str());
        EXPECT_EQ(ClassesAt(s, 0), row.classes);
        EXPECT_EQ(ClassesAt(s, -1), row.classes);
        EXPECT_EQ(ClassesAt(twice, -1), row.classes);
        EXPECT_EQ(ClassesAt(s, 1), "");
        EXPECT_EQ(ClassesAt(s, -2), "");
        EXPECT_EQ(ClassesAt(s, INT_MAX), "");
    }
    CodeSetGuard codeSet(0);
    EXPECT_EQ(ClassesAt("a1", -1), "npx");
    EXPECT_EQ(ClassesAt("", -1), "anlupsx");  // but neither digits nor punctuation
    EXPECT_EQ(ClassesAt("", 0), "");
    EXPECT_TRUE(CGNString("abc123").IsAlpha());
    EXPECT_FALSE(CGNString("abc 123").IsAlpha());
    EXPECT_FALSE(CGNString().IsAlpha());
}

TEST(StringEdit, ComparesCharactersAndReadsNumbers) {
    CodeSetGuard codeSet(5);
    const CGNString s("7\x82\x50\xB1z");
    EXPECT_TRUE(s.IsNumAt(0));
    EXPECT_FALSE(s.IsNumAt(1) || s.IsNumAt(4) || s.IsNumAt(9));
    EXPECT_TRUE(s.CompareSingleByteAt(0, '7') && s.CompareSingleByteAt(2, '\xB1'));
    EXPECT_FALSE(s.CompareSingleByteAt(1, '\x82') || s.CompareSingleByteAt(4, 0));
    EXPECT_TRUE(s.CompareMultiByteAt(1, "\x82\x50") && s.CompareMultiByteAt(9, ""));
    EXPECT_FALSE(s.CompareMultiByteAt(1, "\x82") || s.CompareMultiByteAt(1, nullptr));
    EXPECT_EQ(CGNString(" -12x").Number(), -12);
    EXPECT_EQ(CGNString().Number(), 0);
    EXPECT_EQ(CGNString("x").Number(), 0);
}

TEST(StringEdit, RefusesPlacesOutside) {
    CodeSetGuard codeSet(5);
    for (const int index : {-1, 0, 2, 3, 4}) {
        const bool place = index >= 0 && index <= 3, there = place && index < 3;
        CGNString s("a\x95\x5Cx");
        EXPECT_EQ(s.InsertAt(index, "\x83\x7C"), place);
        EXPECT_EQ(s.GetNumChars(), place ? 4u : 3u);
        for (const int count : {-1, INT_MIN, 0, INT_MAX}) {
            CGNString removed("a\x95\x5Cx");
            EXPECT_EQ(removed.RemoveAt(index, count), there && count >= 0);
            EXPECT_EQ(removed.GetNumChars(), there && count > 0 ? unsigned(index) : 3u);
        }
    }
    CGNString empty;
    EXPECT_FALSE(empty.RemoveAt(0, 1) || empty.InsertAt(1, "a"));
    EXPECT_TRUE(empty.InsertAt(0, empty) && empty.InsertAt(0, "a"));
    EXPECT_STREQ(empty, "a");
}
TEST(StringEdit, ReplacesWholeCharacters) {
    const auto replace = [](int inCodeSet, const char* text, const char* from, const char* to) {
        CodeSetGuard codeSet(inCodeSet);
        CGNString s(text);
        s.Replace(from, to);
        if (from && to && std::strlen(from) == 1 && std::strlen(to) == 1) {
            CGNString byCharacter(text);
            byCharacter.Replace(from[0], to[0]);
            EXPECT_EQ(Bytes(byCharacter), Bytes(s));
        }
        return Bytes(s);
    };
    EXPECT_EQ(replace(5, "aXbXX", "X", nullptr), "ab");
    EXPECT_EQ(replace(5, "abc", "", "-"), "abc");
    EXPECT_EQ(replace(5, "abc", nullptr, "-"), "abc");
    EXPECT_EQ(replace(0, "XXX", "XX", "X"), "XX");
    EXPECT_EQ(replace(5, "\x82\xA0\x82\xA0", "\xA0", "-"), "\x82\xA0\x82\xA0");
    EXPECT_EQ(replace(5, "\xF0\x5C\\", "\\", "/"), "\xF0\x5C/");  // user-defined
    EXPECT_EQ(replace(5, "\xED\x40x", "x", "y"), "\xFA\x5Cy");    // of two codes, the usual one
    EXPECT_EQ(replace(5, "\xED\x40", "\xFA\x5C", "y"), "y");
    EXPECT_EQ(replace(5, "z\x82 \x82=", "=", "-"), "z\x82 \x82-");  // invalid: byte by byte
    EXPECT_EQ(replace(5, "z\x82 \x82", "\x82", "--"), "z-- --");
    EXPECT_EQ(replace(12, "\xD9\x3C<", "<", "-"), "\xD9\x3C-");
    EXPECT_EQ(replace(65, "\xE3\x81\x82", "\x81", "-"), "\xE3\x81\x82");
    EXPECT_EQ(replace(3, "a<\x1B$B$\"\x1B(B<", "<", "-"), "a-\x1B$B$\"\x1B(B-");
    {
        CodeSetGuard codeSet(5);
        CGNString s("a\x95\x5C");
        // Of two codes the usual one, in long texts too.
        CGNString mixed("\xED\x40 \x82\xA0");
        for (int i = 0; i < 6; ++i) mixed += mixed;
        mixed.Replace("\x82\xA0", "\x82\xA2");
        EXPECT_EQ(Bytes(mixed).substr(0, 8), "\xFA\x5C \x82\xA2\xFA\x5C ");
        CGNString plain(std::string(100, '-').c_str());
        plain += "\xED\x40";
        plain.Replace('-', '\xB1');
        EXPECT_EQ(Bytes(plain).substr(99), "\xB1\xFA\x5C");
        s.Replace(s, s);
        s.Replace('\x95', 'x');
        s.Replace('a', '\x95');
        EXPECT_EQ(Bytes(s), "a\x95\x5C");
        s.Replace(static_cast<const char*>(s) + 1, s);
        EXPECT_EQ(Bytes(s), "aa\x95\x5C");
        s.Replace('\\', 0);
        EXPECT_EQ(Bytes(s), "aa\x95\x5C");
        s.Replace('a', 0);
        EXPECT_TRUE(s.IsEmpty());
    }
}

TEST(StringEdit, SplitsAtWholeDelimiters) {
    const struct {
        int line, codeSet;
        const char *text, *delimiter, *parts;
    } rows[] = {
        {__LINE__, 0, "a,,b", ",", "[a][][b]"},
        {__LINE__, 0, "a,b,", ",", "[a][b]"},
        {__LINE__, 0, "a--b-c", "--", "[a][b-c]"},
        {__LINE__, 0, "abc", "", "[abc]"},
        {__LINE__, 0, "abc", nullptr, "[abc]"},
        {__LINE__, 5, "\x95\x5C\\z", "\\", "[\x95\x5C][z]"},
        {__LINE__, 5, "\x82\xA0\x81\x41\x82\xA2", "\x81\x41", "[\x82\xA0][\x82\xA2]"},
    };
    for (const auto& row : rows) {
        CodeSetGuard codeSet(row.codeSet);
        const auto split = [&](auto delimiter) {
            CGNStringList list;
            list.AddItem("before");
            CGNString(row.text).Split(list, delimiter);
            std::string parts;
            for (int i = 0; i < list.GetCount(); ++i)
                parts += Join({"[", Bytes(*list.GetItem(i)), "]"});
            return parts;
        };
        EXPECT_EQ(split(row.delimiter), row.parts) << row.line;
        if (row.delimiter && std::strlen(row.delimiter) == 1) {
            EXPECT_EQ(split(static_cast<unsigned char>(row.delimiter[0])), row.parts) << row.line;
        }
    }
    CGNStringList own;
    own.AddItem("x,y");
    own.GetItem(0)->Split(own, ",");
    EXPECT_EQ(own.GetCount(), 2);
    EXPECT_STREQ(*own.GetItem(1), "y");

    // A derived list is emptied once, by its own function.
    struct Counting : CGNStringList {
        void Free() override {
            ++freed;
            CGNStringList::Free();
        }
        int freed = 0;
    } counting;
    CGNString("a,b").Split(counting, ",");
    EXPECT_EQ(counting.freed, 1);
    EXPECT_EQ(counting.GetCount(), 2);
}

TEST(StringEdit, EscapesAndReadsEscapes) {
    const auto expand = [](CGNString& s) { s.ExpandSpecials(); };
    const auto unexpand = [](CGNString& s) { s.UnexpandSpecials(); };
    const auto quote = [](CGNString& s) { s.ExpandQuotes('\''); };
    const auto unquote = [](CGNString& s) { s.UnexpandQuotes('\''); };
    const struct {
        int line;
        void (*operation)(CGNString&);
        const char *text, *result;
    } rows[] = {
        {__LINE__, expand, "a\b\n\f\r\"\\\t", "a\\b\\n\\f\\r\\\"\\\\\t"},
        {__LINE__, unexpand, "\\b\\n\\r\\t\\\\", "\b\n\r\t\\"},
        {__LINE__, unexpand, "\\f\\\"\\q", "\\f\\\"\\q"},
        {__LINE__, unexpand, "ab\\", "ab\\"},
        {__LINE__, unexpand, "\\065xy", "Ay"},    // the character after the digits is dropped
        {__LINE__, unexpand, "\\6x5yz", "Az"},    // digits among three characters
        {__LINE__, unexpand, "\\65", "A"},        // fewer at the end
        {__LINE__, unexpand, "\\300x", "\x1Ex"},  // above 255: two digits, the third is dropped
        {__LINE__, unexpand, "\\255z", "\xFF"},
        {__LINE__, unexpand, "a\\000bcd", "a"},  // a 0 ends the text
        {__LINE__, unexpand, "a\\0\\065xb", "a"},
        {__LINE__, quote, "'a''", "''a''''"},
        {__LINE__, unquote, "''a'''b'", "'a''b'"},
    };
    for (const int inCodeSet : {0, 5, 9, 11, 65})
        for (const auto& row : rows) {
            CodeSetGuard codeSet(inCodeSet);
            CGNString s(row.text);
            row.operation(s);
            EXPECT_EQ(Bytes(s), row.result) << row.line;
        }
    CodeSetGuard codeSet(5);
    CGNString s("\x95\x5C\\n\x83\x5C");
    s.ExpandSpecials();
    EXPECT_EQ(Bytes(s), "\x95\x5C\\\\n\x83\x5C");
    s.UnexpandSpecials();
    s.UnexpandSpecials();
    EXPECT_EQ(Bytes(s), "\x95\x5C\n\x83\x5C");
    s = "\\1\x82\xA0"
        "2\x82\xA0z";
    s.UnexpandSpecials();
    s.ExpandQuotes('\x82');  // no character
    s.ExpandQuotes(0);
    EXPECT_EQ(Bytes(s), "\x0Cz");
    s = "\x82 \\123\x95\x5C";  // the last character is dropped whole
    s.UnexpandSpecials();
    EXPECT_EQ(Bytes(s), "\x82 \x7B");
}

// The time is proportional to the length: with a match at every second byte, and with characters of
// several bytes or invalid bytes between the matches.
TEST(StringEdit, LongTextsWithManyMatchesTakeLinearTime) {
    for (const int inCodeSet : {0, 5})
        for (const char* other : {"b", "\x95\x5C", "\x82 "}) {
            CodeSetGuard codeSet(inCodeSet);
            constexpr unsigned kTimes = 100000;
            CGNString s;
            s.AllocateBuffer(4 * kTimes, 1);
            for (unsigned i = 0; i < kTimes; ++i) (s += 'a') += other;
            const unsigned length = s.GetLength();
            s.Replace("a", "&");
            s.EncodeXMLString();
            EXPECT_EQ(s.GetLength(), length + 4 * kTimes);
            s.Replace("&amp;", "\n");
            s.ExpandSpecials();
            s.UnexpandSpecials();
            s.ExpandQuotes('\n');
            s.UnexpandQuotes('\n');
            EXPECT_EQ(s.GetNumLines(), static_cast<int>(kTimes) - 1);
            CGNStringList parts;
            s.Split(parts, "\n");
            EXPECT_EQ(parts.GetCount(), static_cast<int>(kTimes) + 1);
        }
}
}  // namespace

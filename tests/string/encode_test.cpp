// CGNString's escapes, encodings, file names and formats; line ends and lengths for client and
// server.
#include <gtest/gtest.h>

#include <climits>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <string>

#include "genutil.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/rows.h"
#include "tests/support/texts.h"

namespace {

bool IsJapaneseUser() {
    return (mbGetLCID(nullptr) & 0x3FF) == 0x11;
}

template <class Operation>
std::string After(const char* text, Operation operation) {
    CGNString s(text);
    operation(s);
    return Bytes(s);
}

TEST(StringEncode, EscapesInEveryCodeSet) {
    const struct {
        int line;
        void (*encode)(CGNString&);
        const char* result;  // of a&<b>"c'\ and line ends of all kinds
    } rows[] = {
        {__LINE__, [](CGNString& s) { s.EncodeHtmlString(); },
         "a&amp;&lt;b&gt;\"c'\\<br><br>d\r&amp;amp;"},
        {__LINE__, [](CGNString& s) { s.EncodeHtmlStringTextArea(); },
         "a&amp;&lt;b&gt;\"c'\\\r\n\nd\r&amp;amp;"},
        {__LINE__, [](CGNString& s) { s.EncodeHtmlQuotedString(); },
         "a&amp;<b>&quot;c'\\&#13;&#10;&#10;d&#13;&amp;amp;"},
        {__LINE__, [](CGNString& s) { s.EncodeXMLString(); },
         "a&amp;&lt;b&gt;&quot;c&apos;\\\r\n\nd\r&amp;amp;"},
        {__LINE__, [](CGNString& s) { s.EncodeJavaScriptQuotedString(0); },
         "a&<b>\\\"c\\'\\\\\\r\\n\\nd\\r&amp;"},
        {__LINE__, [](CGNString& s) { s.EncodeJavaScriptQuotedString(1); },
         "a&<b>\\\"c\\'\\\\   d &amp;"},
    };
    for (const int inCodeSet : {0, 3, 5, 9, 11, 65}) {
        CodeSetGuard codeSet(inCodeSet);
        for (const auto& row : rows) {
            EXPECT_EQ(After("a&<b>\"c'\\\r\n\nd\r&amp;", row.encode), row.result) << row.line;
            for (const char* plain : {"", "plain text of no interest"})
                EXPECT_EQ(After(plain, row.encode), plain) << row.line;
        }
    }
    EXPECT_EQ(After("\r", rows[0].encode), "\r");
    EXPECT_EQ(After("axbx", [](CGNString& s) { s.EncodeReplace("x", s); }), "aaxbxbaxbx");
    EXPECT_EQ(After("a\xE9z", [](CGNString& s) { s.EncodeReplace(nullptr, nullptr); }), "a\xE9z");
}
TEST(StringEncode, EscapesWholeCharacters) {
    const auto script = [](CGNString& s) { s.EncodeJavaScriptQuotedString(0); };
    ExpectTextsIn([&](const char* text) { return After(text, script); },
                  {
                      {__LINE__, 5, "\x95\x5C\\\x83\x5C", "\x95\x5C\\\\\x83\x5C"},
                      {__LINE__, 9, "\xA5\x5C'", "\xA5\x5C\\'"},
                      {__LINE__, 0, "\x95\x5C", "\x95\\\\"},  // two characters there
                      {__LINE__, 5, "\x95\x5C\x82 \\", "\x95\x5C\x82 \\\\"},  // nor in invalid text
                  });
    const CodeSetGuard johab(12);
    EXPECT_EQ(After("\xD9\x3C<", [](CGNString& s) { s.EncodeHtmlString(); }), "\xD9\x3C&lt;");
}

TEST(StringEncode, ConvertsBetweenTheUsersCodeSetAndUtf8) {
    CodeSetGuard codeSet(IsJapaneseUser() ? 5 : 0);
    const char* const own = IsJapaneseUser() ? "a\x82\xA0" : "a\xE9";
    const char* const utf8 = IsJapaneseUser() ? "a\xE3\x81\x82" : "a\xC3\xA9";
    EXPECT_EQ(After(own, [](CGNString& s) { s.ConvertToUTF8(nullptr); }), utf8);
    EXPECT_EQ(After("\x82\xA0", [](CGNString& s) { s.ConvertToUTF8("xx_XX"); }), "");
    EXPECT_EQ(After(utf8, [](CGNString& s) { s.ConvertFromUTF8(); }), own);
    EXPECT_EQ(After("%41+%7E%zz%00b", [](CGNString& s) { s.UrlDecode(); }), "A+~%zz");
}

TEST(StringEncode, ReportsWhatUtf8Loses) {
    CodeSetGuard codeSet(5);
    CGNString s("\x95\x5C\x82 "), utf8;
    unsigned lost = 9;
    EXPECT_TRUE(s.ToUtf8(utf8, &lost));
    EXPECT_EQ(Bytes(utf8), "\xE8\xA1\xA8\xEF\xBF\xBD ");
    EXPECT_EQ(lost, 1u);
    EXPECT_TRUE(s.FromUtf8("\xE8\xA1\xA8\xF0\x9F\x98\x80\xE0\xB8\x81", &lost));
    EXPECT_EQ(Bytes(s), "\x95\x5C\x81\xAC\x81\xAC");
    EXPECT_EQ(lost, 2u);
    EXPECT_TRUE(s.FromUtf8(nullptr, &lost) && s.IsEmpty() && lost == 0);
    CodeSetGuard unlisted(99);  // read as Western
    EXPECT_TRUE(s.FromUtf8("\xC3\xA9", &lost) && s == "\xE9" && lost == 0);
    EXPECT_TRUE(s.ToUtf8(s, &lost) && s == "\xC3\xA9" && lost == 0);
}

TEST(StringEncode, DecodesReferencesAndEscapesForUrlsAndJson) {
    enum { kXml, kHtml, kUrl, kJson };
    using Operation = void (CGNString::*)();
    static constexpr Operation kOperations[] = {&CGNString::DecodeXMLString,
                                                &CGNString::DecodeHtmlString, &CGNString::UrlEncode,
                                                &CGNString::EncodeJSONString};
    const struct {
        int line, codeSet, operation;
        const char *text, *expected;
    } rows[] = {
        {__LINE__, 0, kXml, "&lt;a&gt;&amp;amp;&apos;&quot;", "<a>&amp;'\""},
        {__LINE__, 0, kXml, "&#65;&#x42;&#X43;&#xe9;", "ABC\xE9"},
        {__LINE__, 0, kXml, "&#0;&#x;&#;&lt&nbsp;&#x110000;&#xD800;&",
         "&#0;&#x;&#;&lt&nbsp;&#x110000;&#xD800;&"},
        {__LINE__, 0, kXml, "&#x3042;&#99999999999;", "&#x3042;&#99999999999;"},
        {__LINE__, 5, kXml, "\x95\x5C&#x3042;&#x8868;", "\x95\x5C\x82\xA0\x95\x5C"},
        {__LINE__, 5, kXml, "\x82 &lt;&#x8868;", "\x82 <\x95\x5C"},
        {__LINE__, 3, kXml, "\xFE\xB1&lt;&#x3042;\x1B$B$\"", "\xFE\xB1<&#x3042;\x1B$B$\""},
        {__LINE__, 65, kXml, "&#x1F600;", "\xF0\x9F\x98\x80"},
        {__LINE__, 0, kHtml, "a<br>b<BR />c<b>&nbsp;&lt;", "a\nb\nc<b>\xA0<"},
        {__LINE__, 5, kUrl, "a-Z_0.~ \x95\x5C/", "a-Z_0.~%20%95%5C%2F"},
        {__LINE__, 0, kJson, "\"\\/\b\f\n\r\t\x01\x1F\xE9",
         "\\\"\\\\/\\b\\f\\n\\r\\t\\u0001\\u001F\xE9"},
        {__LINE__, 5, kJson, "\x95\x5C\\", "\x95\x5C\\\\"},
        {__LINE__, 5, kJson, "\x95\x5C\x82 \"", "\x95\x5C\x82 \\\""},
        {__LINE__, 3, kJson, "\xFE\xB1\\", "\xFE\xB1\\\\"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CodeSetGuard codeSet(row.codeSet);
        const Operation operation = kOperations[row.operation];
        EXPECT_EQ(After(row.text, [=](CGNString& s) { (s.*operation)(); }), row.expected);
        EXPECT_EQ(After("plain", [=](CGNString& s) { (s.*operation)(); }), "plain");
        if (row.operation == kUrl) {
            EXPECT_EQ(After(row.expected, [](CGNString& s) { s.UrlDecode(); }), row.text);
        }
    }
}

TEST(StringForm, FoldsAndNormalizes) {
    const struct {
        int line, codeSet;
        const char* text;
        CGNString::NormalForm form;
        const char* expected;  // null: the code set cannot hold it
    } rows[] = {
        {__LINE__, 65, "\xC3\xA9", CGNString::kNormalFormD, "e\xCC\x81"},
        {__LINE__, 65, "e\xCC\x81", CGNString::kNormalFormC, "\xC3\xA9"},
        {__LINE__, 65, "\xEF\xBC\xA1\xEF\xBD\xB6\xEF\xBE\x9E", CGNString::kNormalFormKC,
         "A\xE3\x82\xAC"},
        {__LINE__, 65, "\xEF\xAC\x81", CGNString::kNormalFormKD, "fi"},
        {__LINE__, 5, "\xB6\xDE", CGNString::kNormalFormKC, "\x83\x4B"},
        {__LINE__, 0, "\xE9", CGNString::kNormalFormD, nullptr},
        {__LINE__, 65, "\xC3", CGNString::kNormalFormC, nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CodeSetGuard codeSet(row.codeSet);
        CGNString s(row.text);
        EXPECT_EQ(s.Normalize(row.form), row.expected != nullptr);
        EXPECT_EQ(Bytes(s), row.expected ? row.expected : row.text);
    }
    CodeSetGuard codeSet(65);
    // A, capital and both small sigmas, an accented letter.
    EXPECT_EQ(After("A\xCE\xA3\xCF\x83\xCF\x82\xC3\x89", [](CGNString& s) { s.FoldCase(); }),
              "a\xCF\x83\xCF\x83\xCF\x83\xC3\xA9");
}

TEST(StringForm, CollatesWithOptions) {
    CodeSetGuard codeSet(65);
    constexpr unsigned kAll =
        CGNString::kIgnoreCase | CGNString::kIgnoreWidth | CGNString::kIgnoreKana;
    const struct {
        int line;
        const char *a, *b;
        unsigned options;
        int order;
    } rows[] = {
        {__LINE__, "abc", "ABC", CGNString::kIgnoreCase, 0},
        {__LINE__, "abc", "ABD", CGNString::kIgnoreCase, -1},
        {__LINE__, "\xEF\xBC\xA1", "A", CGNString::kIgnoreWidth, 0},
        {__LINE__, "\xEF\xBD\xB1", "\xE3\x82\xA2", CGNString::kIgnoreWidth, 0},
        {__LINE__, "\xE3\x81\x82", "\xE3\x82\xA2", CGNString::kIgnoreKana, 0},
        {__LINE__, "\xEF\xBD\xB1z", "\xE3\x81\x82Z", kAll, 0},
        {__LINE__, "b", "A", kAll, 1},
        {__LINE__, "\xC2\xAD", "", CGNString::kIgnoreWidth, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        const auto sign = [](int order) { return (order > 0) - (order < 0); };
        CGNString x, y;
        EXPECT_EQ(sign(CGNString(row.a).Collate(row.b, row.options)), row.order);
        EXPECT_TRUE(CGNString(row.a).GetSortKey(x, row.options) &&
                    CGNString(row.b).GetSortKey(y, row.options));
        EXPECT_EQ(sign(std::strcmp(x, y)), row.order);
        EXPECT_EQ(std::strlen(x), x.GetLength());
        // Whether width and kana make a difference otherwise is for the locale to say.
        if (row.options == CGNString::kIgnoreCase) {
            EXPECT_LT(CGNString(row.a).Collate(row.b, 0), 0);
        }
    }
    EXPECT_LT(CGNString("10").Collate("9", 0), 0);
}

TEST(StringEncode, WidensAndNarrowsJapanese) {
    const auto widen = [](CGNString& s) { s.ConvertSingleToDouble(); };
    const auto narrow = [](CGNString& s) { s.ConvertRomanjiToASCII(); };
    const auto tag = [](CGNString& s) { s.ConvertSpecialAlphaNumForXMLTag(); };
    const struct {
        int line, codeSet;
        void (*operation)(CGNString&);
        const char *text, *result;
    } rows[] = {
        {__LINE__, 5, widen, "a1\xB1\xB6\xDE", "\x82\x81\x82\x50\x83\x41\x83\x4B"},
        {__LINE__, 5, narrow, "\x82\x4F\x82\x58\x82\x81\x82\x9A\x82\x60\x82\x79\x82\xA0\x81\x43",
         "09azAZ\x82\xA0\x81\x43"},
        {__LINE__, 5, tag, "a<\xB1", "a\x81\x83\x83\x41"},
        {__LINE__, 4, narrow, "\xA3\xE1", "\xA3\xE1"},
        {__LINE__, 4, tag, "a", "\xA3\xE1"},
        {__LINE__, 0, tag, "a\x82\x81", "a\x82\x81"},
    };
    for (const auto& row : rows) {
        const CodeSetGuard codeSet(row.codeSet);
        EXPECT_EQ(After(row.text, row.operation), row.result) << row.line;
    }
}

TEST(StringEncode, DeclaresTheCharacterSetOfAPage) {
    CodeSetGuard codeSet(11);
    EXPECT_STREQ(CGNString().GetEncodingStringForHTML(""),
                 "content=\"text/html; charset=euc-kr\">");
    EXPECT_STREQ(CGNString().GetEncodingStringForHTML("ja_JP"),
                 "content=\"text/html; charset=shift_jis\">");
    const struct {
        int line;
        const char *page, *declared;
    } rows[] = {
        {__LINE__, "<html><head><META content=\"text/html; CHARSET=utf-8\"></head>charset=x",
         "<html><head><META content=\"text/html; CHARSET=shift_jis\"></head>charset=x"},
        {__LINE__, "<meta name='charset'><meta charset = 'utf-8' />",
         "<meta name='charset'><meta charset = 'shift_jis' />"},
        {__LINE__, "<!DOCTYPE html><HTML lang=x><HEAD>\n</HEAD><metal charset=x>",
         "<!DOCTYPE html><HTML lang=x><HEAD><meta http-equiv=\"Content-Type\" "
         "content=\"text/html; charset=shift_jis\">\n</HEAD><metal charset=x>"},
        {__LINE__, "<header>charset=x",
         "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=shift_jis\">"
         "<header>charset=x"},
        {__LINE__, "<html",
         "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=shift_jis\"><html"},
        {__LINE__, "<meta charset=", "<meta charset=shift_jis"},
        {__LINE__, "<meta charset=\"\"><meta charset=x/>",
         "<meta charset=\"shift_jis\"><meta charset=x/>"},
        {__LINE__, "<meta charset=x/>", "<meta charset=shift_jis/>"},
        {__LINE__, "<meta content='text/html;charset=' name=a>",
         "<meta content='text/html;charset=shift_jis' name=a>"},
        {__LINE__,
         "<!-- <meta charset=a> --><script>\"<meta charset=b>\"</script><meta title='>' "
         "charset=c>",
         "<!-- <meta charset=a> --><script>\"<meta charset=b>\"</script><meta title='>' "
         "charset=shift_jis>"},
        {__LINE__, "<!--<head>--><html title=\">\">",
         "<!--<head>--><html title=\">\"><meta http-equiv=\"Content-Type\" "
         "content=\"text/html; charset=shift_jis\">"},
        {__LINE__, "",
         "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=shift_jis\">"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        const auto declare = [](CGNString& s) { s.ReplaceEncodingStringInHTML("ja_JP"); };
        EXPECT_EQ(After(row.page, declare), row.declared);
    }
}
// -- File names ----------------------------------------------------------------------------------

TEST(StringFileName, SplitsAtTheLastSeparator) {
    const struct {
        int line, codeSet;
        const char *path, *dir, *file, *base, *ext;
    } rows[] = {
        {__LINE__, 0, "C:\\a\\b.txt", "C:\\a", "b.txt", "C:\\a\\b", "txt"},
        {__LINE__, 0, "a/b\\c.d.e", "a/b", "c.d.e", "a/b\\c.d", "e"},
        {__LINE__, 0, "a\\b/c", "a\\b", "c", "a\\b/c", ""},
        {__LINE__, 0, "file", "", "file", "file", ""},
        {__LINE__, 0, "/", "", "", "/", ""},
        {__LINE__, 0, "a.", "", "a.", "a", ""},
        {__LINE__, 0, "", "", "", "", ""},
        {__LINE__, 5, "\x95\x5C\\\x83\x5C.z", "\x95\x5C", "\x83\x5C.z", "\x95\x5C\\\x83\x5C", "z"},
        {__LINE__, 5, "\x83\x5C", "", "\x83\x5C", "\x83\x5C", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CodeSetGuard codeSet(row.codeSet);
        CGNString s(row.path), a("before"), b("before");
        s.SplitFilePath(a, b);
        EXPECT_EQ(Join({Bytes(a), "|", Bytes(b)}), Join({row.dir, "|", row.file}));
        s.SplitFileName(a, b);
        EXPECT_EQ(Join({Bytes(a), "|", Bytes(b)}), Join({row.base, "|", row.ext}));
        CGNString first(s), second(s);
        first.SplitFilePath(first, b);
        second.SplitFilePath(a, second);
        EXPECT_EQ(Join({Bytes(first), "|", Bytes(second)}), Join({row.dir, "|", row.file}));
    }
}

TEST(StringFileName, JoinsWithASeparator) {
    const auto make = [](int inCodeSet, const char* dir, const char* file) {
        CodeSetGuard codeSet(inCodeSet);
        CGNString s("before"), self(dir), other(file);
        EXPECT_TRUE(s.MakeFilePath(dir, file) && self.MakeFilePath(self, file) &&
                    other.MakeFilePath(dir, other));
        EXPECT_TRUE(s == self && s == other);
        return Bytes(s);
    };
    EXPECT_EQ(make(0, "a", "b"), "a\\b");
    EXPECT_EQ(make(0, "a\\", "b"), "a\\b");
    EXPECT_EQ(make(0, "a/", "b"), "a/\\b");
    EXPECT_EQ(make(0, "", "b"), "\\b");
    EXPECT_EQ(make(0, "", ""), "\\");
    EXPECT_EQ(make(5, "\x95\x5C", "b"), "\x95\x5C\\b");
    EXPECT_EQ(make(5, "\x95\x5C\\", "b"), "\x95\x5C\\b");
}

TEST(StringFileName, ShortensTo8By3) {
    ExpectTextsIn(
        [](const char* name) { return After(name, [](CGNString& s) { s.ForceTo8By3(); }); },
        {
            {__LINE__, 0, "long file name.html", "LONGFILE.HTM"},
            {__LINE__, 0, "a.b.c", "AB.C"},
            {__LINE__, 0, "C:\\My Dir\\\xE9t\xE9+[2].x",
             "C:\\My Dir\\\xC9T\xC9"
             "2.X"},
            {__LINE__, 0, ".profile", "PROFILE"},
            {__LINE__, 0, "name.", "NAME"},
            {__LINE__, 0, "", ""},
            {__LINE__, 5, "abc\x95\x5C\x95\x5C\x95\x5Cz.h\x95\x5Cm",
             "ABC\x95\x5C\x95\x5C.H\x95\x5C"},
            {__LINE__, 65,
             "\xF0\x9F\x98\x80"
             "abcdefg\xE3\x81\x82.t",
             "ABCDEFG.T"},
        });
}
// -- Formats -------------------------------------------------------------------------------------

int FormatOn(CGNString& s, const char* format, ...) GENUTIL_PRINTF(2, 3);
int FormatOn(CGNString& s, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = s.sprintf2(format, arguments);
    va_end(arguments);
    return length;
}

TEST(StringFormat, FormatsTextsOfAnyLength) {
    CGNString s("7 days");
    EXPECT_EQ(s.sprintf("%s and %d", static_cast<const char*>(s), 8), 12);
    EXPECT_STREQ(s, "7 days and 8");
    for (const int width : {1, 510, 511, 512, 513, 100000}) {
        EXPECT_EQ(FormatOn(s, "%*dx", width, 5), width + 1);
        EXPECT_EQ(s.GetLength(), static_cast<unsigned>(width) + 1);
        EXPECT_EQ(std::strlen(s), s.GetLength());
        EXPECT_STREQ(static_cast<const char*>(s) + width - 1, "5x");
    }
    const char* const none = nullptr;
    EXPECT_EQ(s.sprintf(none), 0);
    EXPECT_TRUE(s.IsEmpty());
    EXPECT_FALSE(s.LoadStringResource(1, "a"));
    EXPECT_TRUE(s.IsEmpty());
}

// -- Client and server ---------------------------------------------------------------------------

TEST(TextLayout, ChangesLineEnds) {
    const struct {
        int line;
        const char *text, *client, *server;
        int breaks;
    } rows[] = {
        {__LINE__, "\n\r\n\x01", "\r\n\r\n\n", "\n\n\x01", 1},
        {__LINE__, "\r\n\r", "\r\n\r", "\n\r", 1},
        {__LINE__, "a\nb\r\r\n\r", "a\r\nb\r\r\n\r", "a\nb\r\n\r", 2},
        {__LINE__, "\x01\n", "\n\r\n", "\x01\n", 1},
        {__LINE__, "\n", "\r\n", "\n", 0},
        {__LINE__, "", "", "", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CGNString client(row.text), server(row.text);
        EXPECT_EQ(OSClientGetNumLines(client), row.breaks);
        EXPECT_EQ(client.GetNumLines(), row.breaks);
        EXPECT_EQ(OSClientFormatString(client), static_cast<int>(std::strlen(row.client)));
        EXPECT_EQ(OSServerFormatString(server), static_cast<int>(std::strlen(row.server)));
        EXPECT_EQ(Bytes(client), row.client);
        EXPECT_EQ(Bytes(server), row.server);
        EXPECT_EQ(After(row.text, [](CGNString& s) { s.ClientFormat(); }), row.client);
        EXPECT_EQ(After(row.text, [](CGNString& s) { s.ServerFormat(); }), row.server);
    }
}

TEST(TextLayout, MeasuresLengthsOfTheOtherSide) {
    const bool japanese = IsJapaneseUser();
    const struct {
        int line, codeSet;
        const char* text;
        int limit, length;
    } rows[] = {
        {__LINE__, 5, "\xB1\xB2\xB3\xB4", 4, 2},  // two bytes each at the server
        {__LINE__, 5, "\xB1\xB2\xB3\xB4", 3, 1},
        {__LINE__, 5, "a\x82\xA0\x82\xA2", 4, 3},
        {__LINE__, 5, "a\x82\xA0\x82\xA2", 5, 5},
        {__LINE__, 0, "abc", 2, 2},
        {__LINE__, 5, "abc", 0, 0},
        {__LINE__, 5, "abc", -1, 0},
        {__LINE__, 5, nullptr, 7, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        CodeSetGuard codeSet(row.codeSet);
        EXPECT_EQ(OSFindPlatformStringLength(row.text, row.limit),
                  japanese ? row.length : row.limit);
    }
    CodeSetGuard codeSet(japanese ? 5 : 0);
    const char* const text = japanese ? "a\x82\xA0z" : "a\xE9z";  // 1, 2 or 3, and 1 bytes
    const int second = japanese ? 4 : 3;
    for (const int inCodeSet : {5, 0, 4, 65}) {  // whatever the current code set is
        InitMbutilExt(inCodeSet);
        EXPECT_EQ(FindUTF8StringLength(text, INT_MAX), 3);
    }
    EXPECT_EQ(FindUTF8StringLength(text, second - 1), 1);
    EXPECT_EQ(FindUTF8StringLength(text, second), 2);
    EXPECT_EQ(FindUTF8StringLength(text, INT_MAX), 3);
    EXPECT_EQ(FindUTF8StringLength(text, 0), 0);
    EXPECT_EQ(FindUTF8StringLength(text, -1), 0);
    EXPECT_EQ(FindUTF8StringLength(nullptr, 5), 0);
}

TEST(StringEncode, WidensInEachEastAsianCodeSet) {
    const auto widen = [](CGNString& s) { s.ConvertSingleToDouble(); };
    const struct {
        int line, codeSet;
        const char *half, *full;
    } rows[] = {
        {__LINE__, 7, "A1~", "\xA3\xC1\xA3\xB1\xA1\xAB"},
        {__LINE__, 8, "a ", "\xA3\xE1\xA1\xA1"},
        {__LINE__, 9, "A1", "\xA2\xCF\xA2\xB0"},
        {__LINE__, 10, "A1", "\xA4\xC1\xA4\xA2"},
        {__LINE__, 11, "A1\xB0\xA1", "\xA3\xC1\xA3\xB1\xB0\xA1"},
        {__LINE__, 12, "A", "\xDA\x51"},
        {__LINE__, 13, "A1", "\xA3\xC1\xA3\xB1"},
        {__LINE__, 65, "A", "A"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.line);
        const CodeSetGuard codeSet(row.codeSet);
        EXPECT_EQ(After(row.half, widen), row.full);
    }
}

}  // namespace

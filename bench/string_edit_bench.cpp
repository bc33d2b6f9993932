// CGNString's operations beside std::string, ICU, GLib and Abseil: ASCII and Shift-JIS, a line and
// 1 MB. What works on UTF-16 is reached from Shift-JIS and left for it, since that is what programs
// have; GLib gets the same text in UTF-8.
#include <benchmark/benchmark.h>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>

#include <cstring>
#include <string>
#include <vector>

#include "bench/support/pages.h"
#include "genutil.h"

#ifdef HAVE_GLIB
#include <glib.h>
#endif
#ifdef HAVE_ABSL
#include <absl/strings/str_replace.h>
#include <absl/strings/str_split.h>
#endif

namespace {

struct Text {
    std::string name, native, utf8;
    std::string needle, utf8Needle;  // at the end of it
    std::string word, utf8Word;      // many times in it
};

std::vector<Text> g_texts;

// -- Peers ---------------------------------------------------------------------------------------

class Icu {
  public:
    Icu() {
        UErrorCode error = U_ZERO_ERROR;
        m_converter = ucnv_open("ibm-943_P15A-2003", &error);
    }
    ~Icu() { ucnv_close(m_converter); }
    icu::UnicodeString From(const std::string& text) {
        UErrorCode error = U_ZERO_ERROR;
        return {text.data(), static_cast<int32_t>(text.size()), m_converter, error};
    }
    std::string To(const icu::UnicodeString& text) {
        UErrorCode error = U_ZERO_ERROR;
        std::string out(static_cast<std::size_t>(text.length()) * 2, '\0');
        const int32_t n =
            text.extract(out.data(), static_cast<int32_t>(out.size()), m_converter, error);
        out.resize(static_cast<std::size_t>(n));
        return out;
    }

  private:
    UConverter* m_converter;
};

std::string ReplaceByHand(const std::string& text, const std::string& from, const std::string& to) {
    std::string out;
    out.reserve(text.size());
    std::size_t at = 0;
    for (std::size_t found; (found = text.find(from, at)) != std::string::npos;
         at = found + from.size()) {
        out.append(text, at, found - at);
        out.append(to);
    }
    return out.append(text, at);
}

std::string EscapeByHand(const std::string& text) {
    std::string out;
    out.reserve(text.size() + text.size() / 8);
    for (const char c : text) switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            default:
                out += c;
        }
    return out;
}

std::string TrimByHand(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(' ');
    if (begin == std::string::npos) return {};
    return text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

// -- Cases ---------------------------------------------------------------------------------------

template <class Body>
void Add(const std::string& what, const Text& text, const char* who, Body body) {
    const std::string name = what + ", " + text.name + "/" + who;
    benchmark::RegisterBenchmark(name.c_str(), [body](benchmark::State& state) {
        for (auto _ : state) body();
    });
}

template <class T>
void Keep(const T& value) {
    benchmark::DoNotOptimize(value);
}
void Keep(const CGNString& value) {
    benchmark::DoNotOptimize(static_cast<const char*>(value));
}

void AddStorage(const Text& t) {
    Add("build", t, "genutil", [&t] { Keep(CGNString(t.native.c_str())); });
    Add("build", t, "std::string", [&t] { Keep(std::string(t.native.c_str())); });
    static Icu icu;
    Add("build", t, "icu", [&t] { Keep(icu.From(t.native)); });
    auto* made = new CGNString(t.native.c_str());
    Add("copy", t, "genutil", [made] { Keep(CGNString(*made)); });
    Add("copy", t, "std::string", [&t] { Keep(std::string(t.native)); });
    const int times = t.native.size() < 1000 ? 1000 : 4;
    Add("append doubling", t, "genutil", [&t, times] {
        CGNString s;
        s.AllocateBuffer(16, 1);
        for (int i = 0; i < times; ++i) s += t.native.c_str();
        Keep(s);
    });
    Add("append doubling", t, "std::string", [&t, times] {
        std::string s;
        for (int i = 0; i < times; ++i) s += t.native.c_str();
        Keep(s);
    });
    Add("append exact", t, "genutil", [&t, times] {
        CGNString s;
        for (int i = 0; i < times; ++i) s += t.native.c_str();
        Keep(s);
    });
    Add("append exact", t, "std::string", [&t, times] {
        std::string s;
        for (int i = 0; i < times; ++i) {
            std::string grown;
            grown.reserve(s.size() + t.native.size());
            grown.append(s).append(t.native.c_str());
            s.swap(grown);
        }
        Keep(s);
    });
}

void AddSearch(const Text& t) {
    auto* s = new CGNString(t.native.c_str());
    Add("find", t, "genutil", [s, &t] { Keep(s->Find(t.needle.c_str(), 0)); });
    Add("find", t, "memmem",
        [&t] { Keep(memmem(t.native.data(), t.native.size(), t.needle.data(), t.needle.size())); });
    Add("find", t, "std::string", [&t] { Keep(t.native.find(t.needle)); });
    static Icu icu;
    auto* wide = new icu::UnicodeString(icu.From(t.native));
    auto* needle = new icu::UnicodeString(icu.From(t.needle));
    Add("find", t, "icu reached", [wide, needle] { Keep(wide->indexOf(*needle)); });
}

void AddSubstring(const Text& t) {
    const unsigned third = CGNString(t.native.c_str()).GetNumChars() / 3;
    auto* made = new CGNString(t.native.c_str());
    made->GetAt(0);
    const auto count = static_cast<int>(third);
    Add("substring", t, "genutil", [made, third, count] {
        CGNString out;
        made->SubStr(out, third, count);
        Keep(out);
    });
    Add("substring of new", t, "genutil", [&t, third, count] {
        CGNString s(t.native.c_str());
        s.SubStr(third, count);
        Keep(s);
    });
    static Icu icu;
    for (const char* what : {"substring", "substring of new"})
        Add(what, t, "icu",
            [&t, count] { Keep(icu.To(icu.From(t.native).tempSubString(count, count))); });
#ifdef HAVE_GLIB
    Add("substring", t, "glib", [&t, count] {
        char* out = g_utf8_substring(t.utf8.c_str(), count, 2L * count);
        Keep(out);
        g_free(out);
    });
#endif
}

// There and back, so that nothing but the replacement is measured.
void AddReplace(const Text& t) {
    auto* s = new CGNString(t.native.c_str());
    const char* const other = "<other>";
    Add("replace", t, "genutil", [s, &t, other] {
        s->Replace(t.word.c_str(), other);
        s->Replace(other, t.word.c_str());
        Keep(*s);
    });
    auto* hand = new std::string(t.native);
    Add("replace", t, "std::string", [hand, &t, other] {
        *hand = ReplaceByHand(*hand, t.word, other);
        *hand = ReplaceByHand(*hand, other, t.word);
        Keep(*hand);
    });
    static Icu icu;
    Add("replace", t, "icu", [&t, other] {
        for (int i = 0; i < 2; ++i)
            Keep(icu.To(icu.From(t.native).findAndReplace(icu.From(t.word), icu.From(other))));
    });
#ifdef HAVE_ABSL
    auto* absl = new std::string(t.native);
    Add("replace", t, "absl", [absl, &t, other] {
        *absl = absl::StrReplaceAll(*absl, {{t.word, other}});
        *absl = absl::StrReplaceAll(*absl, {{other, t.word}});
        Keep(*absl);
    });
#endif
#ifdef HAVE_GLIB
    auto* glib = g_string_new(t.utf8.c_str());
    Add("replace", t, "glib", [glib, &t, other] {
        g_string_replace(glib, t.utf8Word.c_str(), other, 0);
        g_string_replace(glib, other, t.utf8Word.c_str(), 0);
        Keep(glib->str);
    });
#endif
}

void AddEscape(const Text& t) {
    Add("html escape", t, "genutil", [&t] {
        CGNString s(t.native.c_str());
        s.EncodeHtmlStringTextArea();
        Keep(s);
    });
    Add("html escape", t, "std::string", [&t] { Keep(EscapeByHand(t.native)); });
#ifdef HAVE_ABSL
    Add("html escape", t, "absl", [&t] {
        Keep(absl::StrReplaceAll(t.native, {{"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}}));
    });
#endif
#ifdef HAVE_GLIB
    Add("html escape", t, "glib", [&t] {
        char* out = g_markup_escape_text(t.utf8.data(), static_cast<gssize>(t.utf8.size()));
        Keep(out);
        g_free(out);
    });
#endif
}

void AddTrimSplit(const Text& t) {
    auto* padded = new std::string("    " + t.native + "    ");
    auto* s = new CGNString(padded->c_str());
    Add("trim", t, "genutil", [s] {
        CGNString out;
        s->LeftRightTrim(out);
        Keep(out);
    });
    Add("trim", t, "std::string", [padded] { Keep(TrimByHand(*padded)); });
    auto* whole = new CGNString(t.native.c_str());
    Add("split", t, "genutil", [whole] {
        CGNStringList list;
        whole->Split(list, " ");
        Keep(list.GetCount());
    });
#ifdef HAVE_ABSL
    Add("split", t, "absl",
        [&t] { Keep(std::vector<std::string>(absl::StrSplit(t.native, ' ')).size()); });
#endif
#ifdef HAVE_GLIB
    auto* utf8Padded = new std::string("    " + t.utf8 + "    ");
    Add("trim", t, "glib", [utf8Padded] {
        char* out = g_strstrip(g_strdup(utf8Padded->c_str()));
        Keep(out);
        g_free(out);
    });
    Add("split", t, "glib", [&t] {
        char** parts = g_strsplit(t.utf8.c_str(), " ", -1);
        Keep(parts);
        g_strfreev(parts);
    });
#endif
}

void AddCase(const Text& t) {
    Add("upper-case", t, "genutil", [&t] {
        CGNString s(t.native.c_str());
        s.ToUpper(-1);
        Keep(s);
    });
    static Icu icu;
    Add("upper-case", t, "icu", [&t] { Keep(icu.To(icu.From(t.native).toUpper())); });
#ifdef HAVE_GLIB
    Add("upper-case", t, "glib", [&t] {
        char* out = g_utf8_strup(t.utf8.c_str(), -1);
        Keep(out);
        g_free(out);
    });
#endif
}

std::string OnlyAscii(const std::string& text) {
    std::string ascii;
    for (const char c : text)
        if (static_cast<unsigned char>(c) < 0x80) ascii += c;
    return ascii;
}

std::string ToUtf8(const std::string& text) {
    return Iconv("UTF-8", "CP932", text);
}

void MakeTexts() {
    InitMbutil();
    InitMbutilExt(mbShiftJis);
    const std::string japanese = PagesIn("SHIFT_JIS"), ascii = OnlyAscii(japanese);
    const std::string no = "\x82\xCC";
    const std::string longJapanese = japanese.substr(0, mbidx(japanese.c_str(), 1000000));
    const std::string line = "name: <b>\x96\xBC\x91\x4F</b> " + no + " x";
    g_texts = {
        {"ascii line", "name: <b>value</b> e", "", "> e", "", "e", ""},
        {"ascii 1 MB", ascii.substr(0, 1000000) + "last place", "", "last place", "", "e", ""},
        {"shift-jis line", line, "", no + " x", "", no, ""},
        {"shift-jis 1 MB", longJapanese + "last " + no, "", "last " + no, "", no, ""},
    };
    for (Text& t : g_texts) {
        t.utf8 = ToUtf8(t.native);
        t.utf8Needle = ToUtf8(t.needle);
        t.utf8Word = ToUtf8(t.word);
    }
}

const bool g_registered = [] {
    MakeTexts();
    for (const auto add :
         {AddStorage, AddSearch, AddSubstring, AddReplace, AddEscape, AddTrimSplit, AddCase})
        for (const Text& text : g_texts) add(text);
    return true;
}();

}  // namespace

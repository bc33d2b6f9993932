// ICU, GLib and Abseil. Operations on UTF-16 include the conversions from and to Shift-JIS, because
// programs have text in Shift-JIS. GLib receives the same text in UTF-8.
#include "bench/string_edit_bench.h"

#include <unicode/ucnv.h>
#include <unicode/unistr.h>

#include "genutil.h"

#ifdef HAVE_GLIB
#include <glib.h>
#endif
#ifdef HAVE_ABSL
#include <absl/strings/str_replace.h>
#include <absl/strings/str_split.h>
#endif

namespace {

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

void AddIcu(const Text& t) {
    static Icu icu;
    const auto count = static_cast<int>(CGNString(t.native.c_str()).GetNumChars() / 3);
    const char* const other = "<other>";
    Add("build", t, "icu", [&t] { Keep(icu.From(t.native)); });
    auto* wide = new icu::UnicodeString(icu.From(t.native));
    auto* needle = new icu::UnicodeString(icu.From(t.needle));
    Add("find", t, "icu reached", [wide, needle] { Keep(wide->indexOf(*needle)); });
    for (const char* what : {"substring", "substring of new"})
        Add(what, t, "icu",
            [&t, count] { Keep(icu.To(icu.From(t.native).tempSubString(count, count))); });
    Add("replace", t, "icu", [&t, other] {
        for (int i = 0; i < 2; ++i)
            Keep(icu.To(icu.From(t.native).findAndReplace(icu.From(t.word), icu.From(other))));
    });
    Add("upper-case", t, "icu", [&t] { Keep(icu.To(icu.From(t.native).toUpper())); });
}

#ifdef HAVE_ABSL
void AddAbseil(const Text& t) {
    const char* const other = "<other>";
    auto* absl = new std::string(t.native);
    Add("replace", t, "absl", [absl, &t, other] {
        *absl = absl::StrReplaceAll(*absl, {{t.word, other}});
        *absl = absl::StrReplaceAll(*absl, {{other, t.word}});
        Keep(*absl);
    });
    Add("html escape", t, "absl", [&t] {
        Keep(absl::StrReplaceAll(t.native, {{"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}}));
    });
    Add("split", t, "absl",
        [&t] { Keep(std::vector<std::string>(absl::StrSplit(t.native, ' ')).size()); });
}
#endif

#ifdef HAVE_GLIB
void AddGlib(const Text& t) {
    const auto count = static_cast<int>(CGNString(t.native.c_str()).GetNumChars() / 3);
    const char* const other = "<other>";
    Add("substring", t, "glib", [&t, count] {
        char* out = g_utf8_substring(t.utf8.c_str(), count, 2L * count);
        Keep(out);
        g_free(out);
    });
    auto* glib = g_string_new(t.utf8.c_str());
    Add("replace", t, "glib", [glib, &t, other] {
        g_string_replace(glib, t.utf8Word.c_str(), other, 0);
        g_string_replace(glib, other, t.utf8Word.c_str(), 0);
        Keep(glib->str);
    });
    Add("html escape", t, "glib", [&t] {
        char* out = g_markup_escape_text(t.utf8.data(), static_cast<gssize>(t.utf8.size()));
        Keep(out);
        g_free(out);
    });
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
    Add("upper-case", t, "glib", [&t] {
        char* out = g_utf8_strup(t.utf8.c_str(), -1);
        Keep(out);
        g_free(out);
    });
}
#endif

}  // namespace

void AddPeers(const Text& text) {
    AddIcu(text);
#ifdef HAVE_ABSL
    AddAbseil(text);
#endif
#ifdef HAVE_GLIB
    AddGlib(text);
#endif
}

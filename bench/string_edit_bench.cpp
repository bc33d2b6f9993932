// CGNString's operations compared with std::string: ASCII and Shift-JIS, a line and 1 MB.
#include "bench/string_edit_bench.h"

#include "bench/support/pages.h"
#include "bench/support/system.h"
#include "genutil.h"

namespace {

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

void AddStorage(const Text& t) {
    Add("build", t, "genutil", [&t] { Keep(CGNString(t.native.c_str())); });
    Add("build", t, "std::string", [&t] { Keep(std::string(t.native.c_str())); });
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
    Add("find", t, kFindBytesName,
        [&t] { Keep(FindBytes(t.native.data(), t.native.size(), t.needle)); });
    Add("find", t, "std::string", [&t] { Keep(t.native.find(t.needle)); });
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
}

// Replaces and restores, so that only the replacement is measured.
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
}

void AddEscape(const Text& t) {
    Add("html escape", t, "genutil", [&t] {
        CGNString s(t.native.c_str());
        s.EncodeHtmlStringTextArea();
        Keep(s);
    });
    Add("html escape", t, "std::string", [&t] { Keep(EscapeByHand(t.native)); });
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
}

void AddCase(const Text& t) {
    Add("upper-case", t, "genutil", [&t] {
        CGNString s(t.native.c_str());
        s.ToUpper(-1);
        Keep(s);
    });
}

std::string OnlyAscii(const std::string& text) {
    std::string ascii;
    for (const char c : text)
        if (static_cast<unsigned char>(c) < 0x80) ascii += c;
    return ascii;
}

std::string ToUtf8(const std::string& text) {
    return Convert(text, mbShiftJis, mbUtf8);
}

std::vector<Text> MakeTexts() {
    InitMbutil();
    InitMbutilExt(mbShiftJis);
    const std::string japanese = PagesIn("SHIFT_JIS"), ascii = OnlyAscii(japanese);
    const std::string no = "\x82\xCC";
    const std::string longJapanese = japanese.substr(0, mbidx(japanese.c_str(), 1000000));
    const std::string line = "name: <b>\x96\xBC\x91\x4F</b> " + no + " x";
    std::vector<Text> texts = {
        {"ascii line", "name: <b>value</b> e", "", "> e", "", "e", ""},
        {"ascii 1 MB", ascii.substr(0, 1000000) + "last place", "", "last place", "", "e", ""},
        {"shift-jis line", line, "", no + " x", "", no, ""},
        {"shift-jis 1 MB", longJapanese + "last " + no, "", "last " + no, "", no, ""},
    };
    for (Text& t : texts) {
        t.utf8 = ToUtf8(t.native);
        t.utf8Needle = ToUtf8(t.needle);
        t.utf8Word = ToUtf8(t.word);
    }
    return texts;
}

const bool g_registered = [] {
    static const std::vector<Text> s_texts = MakeTexts();
    for (const auto add : {AddStorage, AddSearch, AddSubstring, AddReplace, AddEscape, AddTrimSplit,
                           AddCase, AddPeers})
        for (const Text& text : s_texts) add(text);
    return true;
}();

}  // namespace

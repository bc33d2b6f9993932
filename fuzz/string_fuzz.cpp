// Checks operations of CGNString in any order on any bytes against a slow, obvious implementation.
// The first byte of the input selects the code set. Each operation then takes a byte that selects
// it, two numbers, and two texts that begin with their length.
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>

#include "fuzz/check.h"
#include "fuzz/slow_text.h"
#include "genstr.h"
#include "ostext.h"

namespace {

using slow::Text;

class Input {
  public:
    Input(const std::uint8_t* data, std::size_t size) : m_at(data), m_end(data + size) {}
    bool IsEmpty() const { return m_at == m_end; }
    unsigned Number() { return IsEmpty() ? 0 : *m_at++; }
    std::string Bytes() {
        std::string text;
        for (unsigned n = Number() % 16; n > 0 && !IsEmpty(); --n)
            text += static_cast<char>(*m_at++);
        return text.c_str();
    }

  private:
    const std::uint8_t *m_at, *const m_end;
};

// A string with access to its capacity and flags.
class Probe : public CGNString {
  public:
    using CGNString::CGNString;
    using CGNString::operator=;
    using CGNString::m_capacity;
    using CGNString::m_flags;
    std::string Bytes() const { return {static_cast<const char*>(*this), GetLength()}; }
    void CheckSound() const {
        Check(m_length <= m_capacity && m_data[m_length] == 0, "bytes in their buffer");
        Check(!m_wide || (m_wideLength <= m_wideCapacity && m_wide[m_wideLength] == 0),
              "characters in their buffer");
        if (m_wide) {
            Probe fresh;
            fresh.CopyNBytes(*this, m_length);
            fresh.GetAt(0);
            Check(fresh.m_wideLength == m_wideLength &&
                      !std::memcmp(fresh.m_wide, m_wide, m_wideLength * sizeof *m_wide),
                  "characters as the bytes have them");
        }
    }
};

// One operation with its arguments.
struct Step {
    unsigned kind, a, b;
    std::string x, y;
    int codeSet;
};

std::string ToText(long number) {
    return std::to_string(number);
}

std::string ToText(const CGNStringList& list) {
    std::string text;
    for (int i = 0; i < list.GetCount(); ++i)
        text.append("[").append(*list.GetItem(i), list.GetItem(i)->GetLength()).append("]");
    return text;
}

constexpr unsigned kKinds = 52;

std::string Apply(Probe& s, const Step& step, bool withWide) {
    const int a = static_cast<int>(step.a), b = static_cast<int>(step.b);
    Probe x(step.x.c_str()), out("out"), more;
    if (withWide) {
        x.GetAt(0);
        s.GetAt(0);
        out.GetAt(0);
    }
    const char* const y = step.y.c_str();
    char character[8];
    switch (step.kind) {
        case 0:
            s.SubStr(out, step.a, b % 5 - 1);
            return out.Bytes();
        case 1:
            s.SubStr(step.a, b % 5 - 1);
            return "";
        case 2:
            s.LeftString(out, step.a);
            return out.Bytes();
        case 3:
            s.RightString(out, step.a);
            return out.Bytes();
        case 4:
            s.Truncate(step.a);
            return "";
        case 5:
            s.TruncateAt(x);
            return "";
        case 6:
            return ToText(s.InsertAt(a, x));
        case 7:
            return ToText(s.RemoveAt(a, b % 5));
        case 8:
            return ToText(s.SetCodePageCharAt(a, x));
        case 9:
            return s.GetCodePageCharAt(a, character);
        case 10:
            return ToText(s.Find(x, a));
        case 11:
            return ToText(s.ReverseFind(x));
        case 12:
            return ToText(s.FindFirstOf(x, a));
        case 13:
            return ToText(s.FindFirstNotOf(x, a));
        case 14:
            s.Replace(x, y);
            return "";
        case 15:
            s.CopyNChars(x, step.a);
            return "";
        case 16:
            s += x;
            return "";
        case 17:
            s = x;
            return "";
        case 18:
            s.SplitFilePath(out, more);
            return out.Bytes() + "|" + more.Bytes();
        case 19:
            s.SplitFileName(out, more);
            return out.Bytes() + "|" + more.Bytes();
        case 20:
            return ToText(s.MakeFilePath(x, y));
        case 21:
            s.ExpandQuotes(static_cast<char>(a));
            return "";
        case 22:
            return ToText(static_cast<long>(s.GetNumChars()));
        // The following operations are only checked to be independent of the 16-bit copy.
        case 23:
            s.ToUpper(a % 6 - 1);
            return "";
        case 24:
            s.ToLower(a % 6 - 1);
            return "";
        case 25:
            s.Replace(static_cast<char>(a), static_cast<char>(b));
            return "";
        case 26:
            s.UnexpandQuotes(static_cast<char>(a));
            return "";
        case 27:
            s.ExpandSpecials();
            return "";
        case 28:
            s.UnexpandSpecials();
            return "";
        case 29:
            s.EncodeHtmlString();
            return "";
        case 30:
            s.EncodeJavaScriptQuotedString(a % 2 != 0);
            return "";
        case 31:
            s.EncodeReplace(x, y);
            return "";
        case 32:
            s.ConvertSpecialAlphaNumForXMLTag();
            return "";
        case 33:
            s.ForceTo8By3();
            return "";
        case 34:
            return ToText(s.IsAlphaAt(a % 6 - 1) + 2 * s.IsPrintAt(a % 6 - 1));
        case 35:
            return ToText(s.IsEqualNoCase(x));
        case 36:
            return ToText(s.IsNumAt(step.a) + 2 * s.CompareMultiByteAt(a, x));
        case 37:
            s.LeftStringInBytes(out, step.a);
            return out.Bytes();
        case 38:
            s.RightStringInBytes(out, step.a);
            return out.Bytes();
        case 39:
            s.LeftRightTrim(s);
            return "";
        case 40:
            s.InsertAt(a, s);
            return "";
        case 41:
            s.ReplaceEncodingStringInHTML("");
            return "";
        case 42:
            s.ClientFormat();
            return "";
        case 43:
            s.FoldCase();
            return "";
        case 44:
            return ToText(s.Normalize(static_cast<CGNString::NormalForm>(a % 4)));
        case 45:
            return ToText(s.GetSortKey(out, step.a % 16)) + out.Bytes();
        case 46:
            return ToText(s.ToUtf8(out)) + out.Bytes();
        case 47:
            s.DecodeHtmlString();
            return "";
        case 48:
            s.DecodeXMLString();
            return "";
        case 49:
            s.EncodeJSONString();
            return "";
        case 50: {
            const std::string before = s.Bytes();
            s.UrlEncode();
            Probe back(s);
            back.UrlDecode();
            Check(back.Bytes() == before || before.find('%') != std::string::npos, "URL");
            std::string all;
            for (const CGNCharacter& c : s.Characters()) all += c.Bytes();
            Check(all == s.Bytes(), "all characters");
            return "";
        }
        default: {
            CGNStringList list;
            s.Split(list, x);
            return ToText(list);
        }
    }
}

std::size_t EndOf(const Text& s, std::size_t start, unsigned b) {
    const int count = static_cast<int>(b % 5) - 1;
    const std::size_t end = start + static_cast<std::size_t>(count < 0 ? 1000 : count);
    return end < s.Size() ? end : s.Size();
}

// Returns the number of positions from `start` on that belong to characters which are (`in`) or are
// not in the set.
std::size_t Run(const Text& s, const Text& set, std::size_t start, bool in) {
    if (start >= s.Size()) return s.Size();
    const std::vector<Text> wanted = set.Characters();
    std::size_t at = start;
    for (; at < s.Size(); at = s.Up(at + 1)) {
        bool found = false;
        for (const Text& character : wanted) found |= s.Has(at, character);
        if (found != in) break;
    }
    return at - start;
}

std::string Replaced(const Text& s, const Text& from, const Text& to, int codeSet) {
    std::string text;
    slow::Units all, units;
    slow::Decode(to.Bytes(), codeSet, &units);
    const bool atOnce = s.IsValid() && to.IsValid();
    std::size_t done = 0;
    for (std::size_t at = 0; at < s.Size();) {
        if (!s.Has(at, from) || at + s.LengthOf(from) > s.Size()) {
            ++at;
            continue;
        }
        const std::string before = s.Part(done, at);
        text += before + to.Bytes();
        slow::Decode(before, codeSet, &all);
        all += units;
        done = at += s.LengthOf(from);
    }
    const std::string rest = s.Part(done, s.Size());
    if (done == 0) return s.Bytes();
    if (!atOnce) return text + rest;
    slow::Decode(rest, codeSet, &all);
    return slow::Encode(all, codeSet);
}

std::string SplitAt(const Text& s, const char* separators, bool wholeIsLast, int codeSet) {
    long at = -1;
    for (std::size_t i = 0; i < s.Size(); ++i)
        for (const char* c = separators; *c; ++c)
            if (s.Has(i, Text(std::string(1, *c), codeSet))) at = static_cast<long>(i);
    if (at < 0) return wholeIsLast ? "|" + s.Bytes() : s.Bytes() + "|";
    const auto place = static_cast<std::size_t>(at);
    return s.Part(0, place) + "|" + s.Part(place + 1, s.Size());
}

// Returns true if the expected outcome is known, and stores the expected text and result.
bool Expect(const std::string& before, const Step& step, std::string* text, std::string* result) {
    const Text s(before, step.codeSet), x(step.x, step.codeSet), y(step.y, step.codeSet);
    // The effect of an invalid byte on the rest of a text with escapes is not modelled.
    const bool escapes = step.codeSet == 3 || step.codeSet == 41;
    if (escapes && !(s.IsValid() && x.IsValid() && y.IsValid())) return false;
    const std::string first = Text::First(step.x, step.codeSet);
    const Text character(first, step.codeSet);
    const std::size_t a = step.a;
    const bool there = a < s.Size();
    *text = before;
    result->clear();
    switch (step.kind) {
        case 0:
            *result = there ? s.Part(s.Down(a), s.Down(EndOf(s, a, step.b))) : "";
            break;
        case 1:
            *text = there ? s.Part(s.Down(a), s.Down(EndOf(s, a, step.b))) : "";
            break;
        case 2:
            *result = there ? s.Part(0, s.Down(a)) : before;
            break;
        case 3:
            *result = s.Part(s.Down(there ? s.Size() - a : 0), s.Size());
            break;
        case 4:
            if (there) *text = s.Part(0, s.Down(a));
            break;
        case 5: {
            const long at = first.empty() ? -1 : s.Find(character, 0);
            if (at >= 0) *text = s.Part(0, static_cast<std::size_t>(at));
            break;
        }
        case 6:
            *result = a <= s.Size() ? "1" : "0";
            if (a <= s.Size()) *text = s.With(s.Down(a), s.Down(a), x);
            break;
        case 7: {
            *result = there ? "1" : "0";
            if (!there) break;
            const std::size_t count = step.b % 5, end = a + count < s.Size() ? a + count : s.Size();
            if (count > 0)
                *text = s.With(s.Down(a), s.Up(end), Text("", step.codeSet));
            else
                *text = s.Part(0, s.Size());
            break;
        }
        case 8: {
            const bool stored = !first.empty() && there && !s.IsInside(a);
            *result = stored ? "1" : "0";
            *text = stored ? s.With(a, s.Up(a + 1), character) : s.Part(0, s.Size());
            break;
        }
        case 9:
            *result = s.Character(a);
            if (escapes && result->size() > 4) result->clear();  // has no bytes of its own
            break;
        case 10:
            *result = ToText(s.Find(x, a));
            break;
        case 11: {
            long at = -1;
            for (std::size_t i = 0; !first.empty() && i < s.Size(); ++i)
                if (i + s.LengthOf(character) <= s.Size() && s.Has(i, character))
                    at = static_cast<long>(i);
            *result = ToText(at);
            break;
        }
        case 12:
            *result = ToText(static_cast<long>(Run(s, x, a, false)));
            break;
        case 13:
            *result = ToText(static_cast<long>(Run(s, x, a, true)));
            break;
        case 14:
            if (s.LengthOf(x) == 0) break;
            *text = Replaced(s, x, y, step.codeSet);
            break;
        case 15: {
            // The text after the limit has no effect.
            slow::Units units;
            if (!x.IsValid()) return false;
            *text = x.Part(0, x.Down(a));
            break;
        }
        case 16:
            *text = before + step.x;
            break;
        case 17:
            *text = step.x;
            break;
        case 18:
            *result = SplitAt(s, "/\\", true, step.codeSet);
            break;
        case 19:
            *result = SplitAt(s, ".", false, step.codeSet);
            break;
        case 20: {
            *result = "1";
            const std::size_t n = x.Size();
            const bool ends =
                mbIsMultiByte() ? n > 0 && x.Character(x.Down(n - 1)) == "\\" && !x.IsInside(n - 1)
                                : !step.x.empty() && step.x.back() == '\\';
            *text = step.x + (ends ? "" : "\\") + step.y;
            break;
        }
        case 21: {
            const std::string quote(1, static_cast<char>(step.a));
            if (step.a == 0 || Text::First(quote, step.codeSet).empty()) break;
            *text = Replaced(s, Text(quote, step.codeSet), Text(quote + quote, step.codeSet),
                             step.codeSet);
            break;
        }
        case 22:
            *result = ToText(static_cast<long>(s.Size()));
            break;
        default:
            return false;
    }
    return true;
}

// Applies an operation to the string, and to a copy whose texts all have their 16-bit copy first.
void CheckStep(Probe& s, const Step& step) {
    Probe bare, wide;
    bare.AllocateBuffer(s.m_capacity, s.m_flags != 0);
    wide.AllocateBuffer(s.m_capacity, s.m_flags != 0);
    bare = static_cast<const char*>(s);
    wide = static_cast<const char*>(s);
    const std::string before = bare.Bytes();
    std::string text, result;
    const bool known = Expect(before, step, &text, &result);
    const std::string one = Apply(bare, step, false), other = Apply(wide, step, true);
    Check(one == other && bare.Bytes() == wide.Bytes(), "independent of the 16-bit copy");
    Check(bare.m_capacity == wide.m_capacity && bare.m_flags == wide.m_flags, "the same room");
    bare.CheckSound();
    wide.CheckSound();
    if (known) {
        Check(bare.Bytes() == text, "text");
        Check(one == result, "result");
    }
    Check(Apply(s, step, false) == one && s.Bytes() == bare.Bytes(), "independent of history");
    s.CheckSound();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static constexpr int kCodeSets[] = {0, 3, 4, 5, 10, 12, 41, 65};
    Input input(data, size);
    const int codeSet = kCodeSets[input.Number() % std::size(kCodeSets)];
    mbIsMultiByte();
    InitMbutilExt(codeSet);
    Probe s(input.Bytes().c_str());
    s.AllocateBuffer(input.Number() % 32, input.Number() % 2 != 0);
    for (int steps = 0; steps < 12 && !input.IsEmpty(); ++steps) {
        Step step{input.Number() % kKinds, input.Number() % 24, input.Number(),
                  input.Bytes(),           input.Bytes(),       codeSet};
        if (step.kind == 21 || step.kind == 25 || step.kind == 26) step.a = step.b ^ 0x5C;
        CheckStep(s, step);
        if (s.GetLength() > 300 || std::strlen(s) != s.GetLength()) s.Empty();
    }
    return 0;
}

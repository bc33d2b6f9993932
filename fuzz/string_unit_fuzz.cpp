// Any operations on a string in any order, compared with the same operations on a plain list of
// characters. Sometimes an allocation fails: then the string has the old text, the new one or none.
// The first byte chooses the code set. The others choose operations and arguments.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "genlist.h"
#include "mbutil.h"
#include "ostext.h"
#include "tests/support/allocation_gate.h"
#include "tests/support/reported_failures.h"
#include "tests/support/string_probe.h"

namespace {

struct Alphabet {
    int codeSet;
    std::vector<std::string> characters;
};

const Alphabet kAlphabets[] = {
    {0, {"a", "=", "\xE9", "\x80"}},
    {4, {"a", "=", "\xA4\xA2", "\xA2\xA4", "\x8E\xB1", "\x8F\xB0\xA1"}},
    {5, {"a", "=", "\\", "\xB1", "\x82\xA0", "\x95\x5C"}},
    {9, {"a", "=", "\\", "\xA4\xA4", "\xA5\x5C"}},
    {11, {"a", "=", "A", "\xC7\xD1", "\x81\x41"}},
    {65, {"a", "=", "\xC3\xA9", "\xE3\x81\x82"}},
};

constexpr unsigned short kWide[] = {'w', 0x3042, 0x0E01, 0};  // not all are in each code set

// The text as a list of characters.
using Model = std::vector<std::string>;

std::string Join(const Model& model) {
    std::string text;
    for (const std::string& character : model) text += character;
    return text;
}

void Append(Model& model, const Model& more) {
    const Model copy(more);
    model.insert(model.end(), copy.begin(), copy.end());
}

Model Until(const Model& model, const Model& delimiter) {
    return {model.begin(),
            std::search(model.begin(), model.end(), delimiter.begin(), delimiter.end())};
}

Model Part(const Model& model, std::size_t from, std::size_t count) {
    const std::size_t begin = std::min(from, model.size());
    const std::size_t end = begin + std::min(count, model.size() - begin);
    return {model.begin() + static_cast<std::ptrdiff_t>(begin),
            model.begin() + static_cast<std::ptrdiff_t>(end)};
}

Model Inserted(const Model& model, std::size_t at, const Model& more) {
    Model text = Part(model, 0, at);
    Append(text, more);
    Append(text, Part(model, at, model.size()));
    return text;
}

// Returns the position of a part of the model, or -1 if there is none or if the search starts
// outside.
int Found(const Model& model, const Model& part, std::size_t start) {
    if (start >= model.size()) return -1;
    const auto at = std::search(model.begin() + static_cast<std::ptrdiff_t>(start), model.end(),
                                part.begin(), part.end());
    return at == model.end() ? -1 : static_cast<int>(at - model.begin());
}

Model Replaced(const Model& model, const Model& from, const Model& to) {
    if (from.empty()) return model;
    Model text;
    std::size_t done = 0;
    for (int at; (at = Found(model, from, done)) >= 0;) {
        Append(text, Part(model, done, static_cast<std::size_t>(at) - done));
        Append(text, to);
        done = static_cast<std::size_t>(at) + from.size();
    }
    Append(text, Part(model, done, model.size()));
    return text;
}

// Returns the number of characters from start on that are in the set, or not in it. Returns the
// length of the model if start is outside.
int RunOf(const Model& model, const Model& set, std::size_t start, bool in) {
    std::size_t i = start;
    const auto isIn = [&] { return std::find(set.begin(), set.end(), model[i]) != set.end(); };
    while (i < model.size() && isIn() == in) ++i;
    return static_cast<int>(start < model.size() ? i - start : model.size());
}

// Returns the parts of a split. An empty part at the end is dropped.
std::vector<std::string> Parts(const Model& model, const Model& delimiter) {
    std::vector<std::string> parts;
    for (std::size_t done = 0; done < model.size();) {
        const int at = Found(model, delimiter, done);
        const std::size_t end = at < 0 ? model.size() : static_cast<std::size_t>(at);
        parts.push_back(Join(Part(model, done, end - done)));
        done = end + delimiter.size();
    }
    return parts;
}

// A string, its model and the rest of the input, which chooses the operations.
class Player {
  public:
    Player(const Alphabet& alphabet, const std::uint8_t* data, std::size_t size)
        : m_characters(alphabet.characters), m_at(data), m_end(data + size) {}

    bool IsOver() const { return m_at == m_end; }
    void Step() {
        if (Below(5) == 0)
            ChangeWithoutMemory();
        else
            Change();
        if (m_model.size() > 300) m_text.Clear(), m_model.clear();
        Check(m_text.Bytes() == Join(m_model), "text");
        Check(m_text.GetNumChars() == m_model.size(), "number of characters");
        const char* const rule = m_text.BrokenRule();
        Check(!*rule, rule);
        if (Below(3) == 0) CheckSearches();
        if (Below(3) == 0) CheckParts();
    }

  private:
    unsigned Below(std::size_t n) { return m_at == m_end ? 0 : unsigned{*m_at++} % unsigned(n); }
    const std::string& AnyCharacter() { return m_characters[Below(m_characters.size())]; }
    // Returns a short text, sometimes of up to 120 characters, chosen by two bytes of the input.
    Model AnyText() {
        const unsigned length = Below(256);
        Model text(length < 60 ? length * 2 : length % 13);
        for (unsigned seed = Below(256) + 1; std::string & character : text)
            character = m_characters[(seed = seed * 75 % 65537) / 7 % m_characters.size()];
        return text;
    }

    void Change();
    void ChangeWithoutMemory();
    void CheckSearches();
    void CheckParts();

    const Model& m_characters;
    const std::uint8_t *m_at, *const m_end;
    StringProbe m_text;
    Model m_model;
    bool m_fails = false;
};

void Player::Change() {
    StringProbe& s = m_text;
    Model& model = m_model;
    const unsigned choice = Below(m_fails ? 29 : 31), count = Below(16);
    const std::size_t first = Below(model.size() + 1);
    const int at = static_cast<int>(first), n = static_cast<int>(count);
    const Model other = AnyText(), tail = Part(model, first, model.size());
    const Model start = Part(other, 0, count), character = {AnyCharacter()};
    const std::string text = Join(other), one = character[0];
    const char* const inside = s.m_data + (Join(model).size() - Join(tail).size());
    switch (choice) {
        case 0:
            s = text.c_str(), model = other;
            break;
        case 1:
            s = CGNString(text.c_str()), model = other;
            break;
        case 2:
            s += text.c_str(), Append(model, other);
            break;
        case 3:
            s += CGNString(text.c_str()), Append(model, other);
            break;
        case 4:
            s = inside, model = tail;
            break;
        case 5:
            s += inside, Append(model, tail);
            break;
        case 6:
            s.CopyNBytes(inside, unsigned(std::strlen(inside))), model = tail;
            break;
        case 7:
            s += s, Append(model, model);
            break;
        case 8:
            s.CopyNChars(text.c_str(), unsigned(start.size())), model = start;
            break;
        case 9:
            s.CopyNChars(inside, unsigned(tail.size())), model = tail;
            break;
        case 10:
            s.AppendNChars(text.c_str(), count), Append(model, start);
            break;
        case 11:
            s.AppendNChars(inside, count), Append(model, Part(tail, 0, count));
            break;
        case 12:
            s.CopyUntil(text.c_str(), '='), model = Until(other, {"="});
            break;
        case 13:
            s.CopyUntil(s, inside), model = tail.empty() ? Model() : Until(model, tail);
            break;
        case 14:
            s.AppendUntil(inside, one.c_str()), Append(model, Until(tail, character));
            break;
        case 15:
            s.AllocateBuffer(Below(100), Below(4) == 0);
            break;
        case 16:
            s += '=', model.push_back("=");
            break;
        case 17:
            count % 2 ? s.Clear() : s.Empty(), model.clear();
            break;
        case 18:
            s.InsertAt(at, text.c_str()), model = Inserted(model, first, other);
            break;
        case 19:
            s.InsertAt(at, s), model = Inserted(model, first, model);
            break;
        case 20:
            s.RemoveAt(at, n);
            model = Inserted(Part(model, 0, first), first, Part(model, first + count, 1000));
            break;
        case 21:
            s.SubStr(unsigned(first), n), model = Part(model, first, count);
            break;
        case 22:
            s.RightString(s, count), model = Part(model, Part(model, count, 1000).size(), 16);
            break;
        case 23:
            s.Truncate(count), model = Part(model, 0, count);
            break;
        case 24:
            s.LeftString(s, count), model = Part(model, 0, count);
            break;
        case 25:
            s.TruncateAt(one.c_str()), model = Until(model, character);
            break;
        case 26:
            s.Replace(one.c_str(), text.c_str()), model = Replaced(model, character, other);
            break;
        case 27:
            s.Replace(one.c_str(), s), model = Replaced(model, character, model);
            break;
        case 29:
            s.ExpandSpecials(), s.UnexpandSpecials();
            break;
        case 30:
            s.ExpandQuotes('='), s.UnexpandQuotes('=');
            break;
        case 28:
            const bool stored = s.SetCodePageCharAt(n, one.c_str());
            Check(m_fails || stored == (count < model.size()), "place of a character");
            if (stored) model[count] = one;
    }
}

const CGNString kPadded("  a text with blanks  "), kPath("directory\\file.txt"),
    kCapital("O\\N\nD"), kLocale("ja_JP");

// Operations without a counterpart in the model.
const std::vector<void (*)(StringProbe&)> kOthers = {
    [](StringProbe& s) { s += kWide; },
    [](StringProbe& s) { s = StringProbe(kWide); },
    [](StringProbe& s) { s.CopyNChars(kWide, 3); },
    [](StringProbe& s) { s.CopyNChars("a\x82", 2); },
    [](StringProbe& s) { s = CGNString("text", 30); },
    [](StringProbe& s) { s.IsEqualNoCase(kCapital); },
    [](StringProbe& s) { s.Collate(kCapital); },
    [](StringProbe& s) { s.ToUpper(-1); },
    [](StringProbe& s) { s.LeftStringInBytes(s, 4); },
    [](StringProbe& s) { s.RightStringInBytes(s, 4); },
    [](StringProbe& s) { kPadded.LeftRightTrim(s); },
    [](StringProbe& s) { s.UnexpandSpecials(); },
    [](StringProbe& s) { kPath.SplitFilePath(s, s); },
    [](StringProbe& s) { s.MakeFilePath(kPath, kCapital); },
    [](StringProbe& s) { s.ForceTo8By3(); },
    [](StringProbe& s) { s.ConvertSingleToDouble(); },
    [](StringProbe& s) { s.sprintf("%s %d", "formatted", 5); },
    [](StringProbe& s) { s.EncodeXMLString(); },
    [](StringProbe& s) { s.ReplaceEncodingStringInHTML(kLocale); },
    [](StringProbe& s) { OSClientFormatString(s); },
};

void Player::ChangeWithoutMemory() {
    const Model before = m_model;
    const std::string old = m_text.Bytes();
    const int failing = static_cast<int>(Below(8));
    const unsigned choice = Below(3 * kOthers.size());
    std::string changed;
    if (choice < kOthers.size()) {
        StringProbe copy(m_text);
        kOthers[choice](copy);
        changed = copy.Bytes();
    }
    const ReportedFailures reported;
    {
        const AllocationGate gate(failing, 1);
        m_fails = true;
        if (choice < kOthers.size())
            kOthers[choice](m_text);
        else
            Change();
        m_fails = false;
    }
    if (choice >= kOthers.size()) changed = Join(m_model);
    const std::string now = m_text.Bytes();
    Check(now == changed || reported.Count() > 0, "a failure is reported");
    Check(now == changed || now == old || now.empty(), "the old text, the new one or none");
    Check(!*m_text.BrokenRule(), m_text.BrokenRule());
    m_text = old.c_str();
    m_model = before;
}

void Player::CheckSearches() {
    const std::size_t start = Below(m_model.size() + 2), length = Below(24);
    const Model wanted = length % 2 ? Part(m_model, start, length) : AnyText();
    const CGNString text(Join(wanted).c_str());
    const int from = static_cast<int>(start);
    const StringProbe& s = m_text;
    Check(s.Find(text, from) == Found(m_model, wanted, start), "place of a string");
    Check(s.Find(static_cast<const char*>(text), from) == Found(m_model, wanted, start),
          "place of a text");
    Check(s.StrChr(unsigned(start), '=') == Found(m_model, {"="}, start), "place of a byte");
    Check(s.FindFirstOf(text, from) == RunOf(m_model, wanted, start, false), "run outside a set");
    Check(s.FindFirstNotOf(text, from) == RunOf(m_model, wanted, start, true), "run in a set");
    const std::string& character = AnyCharacter();
    const auto last = std::find(m_model.rbegin(), m_model.rend(), character);
    Check(s.ReverseFind(character.c_str()) == m_model.rend() - last - 1, "last place");
    StringProbe changed(s);
    changed.Replace(text, "--");
    Check(changed.Bytes() == Join(Replaced(m_model, wanted, {"--"})), "replacement of a text");
    if (wanted.empty()) return;
    CGNStringList list;
    s.Split(list, text);
    const auto parts = Parts(m_model, wanted);
    Check(list.GetCount() == static_cast<int>(parts.size()), "number of parts");
    for (int i = 0; i < list.GetCount(); ++i)
        Check(*list.GetItem(i) == parts[static_cast<std::size_t>(i)].c_str(), "part");
}

void Player::CheckParts() {
    const unsigned start = Below(m_model.size() + 2), count = Below(m_model.size() + 2);
    StringProbe out("before");
    m_text.SubStr(out, start, static_cast<int>(count));
    Check(out.Bytes() == Join(Part(m_model, start, count)), "part of a string");
    m_text.MidString(out, static_cast<int>(start), -1);
    Check(out.Bytes() == Join(Part(m_model, start, 1000)), "rest of a string");
    m_text.LeftString(out, count);
    Check(out.Bytes() == Join(Part(m_model, 0, count)), "beginning of a string");
    char character[8];
    Check(m_text.GetCodePageCharAt(static_cast<int>(start), character) ==
              Join(Part(m_model, start, 1)),
          "one character");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const Alphabet& alphabet = kAlphabets[data[0] % std::size(kAlphabets)];
    mbIsMultiByte();
    InitMbutilExt(alphabet.codeSet);
    for (Player player(alphabet, data + 1, size - 1); !player.IsOver();) player.Step();
    return 0;
}

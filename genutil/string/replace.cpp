// Replacement in a CGNString: which of its two forms is worked on, and the operations that are
// tables of what replaces what.
#include <cstring>

#include "genstring.h"
#include "genutil/mbutil/ascii_run.h"
#include "genutil/mbutil/round_trip.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/replace_units.h"
#include "genutil/string/storage.h"
#include "genutil/string/wide_view.h"

using genutil::Rule;
using genutil::Units;
using Storage = genutil::StringStorage;

namespace genutil {

namespace {

using Byte = unsigned char;
constexpr unsigned kMostRules = UnitFinder<Byte>::kMost;

std::size_t BytesBeforeNul(const char* text, std::size_t length) {
    const void* end = std::memchr(text, 0, length);
    return end ? static_cast<std::size_t>(static_cast<const char*>(end) - text) : length;
}

const Byte* AsBytes(std::string_view text) {
    return reinterpret_cast<const Byte*>(text.data());
}

bool IsAscii(std::string_view text) {
    return AsciiRun(AsBytes(text), text.size()) == text.size();
}

// Whether a replacement of characters may look at bytes instead.
bool AreExact(std::string_view text, const Rule* rules, unsigned count) {
    for (unsigned i = 0; i < count; ++i)
        for (const std::string_view s : {rules[i].from, rules[i].to})
            if (!IsAscii(s) && !IsExactText(s)) return false;
    return IsExactText(text);
}

bool AnyMayLieWithin(const Rule* rules, unsigned count) {
    for (unsigned i = 0; i < count; ++i)
        if (CharacterStarts::MayLieWithin(AsBytes(rules[i].from)[0])) return true;
    return false;
}

}  // namespace

bool StringStorage::ReplaceBytes(CGNString& s, const Rule* rules, unsigned count, bool starts) {
    const std::size_t length = BytesBeforeNul(s.m_data, s.m_length);
    const auto* text = reinterpret_cast<const Byte*>(s.m_data);
    UnitRules<Byte> own;
    for (unsigned i = 0; i < count; ++i)
        own.Add({AsBytes(rules[i].from), rules[i].from.size(), AsBytes(rules[i].to),
                 rules[i].to.size()});
    const Replaced<Byte> replaced = starts ? ReplaceUnits(text, length, own, CharacterStarts(text))
                                           : ReplaceUnits(text, length, own, AnyPlace());
    if (!replaced.text) return false;
    Adopt(s, reinterpret_cast<char*>(replaced.text), replaced.length, replaced.length);
    return true;
}

bool StringStorage::ReplaceWide(CGNString& s, const Rule* rules, unsigned count) {
    using Wide = unsigned short;
    if (!EnsureWide(s)) return false;
    Owned<Wide> texts[kMostRules * 2];
    UnitRules<Wide> own;
    for (unsigned i = 0; i < count; ++i) {
        std::uint32_t fromLength, toLength;
        Wide* const from = NewWideText(rules[i].from.data(), rules[i].from.size(), &fromLength);
        texts[2 * i].Reset(from);
        Wide* const to = NewWideText(rules[i].to.data(), rules[i].to.size(), &toLength);
        texts[2 * i + 1].Reset(to);
        if (!from || !to || fromLength == 0) return false;
        own.Add({from, fromLength, to, toLength});
    }
    const Replaced<Wide> replaced = ReplaceUnits<Wide>(s.m_wide, s.m_wideLength, own, AnyPlace());
    if (!replaced.text) return false;
    DropWide(s);
    s.m_wide = replaced.text;
    s.m_wideLength = s.m_wideCapacity = static_cast<std::uint32_t>(replaced.length);
    return RebuildData(s, 2);
}

bool StringStorage::Replace(CGNString& s, const Rule* rules, unsigned count, Units units) {
    if (s.IsEmpty()) return false;
    if (units == Units::kBytes) return ReplaceBytes(s, rules, count, false);
    const std::string_view text(s.m_data, BytesBeforeNul(s.m_data, s.m_length));
    if (!AreExact(text, rules, count)) return ReplaceWide(s, rules, count);
    return ReplaceBytes(s, rules, count, AnyMayLieWithin(rules, count) && !IsAscii(text));
}

}  // namespace genutil

namespace {

// A text of one byte; false where that is no character.
bool IsCharacter(char c) {
    unsigned short character;
    return genutil::ToWideCharacter(&character, &c, 1) == 1;
}

}  // namespace

void CGNString::Replace(const char* from, const char* to) {
    if (!from || !*from) return;
    const Rule rule{from, to ? to : ""};
    Storage::Replace(*this, &rule, 1, Units::kCharacters);
}

void CGNString::Replace(char from, char to) {
    if (!IsCharacter(from)) return;
    if (to == 0) {  // the text ends where a 0 is put
        TruncateAt(from);
        return;
    }
    if (!IsCharacter(to)) return;
    const Rule rule{{&from, 1}, {&to, 1}};
    Storage::Replace(*this, &rule, 1, Units::kCharacters);
}

void CGNString::ExpandQuotes(char q) {
    if (!IsCharacter(q)) return;
    const char twice[] = {q, q};
    const Rule rule{{&q, 1}, {twice, 2}};
    Storage::Replace(*this, &rule, 1, Units::kCharacters);
}

void CGNString::UnexpandQuotes(char q) {
    if (!IsCharacter(q)) return;
    const char twice[] = {q, q};
    const Rule rule{{twice, 2}, {&q, 1}};
    Storage::Replace(*this, &rule, 1, Units::kCharacters);
}

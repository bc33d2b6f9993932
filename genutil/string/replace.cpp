// Replacement in a CGNString: the choice between bytes and 16-bit characters, and the operations
// that are tables of rules.
#include <algorithm>
#include <cstring>

#include "genstring.h"
#include "genutil/mbutil/ascii_run.h"
#include "genutil/mbutil/round_trip.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/replace_units.h"
#include "genutil/string/storage.h"
#include "genutil/string/wide_view.h"

using genutil::Placing;
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

// Returns true if a replacement of characters may search bytes instead.
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

void StringStorage::ReplaceBytes(CGNString& s, const Rule* rules, unsigned count, bool starts,
                                 Placing placing) {
    const std::size_t length = BytesBeforeNul(s.m_data, s.m_length);
    const auto* text = reinterpret_cast<const Byte*>(s.m_data);
    UnitRules<Byte> own;
    for (unsigned i = 0; i < count; ++i)
        own.Add({AsBytes(rules[i].from), rules[i].from.size(), AsBytes(rules[i].to),
                 rules[i].to.size()});
    const Replaced<Byte> replaced = starts ? ReplaceUnits(text, length, own, CharacterStarts(text))
                                           : ReplaceUnits(text, length, own, AnyPlace());
    if (replaced.text)
        Adopt(s, reinterpret_cast<char*>(replaced.text), replaced.length, replaced.length, placing);
    else if (placing == Placing::kRebuilt)
        Fit(s);
}

// In text that is invalid in the code set, bytes are replaced with bytes.
void StringStorage::ReplaceWide(CGNString& s, const Rule* rules, unsigned count, Placing placing) {
    using Wide = unsigned short;
    if (!EnsureWide(s)) return;
    const bool broken = IsBroken(s);
    const WideForm form = broken ? WideForm::kBytes : WideForm::kCharacters;
    Owned<Wide> texts[kMostRules * 2];
    UnitRules<Wide> own;
    for (unsigned i = 0; i < count; ++i) {
        std::uint32_t fromLength, toLength;
        Wide* const from =
            NewWideText(rules[i].from.data(), rules[i].from.size(), &fromLength, form);
        texts[2 * i].Reset(from);
        Wide* const to = NewWideText(rules[i].to.data(), rules[i].to.size(), &toLength, form);
        texts[2 * i + 1].Reset(to);
        if (!from || !to) return;
        // A rule whose search text consists of escape sequences only matches nothing. A valid text
        // contains no carried bytes, but the low surrogates of its pairs have the same values.
        if (fromLength == 0 || (!broken && IsCarriedByte(from[0]))) continue;
        own.Add({from, fromLength, to, toLength});
    }
    Replaced<Wide> replaced{nullptr, 0};
    if (own.count > 0) replaced = ReplaceUnits<Wide>(s.m_wide, s.m_wideLength, own, AnyPlace());
    if (!replaced.text) {
        if (placing == Placing::kRebuilt) Rebuild(s);
        return;
    }
    const Owned<Wide> result(replaced.text);
    std::uint32_t length;
    char* const text =
        broken ? NewCarriedText(result.Get(), replaced.length, &length)
               : NewNarrowText(static_cast<const Wide*>(result.Get()), replaced.length, &length);
    if (text) Adopt(s, text, length, length, placing);
}

void StringStorage::Replace(CGNString& s, const Rule* rules, unsigned count, Units units,
                            Placing placing) {
    if (s.IsEmpty()) {
        if (placing == Placing::kAssigned) s.Empty();
        if (placing == Placing::kRebuilt) Fit(s);
        return;
    }
    if (units == Units::kBytes) return ReplaceBytes(s, rules, count, false, placing);
    const std::string_view text(s.m_data, BytesBeforeNul(s.m_data, s.m_length));
    if (!AreExact(text, rules, count)) return ReplaceWide(s, rules, count, placing);
    ReplaceBytes(s, rules, count, AnyMayLieWithin(rules, count) && !IsAscii(text), placing);
}

}  // namespace genutil

namespace {

// Returns true if the byte is a character.
bool IsCharacter(char c, unsigned short* character) {
    return genutil::ToWideCharacter(character, &c, 1) == 1;
}
bool IsCharacter(char c) {
    unsigned short character;
    return IsCharacter(c, &character);
}

// Applies a rule to characters and assigns the resulting text.
void ReplaceCharacters(CGNString& s, const Rule& rule) {
    Storage::Replace(s, &rule, 1, Units::kCharacters, Placing::kAssigned);
}

}  // namespace

void CGNString::Replace(const char* from, const char* to) {
    if (from && *from) ReplaceCharacters(*this, {from, to ? to : ""});
}

void CGNString::Replace(char from, char to) {
    unsigned short wideFrom, wideTo = 0;
    if (!IsCharacter(from, &wideFrom) || (to != 0 && !IsCharacter(to, &wideTo))) return;
    if (to == 0) TruncateAt(from);  // a 0 ends the text
    const bool isFresh = !m_wide;   // an older copy may differ from the bytes after SetAt2()
    if (!Storage::EnsureWide(*this)) return;
    const bool isByte = !genutil::CharacterStarts::MayLieWithin(static_cast<unsigned char>(from));
    if ((isFresh || Storage::IsSameAscii(*this)) && isByte && m_length == std::strlen(m_data) &&
        genutil::IsExactText({m_data, m_length}) && genutil::IsExactText({&to, 1})) {
        std::replace(m_data, m_data + m_length, from, to);
        std::replace(m_wide, m_wide + m_wideLength, wideFrom, wideTo);
        Storage::Fit(*this);
        return;
    }
    const Rule rule{{&from, 1}, {&to, 1}};
    Storage::Replace(*this, &rule, 1, Units::kCharacters, Placing::kRebuilt);
    Storage::EnsureWide(*this);
}

void CGNString::ExpandQuotes(char q) {
    const char twice[] = {q, q};
    if (IsCharacter(q)) ReplaceCharacters(*this, {{&q, 1}, {twice, 2}});
}

void CGNString::UnexpandQuotes(char q) {
    const char twice[] = {q, q};
    if (IsCharacter(q)) ReplaceCharacters(*this, {{twice, 2}, {&q, 1}});
}

// CGNString's letter case and character classes.
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "genstring.h"
#include "genutil/mbutil/ascii_run.h"
#include "genutil/mbutil/character_table.h"
#include "genutil/mbutil/round_trip.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "osutil/platform/locale/text_forms.h"

using genutil::CharacterPage;
using genutil::IsOfClass;
using genutil::PageOfCharacter;
using Storage = genutil::StringStorage;
namespace platform = genutil::platform;

namespace {

constexpr int kAll = -1;

// Returns true if the bytes of a text are its characters: ASCII without a 0, in a code set without
// shifts.
bool AreBytesCharacters(std::string_view text) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    return genutil::AsciiRun(bytes, text.size()) == text.size() &&
           std::memchr(bytes, 0, text.size()) == nullptr && genutil::IsExactText(text);
}

// Has no branch on the character, because letters make such a branch unpredictable.
template <class Unit>
void MapAscii(Unit* text, std::size_t length, bool upper) {
    const unsigned first = upper ? 'a' : 'A';
    for (std::size_t i = 0; i < length; ++i) {
        const unsigned c = static_cast<std::make_unsigned_t<Unit>>(text[i]);
        text[i] = static_cast<Unit>(c - first < 26 ? c ^ ('a' ^ 'A') : c);
    }
}

}  // namespace

// Maps the characters from `begin` to `end` and rebuilds the bytes.
template <class Map>
void genutil::StringStorage::MapCharacters(CGNString& s, std::uint32_t begin, std::uint32_t end,
                                           Map map) {
    const bool broken = IsBroken(s);
    bool changed = false;
    for (std::uint32_t i = begin; i < end; ++i) {
        const unsigned short c = s.m_wide[i], mapped = map(c);
        // A letter is kept if its counterpart is missing from the code set.
        if (mapped == c || (mapped >= 0x80 && !HasCode(mapped))) continue;
        if (broken) {  // each character is a byte
            char byte[4];
            if (ToNarrowCharacter(byte, mapped) != 1) continue;
            s.m_data[i] = byte[0];
        }
        s.m_wide[i] = mapped;
        changed = true;
    }
    Rebuild(s);
    // A letter and an invalid byte before it may have become a character.
    if (broken && changed) s.DuplicateWzBufferFromData();
}

void CGNString::FoldCase() {
    if (IsEmpty() || !Storage::EnsureWide(*this)) return;
    Storage::MapCharacters(*this, 0, m_wideLength, platform::FoldCase);
}

void CGNString::MapCase(int index, bool upper) {
    if (IsEmpty() || !Storage::EnsureWide(*this)) return;
    if (index == kAll && Storage::IsSameAscii(*this) && AreBytesCharacters({m_data, m_length})) {
        MapAscii(m_data, m_length, upper);
        MapAscii(m_wide, m_wideLength, upper);
        Storage::Fit(*this);
        return;
    }
    const auto at = static_cast<unsigned>(index);
    const std::uint32_t begin = index == kAll ? 0 : at;
    const std::uint32_t end = index == kAll ? m_wideLength : at < m_wideLength ? at + 1 : at;
    const std::uint16_t(CharacterPage::*const forms)[256] =
        upper ? &CharacterPage::upper : &CharacterPage::lower;
    Storage::MapCharacters(*this, begin, end, [forms](unsigned short c) {
        return (PageOfCharacter(c).*forms)[c & 0xFF];
    });
}

void CGNString::ToUpper(int index) {
    MapCase(index, true);
}
void CGNString::ToLower(int index) {
    MapCase(index, false);
}

// Returns true if the character at index, or every character for kAll, has one of the classes.
// Every character of an empty string does.
bool CGNString::AreOfClass(int index, unsigned classes) const {
    if (!Storage::EnsureWide(*this)) return false;
    if (index != kAll)
        return index >= 0 && static_cast<unsigned>(index) < m_wideLength &&
               IsOfClass(m_wide[index], classes);
    for (std::uint32_t i = 0; i < m_wideLength; ++i)
        if (!IsOfClass(m_wide[i], classes)) return false;
    return true;
}

unsigned char CGNString::IsAlphaAt(int index) const {
    return AreOfClass(index, platform::kAlpha);
}
unsigned char CGNString::IsAlphaNumAt(int index) const {
    return AreOfClass(index, platform::kAlpha | platform::kDigit);
}
unsigned char CGNString::IsLowerAt(int index) const {
    return AreOfClass(index, platform::kLower);
}
unsigned char CGNString::IsUpperAt(int index) const {
    return AreOfClass(index, platform::kUpper);
}
unsigned char CGNString::IsPrintAt(int index) const {
    return AreOfClass(index, platform::kPrint);
}
unsigned char CGNString::IsSpaceAt(int index) const {
    return AreOfClass(index, platform::kSpace);
}
unsigned char CGNString::IsXDigitAt(int index) const {
    return AreOfClass(index, platform::kHexDigit);
}

// Unlike most tests, these two return false for an empty string.
unsigned char CGNString::IsDigitAt(int index) const {
    return AreOfClass(index, platform::kDigit) && m_wideLength != 0;
}
unsigned char CGNString::IsPunctAt(int index) const {
    return AreOfClass(index, platform::kPunct) && m_wideLength != 0;
}

// Digits are accepted too, because programs depend on it.
unsigned char CGNString::IsAlpha() const {
    return AreOfClass(kAll, platform::kAlpha | platform::kDigit) && m_wideLength != 0;
}

unsigned char CGNString::IsNumAt(unsigned int index) const {
    if (index >= m_length) return 0;
    const char first = GetAt(index);
    return first >= '0' && first <= '9';
}

unsigned char CGNString::CompareSingleByteAt(int index, char c) const {
    char character[8];
    GetCodePageCharAt(index, character);
    return character[0] != 0 && character[1] == 0 && character[0] == c;
}

unsigned char CGNString::CompareMultiByteAt(int index, const char* mbchar) const {
    char character[8];
    return mbchar && std::strcmp(GetCodePageCharAt(index, character), mbchar) == 0;
}

long CGNString::Number() const {
    return std::strtol(m_data, nullptr, 10);
}

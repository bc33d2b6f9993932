// CGNString's letter case, and what its characters are.
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "genstring.h"
#include "genutil/mbutil/ascii_run.h"
#include "genutil/mbutil/character_table.h"
#include "genutil/mbutil/round_trip.h"
#include "genutil/string/storage.h"

using genutil::CharacterPage;
using genutil::IsOfClass;
using genutil::PageOfCharacter;
using Storage = genutil::StringStorage;
namespace platform = genutil::platform;

namespace {

constexpr int kAll = -1;

// Whether the bytes of a text are its characters: ASCII in a code set without shifts, and no 0.
bool AreBytesCharacters(std::string_view text) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    return genutil::AsciiRun(bytes, text.size()) == text.size() &&
           std::memchr(bytes, 0, text.size()) == nullptr && genutil::IsExactText(text);
}

// Texts such as names of keys need no 16-bit form. False, with the text as it was, for others.
bool MapBytes(char* text, std::size_t length, bool upper) {
    if (!AreBytesCharacters({text, length})) return false;
    const unsigned first = upper ? 'a' : 'A';
    for (std::size_t i = 0; i < length; ++i) {  // without a branch, which letters mislead
        const unsigned c = static_cast<unsigned char>(text[i]);
        text[i] = static_cast<char>(c - first < 26 ? c ^ ('a' ^ 'A') : c);
    }
    return true;
}

}  // namespace

void CGNString::MapCase(int index, bool upper) {
    if (IsEmpty() || (index == kAll && !m_wide && MapBytes(m_data, m_length, upper))) return;
    if (!Storage::EnsureWide(*this)) return;
    const auto map = upper ? &CharacterPage::upper : &CharacterPage::lower;
    const auto at = static_cast<unsigned>(index);
    const std::uint32_t begin = index == kAll ? 0 : at;
    const std::uint32_t end = index == kAll ? m_wideLength : at < m_wideLength ? at + 1 : at;
    for (std::uint32_t i = begin; i < end; ++i)
        m_wide[i] = (PageOfCharacter(m_wide[i]).*map)[m_wide[i] & 0xFF];
    Storage::RebuildData(*this, 2);
}

void CGNString::ToUpper(int index) {
    MapCase(index, true);
}
void CGNString::ToLower(int index) {
    MapCase(index, false);
}

// The character at index, or all of them, has one of the classes. All of none do.
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

// For these two, unlike the others, an empty string has no digit and no punctuation.
unsigned char CGNString::IsDigitAt(int index) const {
    return AreOfClass(index, platform::kDigit) && m_wideLength != 0;
}
unsigned char CGNString::IsPunctAt(int index) const {
    return AreOfClass(index, platform::kPunct) && m_wideLength != 0;
}

// Digits pass too: programs depend on it.
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

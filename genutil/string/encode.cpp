// CGNString's escaping for markup and script, and its conversions to and from UTF-8, URLs and full
// width.
#include <cstring>

#include "genstring.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "mbutil.h"

using genutil::Placing;
using genutil::Rule;
using genutil::Units;
using Storage = genutil::StringStorage;

// -- Escaping ------------------------------------------------------------------------------------

namespace {

// In one go, which is the same as one rule after another: none produces what a later one looks for,
// and the ampersands of what they produce are not looked at again.
constexpr Rule kHtml[] = {
    {"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\r\n", "<br>"}, {"\n", "<br>"},
};
constexpr Rule kHtmlTextArea[] = {{"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}};
// For the value of an attribute, where "<" and ">" may stand.
constexpr Rule kHtmlQuoted[] = {{"&", "&amp;"}, {"\r", "&#13;"}, {"\n", "&#10;"}, {"\"", "&quot;"}};
constexpr Rule kXml[] = {
    {"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"'", "&apos;"}, {"\"", "&quot;"},
};
constexpr Rule kScript[] = {
    {"\\", "\\\\"}, {"\r", "\\r"}, {"\n", "\\n"}, {"\"", "\\\""}, {"'", "\\'"},
};
constexpr Rule kScriptFlat[] = {
    {"\\", "\\\\"}, {"\r", " "}, {"\n", " "}, {"\"", "\\\""}, {"'", "\\'"},
};

// In a code set of single bytes the bytes are what is looked at, valid or not; in others characters
// are, of which the bytes are built anew.
void Encode(CGNString& s, const Rule* rules, unsigned count) {
    if (mbIsMultiByte())
        Storage::Replace(s, rules, count, Units::kCharacters, Placing::kRebuilt);
    else
        Storage::Replace(s, rules, count, Units::kBytes, Placing::kStored);
}

template <std::size_t N>
void Encode(CGNString& s, const Rule (&rules)[N]) {
    Encode(s, rules, N);
}

}  // namespace

void CGNString::EncodeHtmlString() {
    Encode(*this, kHtml);
}
void CGNString::EncodeHtmlStringTextArea() {
    Encode(*this, kHtmlTextArea);
}
void CGNString::EncodeHtmlQuotedString() {
    Encode(*this, kHtmlQuoted);
}
void CGNString::EncodeXMLString() {
    Encode(*this, kXml);
}
void CGNString::EncodeJavaScriptQuotedString(unsigned char flatten) {
    if (flatten)
        Encode(*this, kScriptFlat);
    else
        Encode(*this, kScript);
}

void CGNString::EncodeReplace(const char* from, const char* to) {
    if (!from || !*from) return;
    const Rule rule{from, to ? to : ""};
    Encode(*this, &rule, 1);
}

// -- Conversion ----------------------------------------------------------------------------------

// Takes over a text that a conversion made; empties without one.
void CGNString::TakeConverted(char* made) {
    if (!made) {
        Empty();
        return;
    }
    const std::size_t length = std::strlen(made);
    Storage::Adopt(*this, made, length, length, Placing::kStored);
}

void CGNString::ConvertToUTF8(const char* localeName) {
    char* made = nullptr;
    TakeConverted(mbConvertToUTF8(m_data, &made, localeName) ? made : nullptr);
}

void CGNString::ConvertFromUTF8() {
    char* made = nullptr;
    TakeConverted(mbConvertFromUTF8(m_data, &made) ? made : nullptr);
}

void CGNString::UrlDecode() {
    char* made = nullptr;
    mbUrlDecode(m_data, &made);
    TakeConverted(made);
}

void CGNString::ConvertSingleToDouble() {
    const std::uint64_t room = std::uint64_t{m_length} * 2;
    char* made = genutil::NewText<char>(room);
    if (!made) {
        Empty();
        return;
    }
    mbHanToZenStr(m_data, made);
    Storage::Adopt(*this, made, std::strlen(made), room, Placing::kStored);
}

namespace {

// The ASCII of a full-width digit or letter; the character itself otherwise.
unsigned short NarrowForm(unsigned short c) {
    const bool alphanumeric = (c >= 0xFF10 && c <= 0xFF19) || (c >= 0xFF21 && c <= 0xFF3A) ||
                              (c >= 0xFF41 && c <= 0xFF5A);
    return alphanumeric ? static_cast<unsigned short>(c - 0xFF01 + 0x21) : c;
}

// The same for a text of which something is invalid.
void NarrowBroken(CGNString& s) {
    const std::uint32_t length = s.GetLength();
    char* const text = genutil::NewText<char>(length);
    if (!text) return;
    std::uint32_t written = 0;
    for (std::uint32_t at = 0; at < length;) {
        char character[8];
        s.GetCodePageCharAt(static_cast<int>(at), character);
        const auto bytes = static_cast<std::uint32_t>(std::strlen(character));
        unsigned short wide = 0;
        const bool isPair = bytes == 2 && genutil::ToWideCharacter(&wide, character, 2) == 2;
        const unsigned short narrow = isPair ? NarrowForm(wide) : wide;
        if (isPair && narrow != wide) {
            text[written++] = static_cast<char>(narrow);
        } else {
            std::memcpy(text + written, static_cast<const char*>(s) + at, bytes ? bytes : 1);
            written += bytes ? bytes : 1;
        }
        at += bytes ? bytes : 1;
    }
    Storage::Adopt(s, text, written, length, Placing::kRebuilt);
}

}  // namespace

// In Shift-JIS only: programs rely on the other code sets being left alone.
void CGNString::ConvertRomanjiToASCII() {
    mbIsMultiByte();  // initialises
    if (mbGetLocaleCodeSet() != mbShiftJis || !Storage::EnsureWide(*this)) return;
    if (Storage::IsBroken(*this)) return NarrowBroken(*this);
    bool changed = false;
    for (std::uint32_t i = 0; i < m_wideLength; ++i) {
        const unsigned short narrow = NarrowForm(m_wide[i]);
        changed |= narrow != m_wide[i];
        m_wide[i] = narrow;
    }
    if (changed) Storage::RebuildData(*this);
}

void CGNString::ConvertSpecialAlphaNumForXMLTag() {
    mbIsMultiByte();  // initialises
    if (!mbIsJapanese()) return;
    ConvertSingleToDouble();
    ConvertRomanjiToASCII();
}

// CGNString's escaping for markup and script, and its conversions to and from UTF-8, URLs and full
// width.
#include <cstring>

#include "genstring.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "mbutil.h"

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

// In a code set of single bytes the bytes are what is looked at, valid or not.
Units UnitsOfEncoding() {
    return mbIsMultiByte() ? Units::kCharacters : Units::kBytes;
}

template <std::size_t N>
void Encode(CGNString& s, const Rule (&rules)[N]) {
    Storage::Replace(s, rules, N, UnitsOfEncoding());
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
    Storage::Replace(*this, &rule, 1, UnitsOfEncoding());
}

// -- Conversion ----------------------------------------------------------------------------------

// Takes over a text that a conversion made; empties without one.
void CGNString::TakeConverted(char* made) {
    if (!made) {
        Empty();
        return;
    }
    const std::size_t length = std::strlen(made);
    Storage::Adopt(*this, made, length, length);
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
    char* made = genutil::NewText<char>(std::uint64_t{m_length} * 2);
    if (made) mbHanToZenStr(m_data, made);
    TakeConverted(made);
}

namespace {

// The ASCII of a full-width digit or letter; the character itself otherwise.
unsigned short NarrowForm(unsigned short c) {
    const bool alphanumeric = (c >= 0xFF10 && c <= 0xFF19) || (c >= 0xFF21 && c <= 0xFF3A) ||
                              (c >= 0xFF41 && c <= 0xFF5A);
    return alphanumeric ? static_cast<unsigned short>(c - 0xFF01 + 0x21) : c;
}

}  // namespace

// In Shift-JIS only: programs rely on the other code sets being left alone.
void CGNString::ConvertRomanjiToASCII() {
    mbIsMultiByte();  // initialises
    if (mbGetLocaleCodeSet() != mbShiftJis || !Storage::EnsureWide(*this)) return;
    bool changed = false;
    for (std::uint32_t i = 0; i < m_wideLength; ++i) {
        const unsigned short narrow = NarrowForm(m_wide[i]);
        changed |= narrow != m_wide[i];
        m_wide[i] = narrow;
    }
    if (changed) Storage::RebuildData(*this, 2);
}

void CGNString::ConvertSpecialAlphaNumForXMLTag() {
    mbIsMultiByte();  // initialises
    if (!mbIsJapanese()) return;
    ConvertSingleToDouble();
    ConvertRomanjiToASCII();
}

// CGNString's escaping for markup and script, and its conversions to and from UTF-8, URLs and full
// width.
#include <cstring>
#include <string_view>

#include "genstring.h"
#include "genutil/ascii.h"
#include "genutil/mbutil/wide_convert.h"
#include "genutil/string/storage.h"
#include "mbutil.h"

using genutil::Placing;
using genutil::Rule;
using genutil::Units;
using Storage = genutil::StringStorage;

// -- Escaping ------------------------------------------------------------------------------------

namespace {

// A single pass gives the same result as applying the rules one after another: no rule produces a
// search text of a later one, and ampersands in replacements are not searched again.
constexpr Rule kHtml[] = {
    {"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\r\n", "<br>"}, {"\n", "<br>"},
};
constexpr Rule kHtmlTextArea[] = {{"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}};
// For the value of an attribute, which may contain "<" and ">".
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

// Searches bytes in a single-byte code set, whether they are valid or not. In other code sets
// searches characters and rebuilds the bytes.
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

namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";

// Returns true if a character may appear unescaped in a URL.
bool IsUnreserved(unsigned char c) {
    return genutil::IsAsciiLetter(static_cast<char>(c)) || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == '_' || c == '~';
}

// Writes the JSON escape of a character. Returns its length, or 0 if the character needs none.
unsigned WriteJsonEscape(unsigned c, unsigned short* out) {
    static constexpr char kLetters[] = "\"\"\\\\\bb\ff\nn\rr\tt";
    if (c >= 0x20 && c != '"' && c != '\\') return 0;
    *out++ = '\\';
    for (const char* p = kLetters; *p; p += 2)
        if (static_cast<unsigned char>(*p) == c) {
            *out = static_cast<unsigned char>(p[1]);
            return 2;
        }
    for (const char digit : {'u', '0', '0', kHexDigits[c >> 4], kHexDigits[c & 15]})
        *out++ = static_cast<unsigned char>(digit);
    return 6;
}

}  // namespace

void CGNString::UrlEncode() {
    const std::string_view text(m_data);
    std::uint64_t length = text.size();
    for (const char c : text) length += IsUnreserved(static_cast<unsigned char>(c)) ? 0 : 2;
    if (length == text.size()) return;
    char* const made = genutil::NewText<char>(length);
    if (!made) return;
    char* out = made;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (IsUnreserved(byte)) {
            *out++ = c;
            continue;
        }
        *out++ = '%';
        *out++ = kHexDigits[byte >> 4];
        *out++ = kHexDigits[byte & 15];
    }
    *out = 0;
    Storage::Adopt(*this, made, length, length, Placing::kStored);
}

// Works on characters, because the second byte of a character may be that of a quote or a
// backslash.
void CGNString::EncodeJSONString() {
    if (IsEmpty() || !Storage::EnsureWide(*this)) return;
    unsigned short escape[6];
    std::uint64_t length = m_wideLength;
    for (std::uint32_t i = 0; i < m_wideLength; ++i)
        if (const unsigned n = WriteJsonEscape(m_wide[i], escape)) length += n - 1;
    if (length == m_wideLength) return;
    const genutil::Owned<unsigned short> made(genutil::NewText<unsigned short>(length));
    unsigned short* out = made.Get();
    if (!out) return;
    for (std::uint32_t i = 0; i < m_wideLength; ++i) {
        const unsigned n = WriteJsonEscape(m_wide[i], escape);
        genutil::CopyUnits(out, n ? static_cast<const unsigned short*>(escape) : m_wide + i,
                           n ? n : 1);
        out += n ? n : 1;
    }
    Storage::StoreEdited(*this, made.Get(), length);
}

// -- Conversion ----------------------------------------------------------------------------------

// Takes ownership of the result of a conversion. Empties the string if it is null or too long.
void CGNString::TakeConverted(char* made) {
    const std::size_t length = made ? std::strlen(made) : 0;
    const bool fits = length <= genutil::kMaxTextLength;
    genutil::AssertAllocation(fits, "genutil/genstr", __LINE__);
    if (!made || !fits) {
        genutil::Release(made);
        Empty();
        return;
    }
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

// Returns the ASCII form of a full-width digit or letter, or the character itself otherwise.
unsigned short NarrowForm(unsigned short c) {
    const bool alphanumeric = (c >= 0xFF10 && c <= 0xFF19) || (c >= 0xFF21 && c <= 0xFF3A) ||
                              (c >= 0xFF41 && c <= 0xFF5A);
    return alphanumeric ? static_cast<unsigned short>(c - 0xFF01 + 0x21) : c;
}

// Does the same for the characters of a text that is invalid in the code set.
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

// Converts in Shift-JIS only. Programs rely on text in other code sets being unchanged.
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

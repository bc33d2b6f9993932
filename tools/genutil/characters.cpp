#include "tools/genutil/characters.h"

#include <algorithm>

#include "mbutil.h"
#include "tools/genutil/utf8.h"

CharacterWalk::CharacterWalk(const Input& input)
    : m_text(input.text), m_codeSet(input.encoding.codeSet), m_at(input.markLength) {}

bool CharacterWalk::Next() {
    const bool newLine = EndsLine();
    m_at += m_length;
    if (m_codeSet == mbJis) SkipEscapes();
    m_length = 0;
    if (m_at >= m_text.size()) return false;
    m_line += newLine;
    m_column = newLine ? 1 : m_column + 1;
    Measure();
    return true;
}

bool CharacterWalk::EndsLine() const {
    if (m_length == 0) return false;
    const std::size_t unit = m_codeSet == mbUtf16 ? 2 : 1;
    if (m_length != unit || (unit == 2 && m_text[m_at + 1] != 0)) return false;
    if (m_text[m_at] == '\n') return true;
    // A carriage return ends a line by itself only if no line feed follows.
    return m_text[m_at] == '\r' && !(m_at + unit < m_text.size() && m_text[m_at + unit] == '\n');
}

void CharacterWalk::SkipEscapes() {
    while (m_at + 2 < m_text.size() && m_text[m_at] == '\x1B') {
        const bool escape = m_text[m_at + 1] == '$' || m_text[m_at + 1] == '(';
        if (!escape) return;
        const std::size_t length = m_text.substr(m_at + 1, 2) == "$(" ? 4 : 3;
        if (m_at + length > m_text.size()) return;
        m_escape = m_text.substr(m_at, length);
        m_at += length;
    }
}

void CharacterWalk::Measure() {
    const std::size_t left = m_text.size() - m_at;
    const auto* p = reinterpret_cast<const unsigned char*>(m_text.data()) + m_at;
    int length = 1;
    if (m_codeSet == mbUtf8) {
        length = Utf8Length(m_text, m_at);
    } else if (m_codeSet == mbUtf16) {
        const auto half = [p](std::size_t at) { return p[at + 1] & 0xFC; };
        const bool pair = left >= 4 && half(0) == 0xD8 && half(2) == 0xDC;
        length = left < 2 ? 0 : pair ? 4 : half(0) == 0xD8 || half(0) == 0xDC ? -2 : 2;
    } else if (m_codeSet == mbJis) {
        const bool pairs = m_escape.starts_with("\x1B$") && *p > 0x20 && *p < 0x7F;
        length = *p >= 0x80 && !pairs ? 0 : pairs ? 2 : 1;
        if (pairs && (left < 2 || p[1] <= 0x20 || p[1] >= 0x7F)) length = 0;
    } else if (*p != 0) {
        length = mblenExt(p, static_cast<unsigned>(std::min<std::size_t>(left, 4)), m_codeSet);
        if (length > 0 && static_cast<std::size_t>(length) > left) length = 0;  // truncated
    }
    m_valid = length > 0;
    m_length =
        length == -2 && m_codeSet == mbUtf16 ? 2 : static_cast<std::size_t>(std::max(length, 1));
}

std::string CharacterWalk::ToUtf8() const {
    if (!m_valid) return {};
    const std::string source = std::string(m_escape) + std::string(Bytes());
    char out[16];
    mbConversion conversion = {};
    mbConvert(source.data(), source.size(), m_codeSet, out, sizeof out, mbUtf8, &conversion);
    return conversion.lost ? std::string() : std::string(out, conversion.produced);
}

std::string Hexadecimal(std::string_view bytes) {
    static const char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (!text.empty()) text += ' ';
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

std::string DescribePosition(const CharacterWalk& walk) {
    return "line " + std::to_string(walk.Line()) + ", column " + std::to_string(walk.Column()) +
           " (byte " + std::to_string(walk.At()) + "): " + Hexadecimal(walk.Bytes());
}

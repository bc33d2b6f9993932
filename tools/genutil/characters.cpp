#include "tools/genutil/characters.h"

#include <algorithm>

#include "mbutil.h"
#include "tools/genutil/utf8.h"

namespace {

bool HasShifts(int codeSet) {
    return codeSet == mbJis || codeSet == mbIso2022Cn || codeSet == mbIso2022Kr;
}

// Converts the beginning of a text, of which `room` bytes of 16-bit units fit. Returns false if not
// even one character fits.
bool ConvertBeginning(const std::string& text, int codeSet, std::size_t room,
                      mbConversion* conversion) {
    char units[8];
    const int target = codeSet == mbUtf16 ? mbUtf8 : mbUtf16;
    mbConvert(text.data(), text.size(), codeSet, units, room, target, conversion);
    return conversion->produced > 0;
}

// Returns the length of an escape sequence or shift at the start of a text, or 0 if there is none.
std::size_t ControlLength(std::string_view text) {
    if (text[0] == '\x0E' || text[0] == '\x0F') return 1;
    if (text[0] != '\x1B') return 0;
    std::size_t n = 1;
    while (n < text.size() && text[n] >= 0x20 && text[n] < 0x30) ++n;
    return n > 1 && n < text.size() ? n + 1 : 0;
}

}  // namespace

CharacterWalk::CharacterWalk(const Input& input)
    : m_text(input.text), m_codeSet(input.encoding.codeSet), m_at(input.markLength) {}

bool CharacterWalk::Next() {
    const bool newLine = EndsLine();
    m_at += m_length;
    if (HasShifts(m_codeSet)) SkipEscapes();
    m_length = 0;
    if (m_at >= m_text.size()) return false;
    m_line += newLine;
    m_column = newLine ? 1 : m_column + 1;
    Measure();
    return true;
}

bool CharacterWalk::EndsLine() const {
    const bool big = m_codeSet == mbUtf32Be;
    const std::size_t unit = m_codeSet == mbUtf16 ? 2 : big || m_codeSet == mbUtf32 ? 4 : 1;
    if (m_length == 0 || m_length != unit) return false;
    const auto is = [&](std::size_t at, char c) {
        if (at + unit > m_text.size()) return false;
        for (std::size_t i = 0; i < unit; ++i)
            if (m_text[at + i] != (i == (big ? unit - 1 : 0) ? c : '\0')) return false;
        return true;
    };
    // A carriage return ends a line by itself only if no line feed follows.
    return is(m_at, '\n') || (is(m_at, '\r') && !is(m_at + unit, '\n'));
}

// Skips the sequences that the conversion takes for escapes or shifts. m_escape keeps those that
// are in force.
void CharacterWalk::SkipEscapes() {
    while (m_at < m_text.size()) {
        const std::size_t n = ControlLength(m_text.substr(m_at));
        if (n == 0) return;
        const std::string control(m_text.substr(m_at, n));
        mbConversion conversion = {};
        if (ConvertBeginning(m_escape + control, m_codeSet, 8, &conversion)) return;
        m_at += n;
        const char last = m_escape.empty() ? '\0' : m_escape.back();
        if (n == 1 && (last == '\x0E' || last == '\x0F')) m_escape.pop_back();
        if (n > 1 && m_codeSet == mbJis) m_escape.clear();
        if (n > 1 && m_escape.find(control) != m_escape.npos) continue;
        m_escape.insert(n == 1 ? m_escape.size() : 0, control);
    }
}

// Asks the conversion for the length of the character: it is what the smallest room takes.
void CharacterWalk::Measure() {
    constexpr std::size_t kLongest = 8;
    const bool shifts = HasShifts(m_codeSet);
    const std::string text = m_escape + std::string(m_text.substr(m_at, kLongest));
    const bool own = m_codeSet == mbUtf16;  // otherwise the target has 16-bit units
    mbConversion conversion = {};
    for (std::size_t room = own ? 2 : 4; room <= 8; room += own ? 1 : 2)
        if (ConvertBeginning(text, m_codeSet, room, &conversion)) break;
    m_valid = conversion.lost == 0 && conversion.produced > 0;
    m_length = conversion.consumed > m_escape.size() ? conversion.consumed - m_escape.size() : 1;
    // The conversion has also read the escapes after the character.
    if (shifts && m_length > 1) {
        const std::string_view bytes = m_text.substr(m_at, m_length);
        const std::size_t end = bytes.find_first_of("\x1B\x0E\x0F", bytes[0] == '\x1B' ? 2 : 1);
        if (end != bytes.npos) m_length = end;
    }
    // Lines of ISO-2022-JP and -CN begin in ASCII.
    if (shifts && m_codeSet != mbIso2022Kr && m_text[m_at] == '\n') m_escape.clear();
}

std::string CharacterWalk::ToUtf8() const {
    if (!m_valid) return {};
    const std::string source = m_escape + std::string(Bytes());
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

#include "osutil/config/ini_text.h"

#include <bit>
#include <cstdint>
#include <cstring>

#include "genutil/ascii.h"
#include "genutil/mbutil/align.h"
#include "genutil/mbutil/character_table.h"
#include "genutil/mbutil/code_read.h"
#include "genutil/mbutil/step.h"
#include "genutil/simd.h"

namespace genutil {

namespace {

constexpr char kEndOfText = '\x1A';

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f';
}

// Removes the first character of a name and returns it in lower case. ASCII and other characters
// never match, and unassigned codes match only themselves.
class Folded {
  public:
    explicit Folded(std::string_view name) : m_at(Bytes(name.data())), m_end(m_at + name.size()) {}

    bool IsAtEnd() const { return m_at == m_end; }

    unsigned Next() {
        if (*m_at < 0x80) return AsciiLower(unsigned{*m_at++});
        const CodeRead read = Read();
        if (read.length) {
            m_at += read.length;
            return Lower(read.character);
        }
        unsigned length = PromisedLength(g_currentStep, m_at);
        const auto left = static_cast<std::size_t>(m_end - m_at);
        if (length > left) length = static_cast<unsigned>(left);
        unsigned code = 0;
        for (unsigned i = 0; i < length; ++i) code = code << 8 | *m_at++;
        return kRaw | code;
    }

  private:
    static constexpr unsigned kRaw = 0x80000000;  // distinct from all characters

    CodeRead Read() const {
        const CodePage* page = FindListedCodePage(g_codeSetState.codeSet);
        if (!page) return {0, 0};
        if (page->form == CodeForm::kUtf8) return ReadUtf8(m_at, m_end);
        const bool hasTables =
            page->form == CodeForm::kSingleByte || page->form == CodeForm::kPairs;
        return hasTables ? ReadCode(*page, m_at, m_end) : CodeRead{0, 0};
    }
    static unsigned Lower(unsigned character) {
        if (character > 0xFFFF) return character;
        const unsigned lower = PageOfCharacter(character).lower[character & 0xFF];
        return lower < 0x80 ? character : lower;
    }

    const unsigned char* m_at;
    const unsigned char* m_end;
};

// Calls visit(begin, end) for each line, without its LF, until it returns true. Returns true if it
// did. Line ends are searched for 16 bytes at a time.
template <class Visit>
bool AnyLine(std::string_view text, Visit visit) {
    const char *line = text.data(), *at = line, *const end = line + text.size();
    const simd::Vector feed = simd::Splat8('\n');
    for (; end - at >= 16; at += 16) {
        unsigned ends = simd::TopBits(simd::Equal8(simd::Load(at), feed));
        for (; ends; ends &= ends - 1) {
            const char* lineEnd = at + std::countr_zero(ends);
            if (visit(line, lineEnd)) return true;
            line = lineEnd + 1;
        }
    }
    for (; at < end; ++at) {
        if (*at != '\n') continue;
        if (visit(line, at)) return true;
        line = at + 1;
    }
    return line < end && visit(line, end);
}

std::string_view WithoutFeed(std::string_view line) {
    if (!line.empty() && line.back() == '\n') line.remove_suffix(1);
    return line;
}

// Johab is the only code set with "=" among its second bytes: those of symbols and hanja, which are
// characters in its code page, though not for the stepping functions.
bool HasEqualsAsSecondByte() {
    return g_codeSetState.codeSet == mbJohab;
}

bool BeginsLine(const char* begin, const char* at) {
    while (at > begin && IsBlank(at[-1])) --at;
    return at == begin || at[-1] == '\n';
}

}  // namespace

std::size_t WholeCharacters(std::string_view text) {
    std::size_t end = 0;
    while (end < text.size()) {
        const std::size_t next = end + PromisedLength(g_currentStep, Bytes(text.data() + end));
        if (next > text.size()) break;
        end = next;
    }
    return end;
}

std::string_view TrimIni(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

bool SameIniName(std::string_view a, std::string_view b) {
    if (a == b) return true;
    Folded x(a), y(b);
    while (!x.IsAtEnd() && !y.IsAtEnd())
        if (x.Next() != y.Next()) return false;
    return x.IsAtEnd() && y.IsAtEnd();
}

unsigned HashIniName(std::string_view name) {
    std::uint32_t hash = 0x811C9DC5;
    for (Folded folded(name); !folded.IsAtEnd();) hash = (hash ^ folded.Next()) * 0x01000193;
    return hash;
}

std::string_view SkipIniMark(std::string_view text) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (text.substr(0, kMark.size()) == kMark) text.remove_prefix(kMark.size());
    return text;
}

const char* NextIniHead(const char* at, const char* end) {
    const char* const begin = at;
    // Both bytes are rare, so nearly all of a text is passed 16 bytes at a time.
    const simd::Vector bracket = simd::Splat8('['), stop = simd::Splat8(kEndOfText);
    const auto isHead = [&](const char* p) {
        return *p == '[' ? BeginsLine(begin, p) : *p == kEndOfText && (p == begin || p[-1] == '\n');
    };
    for (; end - at >= 16; at += 16) {
        const simd::Vector block = simd::Load(at);
        unsigned places = simd::TopBits(simd::Equal8(block, stop) | simd::Equal8(block, bracket));
        for (; places; places &= places - 1)
            if (isHead(at + std::countr_zero(places))) return at + std::countr_zero(places);
    }
    for (; at < end; ++at)
        if (isHead(at)) return at;
    return end;
}

const char* EndOfIniLine(const char* at, const char* end) {
    const void* feed = at < end ? std::memchr(at, '\n', static_cast<std::size_t>(end - at)) : end;
    return feed && feed != end ? static_cast<const char*>(feed) + 1 : end;
}

std::string_view NameOfIniHead(std::string_view line) {
    line = WithoutFeed(line).substr(1);
    // The last bracket ends the name, unless it is part of a longer character.
    std::size_t end = line.rfind(']');
    if (end != std::string_view::npos && g_currentStep) {
        end = std::string_view::npos;
        for (std::size_t i = 0; i < line.size();) {
            if (line[i] == ']') end = i;
            i += PromisedLength(g_currentStep, Bytes(line.data() + i));
        }
    }
    return TrimIni(line.substr(0, end));
}

std::size_t FindIniEquals(std::string_view line) {
    std::size_t at = line.find('=');
    while (at != std::string_view::npos && HasEqualsAsSecondByte() &&
           AlignToPromise(*g_currentStep, Bytes(line.data()), at) != at)
        at = line.find('=', at + 1);
    return at;
}

bool TakesIniEquals(std::string_view key) {
    return HasEqualsAsSecondByte() && WholeCharacters(key) != key.size();
}

bool SplitIniLine(std::string_view line, std::string_view* key, std::string_view* value) {
    line = TrimIni(WithoutFeed(line));
    if (line.empty() || line.front() == ';') return false;
    const std::size_t equals = FindIniEquals(line);
    if (equals == std::string_view::npos) return false;
    *key = TrimIni(line.substr(0, equals));
    *value = TrimIni(line.substr(equals + 1));
    return true;
}

std::string_view UnquotedIni(std::string_view value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

bool IniSections::Next() {
    m_head = NextIniHead(m_at, m_end);
    m_ended = m_head != m_end && *m_head != '[';
    if (m_head == m_end || m_ended) return false;
    m_at = EndOfIniLine(m_head, m_end);
    return true;
}

std::string_view IniSections::Name() const {
    return NameOfIniHead({m_head, static_cast<std::size_t>(m_at - m_head)});
}

std::string_view IniSections::Lines() {
    const char* const begin = m_at;
    m_at = NextIniHead(begin, m_end);
    // Blanks before the next head do not belong to the section.
    while (m_at != m_end && m_at > begin && m_at[-1] != '\n') --m_at;
    return {begin, static_cast<std::size_t>(m_at - begin)};
}

bool FindIniSection(std::string_view text, std::string_view name, std::string_view* lines) {
    const std::string_view wanted = TrimIni(name);
    IniSections sections(SkipIniMark(text));
    while (sections.Next()) {
        if (!SameIniName(sections.Name(), wanted)) continue;
        *lines = sections.Lines();
        return true;
    }
    return false;
}

bool FindIniLine(std::string_view lines, std::string_view key, std::string_view* found) {
    const std::string_view wanted = TrimIni(key);
    const unsigned first = wanted.empty() ? 0x80 : *Bytes(wanted.data());
    const unsigned folded = AsciiLower(first);
    return AnyLine(lines, [&](const char* line, const char* end) {
        if (line == end) return false;
        const unsigned c = *Bytes(line);
        // Most lines begin with another letter and are rejected here.
        if (first < 0x80 && AsciiLower(c) != folded && !IsBlank(*line)) return false;
        std::string_view name, text;
        *found = {line, static_cast<std::size_t>(end - line)};
        return SplitIniLine(*found, &name, &text) && SameIniName(name, wanted);
    });
}

bool FindIniValue(std::string_view lines, std::string_view key, std::string_view* value) {
    std::string_view line, name, text;
    if (!FindIniLine(lines, key, &line) || !SplitIniLine(line, &name, &text)) return false;
    *value = UnquotedIni(text);
    return true;
}

IniSearch::IniSearch(std::string_view section, std::string_view key)
    : m_section(TrimIni(section)), m_key(TrimIni(key)) {}

bool IniSearch::Next(std::string_view lines, bool isFirst) {
    if (isFirst) lines = SkipIniMark(lines);
    IniSections sections(lines);
    while (!m_inSection) {
        if (!sections.Next()) return sections.IsEnded();
        m_inSection = SameIniName(sections.Name(), m_section);
    }
    m_found = FindIniValue(sections.Lines(), m_key, &m_value);
    return m_found || sections.Next() || sections.IsEnded();
}

}  // namespace genutil

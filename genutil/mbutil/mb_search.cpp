// Search for characters, words and sets of characters. Trail bytes never match.
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <optional>

#include "genutil/mbutil/align.h"
#include "genutil/mbutil/character_blocks.h"
#include "genutil/mbutil/pair_finder.h"
#include "genutil/mbutil/two_way.h"

using namespace genutil;

namespace {

char* Pointer(const char* s, std::size_t at) {
    return const_cast<char*>(s) + at;
}

// Returns c as the first byte of a character in multi-byte text, where bytes above ASCII are
// searched for as negative values of a plain char. Returns -1 for values with which no character
// begins.
int FirstByte(int c) {
    return c >= -0x80 && c < 0x80 ? static_cast<unsigned char>(c) : -1;
}

// Returns the first or the last character that begins with byte, or null if there is none.
char* FindByStep(const StepTable& table, const char* s, unsigned char byte, bool last) {
    char* found = nullptr;
    BlockWalker walker(table, Bytes(s));
    while (walker.Next()) {
        const std::uint64_t hits = MaskOfByte(walker.Data(), byte) & walker.Starts();
        if (!hits) continue;
        const int bit = last ? 63 - std::countl_zero(hits) : std::countr_zero(hits);
        found = Pointer(s, walker.Position() + static_cast<unsigned>(bit));
        if (!last) break;
    }
    return found;
}

// Returns true if a byte cannot be part of a longer character, so that a search by bytes finds
// characters.
bool StandsAlone(unsigned char byte) {
    return !g_currentStep || (byte < 0x80 && !g_currentStep->later[byte]);
}

// Finds the first occurrence of an ASCII byte that is a character by itself.
char* FindAscii(const StepTable& table, const char* s, int byte) {
    const char* boundary = s;
    for (const char* at = s; (at = std::strchr(at, byte)) != nullptr; ++at) {
        const std::size_t offset = static_cast<std::size_t>(at - boundary);
        if (AlignToCharacter(table, Bytes(boundary), offset) == offset)
            return const_cast<char*>(at);
        boundary = at + 1;  // after a trail byte that is not a lead byte
    }
    return nullptr;
}

// Search for a needle of whole characters: for its first two bytes, many at a time, and at each
// match for the rest. If too much of repetitive text has to be compared, a slower search that never
// compares a byte again takes over.
class NeedleSearch {
  public:
    // table is null for single-byte text.
    NeedleSearch(const StepTable* table, const char* hay, const char* needle)
        : m_table(table),
          m_hay(Bytes(hay)),
          m_needle(Bytes(needle)),
          m_length(std::strlen(needle)),
          m_pairs(m_hay, m_needle[0], m_needle[1]),
          m_boundary(m_hay) {}

    // Returns the next occurrence, which may overlap the previous one, or null after the last.
    const unsigned char* Next() {
        while (const unsigned char* const at = NextBytes())
            if (!m_table || (BeginsCharacter(at) && EndsCharacter(at))) return at;
        return nullptr;
    }

  private:
    // Returns the next occurrence of the bytes.
    const unsigned char* NextBytes() {
        if (m_linear) return m_linear->Next();
        while (const unsigned char* const at = m_pairs.Next()) {
            if (m_length <= 2) return at;
            std::size_t same = 2;
            while (same < m_length && at[same] == m_needle[same]) ++same;
            m_compared += same;
            if (m_compared > kFree + 8 * static_cast<std::size_t>(at - m_hay)) {
                const char* const rest = reinterpret_cast<const char*>(at);
                m_linear.emplace(at, std::strlen(rest), m_needle, m_length);
                return m_linear->Next();
            }
            if (same == m_length) return at;
        }
        return nullptr;
    }

    bool BeginsCharacter(const unsigned char* at) {
        const auto offset = static_cast<std::size_t>(at - m_boundary);
        const std::size_t start = AlignToCharacter(*m_table, m_boundary, offset);
        m_boundary += start;  // so that no search backwards is repeated
        return start == offset;
    }

    // The characters of the text must end where the needle ends. A lead byte without its trail byte
    // at the end of the needle does not match part of a whole character in the text. Only the last
    // bytes of the needle can differ in this.
    bool EndsCharacter(const unsigned char* at) {
        constexpr std::size_t kLongest = 4;
        if (!m_tailKnown) {
            while (m_tail + kLongest < m_length) m_tail += StepLength(*m_table, m_needle + m_tail);
            m_tailKnown = true;
        }
        std::size_t end = m_tail;
        while (end < m_length) end += StepLength(*m_table, at + end);
        return end == m_length;
    }

    static constexpr std::size_t kFree = 4096;  // bytes that may be compared in vain

    const StepTable* const m_table;
    const unsigned char* const m_hay;
    const unsigned char* const m_needle;
    const std::size_t m_length;
    PairFinder m_pairs;
    std::optional<TwoWayFinder> m_linear;
    const unsigned char* m_boundary;  // start of a character
    std::size_t m_compared = 0;
    std::size_t m_tail = 0;  // a boundary in the needle near its end
    bool m_tailKnown = false;
};

// A set of characters: single-byte ones in a table, the others in their text.
class CharacterSet {
  public:
    CharacterSet(const StepTable* table, const char* accept) : m_accept(Bytes(accept)) {
        for (const unsigned char* p = m_accept; *p;) {
            const unsigned length = table ? StepLength(*table, p) : 1;
            (length == 1 ? m_single : m_longer)[*p] = true;
            m_stepTable = table;
            p += length;
        }
    }
    bool Has(const unsigned char* p) const {
        return m_single[*p] || (m_longer[*p] && HasLonger(p));
    }

  private:
    bool HasLonger(const unsigned char* p) const {
        for (const unsigned char* q = m_accept; *q;) {
            const unsigned length = StepLength(*m_stepTable, q);
            if (length > 1 && !std::strncmp(reinterpret_cast<const char*>(p),
                                            reinterpret_cast<const char*>(q), length))
                return true;
            q += length;
        }
        return false;
    }

    const unsigned char* m_accept;
    const StepTable* m_stepTable = nullptr;
    std::array<bool, 256> m_single{}, m_longer{};
};

// Returns the number of bytes before the first character of s that is in the set, or strlen(s) if
// there is none.
std::size_t LengthOutside(const CharacterSet& set, const char* s) {
    const unsigned char* p = Bytes(s);
    while (*p && !set.Has(p)) p += g_currentStep ? StepLength(*g_currentStep, p) : 1;
    return static_cast<std::size_t>(p - Bytes(s));
}

// Returns true if the system's search is as good. Some are fast on most text, but not linear, so
// they are used for short needles only.
bool IsShort(const char* needle) {
    constexpr std::size_t kShort = 32;
    return std::memchr(needle, 0, kShort) != nullptr;
}

// The position at which the next search for a token begins; one for the whole process.
char* g_continuation = nullptr;

}  // namespace

char* mbstrchr(const char* s, int c) {
    EnsureInitialised();
    if (!s) return nullptr;
    if (!g_codeSetState.multiByte) return const_cast<char*>(std::strchr(s, c));
    const int byte = FirstByte(c);
    if (byte < 0) return nullptr;
    if (StandsAlone(static_cast<unsigned char>(byte)))
        return const_cast<char*>(std::strchr(s, byte));
    if (byte < 0x80) return FindAscii(*g_currentStep, s, byte);
    return FindByStep(*g_currentStep, s, static_cast<unsigned char>(byte), false);
}

char* mbstrchrEncr(const char* s, int c) {
    EnsureInitialised();
    return g_codeSetState.multiByte && c == 0 ? nullptr : mbstrchr(s, c);
}

char* mbstrrchr(const char* s, int c) {
    EnsureInitialised();
    if (!s) return nullptr;
    if (!g_codeSetState.multiByte) return const_cast<char*>(std::strrchr(s, c));
    const int byte = FirstByte(c);
    if (byte <= 0) return nullptr;
    if (StandsAlone(static_cast<unsigned char>(byte)))
        return const_cast<char*>(std::strrchr(s, byte));
    return FindByStep(*g_currentStep, s, static_cast<unsigned char>(byte), true);
}

char* mbstrstr(const char* hay, const char* needle) {
    EnsureInitialised();
    if (!hay) return nullptr;
    if (!needle || !*needle) return const_cast<char*>(hay);
    const bool lineFeed = needle[0] == '\n' && !needle[1];
    if (lineFeed || (!g_currentStep && IsShort(needle)))
        return const_cast<char*>(std::strstr(hay, needle));
    const unsigned char* const found = NeedleSearch(g_currentStep, hay, needle).Next();
    return found ? Pointer(hay, static_cast<std::size_t>(found - Bytes(hay))) : nullptr;
}

char* mbstrrstr(const char* hay, const char* needle) {
    EnsureInitialised();
    if (!hay) return nullptr;
    if (!needle) return const_cast<char*>(hay);
    if (!*needle) return Pointer(hay, std::strlen(hay));
    NeedleSearch search(g_currentStep, hay, needle);
    const unsigned char* last = nullptr;
    while (const unsigned char* const at = search.Next()) last = at;
    return last ? Pointer(hay, static_cast<std::size_t>(last - Bytes(hay))) : nullptr;
}

char* mbstrpbrk(const char* s, const char* accept) {
    EnsureInitialised();
    if (!s || !accept) return nullptr;
    const std::size_t length = LengthOutside(CharacterSet(g_currentStep, accept), s);
    return s[length] ? Pointer(s, length) : nullptr;
}

unsigned mbstrcspn(const char* s, const char* reject) {
    const char* found = mbstrpbrk(s, reject);
    if (found) return static_cast<unsigned>(found - s);
    return s ? static_cast<unsigned>(std::strlen(s)) : 0;
}

char* mbstrtok(char* s, const char* delim) {
    EnsureInitialised();
    if (!g_codeSetState.multiByte) return std::strtok(s, delim);
    char* token = s ? s : g_continuation;
    g_continuation = nullptr;
    if (!token) return nullptr;
    const CharacterSet delimiters(g_currentStep, delim ? delim : "");
    const auto step = [](const char* p) {
        return g_currentStep ? StepLength(*g_currentStep, Bytes(p)) : 1u;
    };
    while (*token && delimiters.Has(Bytes(token))) token += step(token);
    if (!*token) return nullptr;
    char* end = token + LengthOutside(delimiters, token);
    if (*end) {
        const unsigned length = step(end);
        std::memset(end, 0, length);
        g_continuation = end + length;
    }
    return token;
}

#include "osutil/platform/locale/icu_pattern.h"

#include "genutil/ascii.h"

namespace genutil::platform {

namespace {

using Unit = std::uint16_t;

constexpr Unit kQuote = '\'';

bool IsDirectionMark(Unit c) {
    return c == 0x200E || c == 0x200F || c == 0x061C;
}

bool IsFancyBlank(Unit c) {
    return c == 0x00A0 || c == 0x2007 || c == 0x2009 || c == 0x202F;
}

// Returns true for characters that a pattern must keep in apostrophes: letters of any script, but
// no punctuation.
bool IsLetter(Unit c) {
    constexpr Unit kArabicComma = 0x060C;
    if (c < 0x80) return IsAsciiLetter(c);
    return c > 0x00BF && c != kArabicComma && (c < 0x2000 || c > 0x206F) &&
           (c < 0x3000 || c > 0x303F);
}

// Writes text to a buffer of fixed size. If it does not fit, the whole text is invalid.
class Writer {
  public:
    Writer(Unit* out, std::size_t size) : m_out(out), m_size(size) {}

    void Put(Unit c) {
        if (m_length < m_size) m_out[m_length] = c;
        ++m_length;
    }
    void Put(Unit c, int count) {
        for (; count > 0; --count) Put(c);
    }
    Unit Last() const { return m_length != 0 && m_length <= m_size ? m_out[m_length - 1] : 0; }

    bool Finish() {
        const bool fits = m_length < m_size;
        if (m_size != 0) m_out[fits ? m_length : 0] = 0;
        return fits;
    }

  private:
    Unit* m_out;
    std::size_t m_size;
    std::size_t m_length = 0;
};

// The token for a field of a pattern, and its number of letters; none for a field without a token.
struct Token {
    char letter;
    int count;
};
Token TokenOfField(Unit field, int run) {
    const auto most = [run](int limit) { return run < limit ? run : limit; };
    switch (field) {
        case 'y':
        case 'Y':
        case 'u':
        case 'U':
        case 'r':
            return {'y', 4};
        case 'M':
        case 'L':
            return {'M', most(4)};
        case 'd':
            return {'d', most(2)};
        case 'E':
        case 'c':
        case 'e':
            return {'d', run < 4 ? 3 : 4};
        case 'h':
        case 'K':
            return {'h', most(2)};
        case 'H':
        case 'k':
            return {'H', most(2)};
        case 'm':
        case 's':
            return {static_cast<char>(field), most(2)};
        case 'a':
        case 'b':
        case 'B':
            return {'t', 2};
        default:
            return {0, 0};
    }
}

// Literal text between two fields. Its letters, everything between them and a full stop after the
// last are put in apostrophes.
class Literal {
  public:
    void Add(Unit c) {
        if (IsDirectionMark(c)) return;
        if (IsFancyBlank(c)) c = ' ';
        if (m_length == kSize) return;
        m_text[m_length++] = c;
        if (!IsLetter(c) && c != kQuote) return;
        if (m_behindLetters == 0) m_firstLetter = m_length - 1;
        m_behindLetters = m_length;
    }
    bool Empty() const { return m_length == 0; }

    void Flush(Writer& writer) {
        std::size_t end = m_behindLetters;
        if (end != 0 && end < m_length && m_text[end] == '.') ++end;
        for (std::size_t i = 0; i < m_length; ++i) {
            if (end != 0 && i == m_firstLetter) writer.Put(kQuote);
            if (m_text[i] == kQuote) writer.Put(kQuote);
            writer.Put(m_text[i]);
            if (end != 0 && i + 1 == end) writer.Put(kQuote);
        }
        m_length = m_firstLetter = m_behindLetters = 0;
    }

  private:
    static constexpr std::size_t kSize = 80;
    Unit m_text[kSize];
    std::size_t m_length = 0;
    std::size_t m_firstLetter = 0;
    std::size_t m_behindLetters = 0;
};

int RunLength(const Unit* p) {
    int run = 1;
    while (p[run] == *p) ++run;
    return run;
}

// Calls see(letter, run, position) for each token of a pattern until it returns false.
template <class See>
void ForEachToken(const Unit* pattern, See see) {
    bool quoted = false;
    for (const Unit* p = pattern; *p; ++p) {
        if (*p == kQuote) {
            quoted = !quoted;
        } else if (!quoted && IsAsciiLetter(*p)) {
            const int run = RunLength(p);
            if (!see(static_cast<char>(*p), run, p)) return;
            p += run - 1;
        }
    }
}

}  // namespace

bool WindowsPattern(const Unit* pattern, Unit* out, std::size_t size) {
    Writer writer(out, size);
    Literal literal;
    bool quoted = false;
    for (const Unit* p = pattern; *p; ++p) {
        if (*p == kQuote) {
            if (p[1] == kQuote)
                literal.Add(*p++);
            else
                quoted = !quoted;
            continue;
        }
        if (quoted || !IsAsciiLetter(*p)) {
            literal.Add(*p);
            continue;
        }
        const int run = RunLength(p);
        const Token token = TokenOfField(*p, run);
        p += run - 1;
        if (token.count == 0) {
            if (p[1] == ' ') ++p;  // the blank after an omitted field is also omitted
            continue;
        }
        const bool besideMarker = literal.Empty() && (writer.Last() == 't' || token.letter == 't');
        literal.Flush(writer);
        if (besideMarker && writer.Last() != 0) writer.Put(' ');
        writer.Put(static_cast<Unit>(token.letter), token.count);
    }
    literal.Flush(writer);
    return writer.Finish();
}

bool SeparatorOfPattern(const Unit* pattern, Unit* out, std::size_t size) {
    const Unit* from = nullptr;
    const Unit* to = nullptr;
    ForEachToken(pattern, [&](char letter, int run, const Unit* at) {
        if (letter == 't' || (letter == 'd' && run > 2))
            return true;  // not one of the date's
                          // parts
        if (from) to = at;
        if (!from) from = at + run;
        return !to;
    });
    Writer writer(out, size);
    bool plain = to && from != to;
    for (const Unit* p = from; plain && p != to; ++p) {
        plain = !IsLetter(*p);
        if (*p != kQuote) writer.Put(*p);
    }
    if (plain && writer.Finish()) return true;
    if (size != 0) *out = 0;
    return false;
}

int OrderOfPattern(const Unit* pattern) {
    bool yearFirst = false;
    char first = 0;  // the first of day and month
    ForEachToken(pattern, [&](char letter, int run, const Unit*) {
        if (letter == 'y') yearFirst = true;
        if (letter == 'M' || (letter == 'd' && run <= 2)) first = letter;
        return first == 0;
    });
    if (first == 'd') return 1;
    return yearFirst ? 2 : 0;
}

int RunInPattern(const Unit* pattern, char token, int limit) {
    int longest = 0;
    ForEachToken(pattern, [&](char letter, int run, const Unit*) {
        if (letter == token && run <= limit && run > longest) longest = run;
        return true;
    });
    return longest;
}

bool MarkerIsFirst(const Unit* pattern) {
    char first = 0;
    ForEachToken(pattern, [&](char letter, int, const Unit*) {
        first = letter;
        return false;
    });
    return first == 't';
}

void PlainText(Unit* text, Unit blank) {
    constexpr Unit kMinusSign = 0x2212;
    Unit* to = text;
    for (; *text; ++text) {
        if (IsDirectionMark(*text)) continue;
        *to++ = IsFancyBlank(*text) ? blank : *text == kMinusSign ? Unit{'-'} : *text;
    }
    *to = 0;
}

void GroupingOfPattern(const Unit* pattern, Unit (&out)[8]) {
    int sizes[2] = {0, 0};  // sizes of the last group and of the preceding one
    int digits = 0, commas = 0;
    for (const Unit* p = pattern; *p && *p != '.' && *p != ';'; ++p) {
        if (*p == ',') {
            sizes[1] = digits;
            digits = 0;
            ++commas;
        } else if (*p == '#' || *p == '0') {
            ++digits;
        }
    }
    sizes[0] = commas != 0 ? digits : 0;
    Writer writer(out, 8);
    const auto put = [&writer](int size) {
        writer.Put(static_cast<Unit>('0' + size % 10));
        writer.Put(';');
    };
    put(sizes[0]);
    if (commas > 1 && sizes[1] != sizes[0]) put(sizes[1]);
    writer.Put('0');
    writer.Finish();
}

int NegativeFormatOfPattern(const Unit* pattern) {
    const Unit* p = pattern;
    while (*p && *p != ';') ++p;
    if (!*p++) return 1;  // a pattern without a negative form puts the sign before the number
    if (*p == '(') return 0;
    if (*p == '-') return p[1] == ' ' || IsFancyBlank(p[1]) ? 2 : 1;
    while (p[1]) ++p;
    if (*p != '-') return 1;
    return p[-1] == ' ' || IsFancyBlank(p[-1]) ? 4 : 3;
}

}  // namespace genutil::platform

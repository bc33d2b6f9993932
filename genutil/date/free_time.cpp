#include "genutil/date/free_time.h"

#include "genutil/locale/locale_access.h"

namespace genutil {

namespace {

struct Units {
    const char* words[2];
    unsigned characters[3];
};
constexpr Units kUnits[] = {{{"h", "uhr"}, {0x6642, 0x65F6, 0xC2DC}},
                            {{"m", "min"}, {0x5206, 0xBD84, 0}},
                            {{"s", "sec"}, {0x79D2, 0xCD08, 0}}};

bool SkipUnit(TextCursor& at, int which) {
    TextCursor text = at;
    text.SkipBlanks();
    if (!IsLetterCharacter(text.Peek())) return false;
    bool found = false;
    for (const unsigned c : kUnits[which].characters) found = found || (c != 0 && text.Skip(c));
    for (const char* word : kUnits[which].words) found = found || text.SkipWord(word);
    if (found) at = text;
    return found;
}

// The walk over hour, minute and second.
class Numbers {
  public:
    Numbers(TextCursor at, const CLCLocale& locale) : m_at(at), m_end(at), m_locale(locale) {}

    bool Read(bool compact) {
        int number = 0;
        const int digits = m_at.Number(&number);
        if (digits == 0) return false;
        if (compact && (digits == 4 || digits == 6)) return Compact(number, digits);
        if (digits > 2) return false;
        Take(number);
        while (m_count < 3 && Next()) {
        }
        if (m_count == 3 && !m_units) Fraction();
        return true;
    }
    int Count() const { return m_count; }
    const TextCursor& End() const { return m_end; }
    ClockFields Time() const { return {m_numbers[0], m_numbers[1], m_numbers[2]}; }

  private:
    void Take(int number) {
        m_numbers[m_count++] = number;
        m_end = m_at;
        // A unit may follow a time in any form; "10:30 Uhr" also has one.
        if (m_count == 1 || m_units) {
            m_units = SkipUnit(m_end, m_count - 1);
            m_at = m_end;
        } else if (TextCursor clock = m_end; SkipHourUnit(clock)) {
            m_end = clock;
        }
    }
    // Reads the number after a separator or a unit.
    bool Next() {
        if (m_end.At() != m_at.At()) return false;  // after "Uhr"
        if (m_units)
            m_at.SkipBlanks();
        else if (!Separator())
            return false;
        int number = 0;
        const int digits = m_at.Number(&number);
        if (digits == 0 || digits > 2) return false;
        Take(number);
        return true;
    }
    bool Separator() {
        m_at.SkipBlanks();
        const unsigned c = m_at.Peek();
        if (m_separator != 0 && c != m_separator) return false;
        m_separator = c;
        if (!m_at.SkipAny(":.") &&
            !m_at.SkipText(LocaleAccess::TimeSeparator(m_locale), m_locale.GetCodeSet()))
            return false;
        m_at.SkipBlanks();
        return true;
    }
    bool Compact(int number, int digits) {
        m_count = digits / 2;
        for (int i = m_count; i-- > 0; number /= 100) m_numbers[i] = number % 100;
        m_end = m_at;
        if (m_count == 3) Fraction();
        return true;
    }
    void Fraction() {
        TextCursor text = m_end;
        int ignored = 0;
        if (text.SkipAny(".,") && text.Number(&ignored) > 0) m_end = text;
    }

    TextCursor m_at, m_end;  // m_end: after the part that is certain
    const CLCLocale& m_locale;
    int m_numbers[3] = {};
    int m_count = 0;
    bool m_units = false;
    unsigned m_separator = 0;
};

}  // namespace

bool SkipHourUnit(TextCursor& at) {
    return SkipUnit(at, 0);
}

bool SkipMarker(TextCursor& at, const CLCLocale& locale, bool* pm) {
    TextCursor text = at;
    text.SkipBlanks();
    if (text.Peek() == TextCursor::kEnd || IsDigitCharacter(text.Peek())) return false;
    for (const bool second : {false, true}) {
        if (text.SkipWord(LocaleAccess::Marker(locale, second), locale.GetCodeSet()) ||
            text.SkipWord(second ? "pm" : "am") || text.SkipWord(second ? "p.m." : "a.m.")) {
            *pm = second;
            at = text;
            return true;
        }
    }
    return false;
}

TimeReading ReadTime(TextCursor& at, const CLCLocale& locale, bool compact, TimeFound* found) {
    TextCursor text = at;
    text.SkipBlanks();
    bool pm = false;
    bool marked = SkipMarker(text, locale, &pm);
    text.SkipBlanks();
    Numbers numbers(text, locale);
    if (!numbers.Read(compact)) return TimeReading::kNotATime;
    text = numbers.End();
    if (!marked) marked = SkipMarker(text, locale, &pm);
    ClockFields time = numbers.Time();
    const TimeReading checked = CheckTime(&time, marked ? pm : -1);
    if (checked != TimeReading::kRead) return checked;
    *found = {time, numbers.Count() > 1, numbers.Count() > 2};
    at = text;
    return TimeReading::kRead;
}

}  // namespace genutil

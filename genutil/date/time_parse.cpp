#include "genutil/date/time_parse.h"

#include "genutil/date/date_parse.h"
#include "genutil/date/pattern.h"
#include "genutil/locale/locale_access.h"

namespace genutil {

namespace {

// Returns true if the locale writes its markers before the time.
bool MarkerLeads(const CLCLocale& locale) {
    static Kept<const Pattern::Elements> kept;
    const Pattern pattern(kept, MarkOf(&locale), PatternLetters::kTime, PatternWalk::kCharacters,
                          [&]() -> const CGNString& { return LocaleAccess::TimeFormat(locale); });
    for (const PatternElement& element : pattern)
        if (element.kind == PatternElement::kRun) return element.letter == 't';
    return false;
}

// A walk over one text.
class TimeReader {
  public:
    TimeReader(const char* text, const CLCLocale& locale)
        : m_at(text), m_locale(locale), m_markerLeads(MarkerLeads(locale)) {}

    bool Walk() {
        while (*m_at)
            if (!Step()) return false;
        return m_count > 0 && !m_separatorLast;
    }
    ClockFields Numbers() const { return {m_numbers[0], m_numbers[1], m_numbers[2]}; }
    int Marker() const { return m_marker; }

  private:
    bool Step() {
        if (*m_at == ' ') return ++m_at, true;
        if (m_marker >= 0 && !m_markerLeads) return false;  // only blanks may follow the marker
        if (*m_at >= '0' && *m_at <= '9') return Number();
        if (m_count > 0 && !m_separatorLast && Skip(LocaleAccess::TimeSeparator(m_locale)))
            return m_separatorLast = true;
        if (Marker(false) || Marker(true)) return true;
        return Unit();
    }
    bool Unit() {
        if (!m_locale.LocaleIsJapanese()) return false;  // other locales have no units
        CGNString hour, minute, second;
        m_locale.HourChar(hour);
        m_locale.MinuteChar(minute);
        m_locale.SecondChar(second);
        return Skip(hour) || Skip(minute) || Skip(second);
    }
    bool Number() {
        int number = 0;
        const int digits = CountDigits(m_at, &number);
        if (digits > 2 || m_count == 3) return false;
        m_numbers[m_count++] = number;
        m_separatorLast = false;
        m_at += digits;
        return true;
    }
    // Reads a marker before or after the numbers, according to the locale.
    bool Marker(bool pm) {
        if (m_marker >= 0 || m_markerLeads != (m_count == 0)) return false;
        if (!Skip(LocaleAccess::Marker(m_locale, pm))) return false;
        m_marker = pm;
        return true;
    }
    bool Skip(const CGNString& text) {
        if (!HasPrefix(m_at, text)) return false;
        m_at += text.GetLength();
        return true;
    }

    const char* m_at;
    const CLCLocale& m_locale;
    bool m_markerLeads;
    bool m_separatorLast = false;
    int m_numbers[3] = {};
    int m_count = 0;
    int m_marker = -1;  // 1 for PM
};

}  // namespace

TimeReading CheckTime(ClockFields* time, int marker) {
    if (time->hour < 0 || time->hour > 23 || (marker >= 0 && time->hour > 12) || time->minute < 0 ||
        time->minute > 59 || time->second < 0 || time->second > 59)
        return TimeReading::kOutOfRange;
    if (marker == 0 && time->hour == 12) time->hour = 0;
    if (marker == 1 && time->hour < 12) time->hour += 12;
    return TimeReading::kRead;
}

bool ReadLocaleTime(const CGNString& text, CGNString& rest, ClockFields* time, bool* midnight,
                    std::int32_t* rangeStatus) {
    constexpr std::int32_t kOutOfRange = 3;
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    if (!locale) return false;
    const TimeReading reading = ReadLocaleTime(text, *locale, time, midnight);
    if (reading == TimeReading::kRead) rest.Clear();
    if (reading != TimeReading::kOutOfRange) return reading == TimeReading::kRead;
    *rangeStatus = kOutOfRange;
    if (&rest != &text) rest = text;
    return false;
}

TimeReading ReadLocaleTime(const char* text, const CLCLocale& locale, ClockFields* time,
                           bool* midnight) {
    TimeReader reader(text, locale);
    if (!reader.Walk()) return TimeReading::kNotATime;
    ClockFields read = reader.Numbers();
    const bool twelve = read.hour == 12 && reader.Marker() == 0;
    if (CheckTime(&read, reader.Marker()) != TimeReading::kRead) return TimeReading::kOutOfRange;
    if (reader.Marker() >= 0 && locale.Is24Hour()) return TimeReading::kNotATime;
    *time = read;
    *midnight = twelve;
    return TimeReading::kRead;
}

}  // namespace genutil

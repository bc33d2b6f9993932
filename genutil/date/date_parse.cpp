#include "genutil/date/date_parse.h"

#include <cstring>

#include "genutil/ascii.h"
#include "genutil/calendar.h"
#include "genutil/date/bc_marker.h"
#include "genutil/date/present_year.h"
#include "genutil/locale/locale_access.h"
#include "mbutil.h"

namespace genutil {

namespace {

// Returns the length of the first B.C. marker, in their order, that occurs anywhere in the text, or
// 0 if there is none. Digits are skipped first, because most years end the text and no marker
// begins with a digit.
std::size_t MarkerIn(const char* text) {
    while (IsAsciiDigit(*text)) ++text;
    if (!*text || !FindBcMarkerStart(text)) return 0;
    for (int i = 0; const char* marker = BcMarkerToRead(i); ++i)
        if (mbstrstr(text, marker)) return std::strlen(marker);
    return 0;
}

}  // namespace

int CountDigits(const char* p, int* number) {
    int digits = 0, value = 0;
    for (; IsAsciiDigit(p[digits]); ++digits)
        value = value > (INT32_MAX - 9) / 10 ? INT32_MAX / 10 * 10 : value * 10 + (p[digits] - '0');
    *number = value;
    return digits;
}

std::int32_t YearOfDigits(int number, int digits, const CLCLocale& locale,
                          const DateScratch& scratch) {
    if (digits > 2 || number >= 100) return number;
    if (!scratch.shortYears || locale.GetCalendarType() != clcCalendarJapaneseEras)
        return YearOfTwoDigits(number);
    const CEmperor* era = LocaleAccess::Era(locale, scratch.era);
    return era ? static_cast<std::int32_t>(locale.GregorianYrFromEmperorYr(*era, number)) : number;
}

const char* DateReader::SkipBlanks() const {
    const char* from = m_at;
    while (*from == ' ') ++from;
    return from;
}

// Reads one or two digits whose value is at most `most`.
bool DateReader::Number(int most, int* number) {
    const char* const from = SkipBlanks();
    const int digits = CountDigits(from, number);
    if (digits == 0 || digits > 2) return false;
    if (*number > most) {
        m_scratch.status = kDateInvalid;
        return false;
    }
    m_at = from + digits;
    return true;
}

bool DateReader::MonthNumber() {
    int number = 0;
    if (!Number(12, &number)) return false;
    m_scratch.month = number - 1;  // 0 gives -1, which the check of the date rejects
    return true;
}

bool DateReader::DayNumber() {
    int number = 0;
    if (!Number(31, &number)) return false;
    m_scratch.day = number;
    return true;
}

// Returns the first of a locale's names with which the text continues, or -1 if there is none.
int DateReader::Name(int count, const CGNString* (*name)(const CLCLocale&, int)) {
    const char* const from = SkipBlanks();
    for (int i = 0; i < count; ++i) {
        const CGNString& candidate = *name(m_locale, i);
        if (!HasPrefix(from, candidate)) continue;
        m_at = from + candidate.GetLength();
        return i;
    }
    return -1;
}

bool DateReader::Month(const CGNString* (*name)(const CLCLocale&, int)) {
    const int i = Name(LocaleAccess::kMonths, name);
    if (i >= 0) m_scratch.month = i;
    return i >= 0;
}

bool DateReader::MonthName() {
    return Month(LocaleAccess::MonthName);
}
bool DateReader::MonthAbbreviation() {
    return Month(LocaleAccess::MonthAbbreviation);
}
bool DateReader::DayName() {
    return Name(LocaleAccess::kDays, LocaleAccess::DayName) >= 0;
}
bool DateReader::DayAbbreviation() {
    return Name(LocaleAccess::kDays, LocaleAccess::DayAbbreviation) >= 0;
}

void DateReader::Year() {
    const char* from = SkipBlanks();
    const std::size_t marker = MarkerIn(from);
    int number = 0;
    m_scratch.yearDigits = kBcYear;
    if (marker == 0) {
        const int digits = m_scratch.yearDigits = CountDigits(from, &number);
        m_scratch.year = YearOfDigits(number, digits, m_locale, m_scratch);
        m_at = from + digits;
    } else if (IsAsciiDigit(*from)) {
        // The digits of "44 B.C." are left to be read again, because programs find the marker by
        // them.
        CountDigits(from, &number);
        m_at = from;
        m_scratch.year = 1 - number;
    } else {
        from += marker;
        from += std::strspn(from, " ");
        m_at = from + CountDigits(from, &number);
        m_scratch.year = 1 - number;
    }
    if (m_scratch.year > kLastYear) m_scratch.year = kLastYear;
    if (m_scratch.year < kFirstYear) m_scratch.year = kFirstYear;
}

bool DateReader::Separator() {
    const char* const from = SkipBlanks();
    const CGNString& separator = LocaleAccess::DateSeparator(m_locale);
    if (!HasPrefix(from, separator)) return false;
    m_at = from + separator.GetLength();
    return true;
}

bool DateReader::Byte(char c) {
    const char* const from = SkipBlanks();
    if (*from != c || c == 0) return false;
    m_at = from + 1;
    return true;
}

bool DateReader::Era() {
    const char* const from = SkipBlanks();
    for (int i = 0; const CEmperor* era = LocaleAccess::Era(m_locale, i); ++i) {
        CGNString name;
        era->Emperor(name);
        if (era->IsEmpty()) break;
        if (!HasPrefix(from, name)) continue;
        if (m_locale.GetCalendarType() == clcCalendarJapaneseEras) {
            m_scratch.era = i;
            m_at = from + name.GetLength();
        }
        return true;
    }
    return false;
}

bool DateReader::Date(const CGNString& pattern) {
    return Date(Pattern(pattern, PatternLetters::kDate, PatternWalk::kBytes));
}

bool DateReader::LocaleDate(long kind) {
    static Kept<const Pattern::Elements> kept[2];
    return Date(Pattern(kept[kind == LocaleAccess::kLong], MarkOf(&m_locale), PatternLetters::kDate,
                        PatternWalk::kBytes, [&]() -> const CGNString& {
                            return LocaleAccess::DateFormat(m_locale, kind);
                        }));
}

bool DateReader::Date(const Pattern& pattern) {
    const DateScratch saved = m_scratch;
    const char* const whole = m_at;
    if (Elements(pattern)) return true;
    m_scratch.year = saved.year;
    m_scratch.month = saved.month;
    m_scratch.day = saved.day;
    m_at = whole;
    return false;
}

// A run that is not a date component is a sequence of letters, each of which may be in the text.
bool DateReader::Run(char letter, std::uint32_t count) {
    switch (letter) {
        case 'd':
            return count <= 2   ? DayNumber()
                   : count == 3 ? DayAbbreviation()
                   : count == 4 ? DayName()
                                : false;
        case 'M':
            return count <= 2   ? MonthNumber()
                   : count == 3 ? MonthAbbreviation()
                   : count == 4 ? MonthName()
                                : false;
        case 'y':
            if (count == 3 || count > 4) return false;
            Year();
            return true;
        case 'g':
            for (; count > 1; count -= 2) {
                m_scratch.era = 0;
                Era();
            }
            return count == 0;
        default:
            for (; count > 0; --count) Byte(letter);
            return true;
    }
}

bool DateReader::Elements(const Pattern& pattern) {
    const CGNString& separator = LocaleAccess::DateSeparator(m_locale);
    bool day = false, month = false, separatorLast = false;
    std::uint32_t behind = 0;  // end of the last separator in the pattern; elements before it are
                               // part of that
    for (const PatternElement& element : pattern) {
        const char* const at = pattern.Text(element);
        if (element.at < behind || (element.kind == PatternElement::kOther && *at == ' ')) continue;
        if (element.kind == PatternElement::kRun) {
            if (!Run(element.letter, element.length)) return false;
            day |= element.letter == 'd';
            month |= element.letter == 'M';
            if (element.letter == 'd' || element.letter == 'M' || element.letter == 'y')
                separatorLast = false;
        } else if (element.kind != PatternElement::kOther) {
            for (std::uint32_t i = 0; i < element.length; ++i)
                if (at[i] != ' ' && !Byte(at[i])) return false;
        } else if (HasPrefix(at, separator)) {
            behind = element.at + separator.GetLength();
            if (Separator()) {
                separatorLast = true;
            } else if (day && month) {
                m_scratch.year = PresentYear();
                return true;
            }
        } else {
            Byte(*at);  // may be missing
        }
    }
    if (!day || !month) return false;
    return !separatorLast || pattern.EndsWith(separator);
}

}  // namespace genutil

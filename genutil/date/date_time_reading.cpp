// Reading CGNDateTime from text, in the formats of the global locale.
#include "gencalendar.h"
#include "genlocale.h"
#include "genmoment.h"
#include "gentimeofday.h"
#include "genutil/calendar.h"
#include "genutil/date/date_parse.h"
#include "genutil/date/free_moment.h"
#include "genutil/date/read_rest.h"
#include "genutil/date/time_parse.h"
#include "genutil/locale/locale_access.h"
#include "genutil/zone/zone.h"

using namespace genutil;

// Applies a reader to the date of this value. On success the rest of the text is stored in rest.
template <class Read>
unsigned char CGNDateTime::ReadWith(const CGNString& text, CGNString& rest, Read read) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    if (!locale) return 0;
    DateScratch scratch = {m_year, m_month, m_day, 0, kDateValid, true};
    DateReader reader(text, *locale, scratch);
    const bool done = read(reader);
    m_year = scratch.year;
    m_month = scratch.month;
    m_day = scratch.day;
    if (scratch.status == kDateInvalid) m_rangeStatus = 2;
    if (done) TakeRest(reader.At(), rest);
    return done;
}

unsigned char CGNDateTime::GetDateFromString(const CGNString& text, CGNString& rest) {
    return GetLongDateFromString(text, rest) || GetShortDateFromString(text, rest);
}

unsigned char CGNDateTime::GetLongDateFromString(const CGNString& text, CGNString& rest) {
    const auto read = [](DateReader& reader) { return reader.LocaleDate(LocaleAccess::kLong); };
    return ReadWith(text, rest, read) || KeepWhole(text, rest);
}

unsigned char CGNDateTime::GetShortDateFromString(const CGNString& text, CGNString& rest) {
    const auto read = [](DateReader& reader) { return reader.LocaleDate(LocaleAccess::kShort); };
    return ReadWith(text, rest, read) || KeepWhole(text, rest);
}

unsigned char CGNDateTime::GetDateFromStringUsingFormat(const CGNString& text, CGNString& rest,
                                                        const CGNString& format) {
    const auto read = [&](DateReader& reader) { return reader.Date(format); };
    return ReadWith(text, rest, read) || KeepWhole(text, rest);
}

unsigned char CGNDateTime::GetMonthNumFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.MonthNumber(); });
}
unsigned char CGNDateTime::GetMonthAbbrevFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.MonthAbbreviation(); });
}
unsigned char CGNDateTime::GetMonthNameFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.MonthName(); });
}
unsigned char CGNDateTime::GetDayNumFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.DayNumber(); });
}
unsigned char CGNDateTime::GetDayAbbrevFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.DayAbbreviation(); });
}
unsigned char CGNDateTime::GetDayNameFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.DayName(); });
}
unsigned char CGNDateTime::Get4DigitYearFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.Year(), true; });
}
unsigned char CGNDateTime::GetDateSepFromString(const CGNString& text, CGNString& rest) {
    return ReadWith(text, rest, [](DateReader& reader) { return reader.Separator(); });
}
unsigned char CGNDateTime::GetMatchingCharFromString(const CGNString& text, CGNString& rest,
                                                     char c) {
    return ReadWith(text, rest, [c](DateReader& reader) { return reader.Byte(c); });
}

unsigned char CGNDateTime::Get1DigitYearFromString(const CGNString& text, CGNString& rest) {
    return Get4DigitYearFromString(text, rest);
}
unsigned char CGNDateTime::Get2DigitYearFromString(const CGNString& text, CGNString& rest) {
    return Get4DigitYearFromString(text, rest);
}

long CGNDateTime::GetEmperorFromString(const CGNString& text, CGNString& rest) {
    return CGNDate().GetEmperorFromString(text, rest);
}

unsigned char CGNDateTime::GetTimeFromString(const CGNString& text, CGNString& rest) {
    ClockFields time = {};
    bool midnight = false;
    if (!ReadLocaleTime(text, rest, &time, &midnight, &m_rangeStatus)) return 0;
    m_hour = time.hour;
    m_minute = time.minute;
    m_second = time.second;
    return 1;
}

// -- Free forms ----------------------------------------------------------------------------------

namespace {

constexpr int kFound = 6;

// Reports which parts of a moment were in the text: year, month, day, hour, minute, second.
void TellFound(const MomentFound& moment, unsigned char* found, int size) {
    const bool has[kFound] = {moment.hasDate && moment.date.yearGiven,
                              moment.hasDate,
                              moment.hasDate,
                              moment.hasTime,
                              moment.hasTime && moment.time.minuteGiven,
                              moment.hasTime && moment.time.secondGiven};
    for (int i = 0; found && i < size; ++i) found[i] = i < kFound && has[i];
}

std::int32_t StatusOf(MomentReading reading) {
    switch (reading) {
        case MomentReading::kBadDate:
            return 2;
        case MomentReading::kTimeOutOfRange:
            return 3;
        case MomentReading::kBadTime:
            return 5;
        default:
            return 1;
    }
}

std::tm RecordOf(const MomentFound& moment) {
    std::tm local = {};
    local.tm_year = moment.date.date.year - 1900;
    local.tm_mon = moment.date.date.month;
    local.tm_mday = moment.date.date.day;
    local.tm_hour = moment.time.time.hour;
    local.tm_min = moment.time.time.minute;
    local.tm_sec = moment.time.time.second;
    local.tm_isdst = -1;
    return local;
}

// Returns the moment of a time given with its offset from Greenwich, or -1 if it is out of range.
std::int64_t SecondsAtOffset(const MomentFound& moment) {
    const DateScratch& date = moment.date.date;
    const ClockFields& time = moment.time.time;
    const std::int64_t days = DayNumberOf(date.year, date.month + 1, date.day) - kDayOf1970;
    const std::int64_t seconds =
        days * kSecondsPerDay + SecondsOf(time.hour, time.minute, time.second) - moment.offset;
    return seconds < 0 || seconds > kLastSecond ? -1 : seconds;
}

DateSetting SettingIn(const CLCLocale& locale) {
    return {locale, TextCodeSet(), true};
}

}  // namespace

// Sets the value to the moment that was read, if that exists.
template <class Found>
unsigned char CGNDateTime::Take(const Found& moment) {
    std::tm local = RecordOf(moment);
    std::int64_t seconds = 0;
    if (moment.hasOffset) {
        seconds = SecondsAtOffset(moment);
        if (seconds >= 0) LocalTimeTS(static_cast<long>(seconds), local);
    }
    if (seconds < 0 || !VerifyDateTime(&local)) {
        if (seconds < 0 || m_rangeStatus == 1) m_rangeStatus = 2;  // not a valid moment
        return 0;
    }
    if (!moment.hasOffset) seconds = MkTimeTS(&local);
    m_working = local;
    TakeFields(local);
    m_seconds = static_cast<std::int32_t>(seconds);
    return 1;
}

unsigned char CGNDateTime::ReadIn(const CLCLocale* locale, const CGNString& text) {
    if (!locale) return 0;
    MomentFound moment;
    MomentReading reading = ReadMomentAsWritten(text, SettingIn(*locale), &moment);
    if (reading == MomentReading::kRead && !moment.hasDate) reading = MomentReading::kBadDate;
    m_rangeStatus = StatusOf(reading);
    return reading == MomentReading::kRead && Take(moment);
}

unsigned char CGNDateTime::ReadIn(const CLCLocale* locale, const CGNString& date,
                                  const CGNString& time) {
    if (!locale) return 0;
    MomentFound moment = {};
    const DateSetting setting = SettingIn(*locale);
    MomentReading reading = ReadMomentDate(date, setting, &moment);
    if (reading == MomentReading::kRead) reading = ReadMomentTime(time, setting, &moment);
    m_rangeStatus = StatusOf(reading);
    return reading == MomentReading::kRead && Take(moment);
}

unsigned char CGNDateTime::FromString(const CGNString& text) {
    return ReadIn(CLCGlobalLocale::Instance(), text);
}
unsigned char CGNDateTime::FromString(const CGNString& date, const CGNString& time) {
    return ReadIn(CLCGlobalLocale::Instance(), date, time);
}

unsigned char CGNDateTime::parseDateTime(const CGNString& text, unsigned char* found, int size) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    MomentFound moment = {};
    TellFound(moment, found, size);
    if (!locale) return 0;
    const MomentReading reading = ReadMoment(text, SettingIn(*locale), &moment);
    m_rangeStatus = StatusOf(reading);
    if (reading != MomentReading::kRead) return 0;
    TellFound(moment, found, size);
    const std::tm local = RecordOf(moment);
    if (moment.hasDate) {
        m_year = local.tm_year + 1900;
        m_month = local.tm_mon;
        m_day = local.tm_mday;
    }
    if (moment.hasTime) {
        m_hour = local.tm_hour;
        m_minute = local.tm_min;
        m_second = local.tm_sec;
    }
    return 1;
}

template <class Read>
unsigned char CGNDateTime::ParseWith(const CGNString& text, CGNString& rest, Read read) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    if (!locale) return 0;
    DateFound found = {};
    TextCursor at(text, TextCodeSet());
    const bool done = read(at, SettingIn(*locale), &found) == Reading::kRead;
    m_rangeStatus = done ? 1 : 2;
    if (!done) return 0;
    m_year = found.date.year;
    m_month = found.date.month;
    m_day = found.date.day;
    rest = at.At();
    return 1;
}

unsigned char CGNDateTime::parseDate(const CGNString& text, CGNString& rest) {
    return ParseWith(text, rest, ReadAnyDate);
}
unsigned char CGNDateTime::parseNumDate(const CGNString& text, CGNString& rest) {
    return ParseWith(text, rest, ReadNumericDate);
}
unsigned char CGNDateTime::parseCharDate(const CGNString& text, CGNString& rest) {
    return ParseWith(text, rest, ReadNamedDate);
}
unsigned char CGNDateTime::parseKanjiDate(const CGNString& text, CGNString& rest) {
    return ParseWith(text, rest, ReadKanjiDate);
}

unsigned char CGNDateTime::parseTime(const CGNString& text, CGNString& rest) {
    const CLCLocale* locale = CLCGlobalLocale::Instance();
    if (!locale) return 0;
    ClockFields time;
    std::size_t length = 0;
    const TimeReading reading = ParseTime(text, *locale, &time, &length);
    m_rangeStatus = reading == TimeReading::kRead ? 1 : reading == TimeReading::kOutOfRange ? 3 : 5;
    if (reading != TimeReading::kRead) return 0;
    m_hour = time.hour;
    m_minute = time.minute;
    m_second = time.second;
    rest = static_cast<const char*>(text) + length;
    return 1;
}

unsigned char CGNDateTime::extractDateWord(const CGNString& text, CGNString& word,
                                           CGNString& rest) {
    return ExtractWord(text, word, rest);
}
unsigned char CGNDateTime::extractTimeWord(const CGNString& text, CGNString& word,
                                           CGNString& rest) {
    return ExtractWord(text, word, rest);
}
unsigned char CGNDateTime::FindAMPMMarker(const CGNString& text, long& pm, CGNString& rest) {
    return CGNTime::FindAMPMMarker(text, pm, rest);
}

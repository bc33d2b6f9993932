// The value of CGNDateTime: its fields, its clock, its range.

#include "genmoment.h"
#include "gentimeofday.h"
#include "genutil/calendar.h"
#include "genutil/zone/local_clock.h"
#include "genutil/zone/zone.h"

using namespace genutil;

// Programs hold such objects by value.
static_assert(sizeof(void*) != 4 ||
              sizeof(CGNDateTime) == 7 * 4 + sizeof(CGNString) + sizeof(std::tm) + 3 * 4);

_osmutex* CGNDateTime::osMutexLocalTime = nullptr;

namespace {

enum RangeStatus { kValid = 1, kBadDate = 2, kBadTime = 3, kBehindTheEnd = 4 };

// Returns the present date at midnight, for the working record of a value without a moment.
std::tm PresentDate() {
    std::tm local;
    CGNDateTime::LocalTimeTS(CGNDateTime::Now(), local);
    local.tm_sec = local.tm_min = local.tm_hour = 0;
    return local;
}

std::tm LocalOf(long seconds) {
    std::tm local;
    CGNDateTime::LocalTimeTS(seconds, local);
    return local;
}

}  // namespace

// -- Construction and state ----------------------------------------------------------------------

CGNDateTime::CGNDateTime()
    : m_hour(0),
      m_minute(0),
      m_second(0),
      m_year(0),
      m_month(0),
      m_day(0),
      m_weekday(0),
      m_working(PresentDate()),
      m_seconds(0),
      m_spare(0),
      m_rangeStatus(0) {}

CGNDateTime::CGNDateTime(CLCLocale*) : CGNDateTime() {}

CGNDateTime::CGNDateTime(long seconds)
    : m_working(LocalOf(seconds)), m_seconds(MomentOf(seconds)), m_spare(0), m_rangeStatus(0) {
    TakeFields(m_working);
}

CGNDateTime::CGNDateTime(const CGNDateTime& other) = default;
CGNDateTime& CGNDateTime::operator=(const CGNDateTime& other) = default;
CGNDateTime::~CGNDateTime() = default;

void CGNDateTime::TakeFields(const struct tm& local) {
    m_hour = local.tm_hour;
    m_minute = local.tm_min;
    m_second = local.tm_sec;
    m_year = WrappingSum(local.tm_year, 1900);
    m_month = local.tm_mon;
    m_day = local.tm_mday;
    m_weekday = local.tm_wday;
}

unsigned char CGNDateTime::IsEmpty() const {
    return m_hour == 0 && m_minute == 0 && m_second == 0 && m_year == 0 && m_month == 0 &&
           m_day == 0 && m_seconds == 0;
}

void CGNDateTime::Empty() {
    m_working = PresentDate();
    m_display.Empty();
    m_hour = m_minute = m_second = 0;
    m_year = m_month = m_day = m_weekday = 0;
    m_seconds = m_spare = 0;
}

void CGNDateTime::ToTM(struct tm* out) const {
    LocalTimeTS(Now(), *out);
    out->tm_hour = m_hour;
    out->tm_min = m_minute;
    out->tm_sec = m_second;
    out->tm_year = WrappingSum(m_year, -1900);
    out->tm_mon = m_month;
    out->tm_mday = m_day;
    out->tm_wday = m_weekday;
}

// -- Clock and zone ------------------------------------------------------------------------------

unsigned char CGNDateTime::ModuleInit() {
    return CreateClockMutex(&osMutexLocalTime);
}
void CGNDateTime::LocalTimeTS(const long& t, struct tm& out) {
    LocalTime(osMutexLocalTime, t, &out);
}
long CGNDateTime::MkTimeTS(struct tm* t) {
    return MakeTime(osMutexLocalTime, t);
}
long CGNDateTime::TimeTS(long* t) {
    const long now = ReadClock(osMutexLocalTime);
    if (t) *t = now;
    return now;
}
long CGNDateTime::Now() {
    return TimeTS(nullptr);
}

long CGNDateTime::GetLocalMidnightToday() {
    const long now = Now();
    std::tm local;
    LocalTimeTS(now, local);
    long midnight = now - SecondsOf(local.tm_hour, local.tm_min, local.tm_sec);
    LocalTimeTS(midnight, local);
    // A clock change since midnight leaves an hour. 11 is treated like 23, because programs that
    // show hours to 12 compare with it.
    if (local.tm_hour == 11 || local.tm_hour == 23)
        midnight += kSecondsPerHour;
    else if (local.tm_hour == 1)
        midnight -= kSecondsPerHour;
    return midnight;
}

// -- Range ---------------------------------------------------------------------------------------

int CGNDateTime::MinYear() {
    return LocalOf(0).tm_year;
}

void CGNDateTime::MaxTime(int* hour, int* minute, int* second) {
    const std::tm last = LocalOf(kLastSecond);
    *hour = last.tm_hour;
    *minute = last.tm_min;
    *second = last.tm_sec;
}

unsigned char CGNDateTime::IsValidDate(int year, int month, int day) {
    const auto isBefore = [](int y, int m, int d, int y2, int m2, int d2) {
        return y != y2 ? y < y2 : m != m2 ? m < m2 : d < d2;
    };
    const std::tm first = LocalOf(0), last = LocalOf(kLastSecond);
    return !isBefore(year, month, day, first.tm_year, first.tm_mon, first.tm_mday) &&
           !isBefore(last.tm_year, last.tm_mon, last.tm_mday, year, month, day);
}

unsigned char CGNDateTime::VerifyDateTime(struct tm* local) {
    constexpr int kYearOfTheEnd = 138, kDayOfTheEnd = 18;
    m_rangeStatus = kValid;
    if (local->tm_hour < 0 || local->tm_hour > 23 || local->tm_min < 0 || local->tm_min > 59 ||
        local->tm_sec < 0 || local->tm_sec > 59) {
        m_rangeStatus = kBadTime;
        return 0;
    }
    // The last day is the same in every zone, so that a value stored in one zone is valid in all.
    if (local->tm_year == kYearOfTheEnd) {
        if (local->tm_mon > 0 || local->tm_mday > kDayOfTheEnd) {
            m_rangeStatus = kBadDate;
            return 0;
        }
        int hour, minute, second;
        MaxTime(&hour, &minute, &second);
        const bool behind = SecondsOf(local->tm_hour, local->tm_min, local->tm_sec) >
                            SecondsOf(hour, minute, second);
        if (local->tm_mon == 0 && local->tm_mday == kDayOfTheEnd && behind) {
            m_rangeStatus = kBehindTheEnd;
            return 0;
        }
    }
    if (local->tm_mon < 0 || local->tm_mon > 11 || local->tm_mday < 1 || local->tm_mday > 31 ||
        local->tm_year > kYearOfTheEnd || local->tm_year < MinYear()) {
        m_rangeStatus = kBadDate;
        return 0;
    }
    return VerifyDay(local);
}

unsigned char CGNDateTime::VerifyDay(struct tm* local) {
    std::tm normal = *local;
    normal.tm_isdst = -1;
    MkTimeTS(&normal);
    const int saving = normal.tm_isdst;
    normal = *local;
    normal.tm_isdst = saving;
    if (MkTimeTS(&normal) == -1) return 0;
    if (normal.tm_hour == local->tm_hour && normal.tm_min == local->tm_min &&
        normal.tm_sec == local->tm_sec && normal.tm_year == local->tm_year &&
        normal.tm_mon == local->tm_mon && normal.tm_mday == local->tm_mday)
        return 1;
    m_rangeStatus = kBadDate;
    return 0;
}

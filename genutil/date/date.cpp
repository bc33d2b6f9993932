// The value of CGNDate: its fields, its calendar, its clock.
#include "gencalendar.h"
#include "genlocale.h"
#include "genutil/calendar.h"
#include "genutil/zone/local_clock.h"

using namespace genutil;

// Programs hold such objects by value.
static_assert(sizeof(void*) != 4 || sizeof(CGNDate) == 5 * 4 + 4 + sizeof(CGNString) + 5 * 4);

_osmutex* CGNDate::osMutexLocalTime = nullptr;

namespace {

constexpr int kFirstDay = 1, kLastDay = 5373120;  // 1 January 9999; programs use it as the end
constexpr int kMonday = 2;

// Returns the astronomical year. Years before Christ count down from 0.
int Astronomical(int year, unsigned char bc) {
    return bc && year > 0 ? 1 - year : year;
}

}  // namespace

// -- Construction and state ----------------------------------------------------------------------

// The weekday is that of day number 0, and not 0 as after Empty(), because stored values have it.
CGNDate::CGNDate() : CGNDate(0, 0, 0, 0, kMonday) {}

CGNDate::CGNDate(int year, unsigned char bc, int month, int day, int weekday)
    : m_status(0),
      m_year(year),
      m_month(month),
      m_day(day),
      m_weekday(weekday),
      m_bc(bc),
      m_yearFirst(0),
      m_parsedYear(0),
      m_parsedMonth(0),
      m_parsedDay(0),
      m_spare(0),
      m_era(0) {}

CGNDate::CGNDate(int dayNumber) : CGNDate(4713, 1, 1, 1, kMonday) {
    if (dayNumber < kFirstDay) return;
    if (dayNumber > kLastDay) dayNumber = kLastDay;
    const CalendarDate date = DateOf(dayNumber);
    m_bc = date.year <= 0;
    m_year = m_bc ? 1 - date.year : date.year;
    m_month = date.month;
    m_day = date.day;
    m_weekday = WeekdayOf(dayNumber);
}

CGNDate::CGNDate(const CGNDate& other) = default;
CGNDate& CGNDate::operator=(const CGNDate& other) = default;
CGNDate::~CGNDate() = default;

unsigned char CGNDate::IsEmpty() const {
    return m_year == 0 && m_month == 0 && m_day == 0;
}

// The status and the era code describe the last reading and are kept.
void CGNDate::Empty() {
    m_display.Empty();
    m_year = m_month = m_day = m_weekday = 0;
    m_bc = 0;
}

void CGNDate::ToTM(struct tm* out) const {
    LocalTimeTS(Now(), *out);
    out->tm_year = WrappingSum(m_year, -1900);
    out->tm_mon = m_month;
    out->tm_mday = m_day;
    out->tm_wday = m_weekday;
}

// -- Day numbers and the calendar ----------------------------------------------------------------

int CGNDate::GetDateValue() const {
    return DayNumberOf(Astronomical(m_year, m_bc), m_month, m_day);
}

int CGNDate::DateToJulianDate(int year, int month, int day) {
    return DayNumberOf(year, month, day);
}

void CGNDate::JulianDateToDate(int dayNumber, int& year, int& month, int& day) {
    const CalendarDate date = DateOf(dayNumber);
    year = date.year;
    month = date.month;
    day = date.day;
}

// The century rule tests month and day separately, so most of the year 2000 is not a leap year
// here. Programs depend on it. The calendar itself is in DateExists().
unsigned char CGNDate::IsLeapYear(int year, int month, int day) {
    const bool plain = year % 4 == 0 && year % 100 != 0;
    const bool gregorian = year >= 1582 && month >= 10 && day >= 15;
    return plain || (gregorian && year % 400 == 0);
}

int CGNDate::GetWeekNumber(int dayNumber) {
    const std::int64_t day = dayNumber;
    const std::int64_t d4 = (day + 31741 - day % 7) % 146097 % 36524 % 1461;
    const std::int64_t leap = d4 / 1460;
    const std::int64_t d1 = (d4 - leap) % 365 + leap;
    return static_cast<int>(d1 / 7 + 1);
}

unsigned char CGNDate::VerifyDate(int year, int month, int day, int& weekday) const {
    const int astronomical = Astronomical(year, m_bc);
    if (!DateExists(astronomical, month, day)) return 0;
    weekday = WeekdayOf(DayNumberOf(astronomical, month, day));
    return 1;
}

unsigned char CGNDate::VerifyDate(int year, int month, int day, CGNString& weekday) const {
    int number = 0;
    if (!VerifyDate(year, month, day, number)) return 0;
    if (CLCLocale* locale = CLCGlobalLocale::Instance()) locale->DayName((number + 5) % 7, weekday);
    return 1;
}

unsigned char CGNDate::VerifyDate() {
    int weekday = 0;
    if (!VerifyDate(m_year, m_month, m_day, weekday)) return 0;
    m_weekday = weekday;
    return 1;
}

template <class Weekday>
static int LastDay(const CGNDate& date, int year, int month, Weekday& weekday) {
    for (int day = 31; day > 0; --day)
        if (date.VerifyDate(year, month, day, weekday)) return day;
    return -1;
}

int CGNDate::GetLastDayOfYearAndMonth(int year, int month, CGNString& weekday) const {
    return LastDay(*this, year, month, weekday);
}
int CGNDate::GetLastDayOfYearAndMonth(int year, int month, int& weekday) const {
    return LastDay(*this, year, month, weekday);
}

// -- Clock and zone ------------------------------------------------------------------------------

unsigned char CGNDate::ModuleInit() {
    return CreateClockMutex(&osMutexLocalTime);
}
void CGNDate::LocalTimeTS(const long& t, struct tm& out) {
    LocalTime(osMutexLocalTime, t, &out);
}
long CGNDate::MkTimeTS(struct tm* t) {
    return MakeTime(osMutexLocalTime, t);
}
long CGNDate::TimeTS(long* t) {
    const long now = ReadClock(osMutexLocalTime);
    if (t) *t = now;
    return now;
}
long CGNDate::Now() {
    return TimeTS(nullptr);
}

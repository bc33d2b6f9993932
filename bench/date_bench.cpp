// Moments shown and read back, beside ICU's formats (opened once), strftime and strptime with
// localtime_r, and fmt with chrono; day numbers beside std::chrono's calendar; conversions in the
// zone of a thread beside localtime_r and ICU's calendar. In the zone of New York.
#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <time.h>
#include <unicode/ucal.h>
#include <unicode/udat.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "gendate.h"
#include "genlocale.h"
#include "mbutil.h"
#include "osthread.h"
#ifdef HAVE_FMT
#include <fmt/chrono.h>
#endif

namespace {

constexpr const char* kZone = "America/New_York";
constexpr const UChar* kIcuZone = u"America/New_York";
constexpr long kStart = 1262322000, kSecondsOfYear = 365 * 86400;  // 2010 in New York

// A log's moments, second by second through a year, or moments of any time since 1970.
enum class Order { kLog, kRandom };

class Moments {
  public:
    explicit Moments(Order order) : m_random(order == Order::kRandom) {
        std::mt19937 engine(6);
        for (long& moment : m_table) moment = static_cast<long>(engine() & 0x7FFFFFFF);
    }
    long Next() {
        const long i = m_next++;
        return m_random ? m_table[static_cast<std::size_t>(i) % kSize]
                        : kStart + i % kSecondsOfYear;
    }

  private:
    static constexpr std::size_t kSize = 4096;
    bool m_random;
    long m_next = 0;
    std::array<long, kSize> m_table;
};

// The same pictures in the languages of all four.
struct Style {
    const char *name, *locale;
    int codeSet;
    const char *shortDate, *longDate, *time;
    bool dateInLong;
    const char* c;
    const UChar* icu;
    const char* fmt;
};
constexpr Style kStyles[] = {
    {"English short date and time", "en_US", mbWestern, "MM/dd/yyyy", "dddd, MMMM dd, yyyy",
     "hh:mm:ss tt", false, "%m/%d/%Y %I:%M:%S %p", u"MM/dd/yyyy hh:mm:ss a",
     "{:%m/%d/%Y %I:%M:%S %p}"},
    {"English long date and time", "en_US", mbWestern, "MM/dd/yyyy", "dddd, MMMM dd, yyyy",
     "hh:mm:ss tt", true, "%A, %B %d, %Y %I:%M:%S %p", u"EEEE, MMMM dd, yyyy hh:mm:ss a",
     "{:%A, %B %d, %Y %I:%M:%S %p}"},
    {"Japanese long date and time", "ja_JP", mbShiftJis, "yyyy/MM/dd",
     "yyyy'\x94\x4E'MM'\x8C\x8E'dd'\x93\xFA'", "H:mm:ss", true, "%Y年%m月%d日 %H:%M:%S",
     u"yyyy年MM月dd日 H:mm:ss", "{:%Y年%m月%d日 %H:%M:%S}"},
};

void UseStyle(const Style& style) {
    InitMbutilExt(style.codeSet);
    CLCLocale* locale = CLCGlobalLocale::Instance();
    locale->SetCustomized(0);
    locale->Customize(style.time, style.shortDate, style.longDate, 1, "3;0", 1, 1, ".", "-", ",",
                      style.locale);
}

std::string Shown(long moment, bool inLong) {
    CGNDateTime value(moment);
    value.FormatForDisplay(inLong ? 2 : 1);
    CGNString text;
    value.GetDisplayBuffer(text);
    return static_cast<const char*>(text);
}

// -- From a moment to its text -------------------------------------------------------------------

void Format(benchmark::State& state, const Style& style, Order order) {
    UseStyle(style);
    Moments moments(order);
    CGNString text;
    for (auto _ : state) {
        CGNDateTime moment(moments.Next());
        moment.FormatForDisplay(style.dateInLong ? 2 : 1);
        moment.GetDisplayBuffer(text);
        benchmark::DoNotOptimize(static_cast<const char*>(text));
    }
}

// In the settings that the locale has from the system, which may change at any time.
void FormatUncustomised(benchmark::State& state, Order order) {
    InitMbutilExt(mbWestern);
    CLCGlobalLocale::Instance()->SetCustomized(0);
    CLCGlobalLocale::Instance()->SetLocale("en_US");
    Moments moments(order);
    CGNString text;
    for (auto _ : state) {
        CGNDateTime moment(moments.Next());
        moment.FormatForDisplay(1);
        moment.GetDisplayBuffer(text);
        benchmark::DoNotOptimize(static_cast<const char*>(text));
    }
}

void FormatByC(benchmark::State& state, const Style& style, Order order) {
    Moments moments(order);
    char text[128];
    for (auto _ : state) {
        const time_t moment = moments.Next();
        struct tm local;
        localtime_r(&moment, &local);
        benchmark::DoNotOptimize(strftime(text, sizeof text, style.c, &local));
        benchmark::ClobberMemory();
    }
}

UDateFormat* OpenIcu(const Style& style) {
    UErrorCode error = U_ZERO_ERROR;
    return udat_open(UDAT_PATTERN, UDAT_PATTERN, style.locale, kIcuZone, -1, style.icu, -1, &error);
}

void FormatByIcu(benchmark::State& state, const Style& style, Order order) {
    UDateFormat* format = OpenIcu(style);
    Moments moments(order);
    UChar text[128];
    for (auto _ : state) {
        UErrorCode error = U_ZERO_ERROR;
        const double moment = static_cast<double>(moments.Next()) * 1000;
        benchmark::DoNotOptimize(udat_format(format, moment, text, 128, nullptr, &error));
        benchmark::ClobberMemory();
    }
    udat_close(format);
}

#ifdef HAVE_FMT
void FormatByFmt(benchmark::State& state, const Style& style, Order order) {
    Moments moments(order);
    char text[128];
    for (auto _ : state) {
        const time_t moment = moments.Next();
        struct tm local;
        localtime_r(&moment, &local);
        benchmark::DoNotOptimize(
            fmt::format_to_n(text, sizeof text, fmt::runtime(style.fmt), local).size);
        benchmark::ClobberMemory();
    }
}
#endif

// -- From a text to its fields, and to the moment ------------------------------------------------

std::vector<std::string> Texts(const Style& style, Order order) {
    UseStyle(style);
    Moments moments(order);
    std::vector<std::string> texts(4096);
    for (std::string& text : texts) text = Shown(moments.Next(), style.dateInLong);
    return texts;
}

std::vector<std::string> TextsOfC(const Style& style, Order order) {
    Moments moments(order);
    std::vector<std::string> texts(4096);
    for (std::string& text : texts) {
        const time_t moment = moments.Next();
        struct tm local;
        localtime_r(&moment, &local);
        char buffer[128];
        text.assign(buffer, strftime(buffer, sizeof buffer, style.c, &local));
    }
    return texts;
}

void ParseFields(benchmark::State& state, const Style& style, Order order) {
    std::vector<CGNString> texts;
    for (const std::string& text : Texts(style, order)) texts.emplace_back(text.c_str());
    CGNDateTime moment;
    CGNString rest;
    std::size_t i = 0;
    for (auto _ : state) {
        const CGNString& text = texts[i++ % texts.size()];
        const bool read = (style.dateInLong ? moment.GetLongDateFromString(text, rest)
                                            : moment.GetShortDateFromString(text, rest)) &&
                          moment.GetTimeFromString(rest, rest);
        if (!read) return state.SkipWithError("a text was not read");
    }
}

void ParseMoment(benchmark::State& state, const Style& style, Order order) {
    std::vector<CGNString> texts;
    for (const std::string& text : Texts(style, order)) texts.emplace_back(text.c_str());
    CGNDateTime moment;
    std::size_t i = 0;
    for (auto _ : state)
        if (!moment.FromString(texts[i++ % texts.size()]))
            return state.SkipWithError("a text was not read");
}

// In a form that is none of the locale's: 5 March 2010, 2 pm.
void ParseFreeForm(benchmark::State& state, Order order) {
    UseStyle(kStyles[0]);
    Moments moments(order);
    std::vector<CGNString> texts;
    for (int i = 0; i < 4096; ++i) {
        const time_t moment = moments.Next();
        struct tm local;
        localtime_r(&moment, &local);
        char text[128];
        strftime(text, sizeof text, "%d %b %Y, %I:%M %p", &local);
        texts.emplace_back(text);
    }
    CGNDateTime moment;
    std::size_t i = 0;
    for (auto _ : state)
        if (!moment.FromString(texts[i++ % texts.size()]))
            return state.SkipWithError("a text was not read");
}

void ParseFieldsByC(benchmark::State& state, const Style& style, Order order) {
    const std::vector<std::string> texts = TextsOfC(style, order);
    std::size_t i = 0;
    for (auto _ : state) {
        struct tm local = {};
        if (!strptime(texts[i++ % texts.size()].c_str(), style.c, &local))
            return state.SkipWithError("a text was not read");
        benchmark::DoNotOptimize(local);
    }
}

void ParseMomentByC(benchmark::State& state, const Style& style, Order order) {
    const std::vector<std::string> texts = TextsOfC(style, order);
    std::size_t i = 0;
    for (auto _ : state) {
        struct tm local = {};
        if (!strptime(texts[i++ % texts.size()].c_str(), style.c, &local))
            return state.SkipWithError("a text was not read");
        local.tm_isdst = -1;
        benchmark::DoNotOptimize(mktime(&local));
    }
}

void ParseMomentByIcu(benchmark::State& state, const Style& style, Order order) {
    UDateFormat* format = OpenIcu(style);
    Moments moments(order);
    std::vector<std::u16string> texts(4096);
    for (std::u16string& text : texts) {
        UErrorCode error = U_ZERO_ERROR;
        UChar out[128];
        const double moment = static_cast<double>(moments.Next()) * 1000;
        const int length = udat_format(format, moment, out, 128, nullptr, &error);
        text.assign(out, static_cast<std::size_t>(length));
    }
    std::size_t i = 0;
    for (auto _ : state) {
        UErrorCode error = U_ZERO_ERROR;
        const std::u16string& text = texts[i++ % texts.size()];
        benchmark::DoNotOptimize(
            udat_parse(format, text.data(), static_cast<int>(text.size()), nullptr, &error));
    }
    udat_close(format);
}

// -- Day numbers ---------------------------------------------------------------------------------

constexpr int kFirstDay = 2299161, kDays = 2900000;  // Gregorian, to the year 9522

int NextDay(std::uint32_t* state) {
    *state = *state * 1664525 + 1013904223;
    return kFirstDay + static_cast<int>(std::uint64_t{*state} * kDays >> 32);
}

void ToDate(benchmark::State& state) {
    std::uint32_t seed = 1;
    int year, month, day;
    for (auto _ : state) {
        CGNDate::JulianDateToDate(NextDay(&seed), year, month, day);
        benchmark::DoNotOptimize(year + month + day);
    }
}

void ToDateByChrono(benchmark::State& state) {
    using namespace std::chrono;
    std::uint32_t seed = 1;
    for (auto _ : state) {
        const year_month_day date(sys_days(days(NextDay(&seed) - 2440588)));
        benchmark::DoNotOptimize(int(date.year()) + int(unsigned(date.month())) +
                                 int(unsigned(date.day())));
    }
}

struct YearMonthDay {
    int year, month, day;
};
std::vector<YearMonthDay> RandomDates() {
    std::uint32_t seed = 1;
    std::vector<YearMonthDay> dates(4096);
    for (YearMonthDay& date : dates)
        CGNDate::JulianDateToDate(NextDay(&seed), date.year, date.month, date.day);
    return dates;
}

void FromDate(benchmark::State& state) {
    const std::vector<YearMonthDay> dates = RandomDates();
    std::size_t i = 0;
    for (auto _ : state) {
        const YearMonthDay& date = dates[i++ % 4096];
        benchmark::DoNotOptimize(CGNDate::DateToJulianDate(date.year, date.month, date.day));
    }
}

void FromDateByChrono(benchmark::State& state) {
    using namespace std::chrono;
    const std::vector<YearMonthDay> dates = RandomDates();
    std::size_t i = 0;
    for (auto _ : state) {
        const YearMonthDay& date = dates[i++ % 4096];
        const sys_days day = year(date.year) / date.month / date.day;
        benchmark::DoNotOptimize(day.time_since_epoch().count() + 2440588);
    }
}

// -- Conversions ---------------------------------------------------------------------------------

void ToLocal(benchmark::State& state, Order order) {
    Moments moments(order);
    struct tm local;
    for (auto _ : state) {
        CGNDateTime::LocalTimeTS(moments.Next(), local);
        benchmark::DoNotOptimize(local);
    }
}

// As a server does: a threaded process, whose thread has a zone of its own.
void EnterThread() {
    OSSetThreaded();
    CGNDateTime::ModuleInit();
    CGNLclSt::Instance()->Init(10);
    CGNLclSt::Instance()->SetLocalVariable("timezone", const_cast<char*>(kZone));
}

void ToLocalInThread(benchmark::State& state, Order order) {
    EnterThread();
    ToLocal(state, order);
}

void FormatInThread(benchmark::State& state, const Style& style, Order order) {
    EnterThread();
    Format(state, style, order);
}

void ToLocalByC(benchmark::State& state, Order order) {
    Moments moments(order);
    struct tm local;
    for (auto _ : state) {
        const time_t moment = moments.Next();
        benchmark::DoNotOptimize(localtime_r(&moment, &local));
        benchmark::ClobberMemory();
    }
}

void ToLocalByIcu(benchmark::State& state, Order order) {
    UErrorCode error = U_ZERO_ERROR;
    UCalendar* calendar = ucal_open(kIcuZone, -1, "en_US", UCAL_GREGORIAN, &error);
    Moments moments(order);
    for (auto _ : state) {
        ucal_setMillis(calendar, static_cast<double>(moments.Next()) * 1000, &error);
        int sum = 0;
        for (const UCalendarDateFields field :
             {UCAL_YEAR, UCAL_MONTH, UCAL_DATE, UCAL_HOUR_OF_DAY, UCAL_MINUTE, UCAL_SECOND,
              UCAL_DAY_OF_WEEK, UCAL_DAY_OF_YEAR, UCAL_DST_OFFSET})
            sum += ucal_get(calendar, field, &error);
        benchmark::DoNotOptimize(sum);
    }
    ucal_close(calendar);
}

std::vector<struct tm> LocalTimes(Order order) {
    Moments moments(order);
    std::vector<struct tm> times(4096);
    for (struct tm& local : times) {
        const time_t moment = moments.Next();
        localtime_r(&moment, &local);
        local.tm_isdst = -1;
    }
    return times;
}

template <class Convert>
void FromLocal(benchmark::State& state, Order order, Convert convert) {
    const std::vector<struct tm> times = LocalTimes(order);
    std::size_t i = 0;
    for (auto _ : state) {
        struct tm local = times[i++ % 4096];
        benchmark::DoNotOptimize(convert(&local));
    }
}

// -- All together --------------------------------------------------------------------------------

constexpr struct {
    Order order;
    const char* name;
} kOrders[] = {{Order::kLog, "a log"}, {Order::kRandom, "at random"}};

template <class Run, class... Arguments>
void Add(const std::string& name, const char* who, Run run, Arguments... arguments) {
    benchmark::RegisterBenchmark((name + "/" + who).c_str(),
                                 [=](benchmark::State& state, auto... all) { run(state, all...); },
                                 arguments...);
}

void AddStyle(const Style& style, Order order, const std::string& orderName) {
    const std::string format = std::string("show ") + style.name + ", " + orderName;
    Add(format, "genutil", Format, style, order);
    Add(format, "strftime", FormatByC, style, order);
    Add(format, "ICU", FormatByIcu, style, order);
#ifdef HAVE_FMT
    Add(format, "fmt", FormatByFmt, style, order);
#endif
    const std::string fields = std::string("read fields, ") + style.name + ", " + orderName;
    Add(fields, "genutil", ParseFields, style, order);
    Add(fields, "strptime", ParseFieldsByC, style, order);
    Add(fields, "ICU", ParseMomentByIcu, style, order);
    const std::string moment = std::string("read moment, ") + style.name + ", " + orderName;
    Add(moment, "genutil", ParseMoment, style, order);
    Add(moment, "strptime and mktime", ParseMomentByC, style, order);
    Add(moment, "ICU", ParseMomentByIcu, style, order);
}

const int kRegistered = [] {
    setenv("TZ", kZone, 1);
    tzset();
    Add("day number to date", "genutil", ToDate);
    Add("day number to date", "std::chrono", ToDateByChrono);
    Add("date to day number", "genutil", FromDate);
    Add("date to day number", "std::chrono", FromDateByChrono);
    for (const auto& [order, name] : kOrders) {
        for (const Style& style : kStyles) AddStyle(style, order, name);
        Add(std::string("read moment, free form, ") + name, "genutil", ParseFreeForm, order);
        const std::string settings = std::string("show in the system's settings, ") + name;
        Add(settings, "genutil", FormatUncustomised, order);
        Add(settings, "strftime", FormatByC, kStyles[0], order);
        Add(settings, "ICU", FormatByIcu, kStyles[0], order);
        const std::string convert = std::string("moment to local time, ") + name;
        Add(convert, "genutil", ToLocal, order);
        Add(convert, "localtime_r", ToLocalByC, order);
    }
    // Threads last: a process stays threaded.
    for (const auto& [order, name] : kOrders) {
        const std::string convert = std::string("to local time in a thread's zone, ") + name;
        Add(convert, "genutil", ToLocalInThread, order);
        Add(convert, "localtime_r", ToLocalByC, order);
        Add(convert, "ICU", ToLocalByIcu, order);
        const std::string back = std::string("from local time in a thread's zone, ") + name;
        Add(
            back, "genutil",
            [](benchmark::State& state, Order o) {
                EnterThread();
                FromLocal(state, o, [](struct tm* local) { return CGNDateTime::MkTimeTS(local); });
            },
            order);
        Add(
            back, "mktime",
            [](benchmark::State& state, Order o) {
                FromLocal(state, o, [](struct tm* local) { return mktime(local); });
            },
            order);
        const std::string format = std::string("show in a thread's zone, ") + name;
        Add(format, "genutil", FormatInThread, kStyles[0], order);
        Add(format, "strftime", FormatByC, kStyles[0], order);
    }
    return 0;
}();

}  // namespace

// Moments written and read back, day numbers compared with std::chrono's calendar, and conversions
// in the zone of a thread. All in the zone of New York.
#include "bench/date_bench.h"

#include <chrono>
#include <cstdint>
#include <ctime>

#include "gendate.h"
#include "genlocale.h"
#include "mbutil.h"
#include "osthread.h"

namespace {

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

// With the locale's settings from the system, which may change at any time.
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

// -- From a text to its fields, and to the moment ------------------------------------------------

std::vector<std::string> Texts(const Style& style, Order order) {
    UseStyle(style);
    Moments moments(order);
    std::vector<std::string> texts(4096);
    for (std::string& text : texts) text = Shown(moments.Next(), style.dateInLong);
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

// In a form that differs from the locale's: 5 March 2010, 2 pm.
void ParseFreeForm(benchmark::State& state, Order order) {
    UseStyle(kStyles[0]);
    Moments moments(order);
    std::vector<CGNString> texts;
    for (int i = 0; i < 4096; ++i) {
        struct tm local;
        CGNDateTime::LocalTimeTS(moments.Next(), local);
        char text[128];
        std::strftime(text, sizeof text, "%d %b %Y, %I:%M %p", &local);
        texts.emplace_back(text);
    }
    CGNDateTime moment;
    std::size_t i = 0;
    for (auto _ : state)
        if (!moment.FromString(texts[i++ % texts.size()]))
            return state.SkipWithError("a text was not read");
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

// As in a server: a threaded process, whose thread has its own zone.
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

void FromLocal(benchmark::State& state, Order order) {
    EnterThread();
    FromLocalBy(state, order, [](struct tm* local) { return CGNDateTime::MkTimeTS(local); });
}

const int kRegistered = [] {
    SetZone();
    Add("day number to date", "genutil", ToDate);
    Add("day number to date", "std::chrono", ToDateByChrono);
    Add("date to day number", "genutil", FromDate);
    Add("date to day number", "std::chrono", FromDateByChrono);
    for (const auto& [order, name] : kOrders) {
        for (const Style& style : kStyles) {
            const std::string which = std::string(style.name) + ", " + name;
            Add("show " + which, "genutil", Format, style, order);
            Add("read fields, " + which, "genutil", ParseFields, style, order);
            Add("read moment, " + which, "genutil", ParseMoment, style, order);
            AddStylePeers(which, style, order);
        }
        Add(std::string("read moment, free form, ") + name, "genutil", ParseFreeForm, order);
        Add(std::string("show in the system's settings, ") + name, "genutil", FormatUncustomised,
            order);
        Add(std::string("moment to local time, ") + name, "genutil", ToLocal, order);
        AddLocalPeers(name, order);
    }
    // Threads last, because a process stays threaded.
    for (const auto& [order, name] : kOrders) {
        Add(std::string("to local time in a thread's zone, ") + name, "genutil", ToLocalInThread,
            order);
        Add(std::string("from local time in a thread's zone, ") + name, "genutil", FromLocal,
            order);
        Add(std::string("show in a thread's zone, ") + name, "genutil", FormatInThread, kStyles[0],
            order);
        AddThreadPeers(name, order);
    }
    return 0;
}();

}  // namespace

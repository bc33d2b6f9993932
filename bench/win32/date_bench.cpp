// The runtime's localtime, mktime and strftime, and the system's GetDateFormat with GetTimeFormat.
// The runtime cannot read dates.
#include "bench/date_bench.h"

#include <windows.h>

#include <cstdlib>

const char* const kZone = "EST5EDT";

namespace {

void FormatByC(benchmark::State& state, const Style& style, Order order) {
    Moments moments(order);
    char text[128];
    for (auto _ : state) {
        const std::time_t moment = moments.Next();
        benchmark::DoNotOptimize(
            std::strftime(text, sizeof text, style.c, std::localtime(&moment)));
        benchmark::ClobberMemory();
    }
}

void FormatBySystem(benchmark::State& state, const Style& style, Order order) {
    Moments moments(order);
    const LCID id = style.codeSet == mbShiftJis ? 0x0411 : 0x0409;
    const char* const pattern = style.dateInLong ? style.longDate : style.shortDate;
    char text[128];
    for (auto _ : state) {
        const std::time_t moment = moments.Next();
        const struct tm& local = *std::localtime(&moment);
        SYSTEMTIME fields = {};
        fields.wYear = static_cast<WORD>(local.tm_year + 1900);
        fields.wMonth = static_cast<WORD>(local.tm_mon + 1);
        fields.wDay = static_cast<WORD>(local.tm_mday);
        fields.wHour = static_cast<WORD>(local.tm_hour);
        fields.wMinute = static_cast<WORD>(local.tm_min);
        fields.wSecond = static_cast<WORD>(local.tm_sec);
        int length = GetDateFormatA(id, 0, &fields, pattern, text, sizeof text);
        if (length == 0) return state.SkipWithError("not shown");
        text[length - 1] = ' ';
        length = GetTimeFormatA(id, 0, &fields, style.time, text + length,
                                static_cast<int>(sizeof text) - length);
        benchmark::DoNotOptimize(length);
        benchmark::ClobberMemory();
    }
}

void ToLocalByC(benchmark::State& state, Order order) {
    Moments moments(order);
    for (auto _ : state) {
        const std::time_t moment = moments.Next();
        struct tm local = *std::localtime(&moment);
        benchmark::DoNotOptimize(local);
    }
}

void FromLocalByC(benchmark::State& state, Order order) {
    FromLocalBy(state, order, [](struct tm* local) { return std::mktime(local); });
}

}  // namespace

void SetZone() {
    _putenv("TZ=EST5EDT");
    _tzset();
}

void AddStylePeers(const std::string& which, const Style& style, Order order) {
    Add("show " + which, "strftime", FormatByC, style, order);
    Add("show " + which, "GetDateFormat", FormatBySystem, style, order);
}

void AddLocalPeers(const std::string& order, Order which) {
    const std::string settings = "show in the system's settings, " + order;
    Add(settings, "strftime", FormatByC, kStyles[0], which);
    Add(settings, "GetDateFormat", FormatBySystem, kStyles[0], which);
    Add("moment to local time, " + order, "localtime", ToLocalByC, which);
}

void AddThreadPeers(const std::string& order, Order which) {
    Add("to local time in a thread's zone, " + order, "localtime", ToLocalByC, which);
    Add("from local time in a thread's zone, " + order, "mktime", FromLocalByC, which);
    Add("show in a thread's zone, " + order, "strftime", FormatByC, kStyles[0], which);
}

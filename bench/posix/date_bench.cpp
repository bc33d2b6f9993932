// strftime and strptime with localtime_r, ICU's formats and calendar (opened once), and fmt.
#include "bench/date_bench.h"

#include <stdlib.h>
#include <time.h>
#include <unicode/ucal.h>
#include <unicode/udat.h>

#ifdef HAVE_FMT
#include <fmt/chrono.h>
#endif

const char* const kZone = "America/New_York";

namespace {

constexpr const UChar* kIcuZone = u"America/New_York";

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

void FromLocalByC(benchmark::State& state, Order order) {
    FromLocalBy(state, order, [](struct tm* local) { return mktime(local); });
}

}  // namespace

void SetZone() {
    setenv("TZ", kZone, 1);
    tzset();
}

void AddStylePeers(const std::string& which, const Style& style, Order order) {
    Add("show " + which, "strftime", FormatByC, style, order);
    Add("show " + which, "ICU", FormatByIcu, style, order);
#ifdef HAVE_FMT
    Add("show " + which, "fmt", FormatByFmt, style, order);
#endif
    Add("read fields, " + which, "strptime", ParseFieldsByC, style, order);
    Add("read fields, " + which, "ICU", ParseMomentByIcu, style, order);
    Add("read moment, " + which, "strptime and mktime", ParseMomentByC, style, order);
    Add("read moment, " + which, "ICU", ParseMomentByIcu, style, order);
}

void AddLocalPeers(const std::string& order, Order which) {
    const std::string settings = "show in the system's settings, " + order;
    Add(settings, "strftime", FormatByC, kStyles[0], which);
    Add(settings, "ICU", FormatByIcu, kStyles[0], which);
    Add("moment to local time, " + order, "localtime_r", ToLocalByC, which);
}

void AddThreadPeers(const std::string& order, Order which) {
    const std::string convert = "to local time in a thread's zone, " + order;
    Add(convert, "localtime_r", ToLocalByC, which);
    Add(convert, "ICU", ToLocalByIcu, which);
    Add("from local time in a thread's zone, " + order, "mktime", FromLocalByC, which);
    Add("show in a thread's zone, " + order, "strftime", FormatByC, kStyles[0], which);
}

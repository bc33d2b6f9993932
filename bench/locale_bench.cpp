// Opening a locale and reading its facts, compared with the system's own calls for the same facts
// and with std::locale.
#include "bench/locale_bench.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <locale>
#include <sstream>
#include <stdexcept>

#include "genlocale.h"

namespace {

std::size_t ReadAll(const CLCLocale& locale) {
    CGNString text;
    std::size_t bytes = 0;
    const auto add = [&] { bytes += text.GetLength(); };
    for (long i = 0; i < 13; ++i) {
        locale.MonthName(i, text), add();
        locale.MonthAbbrev(i, text), add();
    }
    for (long i = 0; i < 7; ++i) {
        locale.DayName(i, text), add();
        locale.DayAbbrev(i, text), add();
    }
    for (long i = 1; i < 3; ++i) locale.DateFormatString(i, text), add();
    for (long i = 0; i < 2; ++i) locale.AMPMMarker(i, text), add();
    locale.TimeFormatString(text), add();
    locale.DateSep(text), add();
    locale.TimeSep(text), add();
    locale.GetDecDecimalSymbol(text), add();
    locale.GetDecDigitGroupSeparator(text), add();
    locale.GetDecNumDigitsInGroup(text), add();
    locale.GetDecNegativeSign(text), add();
    return bytes + static_cast<std::size_t>(locale.GetCalendarType());
}

void OpenAgain(benchmark::State& state) {
    for (auto _ : state) {
        CLCLocale locale;
        locale.SetLocale(NextName());
        benchmark::DoNotOptimize(ReadAll(locale));
    }
}

// With an existing object.
void FactsAgain(benchmark::State& state) {
    CLCLocale locale;
    for (auto _ : state) {
        locale.SetLocale(NextName());
        benchmark::DoNotOptimize(&locale);
    }
}

void TextsAgain(benchmark::State& state) {
    CLCLocale locale;
    locale.SetLocale("de_DE");
    for (auto _ : state) benchmark::DoNotOptimize(ReadAll(locale));
}

void FirstOpening(benchmark::State& state) {
    OnceEach(state, [](const char* name) {
        CLCLocale locale;
        locale.SetLocale(name);
        benchmark::DoNotOptimize(&locale);
    });
}

// The lists of locales and zones, built again. The system's zones are read once per process.
void BuildCatalogues(benchmark::State& state) {
    for (auto _ : state) {
        LocaleInfo::Free();
        CLCTimeZoneInfo::Free();
        benchmark::DoNotOptimize(LocaleInfo::GetLocaleInfoCount(mbSelectAll) +
                                 CLCTimeZoneInfo::GetInfoCount());
    }
}
// Names of months and days, markers and number signs. std::locale provides no formats and
// calendars.
void StandardFacts(benchmark::State& state) {
    try {
        for (auto _ : state) {
            const std::locale locale("C.UTF-8");
            const auto& put = std::use_facet<std::time_put<char>>(locale);
            std::ostringstream out;
            out.imbue(locale);
            std::tm time{};
            const auto write = [&](char format) { put.put(out, out, ' ', &time, format); };
            for (time.tm_mon = 0; time.tm_mon < 12; ++time.tm_mon) write('B'), write('b');
            time.tm_mon = 0;
            for (time.tm_wday = 0; time.tm_wday < 7; ++time.tm_wday) write('A'), write('a');
            for (const int hour : {1, 13}) time.tm_wday = 0, time.tm_hour = hour, write('p');
            const auto& numbers = std::use_facet<std::numpunct<char>>(locale);
            benchmark::DoNotOptimize(numbers.decimal_point() + numbers.thousands_sep());
            benchmark::DoNotOptimize(numbers.grouping().size() + out.str().size());
        }
    } catch (const std::runtime_error&) {
        state.SkipWithError("the system has no locale C.UTF-8");
    }
}

const int kRegistered = [] {
    RegisterLocalePeers();
    benchmark::RegisterBenchmark("first opening, from the system/genutil", FirstOpening)
        ->Iterations(1)
        ->UseManualTime();
    benchmark::RegisterBenchmark("both catalogues, first/genutil", BuildCatalogues)->Iterations(1);
    benchmark::RegisterBenchmark("both catalogues, again/genutil", BuildCatalogues);
    benchmark::RegisterBenchmark("new object, facts and all texts again/genutil", OpenAgain);
    benchmark::RegisterBenchmark("new object, facts and all texts again/std::locale",
                                 StandardFacts);
    benchmark::RegisterBenchmark("facts into an object again/genutil", FactsAgain);
    benchmark::RegisterBenchmark("all texts of an object/genutil", TextsAgain);
    benchmark::RegisterBenchmark("all texts of an object/std::locale", StandardFacts);
    return 0;
}();

}  // namespace

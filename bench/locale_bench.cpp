// Opening a locale and reading its facts, beside ICU's own calls for the same facts and
// std::locale.
#include <benchmark/benchmark.h>
#include <unicode/ucal.h>
#include <unicode/ucurr.h>
#include <unicode/udat.h>
#include <unicode/uenum.h>
#include <unicode/uloc.h>
#include <unicode/unum.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <iterator>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>

#include "genlocale.h"

namespace {

constexpr const char* kNames[] = {"en_US", "de_DE", "fr_FR", "ja_JP", "ko_KR",
                                  "zh_TW", "th_TH", "ar_SA", "ru_RU", "hi_IN"};

// The next of the locales, so that none stays in a cache by itself.
const char* NextName() {
    static std::size_t next = 0;
    return kNames[next++ % std::size(kNames)];
}

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

// On an object that is there already.
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

// Every locale of the library that no other benchmark here opens, once.
template <class Read>
void OnceEach(benchmark::State& state, Read read) {
    for (auto _ : state) {
        char name[16];
        int row = -1, number = -1, locales = 0;
        const auto start = std::chrono::steady_clock::now();
        for (; mbGetNextLocaleEx(name, sizeof name, &row, &number, mbSelectAll); ++locales)
            if (std::find(std::begin(kNames), std::end(kNames), std::string(name)) ==
                std::end(kNames))
                read(name);
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(time.count() / locales);
    }
}

void FirstOpening(benchmark::State& state) {
    OnceEach(state, [](const char* name) {
        CLCLocale locale;
        locale.SetLocale(name);
        benchmark::DoNotOptimize(&locale);
    });
}

std::int32_t IcuTexts(const char* name) {
    UErrorCode error = U_ZERO_ERROR;
    UChar out[80];
    std::int32_t units = 0;
    const std::string western = std::string(name) + "@calendar=gregorian;numbers=latn";
    UDateFormat* const formats[] = {
        udat_open(UDAT_NONE, UDAT_SHORT, western.c_str(), u"UTC", 3, nullptr, 0, &error),
        udat_open(UDAT_NONE, UDAT_FULL, western.c_str(), u"UTC", 3, nullptr, 0, &error),
        udat_open(UDAT_MEDIUM, UDAT_NONE, western.c_str(), u"UTC", 3, nullptr, 0, &error)};
    for (UDateFormat* format : formats) units += udat_toPattern(format, false, out, 80, &error);
    const auto symbols = [&](UDateFormatSymbolType type, int from, int to) {
        for (; from < to; ++from) units += udat_getSymbols(formats[0], type, from, out, 80, &error);
    };
    symbols(UDAT_STANDALONE_MONTHS, 0, 12);
    symbols(UDAT_STANDALONE_SHORT_MONTHS, 0, 12);
    symbols(UDAT_STANDALONE_WEEKDAYS, 1, 8);
    symbols(UDAT_STANDALONE_SHORT_WEEKDAYS, 1, 8);
    symbols(UDAT_AM_PMS, 0, 2);
    units += ucal_getAttribute(udat_getCalendar(formats[0]), UCAL_FIRST_DAY_OF_WEEK);
    for (UDateFormat* format : formats) udat_close(format);
    return units;
}

std::int32_t IcuNumbersAndNames(const char* name) {
    UErrorCode error = U_ZERO_ERROR;
    UChar out[80];
    std::int32_t units = 0, length = 0;
    UNumberFormat* numbers = unum_open(UNUM_DECIMAL, nullptr, 0, name, nullptr, &error);
    for (const UNumberFormatSymbol symbol :
         {UNUM_DECIMAL_SEPARATOR_SYMBOL, UNUM_GROUPING_SEPARATOR_SYMBOL, UNUM_MINUS_SIGN_SYMBOL})
        units += unum_getSymbol(numbers, symbol, out, 80, &error);
    units += unum_toPattern(numbers, false, out, 80, &error);
    unum_close(numbers);
    UEnumeration* calendars = ucal_getKeywordValuesForLocale("calendar", name, true, &error);
    benchmark::DoNotOptimize(uenum_next(calendars, &length, &error));
    uenum_close(calendars);
    ucurr_forLocale(name, out, 80, &error);
    benchmark::DoNotOptimize(ucurr_getName(out, name, UCURR_SYMBOL_NAME, nullptr, &length, &error));
    units += length + ucurr_getDefaultFractionDigits(out, &error);
    for (const char* language : {"en", name}) {
        units += uloc_getDisplayLanguage(name, language, out, 80, &error);
        units += uloc_getDisplayCountry(name, language, out, 80, &error);
    }
    return units;
}

void IcuFacts(benchmark::State& state) {
    for (auto _ : state) {
        const char* name = NextName();
        benchmark::DoNotOptimize(IcuTexts(name) + IcuNumbersAndNames(name));
    }
}

void IcuFirst(benchmark::State& state) {
    OnceEach(state, [](const char* name) {
        benchmark::DoNotOptimize(IcuTexts(name) + IcuNumbersAndNames(name));
    });
}

// The lists of locales and zones, built anew; the system's zones are read once for the process.
void BuildCatalogues(benchmark::State& state) {
    for (auto _ : state) {
        LocaleInfo::Free();
        CLCTimeZoneInfo::Free();
        benchmark::DoNotOptimize(LocaleInfo::GetLocaleInfoCount(mbSelectAll) +
                                 CLCTimeZoneInfo::GetInfoCount());
    }
}
void IcuCatalogues(benchmark::State& state) {
    for (auto _ : state) {
        UErrorCode error = U_ZERO_ERROR;
        UChar text[128];
        std::int32_t units = 0, length = 0;
        for (std::int32_t i = 0; i < uloc_countAvailable(); ++i)
            units += uloc_getDisplayName(uloc_getAvailable(i), "en", text, 128, &error);
        UEnumeration* zones = ucal_openTimeZones(&error);
        while (const UChar* id = uenum_unext(zones, &length, &error)) {
            UCalendar* calendar = ucal_open(id, length, "en", UCAL_DEFAULT, &error);
            units += ucal_getTimeZoneDisplayName(calendar, UCAL_STANDARD, "en", text, 128, &error);
            ucal_close(calendar);
        }
        uenum_close(zones);
        benchmark::DoNotOptimize(units);
    }
}

// Names of months and days, marks and number signs; formats and calendars it does not tell.
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
    // ICU first, so that neither pays for the loading of its data.
    benchmark::RegisterBenchmark("first opening, from the system/ICU", IcuFirst)
        ->Iterations(1)
        ->UseManualTime();
    benchmark::RegisterBenchmark("first opening, from the system/genutil", FirstOpening)
        ->Iterations(1)
        ->UseManualTime();
    benchmark::RegisterBenchmark("both catalogues, first/genutil", BuildCatalogues)->Iterations(1);
    benchmark::RegisterBenchmark("both catalogues, first/ICU", IcuCatalogues)->Iterations(1);
    benchmark::RegisterBenchmark("both catalogues, again/genutil", BuildCatalogues);
    benchmark::RegisterBenchmark("both catalogues, again/ICU", IcuCatalogues);
    benchmark::RegisterBenchmark("new object, facts and all texts again/genutil", OpenAgain);
    benchmark::RegisterBenchmark("new object, facts and all texts again/ICU", IcuFacts);
    benchmark::RegisterBenchmark("new object, facts and all texts again/std::locale",
                                 StandardFacts);
    benchmark::RegisterBenchmark("facts into an object again/genutil", FactsAgain);
    benchmark::RegisterBenchmark("facts into an object again/ICU", IcuFacts);
    benchmark::RegisterBenchmark("all texts of an object/genutil", TextsAgain);
    benchmark::RegisterBenchmark("all texts of an object/std::locale", StandardFacts);
    return 0;
}();

}  // namespace

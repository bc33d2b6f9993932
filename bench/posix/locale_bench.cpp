// ICU's calls for the facts of a locale.
#include "bench/locale_bench.h"

#include <unicode/ucal.h>
#include <unicode/ucurr.h>
#include <unicode/udat.h>
#include <unicode/uenum.h>
#include <unicode/uloc.h>
#include <unicode/unum.h>

namespace {

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

}  // namespace

void RegisterLocalePeers() {
    benchmark::RegisterBenchmark("first opening, from the system/ICU", IcuFirst)
        ->Iterations(1)
        ->UseManualTime();
    benchmark::RegisterBenchmark("both catalogues, first/ICU", IcuCatalogues)->Iterations(1);
    benchmark::RegisterBenchmark("both catalogues, again/ICU", IcuCatalogues);
    benchmark::RegisterBenchmark("new object, facts and all texts again/ICU", IcuFacts);
    benchmark::RegisterBenchmark("facts into an object again/ICU", IcuFacts);
}

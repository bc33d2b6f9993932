// GetLocaleInfo for the facts of a locale.
#include "bench/locale_bench.h"

#include <windows.h>

namespace {

// Identifiers of the locales in kNames. Any other locale has the facts of the user's, which cost
// the same.
LCID IdOf(const std::string& name) {
    constexpr LCID kIds[] = {0x0409, 0x0407, 0x040C, 0x0411, 0x0412,
                             0x0404, 0x041E, 0x0401, 0x0419, 0x0439};
    for (std::size_t i = 0; i < std::size(kNames); ++i)
        if (name == kNames[i]) return kIds[i];
    return LOCALE_USER_DEFAULT;
}

int ReadFacts(LCID id) {
    char text[128];
    int bytes = 0;
    const auto add = [&](LCTYPE first, LCTYPE count) {
        for (LCTYPE i = 0; i < count; ++i)
            bytes += GetLocaleInfoA(id, first + i, text, sizeof text);
    };
    add(LOCALE_SMONTHNAME1, 12), add(LOCALE_SABBREVMONTHNAME1, 12);
    add(LOCALE_SDAYNAME1, 7), add(LOCALE_SABBREVDAYNAME1, 7);
    for (const LCTYPE one :
         {LOCALE_SSHORTDATE, LOCALE_SLONGDATE, LOCALE_STIMEFORMAT, LOCALE_S1159, LOCALE_S2359,
          LOCALE_SDATE, LOCALE_STIME, LOCALE_SDECIMAL, LOCALE_STHOUSAND, LOCALE_SGROUPING,
          LOCALE_SNEGATIVESIGN, LOCALE_ICALENDARTYPE})
        add(one, 1);
    return bytes;
}

void Facts(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(ReadFacts(IdOf(NextName())));
}

}  // namespace

void RegisterLocalePeers() {
    benchmark::RegisterBenchmark("new object, facts and all texts again/GetLocaleInfo", Facts);
}

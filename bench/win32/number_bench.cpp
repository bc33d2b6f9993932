// GetNumberFormat and GetCurrencyFormat with the German format as a parameter.
#include "bench/number_bench.h"

#include <windows.h>

namespace {

char g_comma[] = ",", g_point[] = ".", g_euro[] = "EUR";

void ToRegionalByWindows(benchmark::State& state) {
    const NUMBERFMTA format = {3, 0, 3, g_comma, g_point, 1};
    char text[80];
    for (auto _ : state)
        benchmark::DoNotOptimize(GetNumberFormatA(0x0407, 0, Next(kC), &format, text, sizeof text));
}

void MoneyByWindows(benchmark::State& state) {
    const CURRENCYFMTA format = {2, 0, 3, g_comma, g_point, 8, 3, g_euro};
    char text[80], digits[80];
    for (auto _ : state) {
        const char* money = Next(kMoney);
        const std::size_t length = std::strlen(money) - 4;
        std::memcpy(digits, money, length);
        digits[length] = 0;
        benchmark::DoNotOptimize(GetCurrencyFormatA(0x0407, 0, digits, &format, text, sizeof text));
    }
}

BENCHMARK(ToRegionalByWindows)->Name("C to regional, grouped/GetNumberFormat");
BENCHMARK(MoneyByWindows)->Name("split and format money/GetCurrencyFormat");

}  // namespace

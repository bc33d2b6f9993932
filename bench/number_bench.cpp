// Decimal text converted to a locale's spelling and back, and amounts of money, compared with
// std::locale and with a hand-written loop over the digits for one locale.
#include "bench/number_bench.h"

#include <iterator>
#include <locale>
#include <sstream>
#include <string>

#include "gennum.h"

namespace {

void UseGerman() {
    CLCGlobalLocale::Instance()->SetLocale("de_DE");
}

// -- The library ---------------------------------------------------------------------------------

void ToRegional(benchmark::State& state) {
    UseGerman();
    CGNDecimal number;
    for (auto _ : state) {
        number.SetRawBuffer(Next(kC));
        benchmark::DoNotOptimize(number.ConvertToRegionalLocale(1));
    }
}

void ToC(benchmark::State& state) {
    UseGerman();
    CGNDecimal number;
    for (auto _ : state) {
        number.SetRawBuffer(Next(kGerman));
        benchmark::DoNotOptimize(number.ConvertToCLocale(1));
    }
}

void ThereAndBack(benchmark::State& state) {
    UseGerman();
    CGNDecimal number;
    CGNString regional;
    regional.AllocateBuffer(100);
    for (auto _ : state) {
        number.SetRawBuffer(Next(kC));
        number.ConvertToRegionalLocale(1);
        number.GetDisplayBuffer(regional);
        number.SetRawBuffer(regional);
        benchmark::DoNotOptimize(number.ConvertToCLocale(1));
    }
}

void Valid(benchmark::State& state) {
    UseGerman();
    for (auto _ : state) benchmark::DoNotOptimize(CGNDecimal::IsValid(Next(kGerman)));
}

void Money(benchmark::State& state) {
    UseGerman();
    CGNCurrency money;
    CGNString texts[std::size(kMoney)];
    for (std::size_t i = 0; i < std::size(kMoney); ++i) texts[i] = kMoney[i];
    std::size_t next = 0;
    for (auto _ : state) {
        money.SetBuffer(texts[next++ % std::size(kMoney)]);
        benchmark::DoNotOptimize(money.FormatCurrencyToRegional(1));
    }
}

// -- By hand, for German alone -------------------------------------------------------------------

std::size_t GroupByHand(const char* text, char* out) {
    char* to = out;
    if (*text == '-') *to++ = *text++;
    const std::size_t length = std::strcspn(text, ".");
    for (std::size_t i = 0; i < length; ++i) {
        *to++ = text[i];
        const std::size_t left = length - i - 1;
        if (left != 0 && left % 3 == 0) *to++ = '.';
    }
    text += length;
    if (*text) {
        *to++ = ',';
        while (*++text) *to++ = *text;
    }
    *to = 0;
    return static_cast<std::size_t>(to - out);
}

std::size_t UngroupByHand(const char* text, char* out) {
    char* to = out;
    for (; *text; ++text) {
        if (*text == ',')
            *to++ = '.';
        else if (*text != '.')
            *to++ = *text;
    }
    *to = 0;
    return static_cast<std::size_t>(to - out);
}

// The value contains two texts, like that of the library.
void ToRegionalByHand(benchmark::State& state) {
    std::string raw, display(64, 0);
    char out[64];
    for (auto _ : state) {
        raw = Next(kC);
        display.assign(out, GroupByHand(raw.c_str(), out));
        benchmark::DoNotOptimize(display.data());
    }
}

void ToCByHand(benchmark::State& state) {
    std::string raw, display(64, 0);
    char out[64];
    for (auto _ : state) {
        raw = Next(kGerman);
        display.assign(out, UngroupByHand(raw.c_str(), out));
        benchmark::DoNotOptimize(display.data());
    }
}

void ThereAndBackByHand(benchmark::State& state) {
    std::string raw, regional, display(64, 0);
    char out[64];
    for (auto _ : state) {
        raw = Next(kC);
        regional.assign(out, GroupByHand(raw.c_str(), out));
        raw = regional;
        display.assign(out, UngroupByHand(raw.c_str(), out));
        benchmark::DoNotOptimize(display.data());
    }
}

// -- std::locale ---------------------------------------------------------------------------------

struct GermanNumbers : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};
struct GermanMoney : std::moneypunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
    std::string do_curr_symbol() const override { return "EUR"; }
    int do_frac_digits() const override { return 2; }
};

// Streams cannot convert decimal text directly, so a binary number is used in between.
void ThereAndBackStreams(benchmark::State& state) {
    std::stringstream stream;
    stream.imbue(std::locale(std::locale::classic(), new GermanNumbers));
    stream.precision(17);
    for (auto _ : state) {
        double value = std::strtod(Next(kC), nullptr);
        stream.str({});
        stream.clear();
        stream << value;
        stream >> value;
        benchmark::DoNotOptimize(value);
    }
}

// The input is digits of the smallest unit.
void MoneyPut(benchmark::State& state) {
    const std::locale locale(std::locale::classic(), new GermanMoney);
    const auto& put = std::use_facet<std::money_put<char>>(locale);
    std::ostringstream stream;
    stream.imbue(locale);
    stream.setf(std::ios::showbase);
    std::string digits;
    for (auto _ : state) {
        digits.clear();
        for (const char* p = Next(kMoney); *p != ' '; ++p)
            if (*p != '.') digits += *p;
        stream.str({});
        put.put(stream, false, stream, ' ', digits);
        benchmark::DoNotOptimize(stream);
    }
}

const int kRegistered = [] {
    benchmark::RegisterBenchmark("C to regional, grouped/genutil", ToRegional);
    benchmark::RegisterBenchmark("C to regional, grouped/by hand", ToRegionalByHand);
    benchmark::RegisterBenchmark("regional to C/genutil", ToC);
    benchmark::RegisterBenchmark("regional to C/by hand", ToCByHand);
    benchmark::RegisterBenchmark("there and back/genutil", ThereAndBack);
    benchmark::RegisterBenchmark("there and back/by hand", ThereAndBackByHand);
    benchmark::RegisterBenchmark("there and back/std::locale", ThereAndBackStreams);
    benchmark::RegisterBenchmark("validity/genutil", Valid);
    benchmark::RegisterBenchmark("split and format money/genutil", Money);
    benchmark::RegisterBenchmark("split and format money/put_money", MoneyPut);
    return 0;
}();

}  // namespace

// Decimal text into a locale's spelling and back, and amounts of money, beside ICU's formatters
// (opened once, decimal text in and out), std::locale, and a loop over the digits written by hand
// for one locale.
#include <benchmark/benchmark.h>
#include <unicode/decimfmt.h>
#include <unicode/numberformatter.h>
#include <unicode/unum.h>
#include <unicode/ustring.h>

#include <cstring>
#include <iterator>
#include <locale>
#include <memory>
#include <sstream>
#include <string>

#include "gennum.h"

namespace {

// In the C spelling and in German.
constexpr const char* kC[] = {"1234567.891", "-98765.43", "12.5",
                              "1000000",     "-0.125",    "123456789012.25"};
constexpr const char* kGerman[] = {"1.234.567,891", "-98.765,43", "12,5",
                                   "1.000.000",     "-0,125",     "123.456.789.012,25"};
constexpr const char* kMoney[] = {"1234567.89 EUR", "-98765.43 EUR", "12.50 EUR",
                                  "1000000 EUR",    "0.25 EUR",      "123456789012.25 EUR"};

// The next of six texts, so that no branch is learned by heart.
template <std::size_t n>
const char* Next(const char* const (&texts)[n]) {
    static std::size_t next = 0;
    return texts[next++ % n];
}

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

// The value holds two texts, as that of the library does.
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

// -- ICU -----------------------------------------------------------------------------------------

struct Icu {
    UErrorCode error = U_ZERO_ERROR;
    icu::number::LocalizedNumberFormatter formatter =
        icu::number::NumberFormatter::withLocale(icu::Locale::getGermany())
            .precision(icu::number::Precision::unlimited());
    std::unique_ptr<icu::DecimalFormat> format{static_cast<icu::DecimalFormat*>(
        icu::NumberFormat::createInstance(icu::Locale::getGermany(), error))};
    UNumberFormat* c = unum_open(UNUM_DECIMAL, nullptr, 0, "de_DE", nullptr, &error);
    Icu() {
        format->setMaximumFractionDigits(100);
        unum_setAttribute(c, UNUM_MAX_FRACTION_DIGITS, 100);
    }
    ~Icu() { unum_close(c); }

    void Format(const char* text, std::string& out) {
        out.clear();
        formatter.formatDecimal(text, error).toString(error).toUTF8String(out);
    }
    void FormatDecimalFormat(const char* text, std::string& out) {
        icu::UnicodeString formatted;
        out.clear();
        format->format(icu::StringPiece(text), formatted, nullptr, error).toUTF8String(out);
    }
    void FormatC(const char* text, std::string& out) {
        UChar formatted[80];
        const std::int32_t n = unum_formatDecimal(c, text, -1, formatted, 80, nullptr, &error);
        out.clear();
        icu::UnicodeString(formatted, n).toUTF8String(out);
    }
    bool Parse(const char* text, std::string& out) {
        icu::Formattable value;
        UErrorCode status = U_ZERO_ERROR;
        format->parse(icu::UnicodeString::fromUTF8(text), value, status);
        const icu::StringPiece number = value.getDecimalNumber(status);
        if (U_FAILURE(status)) return false;
        out.assign(number.data(), static_cast<std::size_t>(number.length()));
        return true;
    }
    void ParseC(const char* text, std::string& out) {
        UChar wide[80];
        std::int32_t length = 0, position = 0;
        u_strFromUTF8(wide, 80, &length, text, -1, &error);
        char number[80];
        const std::int32_t n = unum_parseDecimal(c, wide, length, &position, number, 80, &error);
        out.assign(number, static_cast<std::size_t>(n));
    }
};

template <class Work>
void WithIcu(benchmark::State& state, Work work) {
    Icu icu;
    std::string out;
    for (auto _ : state) {
        work(icu, out);
        benchmark::DoNotOptimize(out.data());
    }
    if (U_FAILURE(icu.error)) state.SkipWithError(u_errorName(icu.error));
}

void ToRegionalFormatter(benchmark::State& state) {
    WithIcu(state, [](Icu& icu, std::string& out) { icu.Format(Next(kC), out); });
}
void ToRegionalDecimalFormat(benchmark::State& state) {
    WithIcu(state, [](Icu& icu, std::string& out) { icu.FormatDecimalFormat(Next(kC), out); });
}
void ToRegionalUnum(benchmark::State& state) {
    WithIcu(state, [](Icu& icu, std::string& out) { icu.FormatC(Next(kC), out); });
}
void ToCDecimalFormat(benchmark::State& state) {
    WithIcu(state, [](Icu& icu, std::string& out) { icu.Parse(Next(kGerman), out); });
}
void ToCUnum(benchmark::State& state) {
    WithIcu(state, [](Icu& icu, std::string& out) { icu.ParseC(Next(kGerman), out); });
}
void ThereAndBackIcu(benchmark::State& state) {
    WithIcu(state, [](Icu& icu, std::string& out) {
        std::string regional;
        icu.Format(Next(kC), regional);
        icu.Parse(regional.c_str(), out);
    });
}
void ValidIcu(benchmark::State& state) {
    WithIcu(state, [](Icu& icu, std::string& out) {
        benchmark::DoNotOptimize(icu.Parse(Next(kGerman), out));
    });
}
void MoneyIcu(benchmark::State& state) {
    UErrorCode error = U_ZERO_ERROR;
    const auto formatter = icu::number::NumberFormatter::withLocale(icu::Locale::getGermany())
                               .precision(icu::number::Precision::unlimited());
    std::string out;
    for (auto _ : state) {
        const char* text = Next(kMoney);
        const auto length = static_cast<std::int32_t>(std::strlen(text)) - 4;
        const icu::CurrencyUnit unit(icu::StringPiece(text + length + 1, 3), error);
        out.clear();
        formatter.unit(unit)
            .unitWidth(UNUM_UNIT_WIDTH_ISO_CODE)
            .formatDecimal(icu::StringPiece(text, length), error)
            .toString(error)
            .toUTF8String(out);
        benchmark::DoNotOptimize(out.data());
    }
    if (U_FAILURE(error)) state.SkipWithError(u_errorName(error));
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

// Streams have no decimal text of numbers: a binary number on the way.
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

// It takes digits of the smallest unit.
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
    const auto add = [](const char* name, void (*run)(benchmark::State&)) {
        benchmark::RegisterBenchmark(name, run);
    };
    add("C to regional, grouped/genutil", ToRegional);
    add("C to regional, grouped/by hand", ToRegionalByHand);
    add("C to regional, grouped/NumberFormatter", ToRegionalFormatter);
    add("C to regional, grouped/DecimalFormat", ToRegionalDecimalFormat);
    add("C to regional, grouped/unum", ToRegionalUnum);
    add("regional to C/genutil", ToC);
    add("regional to C/by hand", ToCByHand);
    add("regional to C/DecimalFormat", ToCDecimalFormat);
    add("regional to C/unum", ToCUnum);
    add("there and back/genutil", ThereAndBack);
    add("there and back/by hand", ThereAndBackByHand);
    add("there and back/ICU", ThereAndBackIcu);
    add("there and back/std::locale", ThereAndBackStreams);
    add("validity/genutil", Valid);
    add("validity/ICU", ValidIcu);
    add("split and format money/genutil", Money);
    add("split and format money/ICU", MoneyIcu);
    add("split and format money/put_money", MoneyPut);
    return 0;
}();

}  // namespace

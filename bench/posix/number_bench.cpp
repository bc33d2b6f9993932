// ICU's formatters, opened once, with decimal text as input and output.
#include "bench/number_bench.h"

#include <unicode/decimfmt.h>
#include <unicode/numberformatter.h>
#include <unicode/unum.h>
#include <unicode/ustring.h>

#include <memory>
#include <string>

namespace {

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

const int kRegistered = [] {
    benchmark::RegisterBenchmark("C to regional, grouped/NumberFormatter", ToRegionalFormatter);
    benchmark::RegisterBenchmark("C to regional, grouped/DecimalFormat", ToRegionalDecimalFormat);
    benchmark::RegisterBenchmark("C to regional, grouped/unum", ToRegionalUnum);
    benchmark::RegisterBenchmark("regional to C/DecimalFormat", ToCDecimalFormat);
    benchmark::RegisterBenchmark("regional to C/unum", ToCUnum);
    benchmark::RegisterBenchmark("there and back/ICU", ThereAndBackIcu);
    benchmark::RegisterBenchmark("validity/ICU", ValidIcu);
    benchmark::RegisterBenchmark("split and format money/ICU", MoneyIcu);
    return 0;
}();

}  // namespace

// Conversion to and from Unicode beside ICU and the C library's iconv, each with a converter that
// is opened once. The text is that of the Japanese manual pages of this machine.
#include <benchmark/benchmark.h>
#include <iconv.h>
#include <unicode/ucnv.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/support/pages.h"
#include "mbutil.h"

namespace {

struct Encoding {
    int codeSet;
    const char* iconvName;
    const char* icuName;
};
constexpr Encoding kShiftJis = {mbShiftJis, "CP932", "ibm-943_P15A-2003"};
constexpr Encoding kEucJp = {mbEucJp, "EUC-JP-MS", "EUC-JP"};
constexpr Encoding kBig5 = {mbBig5, "CP950", "windows-950-2000"};
constexpr Encoding kKorean = {mbKorean, "CP949", "windows-949-2000"};
constexpr Encoding kLatin2 = {mb8859_2, "ISO-8859-2", "ISO-8859-2"};
constexpr Encoding k1250 = {mbWindows1250, "CP1250", "ibm-5346_P100-1998"};
constexpr Encoding kUtf8 = {mbUtf8, "UTF-8", "UTF-8"};
constexpr Encoding kUtf16 = {mbUtf16, "UTF-16LE", "UTF-16LE"};

std::string Convert(const std::string& text, int from, int to) {
    char* out = nullptr;
    mbConversion done = {nullptr, 0, 0, 0, 0};
    if (!mbConvertAlloc(text.data(), text.size(), from, &out, to, &done)) std::exit(1);
    std::string result(out, done.produced);
    std::free(out);
    return result;
}

// Without what the encoding lacks, so that no converter stops.
std::string TextIn(const Encoding& encoding, const std::string& utf8) {
    std::string kept;
    for (std::size_t i = 0; i < utf8.size();) {
        std::size_t end = i + 1;
        while (end < utf8.size() && (static_cast<unsigned char>(utf8[end]) & 0xC0) == 0x80) ++end;
        char out[16];
        mbConversion done = {nullptr, 0, 0, 0, 0};
        mbConvert(utf8.data() + i, end - i, mbUtf8, out, sizeof out, encoding.codeSet, &done);
        if (done.lost == 0) kept.append(out, done.produced);
        i = end;
    }
    return kept;
}

const std::string& Pages() {
    static const std::string pages = PagesIn("UTF-8").substr(0, 4000000);
    return pages;
}

// Korean syllables and Central European letters in place of the kana and kanji, so that lengths of
// runs and the share of ASCII are those of real text.
std::string Spread(unsigned first, unsigned count) {
    std::string out;
    for (std::size_t i = 0; i < Pages().size();) {
        const unsigned lead = static_cast<unsigned char>(Pages()[i]);
        if (lead < 0x80) {
            out += Pages()[i++];
            continue;
        }
        const unsigned c =
            first + (lead * 64 + static_cast<unsigned char>(Pages()[i + 1]) * 7 +
                     static_cast<unsigned char>(Pages()[i + 2 < Pages().size() ? i + 2 : i])) %
                        count;
        if (c >= 0x800) out += static_cast<char>(0xE0 | c >> 12);
        out += static_cast<char>(c >= 0x800 ? 0x80 | (c >> 6 & 0x3F) : 0xC0 | c >> 6);
        out += static_cast<char>(0x80 | (c & 0x3F));
        i += lead >= 0xE0 ? 3 : 2;
    }
    return out;
}

void Count(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

void Genutil(benchmark::State& state, const std::string& text, const Encoding& from,
             const Encoding& to) {
    std::string out(mbConvertBound(text.size(), from.codeSet, to.codeSet), '\0');
    for (auto _ : state) {
        if (!mbConvert(text.data(), text.size(), from.codeSet, out.data(), out.size(), to.codeSet,
                       nullptr))
            state.SkipWithError("not converted");
        benchmark::DoNotOptimize(out.data());
    }
    Count(state, text.size());
}

void ByIconv(benchmark::State& state, const std::string& text, const Encoding& from,
             const Encoding& to) {
    std::string out(text.size() * 4 + 16, '\0');
    const iconv_t handle = iconv_open(to.iconvName, from.iconvName);
    std::string source = text;
    for (auto _ : state) {
        char *in = source.data(), *dst = out.data();
        std::size_t left = source.size(), room = out.size();
        iconv(handle, nullptr, nullptr, nullptr, nullptr);
        if (iconv(handle, &in, &left, &dst, &room) == static_cast<std::size_t>(-1))
            state.SkipWithError("not converted");
        benchmark::DoNotOptimize(out.data());
    }
    iconv_close(handle);
    Count(state, text.size());
}

void Icu(benchmark::State& state, const std::string& text, const Encoding& from,
         const Encoding& to) {
    UErrorCode error = U_ZERO_ERROR;
    UConverter* source = ucnv_open(from.icuName, &error);
    UConverter* target = ucnv_open(to.icuName, &error);
    std::string out(text.size() * 4 + 16, '\0');
    UChar* const units = reinterpret_cast<UChar*>(out.data());
    for (auto _ : state) {
        error = U_ZERO_ERROR;
        if (to.codeSet == mbUtf16) {
            ucnv_toUChars(source, units, static_cast<int32_t>(out.size() / 2), text.data(),
                          static_cast<int32_t>(text.size()), &error);
        } else if (from.codeSet == mbUtf16) {
            ucnv_fromUChars(target, out.data(), static_cast<int32_t>(out.size()),
                            reinterpret_cast<const UChar*>(text.data()),
                            static_cast<int32_t>(text.size() / 2), &error);
        } else {
            char* dst = out.data();
            const char* in = text.data();
            ucnv_convertEx(target, source, &dst, dst + out.size(), &in, in + text.size(), nullptr,
                           nullptr, nullptr, nullptr, true, true, &error);
        }
        if (U_FAILURE(error)) state.SkipWithError(u_errorName(error));
        benchmark::DoNotOptimize(out.data());
    }
    ucnv_close(source);
    ucnv_close(target);
    Count(state, text.size());
}

void Register(const std::string& name, const std::string& text, const Encoding& from,
              const Encoding& to) {
    static constexpr struct {
        const char* who;
        void (*run)(benchmark::State&, const std::string&, const Encoding&, const Encoding&);
    } kWho[] = {{"/genutil", Genutil}, {"/icu", Icu}, {"/iconv", ByIconv}};
    for (const auto& one : kWho)
        benchmark::RegisterBenchmark((name + one.who).c_str(), [=](benchmark::State& state) {
            one.run(state, text, from, to);
        });
}

void RegisterPair(const std::string& name, const std::string& text, const Encoding& from,
                  const Encoding& to) {
    Register(name, text, from, to);
    Register(name + ", back", Convert(text, from.codeSet, to.codeSet), to, from);
}

const int g_registered = [] {
    const std::string shiftJis = TextIn(kShiftJis, Pages());
    RegisterPair("Shift-JIS to UTF-16", shiftJis, kShiftJis, kUtf16);
    RegisterPair("Shift-JIS to UTF-8", shiftJis, kShiftJis, kUtf8);
    RegisterPair("EUC-JP to UTF-8", TextIn(kEucJp, Pages()), kEucJp, kUtf8);
    RegisterPair("Big5 to UTF-8", TextIn(kBig5, Pages()), kBig5, kUtf8);
    RegisterPair("Korean to UTF-8", TextIn(kKorean, Spread(0xAC00, 2000)), kKorean, kUtf8);
    const std::string latin = TextIn(kLatin2, Spread(0xC1, 0x40));
    RegisterPair("8859-2 to UTF-8", latin, kLatin2, kUtf8);
    RegisterPair("8859-2 to 1250", latin, kLatin2, k1250);
    const std::string name =
        "\x93\xFA\x96{\x8C\xEA\x82\xCC\x83t\x83@\x83"
        "C\x83\x8B\x96\xBC 2026-11-21-2.txt";
    RegisterPair("name, Shift-JIS to UTF-16", name, kShiftJis, kUtf16);
    RegisterPair("name, Shift-JIS to UTF-8", name, kShiftJis, kUtf8);
    return 0;
}();

}  // namespace

// Conversion to and from Unicode. The text is that of the Japanese manual pages.
#include "bench/unicode_bench.h"

#include <algorithm>

#include "bench/support/pages.h"
#include "mbutil.h"

namespace {

constexpr Encoding kShiftJis = {mbShiftJis, "CP932", "ibm-943_P15A-2003", 932};
constexpr Encoding kEucJp = {mbEucJp, "EUC-JP-MS", "EUC-JP", 20932};
constexpr Encoding kJis = {mbJis, "ISO-2022-JP", "ISO-2022-JP", 50220};
constexpr Encoding kBig5 = {mbBig5, "CP950", "windows-950-2000", 950};
constexpr Encoding kKorean = {mbKorean, "CP949", "windows-949-2000", 949};
constexpr Encoding kLatin2 = {mb8859_2, "ISO-8859-2", "ISO-8859-2", 28592};
constexpr Encoding k1250 = {mbWindows1250, "CP1250", "ibm-5346_P100-1998", 1250};
constexpr Encoding kUtf8 = {mbUtf8, "UTF-8", "UTF-8", 65001};
constexpr Encoding kUtf16 = {mbUtf16, "UTF-16LE", "UTF-16LE", 1200};

// Omits characters that the encoding lacks, so that no converter stops.
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

// Korean syllables and Central European letters in place of the kana and kanji, so that the lengths
// of runs and the share of ASCII are those of real text.
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

void Genutil(benchmark::State& state, const std::string& text, const Encoding& from,
             const Encoding& to) {
    std::string out(mbConvertBound(text.size(), from.codeSet, to.codeSet), '\0');
    for (auto _ : state) {
        if (!mbConvert(text.data(), text.size(), from.codeSet, out.data(), out.size(), to.codeSet,
                       nullptr))
            state.SkipWithError("not converted");
        benchmark::DoNotOptimize(out.data());
    }
}

// Reads and writes blocks as of a file.
void InPieces(benchmark::State& state, const std::string& text, const Encoding& from,
              const Encoding& to) {
    constexpr std::size_t kPiece = 1 << 16;
    std::string out(4 * kPiece, '\0');
    mbConverter* const converter = mbOpenConverter(from.codeSet, to.codeSet, 0);
    for (auto _ : state) {
        for (std::size_t at = 0; at < text.size(); at += kPiece) {
            const char* src = text.data() + at;
            std::size_t left = std::min(kPiece, text.size() - at), room = out.size();
            const bool last = at + left == text.size();
            char* dst = out.data();
            if (mbConvertNext(converter, &src, &left, &dst, &room, last, nullptr) != mbNextDone)
                state.SkipWithError("not converted");
            benchmark::DoNotOptimize(out.data());
        }
    }
    mbCloseConverter(converter);
}

void RegisterPieces(const std::string& name, const std::string& text, const Encoding& from,
                    const Encoding& to) {
    const auto add = [&](const char* who, Conversion* run) {
        benchmark::RegisterBenchmark((name + ", in pieces" + who).c_str(),
                                     [=](benchmark::State& state) { run(state, text, from, to); });
    };
    add("/genutil", InPieces);
    add("/one call", Genutil);
}

void Register(const std::string& name, const std::string& text, const Encoding& from,
              const Encoding& to) {
    const auto add = [&](const char* who, Conversion* run) {
        benchmark::RegisterBenchmark((name + who).c_str(), [=](benchmark::State& state) {
            run(state, text, from, to);
            state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
        });
    };
    add("/genutil", Genutil);
    for (std::size_t i = 0; i < kConversionPeerCount; ++i)
        add(kConversionPeers[i].who, kConversionPeers[i].run);
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
    RegisterPieces("Shift-JIS to UTF-16", shiftJis, kShiftJis, kUtf16);
    RegisterPieces("Shift-JIS to UTF-8", shiftJis, kShiftJis, kUtf8);
    RegisterPieces("UTF-8 to Shift-JIS", Convert(shiftJis, mbShiftJis, mbUtf8), kUtf8, kShiftJis);
    RegisterPieces("Shift-JIS to EUC-JP", shiftJis, kShiftJis, kEucJp);
    RegisterPieces("Shift-JIS to JIS", shiftJis, kShiftJis, kJis);
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

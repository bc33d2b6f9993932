// Japanese and Traditional Chinese: conversion beside iconv of the C library, detection beside
// uchardet. The text is that of the Japanese manual pages of this machine.
#include <benchmark/benchmark.h>
#include <iconv.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#ifdef HAVE_UCHARDET
#include <uchardet.h>
#endif

#include "bench/support/pages.h"
#include "mbutil.h"

namespace {

// The translated messages of a catalogue of gettext: N of {length, offset} at the offset in word 4.
std::string Messages(const std::string& catalogue) {
    const auto word = [&](std::size_t at) {
        std::uint32_t value = 0;
        if (at + 4 <= catalogue.size()) std::memcpy(&value, catalogue.data() + at, 4);
        return value;
    };
    std::string text;
    for (std::size_t i = 0; i < word(8); ++i) {
        const std::size_t entry = word(16) + 8 * i;
        if (word(entry + 4) <= catalogue.size())
            text += catalogue.substr(word(entry + 4), word(entry)) + '\n';
    }
    return text;
}

// What the programs of this machine say in Traditional Chinese.
const std::string& Big5Text() {
    static const std::string text = [] {
        const std::string paths = ReadCommand("ls /usr/share/locale/zh_TW/LC_MESSAGES/*.mo");
        std::string utf8;
        for (std::size_t at = 0, next; (next = paths.find('\n', at)) < paths.size(); at = next + 1)
            utf8 += Messages(ReadCommand(("cat " + paths.substr(at, next - at)).c_str()));
        return Iconv("BIG5", "EUC-TW", Iconv("EUC-TW", "UTF-8", utf8));
    }();
    return text;
}

struct Encoding {
    const char* name;
    const char* iconvName;
    int codeSet;
};
constexpr Encoding kJis{"jis", "ISO-2022-JP", mbJis};
constexpr Encoding kEuc{"euc-jp", "EUC-JP", mbEucJp};
constexpr Encoding kShiftJis{"shift-jis", "SHIFT_JIS", mbShiftJis};
constexpr Encoding kBig5{"big5", "BIG5", mbBig5};
constexpr Encoding kEucTw{"euc-tw", "EUC-TW", mbEucTw};

std::string TextIn(const Encoding& encoding) {
    if (encoding.codeSet == mbBig5) return Big5Text();
    if (encoding.codeSet == mbEucTw) return Iconv("EUC-TW", "BIG5", Big5Text());
    return PagesIn(encoding.iconvName);
}

void ConvertByGenutil(benchmark::State& state, Encoding from, Encoding to) {
    const std::string text = TextIn(from);
    std::vector<char> out(mbConvertBound(text.size(), from.codeSet, to.codeSet));
    mbConversion done{};
    for (auto _ : state) {
        mbConvert(text.data(), text.size(), from.codeSet, out.data(), out.size(), to.codeSet,
                  &done);
        benchmark::ClobberMemory();
    }
    if (done.consumed != text.size()) state.SkipWithError("not all was converted");
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void ConvertByIconv(benchmark::State& state, Encoding from, Encoding to) {
    std::string text = TextIn(from);
    std::vector<char> out(text.size() * 5);
    const iconv_t handle = iconv_open(to.iconvName, from.iconvName);
    std::size_t left = 1;
    for (auto _ : state) {
        char *in = text.data(), *dst = out.data();
        std::size_t room = out.size();
        left = text.size();
        iconv(handle, nullptr, nullptr, nullptr, nullptr);
        iconv(handle, &in, &left, &dst, &room);
        benchmark::ClobberMemory();
    }
    iconv_close(handle);
    if (left != 0) state.SkipWithError("iconv stopped");
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void RegisterConversion(const Encoding& from, const Encoding& to) {
    const std::string name = std::string(from.name) + " to " + to.name;
    benchmark::RegisterBenchmark((name + "/genutil").c_str(), ConvertByGenutil, from, to);
    benchmark::RegisterBenchmark((name + "/iconv").c_str(), ConvertByIconv, from, to);
}

#ifdef HAVE_UCHARDET
// 0 nothing, else a code set of Japanese text as mbDetectJapanese names it; -1 for any other.
int DetectByUchardet(const char* text, std::size_t n) {
    const uchardet_t handle = uchardet_new();
    uchardet_handle_data(handle, text, n);
    uchardet_data_end(handle);
    const std::string name = uchardet_get_charset(handle);
    uchardet_delete(handle);
    if (name == "ISO-2022-JP") return mbJis;
    if (name == "EUC-JP") return mbEucJp;
    if (name == "SHIFT_JIS") return mbShiftJis;
    return name.empty() || name == "ASCII" ? 0 : -1;
}
#endif

int DetectByGenutil(const char* text, std::size_t n) {
    return mbDetectJapanese(text, n, nullptr);
}

// From the first kanji on: what comes before is ASCII, which nobody has to guess.
std::string Beginning(const Encoding& encoding, std::size_t n) {
    const std::string text = TextIn(encoding);
    const auto first = std::find_if(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) >= 0x80 || c == 0x1B;
    });
    return text.substr(static_cast<std::size_t>(first - text.begin()), n);
}

void Detect(benchmark::State& state, Encoding encoding, std::size_t n,
            int (*detect)(const char*, std::size_t)) {
    const std::string text = Beginning(encoding, n);
    for (auto _ : state) benchmark::DoNotOptimize(detect(text.data(), text.size()));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

// What nothing decides has to be read to the end: ASCII, and with a few words in kana in it.
void DetectUndecided(benchmark::State& state, const char* line,
                     int (*detect)(const char*, std::size_t)) {
    std::string text;
    while (text.size() < 1000000) text += line;
    for (auto _ : state) benchmark::DoNotOptimize(detect(text.data(), text.size()));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void RegisterDetection(const std::string& who, int (*detect)(const char*, std::size_t)) {
    for (const Encoding& encoding : {kJis, kEuc, kShiftJis})
        for (const std::size_t n : {200, 1000000}) {
            const std::string name =
                "detect " + std::string(encoding.name) + " " + std::to_string(n);
            benchmark::RegisterBenchmark((name + "/" + who).c_str(), Detect, encoding, n, detect);
        }
    const char* const ascii = "    if (result == 0) return;  // nothing was found, so stop here\n";
    const char* const kana =
        "    if (result == 0) return;  // \xA4\xAB\xA4\xCA\xA4\xAB\xA4\xCA, stop here\n";
    benchmark::RegisterBenchmark(("detect ascii 1000000/" + who).c_str(), DetectUndecided, ascii,
                                 detect);
    benchmark::RegisterBenchmark(("detect undecided 1000000/" + who).c_str(), DetectUndecided, kana,
                                 detect);
}

// Right answers on 20 bytes from the first kanji or kana of each line on, a character cut at the
// end as the case may be.
void CountRightAnswers(const char* who, int (*detect)(const char*, std::size_t)) {
    constexpr std::size_t kSlice = 20;
    for (const Encoding& encoding : {kEuc, kShiftJis}) {
        const std::string text = TextIn(encoding);
        int right = 0, undecided = 0, all = 0;
        for (std::size_t i = 0; i + kSlice <= text.size(); ++i) {
            if (static_cast<unsigned char>(text[i]) < 0x80) continue;
            const int answer = detect(text.data() + i, kSlice);
            ++all;
            right += answer == encoding.codeSet;
            undecided += answer == 6;
            i = std::min(text.find('\n', i), text.size());
        }
        std::printf("%-10s %-10s %6d slices: %5.1f %% right, %5.1f %% undecided\n", who,
                    encoding.name, all, 100.0 * right / all, 100.0 * undecided / all);
    }
}

const int g_registered = [] {
    RegisterConversion(kEuc, kShiftJis);
    RegisterConversion(kShiftJis, kEuc);
    RegisterConversion(kJis, kShiftJis);
    RegisterConversion(kShiftJis, kJis);
    RegisterConversion(kJis, kEuc);
    RegisterConversion(kEuc, kJis);
    RegisterConversion(kBig5, kEucTw);
    RegisterConversion(kEucTw, kBig5);
    RegisterDetection("genutil", DetectByGenutil);
#ifdef HAVE_UCHARDET
    RegisterDetection("uchardet", DetectByUchardet);
#endif
    CountRightAnswers("genutil", DetectByGenutil);
#ifdef HAVE_UCHARDET
    CountRightAnswers("uchardet", DetectByUchardet);
#endif
    return 0;
}();

}  // namespace

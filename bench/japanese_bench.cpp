// Japanese and Traditional Chinese: conversion and detection. The texts are the Japanese manual
// pages, and messages in Traditional Chinese.
#include "bench/japanese_bench.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "bench/support/pages.h"
#include "mbutil.h"

namespace {

constexpr Encoding kJis{"jis", "ISO-2022-JP", mbJis, 50220};
constexpr Encoding kEuc{"euc-jp", "EUC-JP", mbEucJp, 20932};
constexpr Encoding kShiftJis{"shift-jis", "SHIFT_JIS", mbShiftJis, 932};
constexpr Encoding kBig5{"big5", "BIG5", mbBig5, 950};
constexpr Encoding kEucTw{"euc-tw", "EUC-TW", mbEucTw, 51950};

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

void RegisterConversion(const Encoding& from, const Encoding& to) {
    const std::string name = std::string(from.name) + " to " + to.name;
    benchmark::RegisterBenchmark((name + "/genutil").c_str(), ConvertByGenutil, from, to);
    RegisterConversionPeers(name, from, to);
}

int DetectByGenutil(const char* text, std::size_t n) {
    return mbDetectJapanese(text, n, nullptr);
}

// Returns n bytes from the first kanji on, because the ASCII before it needs no detection.
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

// Text that does not determine the encoding must be read to its end: ASCII, and ASCII with a few
// words in kana.
void DetectUndecided(benchmark::State& state, const char* line,
                     int (*detect)(const char*, std::size_t)) {
    std::string text;
    while (text.size() < 1000000) text += line;
    for (auto _ : state) benchmark::DoNotOptimize(detect(text.data(), text.size()));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
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
    CountRightAnswers("genutil", DetectByGenutil);
    RegisterDetectionPeers();
    return 0;
}();

}  // namespace

std::string TextIn(const Encoding& encoding) {
    if (encoding.codeSet == mbBig5 || encoding.codeSet == mbEucTw)
        return MessagesIn(encoding.iconvName);
    return PagesIn(encoding.iconvName);
}

void RegisterDetection(const std::string& who, Detector* detect) {
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

void CountRightAnswers(const char* who, Detector* detect) {
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

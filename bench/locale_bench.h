// Declarations shared by locale_bench.cpp and the peers on each system.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <string>

#include "mbutil.h"

constexpr const char* kNames[] = {"en_US", "de_DE", "fr_FR", "ja_JP", "ko_KR",
                                  "zh_TW", "th_TH", "ar_SA", "ru_RU", "hi_IN"};

// Returns the next of several locales, so that no single one stays in a cache.
inline const char* NextName() {
    static std::size_t next = 0;
    return kNames[next++ % std::size(kNames)];
}

// Every locale of the library that no other benchmark here opens, once each.
template <class Read>
void OnceEach(benchmark::State& state, Read read) {
    for (auto _ : state) {
        char name[16];
        int row = -1, number = -1, locales = 0;
        const auto start = std::chrono::steady_clock::now();
        for (; mbGetNextLocaleEx(name, sizeof name, &row, &number, mbSelectAll); ++locales)
            if (std::find(std::begin(kNames), std::end(kNames), std::string(name)) ==
                std::end(kNames))
                read(name);
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(time.count() / locales);
    }
}

// For each system. Must precede the library's cases, so that these do not include the loading of
// data.
void RegisterLocalePeers();

// Declarations shared by unicode_bench.cpp and the peers on each system.
#pragma once

#include <benchmark/benchmark.h>

#include <string>

#include "mbutil.h"

struct Encoding {
    int codeSet;
    const char* iconvName;
    const char* icuName;
    unsigned windowsPage;
};
// Converts the whole text in each iteration.
using Conversion = void(benchmark::State& state, const std::string& text, const Encoding& from,
                        const Encoding& to);

struct ConversionPeer {
    const char* who;
    Conversion* run;
};
extern const ConversionPeer kConversionPeers[];
extern const std::size_t kConversionPeerCount;

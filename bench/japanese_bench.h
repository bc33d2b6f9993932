// What the peers on each system share with japanese_bench.cpp.
#pragma once

#include <benchmark/benchmark.h>

#include <string>

#include "mbutil.h"

struct Encoding {
    const char* name;
    const char* iconvName;
    int codeSet;
    unsigned windowsPage;
};
std::string TextIn(const Encoding& encoding);

// 0 nothing, else a code set of Japanese text as mbDetectJapanese names it; -1 for any other.
using Detector = int(const char* text, std::size_t n);

void RegisterDetection(const std::string& who, Detector* detect);

// Right answers on 20 bytes from the first kanji or kana of each line on, a character cut at the
// end as the case may be.
void CountRightAnswers(const char* who, Detector* detect);

// Of each system.
void RegisterConversionPeers(const std::string& name, const Encoding& from, const Encoding& to);
void RegisterDetectionPeers();

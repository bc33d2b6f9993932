// Declarations shared by japanese_bench.cpp and the peers on each system.
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

// Returns 0 for no result, a code set of Japanese text as in mbDetectJapanese(), or -1 for any
// other.
using Detector = int(const char* text, std::size_t n);

void RegisterDetection(const std::string& who, Detector* detect);

// Counts right answers for 20 bytes from the first kanji or kana of each line on. The last
// character may be incomplete.
void CountRightAnswers(const char* who, Detector* detect);

// For each system.
void RegisterConversionPeers(const std::string& name, const Encoding& from, const Encoding& to);
void RegisterDetectionPeers();

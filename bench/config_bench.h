// Declarations shared by config_bench.cpp and the peers on each system.
#pragma once

#include <benchmark/benchmark.h>

#include <string>

constexpr int kFiles = 24, kSections = 50, kKeys = 100;
constexpr int kValues = 1000;

inline std::string FileName(int number) {
    return "./config_bench." + std::to_string(number) + ".ini";
}

// Alternates between the text in the middle and the one at the end.
inline const char* SectionOf(int turn) {
    return turn % 2 ? "section 25" : "section 49";
}

inline std::string ValueName(int number) {
    return "Value" + std::to_string(number);
}

template <class Function, class... Arguments>
void Register(const char* name, Function function, Arguments... arguments) {
    benchmark::RegisterBenchmark(name, function, arguments...)->UseRealTime();
}

// For each system: a registry of the program's own, if possible, and the peers.
void PrepareRegistry();
void RegisterPeers();

// What the peers on each system share with config_bench.cpp.
#pragma once

#include <benchmark/benchmark.h>

#include <string>

constexpr int kFiles = 24, kSections = 50, kKeys = 100;
constexpr int kValues = 1000;

inline std::string FileName(int number) {
    return "./config_bench." + std::to_string(number) + ".ini";
}

// The text in the middle and the one at the end are asked for in turn.
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

// Of each system: a registry of the program's own, where it can have one; the peers.
void PrepareRegistry();
void RegisterPeers();

// Declarations shared by string_edit_bench.cpp and the peers on each system.
#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "genstr.h"

struct Text {
    std::string name, native, utf8;
    std::string needle, utf8Needle;  // at the end of the text
    std::string word, utf8Word;      // many times in the text
};

template <class Body>
void Add(const std::string& what, const Text& text, const char* who, Body body) {
    const std::string name = what + ", " + text.name + "/" + who;
    benchmark::RegisterBenchmark(name.c_str(), [body](benchmark::State& state) {
        for (auto _ : state) body();
    });
}

template <class T>
void Keep(const T& value) {
    benchmark::DoNotOptimize(value);
}
inline void Keep(const CGNString& value) {
    benchmark::DoNotOptimize(static_cast<const char*>(value));
}

// For each system.
void AddPeers(const Text& text);

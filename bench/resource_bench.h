// What the peers on each system share with resource_bench.cpp.
#pragma once

#include <benchmark/benchmark.h>

#include <string>

constexpr int kTexts = 1000;
constexpr int kFirst[] = {0, kTexts / 2};  // half are ASCII, half Japanese
constexpr const char* kResourceNames[] = {"ASCII text of 1,000", "Japanese text of 1,000"};

// The texts in an order in which neighbours do not follow each other.
template <class Load>
void RunTexts(benchmark::State& state, int half, Load load) {
    int i = 0;
    for (auto _ : state) {
        load(kFirst[half] + i);
        i = (i + 211) % (kTexts / 2);
    }
}

// Of each system.
void RegisterResourcePeers(const std::string& name, int half);

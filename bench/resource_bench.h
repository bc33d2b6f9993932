// Declarations shared by resource_bench.cpp and the peers on each system.
#pragma once

#include <benchmark/benchmark.h>

#include <string>

constexpr int kTexts = 1000;
constexpr int kFirst[] = {0, kTexts / 2};  // half are ASCII, half Japanese
constexpr const char* kResourceNames[] = {"ASCII text of 1,000", "Japanese text of 1,000"};

// Runs through the texts in an order in which neighbours are not consecutive.
template <class Load>
void RunTexts(benchmark::State& state, int half, Load load) {
    int i = 0;
    for (auto _ : state) {
        load(kFirst[half] + i);
        i = (i + 211) % (kTexts / 2);
    }
}

// For each system.
void RegisterResourcePeers(const std::string& name, int half);

// Lists compared with a vector of strings without reserved capacity, and the checksum compared with
// its own loop over bytes.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "genlist.h"

namespace {

constexpr int kItems = 1000;
const char kText[] = "an item of a list, longer than a short string";

void AddGenutil(benchmark::State& state) {
    const CGNString text(kText);
    for (auto _ : state) {
        CGNStringList list;
        for (int i = 0; i < kItems; ++i) list.AddItem(text);
        benchmark::DoNotOptimize(list.GetCount());
    }
}
void AddVector(benchmark::State& state) {
    const std::string text(kText);
    for (auto _ : state) {
        std::vector<std::string> list;
        for (int i = 0; i < kItems; ++i) list.push_back(text);
        benchmark::DoNotOptimize(list.size());
    }
}
BENCHMARK(AddGenutil)->Name("add 1000 strings/genutil");
BENCHMARK(AddVector)->Name("add 1000 strings/vector");

void ReadGenutil(benchmark::State& state) {
    CGNStringList list;
    for (int i = 0; i < kItems; ++i) list.AddItem(kText);
    for (auto _ : state) {
        std::size_t sum = 0;
        for (int i = 0; i < list.GetCount(); ++i) sum += list.GetItem(i)->GetLength();
        benchmark::DoNotOptimize(sum);
    }
}
void ReadVector(benchmark::State& state) {
    const std::vector<std::string> list(kItems, kText);
    for (auto _ : state) {
        std::size_t sum = 0;
        for (std::size_t i = 0; i < list.size(); ++i) sum += list[i].size();
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(ReadGenutil)->Name("read 1000 strings/genutil");
BENCHMARK(ReadVector)->Name("read 1000 strings/vector");

// A search through the list, which reads the texts themselves.
void FindGenutil(benchmark::State& state) {
    CGNStringList list;
    for (int i = 0; i < kItems; ++i) list.AddItem(kText);
    const CGNString other("an item of a list, longer than a short strinG");
    for (auto _ : state) {
        int at = 0;
        while (at < list.GetCount() && *list.GetItem(at) != other) ++at;
        benchmark::DoNotOptimize(at);
    }
}
void FindVector(benchmark::State& state) {
    const std::vector<std::string> list(kItems, kText);
    const std::string other("an item of a list, longer than a short strinG");
    for (auto _ : state) {
        std::size_t at = 0;
        while (at < list.size() && list[at] != other) ++at;
        benchmark::DoNotOptimize(at);
    }
}
BENCHMARK(FindGenutil)->Name("search 1000 strings/genutil");
BENCHMARK(FindVector)->Name("search 1000 strings/vector");

void AddNumbersGenutil(benchmark::State& state) {
    for (auto _ : state) {
        CGNList list;
        for (long i = 0; i < 100 * kItems; ++i) list.AddItem(i);
        benchmark::DoNotOptimize(list.GetItemListPtr());
    }
}
void AddNumbersVector(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<long> list;
        for (long i = 0; i < 100 * kItems; ++i) list.push_back(i);
        benchmark::DoNotOptimize(list.data());
    }
}
BENCHMARK(AddNumbersGenutil)->Name("add 100000 numbers/genutil");
BENCHMARK(AddNumbersVector)->Name("add 100000 numbers/vector");

const std::vector<unsigned char>& Data() {
    static const std::vector<unsigned char> data(1 << 20, 0x5A);
    return data;
}
void CrcGenutil(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(
            gencrc32(1, Data().data(), static_cast<unsigned int>(Data().size())));
}
void CrcByteLoop(benchmark::State& state) {
    unsigned int table[256];
    for (unsigned int i = 0; i < 256; ++i) {
        const auto byte = static_cast<unsigned char>(i);
        table[i] = gencrc32(0, &byte, 1);
    }
    for (auto _ : state) {
        unsigned int crc = 1;
        for (const unsigned char byte : Data()) crc = crc << 8 ^ table[crc >> 24 ^ byte];
        benchmark::DoNotOptimize(crc);
    }
}
BENCHMARK(CrcGenutil)->Name("checksum of 1 MB/genutil");
BENCHMARK(CrcByteLoop)->Name("checksum of 1 MB/byte-loop");

}  // namespace

// A program run to its end, and one with much to print, beside popen, which every C program has.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "osutil.h"

namespace {

constexpr char kMuch[] = "head -c 10485760 /dev/zero";

void Run(benchmark::State& state, const char* command) {
    for (auto _ : state) {
        CGNString output;
        benchmark::DoNotOptimize(OSRunSyncProcess(command, output));
    }
}

void RunByPopen(benchmark::State& state, const char* command) {
    for (auto _ : state) {
        std::string output;
        char block[4096];
        std::FILE* const pipe = popen(command, "re");
        if (!pipe) return state.SkipWithError("popen failed");
        while (const std::size_t n = std::fread(block, 1, sizeof block, pipe))
            output.append(block, n);
        benchmark::DoNotOptimize(pclose(pipe));
    }
}

BENCHMARK_CAPTURE(Run, true, "true")->Name("run true/genutil")->UseRealTime();
BENCHMARK_CAPTURE(RunByPopen, true, "true")->Name("run true/popen")->UseRealTime();
BENCHMARK_CAPTURE(Run, much, kMuch)->Name("run, 10 MB of output/genutil")->UseRealTime();
BENCHMARK_CAPTURE(RunByPopen, much, kMuch)->Name("run, 10 MB of output/popen")->UseRealTime();

}  // namespace

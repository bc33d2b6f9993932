// A program that does nothing and one with long output, each run to its end, compared with popen.
#include "bench/process_bench.h"

#include <benchmark/benchmark.h>

#include <string>

#include "osutil.h"

namespace {

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
        std::FILE* const pipe = OpenPipe(command);
        if (!pipe) return state.SkipWithError("popen failed");
        while (const std::size_t n = std::fread(block, 1, sizeof block, pipe))
            output.append(block, n);
        benchmark::DoNotOptimize(ClosePipe(pipe));
    }
}

const bool g_registered = [] {
    for (const auto& [what, command] : Commands()) {
        const std::string name = what;
        benchmark::RegisterBenchmark((name + "/genutil").c_str(), Run, command)->UseRealTime();
        benchmark::RegisterBenchmark((name + "/popen").c_str(), RunByPopen, command)->UseRealTime();
    }
    return true;
}();

}  // namespace

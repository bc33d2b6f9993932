// A trace line written through to a file, compared with a formatted line and a plain write to a
// file that stays open.
#include <benchmark/benchmark.h>

#include <cstdio>

#include "gendiag.h"
#include "osthread.h"

namespace {

constexpr char kPath[] = "trace_bench.log";

void Genutil(benchmark::State& state) {
    OSSetThreaded();
    CGNTrace trace;
    trace.Init();
    trace.ResetMask(1);
    CGNString path(kPath), module("reader");
    trace.ResetOutput(1, path, 0);
    int rows = 0;
    for (auto _ : state)
        trace.WriteMsg("Line    42 in reader.cpp", 1, module, "%d rows of %s", ++rows, "table");
    trace.ResetOutput(0);
    std::remove(kPath);
}

BENCHMARK(Genutil)->Name("trace-line/genutil");

}  // namespace

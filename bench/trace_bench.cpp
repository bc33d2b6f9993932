// Trace lines written through to a file, written by a thread of their own, and disabled; and the
// clock of stopwatches. The alternatives are in posix/.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <memory>

#include "gendiag.h"
#include "osthread.h"

namespace {

constexpr char kPath[] = "trace_bench.log";

// One trace for the threads of a case.
std::unique_ptr<CGNTrace> g_trace;

void Open(bool isAsync, short mask) {
    OSSetThreaded();
    g_trace = std::make_unique<CGNTrace>();
    g_trace->Init();
    g_trace->ResetMask(mask);
    CGNString path(kPath);
    g_trace->ResetOutput(1, path, 0);
    if (isAsync) g_trace->ResetAsync(1);
}

void Close() {
    g_trace.reset();
    std::remove(kPath);
}

template <bool kIsAsync>
void Line(benchmark::State& state) {
    if (state.thread_index() == 0) Open(kIsAsync, 1);
    const CGNString module("reader");
    int rows = 0;
    for (auto _ : state)
        g_trace->WriteMsg("Line    42 in reader.cpp", 1, module, "%d rows of %s", ++rows, "table");
    if (state.thread_index() == 0) Close();
}

BENCHMARK(Line<false>)->Name("trace-line/genutil");
BENCHMARK(Line<true>)->Name("trace-line, asynchronous/genutil");
BENCHMARK(Line<true>)
    ->Name("trace-line, 4 threads, asynchronous/genutil")
    ->Threads(4)
    ->UseRealTime();

void Disabled(benchmark::State& state) {
    Open(false, 2);
    const CGNString module("reader");
    int rows = 0;
    CGNTrace* trace = g_trace.get();
    for (auto _ : state) {
        benchmark::DoNotOptimize(trace);
        GENUTIL_TRACE(trace, 1, module, "%d rows of %s", ++rows, "table");
    }
    Close();
}
BENCHMARK(Disabled)->Name("disabled line/genutil");

void DisabledCall(benchmark::State& state) {
    Open(false, 2);
    const CGNString module("reader");
    int rows = 0;
    for (auto _ : state)
        g_trace->WriteMsg("Line    42 in reader.cpp", 1, module, "%d rows of %s", ++rows, "table");
    Close();
}
BENCHMARK(DisabledCall)->Name("disabled call/genutil");

void Stopwatch(benchmark::State& state) {
    OSTime::EnableLog(1);
    OSTime watch;
    watch.SetLogHandler([](const char*) {});
    for (auto _ : state) watch.Reset();
    OSTime::EnableLog(0);
}
BENCHMARK(Stopwatch)->Name("stopwatch/genutil");

void Clock(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(std::chrono::system_clock::now());
}
BENCHMARK(Clock)->Name("stopwatch/std::chrono");

}  // namespace

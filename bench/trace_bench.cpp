// A line of the trace to a file, written through at once, beside spdlog that flushes each line and
// beside a formatted line and a bare write().
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <string>

#ifdef HAVE_SPDLOG
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>
#endif

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

void BareWrite(benchmark::State& state) {
    const int file = open(kPath, O_WRONLY | O_CREAT | O_APPEND, 0644);
    int rows = 0;
    for (auto _ : state) {
        char date[64], line[300];
        const std::time_t now = std::time(nullptr);
        std::tm local;
        localtime_r(&now, &local);
        std::strftime(date, sizeof date, "%m/%d/%y %H:%M:%S :: ", &local);
        const int length = std::snprintf(
            line, sizeof line, "%sTID %d :: reader : %d rows of %s : Line    42 in reader.cpp\n",
            date, static_cast<int>(gettid()), ++rows, "table");
        benchmark::DoNotOptimize(write(file, line, static_cast<std::size_t>(length)));
    }
    close(file);
    std::remove(kPath);
}

BENCHMARK(Genutil)->Name("trace-line/genutil");
BENCHMARK(BareWrite)->Name("trace-line/bare-write");

#ifdef HAVE_SPDLOG
void Spdlog(benchmark::State& state) {
    auto logger = spdlog::basic_logger_mt("bench", kPath);
    logger->set_pattern("%D %T :: TID %t :: %v");
    logger->flush_on(spdlog::level::trace);
    int rows = 0;
    for (auto _ : state)
        logger->info("reader : {} rows of {} : Line    42 in reader.cpp", ++rows, "table");
    spdlog::drop("bench");
    std::remove(kPath);
}
BENCHMARK(Spdlog)->Name("trace-line/spdlog");
#endif

}  // namespace

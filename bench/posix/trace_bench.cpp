// A formatted line with a plain write(), and spdlog with a flush after each line.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>

#ifdef HAVE_SPDLOG
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>
#endif

namespace {

constexpr char kPath[] = "trace_bench_peer.log";

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

BENCHMARK(BareWrite)->Name("trace-line/bare-write");
BENCHMARK(BareWrite)->Name("trace-line, asynchronous/bare-write");
BENCHMARK(BareWrite)
    ->Name("trace-line, 4 threads, asynchronous/bare-write")
    ->Threads(4)
    ->UseRealTime();

#ifdef HAVE_SPDLOG
void Spdlog(benchmark::State& state) {
    static std::shared_ptr<spdlog::logger> logger;
    if (state.thread_index() == 0) {
        logger = spdlog::basic_logger_mt("bench", kPath);
        logger->set_pattern("%D %T :: TID %t :: %v");
        logger->flush_on(spdlog::level::trace);
    }
    int rows = 0;
    for (auto _ : state)
        logger->info("reader : {} rows of {} : Line    42 in reader.cpp", ++rows, "table");
    if (state.thread_index() != 0) return;
    spdlog::drop("bench");
    std::remove(kPath);
}
BENCHMARK(Spdlog)->Name("trace-line/spdlog");
BENCHMARK(Spdlog)->Name("trace-line, asynchronous/spdlog");
BENCHMARK(Spdlog)->Name("trace-line, 4 threads, asynchronous/spdlog")->Threads(4)->UseRealTime();

void SpdlogDisabled(benchmark::State& state) {
    auto logger = spdlog::basic_logger_mt("disabled", kPath);
    logger->set_level(spdlog::level::warn);
    int rows = 0;
    for (auto _ : state)
        logger->info("reader : {} rows of {} : Line    42 in reader.cpp", ++rows, "table");
    spdlog::drop("disabled");
    std::remove(kPath);
}
BENCHMARK(SpdlogDisabled)->Name("disabled line/spdlog");
#endif

}  // namespace

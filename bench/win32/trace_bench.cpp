// A formatted line with a plain WriteFile().
#include <benchmark/benchmark.h>
#include <windows.h>

#include <cstdio>

namespace {

constexpr char kPath[] = "trace_bench_peer.log";

void BareWrite(benchmark::State& state) {
    const HANDLE file =
        CreateFileA(kPath, FILE_APPEND_DATA, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0, nullptr);
    int rows = 0;
    for (auto _ : state) {
        SYSTEMTIME now;
        GetLocalTime(&now);
        char line[300];
        const int length = std::snprintf(
            line, sizeof line,
            "%02d/%02d/%02d %02d:%02d:%02d :: TID %lu :: reader : %d rows of %s : Line    42 in "
            "reader.cpp\r\n",
            now.wMonth, now.wDay, now.wYear % 100, now.wHour, now.wMinute, now.wSecond,
            GetCurrentThreadId(), ++rows, "table");
        DWORD written;
        benchmark::DoNotOptimize(
            WriteFile(file, line, static_cast<DWORD>(length), &written, nullptr));
    }
    CloseHandle(file);
    std::remove(kPath);
}
BENCHMARK(BareWrite)->Name("trace-line/WriteFile");

}  // namespace

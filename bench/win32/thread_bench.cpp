// The system's own locks. A critical section is recursive, like the library's mutex.
#include <benchmark/benchmark.h>
#include <windows.h>

namespace {

void CriticalSection(benchmark::State& state) {
    CRITICAL_SECTION section;
    InitializeCriticalSection(&section);
    for (auto _ : state) {
        EnterCriticalSection(&section);
        benchmark::ClobberMemory();
        LeaveCriticalSection(&section);
    }
    DeleteCriticalSection(&section);
}

void SlimRead(benchmark::State& state) {
    SRWLOCK lock = SRWLOCK_INIT;
    for (auto _ : state) {
        AcquireSRWLockShared(&lock);
        benchmark::ClobberMemory();
        ReleaseSRWLockShared(&lock);
    }
}

void SlimWrite(benchmark::State& state) {
    SRWLOCK lock = SRWLOCK_INIT;
    for (auto _ : state) {
        AcquireSRWLockExclusive(&lock);
        benchmark::ClobberMemory();
        ReleaseSRWLockExclusive(&lock);
    }
}

BENCHMARK(CriticalSection)->Name("mutex/CRITICAL_SECTION")->UseRealTime();
BENCHMARK(SlimRead)->Name("read/SRWLOCK")->UseRealTime();
BENCHMARK(SlimWrite)->Name("write/SRWLOCK")->UseRealTime();

}  // namespace

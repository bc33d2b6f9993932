// LoadString, and its equivalent: FindResource, which returns the UTF-16 text in the library's
// memory.
#include "bench/resource_bench.h"

#include <windows.h>

namespace {

HMODULE Texts() {
    static const HMODULE s_texts =
        LoadLibraryExA(BENCH_TEXTS "/texts.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    return s_texts;
}

void LoadByWindows(benchmark::State& state, int half) {
    RunTexts(state, half, [&](int i) {
        char text[256];
        if (!LoadStringA(Texts(), static_cast<UINT>(i), text, sizeof text))
            state.SkipWithError("not found");
        benchmark::ClobberMemory();
    });
}

void FindByWindows(benchmark::State& state, int half) {
    RunTexts(state, half, [&](int i) {
        const HRSRC found = FindResourceA(
            Texts(), reinterpret_cast<LPCSTR>(static_cast<ULONG_PTR>(i / 16 + 1)), RT_STRING);
        const auto* unit =
            found ? static_cast<const WCHAR*>(LockResource(LoadResource(Texts(), found))) : nullptr;
        if (!unit) return state.SkipWithError("not found");
        for (int before = i % 16; before > 0; --before) unit += 1 + *unit;
        benchmark::DoNotOptimize(unit);
    });
}

}  // namespace

void RegisterResourcePeers(const std::string& name, int half) {
    benchmark::RegisterBenchmark((name + "/LoadString").c_str(), LoadByWindows, half);
    benchmark::RegisterBenchmark((name + "/FindResource").c_str(), FindByWindows, half);
}

// The system's conversion by way of UTF-16. The system has no detection.
#include "bench/japanese_bench.h"

#include <windows.h>

namespace {

void ConvertBySystem(benchmark::State& state, Encoding from, Encoding to) {
    const std::string text = TextIn(from);
    const auto size = static_cast<int>(text.size());
    std::wstring units(text.size(), L'\0');
    std::string out(text.size() * 5, '\0');
    for (auto _ : state) {
        const int count =
            MultiByteToWideChar(from.windowsPage, 0, text.data(), size, units.data(), size);
        if (!WideCharToMultiByte(to.windowsPage, 0, units.data(), count, out.data(),
                                 static_cast<int>(out.size()), nullptr, nullptr))
            return state.SkipWithError("the system does not convert this");
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

}  // namespace

void RegisterConversionPeers(const std::string& name, const Encoding& from, const Encoding& to) {
    benchmark::RegisterBenchmark((name + "/MultiByteToWideChar").c_str(), ConvertBySystem, from,
                                 to);
}

void RegisterDetectionPeers() {}

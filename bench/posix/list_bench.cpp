// zlib's checksum, which is a different one.
#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include <vector>

namespace {

void CrcZlib(benchmark::State& state) {
    using Crc = unsigned long (*)(unsigned long, const unsigned char*, unsigned int);
    void* const zlib = dlopen("libz.so.1", RTLD_NOW);
    const auto crc32 = zlib ? reinterpret_cast<Crc>(dlsym(zlib, "crc32")) : nullptr;
    if (!crc32) {
        state.SkipWithError("no libz.so.1");
        return;
    }
    const std::vector<unsigned char> data(1 << 20, 0x5A);
    for (auto _ : state)
        benchmark::DoNotOptimize(crc32(1, data.data(), static_cast<unsigned int>(data.size())));
}
BENCHMARK(CrcZlib)->Name("checksum of 1 MB/zlib");

}  // namespace

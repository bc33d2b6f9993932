// Loading a text from a library of 1,000 texts: ASCII and Japanese, from the process's library and
// from the thread's.
#include "bench/resource_bench.h"

#include <cstdlib>

#include "genstr.h"
#include "mbutil.h"
#include "osresource.h"
#include "osthread.h"

namespace {

void Prepare() {
    static const bool isReady = [] {
        OSSetThreaded();
        mbIsMultiByte();
        InitMbutilExt(mbUtf8);
        return OSAttachLocaleResDLL(BENCH_TEXTS "/texts.dll") != 0;
    }();
    if (!isReady) std::abort();
}

void Genutil(benchmark::State& state, int half) {
    Prepare();
    CGNString text;
    RunTexts(state, half, [&](int i) { benchmark::DoNotOptimize(OSLoadString(text, i)); });
}

void GenutilThread(benchmark::State& state, int half) {
    Prepare();
    OSAttachLocaleResDLLTS(BENCH_TEXTS "/texts.dll");
    Genutil(state, half);
    OSDetachLocaleResDLLTS();
}

const int kRegistered = [] {
    const auto add = [](const char* variant, void (*run)(benchmark::State&, int)) {
        for (int half = 0; half < 2; ++half) {
            const std::string name = std::string(kResourceNames[half]) + variant;
            benchmark::RegisterBenchmark((name + "/genutil").c_str(), run, half);
            RegisterResourcePeers(name, half);
        }
    };
    add("", Genutil);
    // From here on the thread has a table of variables.
    add(", a thread's", GenutilThread);
    add(", variables unused", Genutil);
    return 0;
}();

}  // namespace

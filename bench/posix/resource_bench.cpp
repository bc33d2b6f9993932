// gettext, which finds a text by its English form and returns its own copy. It is therefore also
// measured with a copy into a text of the caller's, which is what OSLoadString() provides.
#include "bench/resource_bench.h"

#include <libintl.h>

#include <clocale>
#include <cstdio>
#include <vector>

namespace {

void Prepare() {
    static const bool isReady = [] {
        std::setlocale(LC_ALL, "C.UTF-8");
        bindtextdomain("bench", BENCH_TEXTS);
        bind_textdomain_codeset("bench", "UTF-8");
        textdomain("bench");
        return true;
    }();
    benchmark::DoNotOptimize(isReady);
}

std::vector<std::string> Keys() {
    std::vector<std::string> keys;
    for (int i = 0; i < kTexts; ++i) {
        char key[80];
        std::snprintf(key, sizeof key, "The document with the number %d cannot be opened.", i);
        keys.push_back(key);
    }
    return keys;
}

void Gettext(benchmark::State& state, int half) {
    Prepare();
    const std::vector<std::string> keys = Keys();
    if (gettext(keys[0].c_str()) == keys[0].c_str()) {
        state.SkipWithError("gettext does not find its texts");
        return;
    }
    RunTexts(state, half, [&](int i) {
        benchmark::DoNotOptimize(gettext(keys[static_cast<std::size_t>(i)].c_str()));
    });
}

void GettextCopied(benchmark::State& state, int half) {
    Prepare();
    const std::vector<std::string> keys = Keys();
    std::string text;
    RunTexts(state, half, [&](int i) {
        text = gettext(keys[static_cast<std::size_t>(i)].c_str());
        benchmark::DoNotOptimize(text.data());
    });
}

}  // namespace

void RegisterResourcePeers(const std::string& name, int half) {
    benchmark::RegisterBenchmark((name + "/gettext").c_str(), Gettext, half);
    benchmark::RegisterBenchmark((name + "/gettext, copied").c_str(), GettextCopied, half);
}

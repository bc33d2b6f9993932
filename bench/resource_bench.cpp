// Loading a text from a library of 1,000 beside gettext, which finds it by its English form: ASCII
// and Japanese, from the process's library and from the thread's. gettext hands out its own copy,
// so it is also measured as far as a text of the caller's, which OSLoadString gives.
#include <benchmark/benchmark.h>
#include <libintl.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "genstr.h"
#include "mbutil.h"
#include "osresource.h"
#include "osthread.h"

namespace {

constexpr int kTexts = 1000;
constexpr int kFirst[] = {0, kTexts / 2};  // half are ASCII, half Japanese

void Prepare() {
    static const bool isReady = [] {
        OSSetThreaded();
        std::setlocale(LC_ALL, "C.UTF-8");
        bindtextdomain("bench", BENCH_TEXTS);
        bind_textdomain_codeset("bench", "UTF-8");
        textdomain("bench");
        mbIsMultiByte();
        InitMbutilExt(mbUtf8);
        return OSAttachLocaleResDLL(BENCH_TEXTS "/texts.dll") != 0;
    }();
    if (!isReady) std::abort();
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

// The texts in an order in which neighbours do not follow each other.
template <class Load>
void Run(benchmark::State& state, int half, Load load) {
    int i = 0;
    for (auto _ : state) {
        load(kFirst[half] + i);
        i = (i + 211) % (kTexts / 2);
    }
}

void Genutil(benchmark::State& state, int half) {
    Prepare();
    CGNString text;
    Run(state, half, [&](int i) { benchmark::DoNotOptimize(OSLoadString(text, i)); });
}

void GenutilThread(benchmark::State& state, int half) {
    Prepare();
    OSAttachLocaleResDLLTS(BENCH_TEXTS "/texts.dll");
    Genutil(state, half);
    OSDetachLocaleResDLLTS();
}

void Gettext(benchmark::State& state, int half) {
    Prepare();
    const std::vector<std::string> keys = Keys();
    if (gettext(keys[0].c_str()) == keys[0].c_str()) {
        state.SkipWithError("gettext does not find its texts");
        return;
    }
    Run(state, half, [&](int i) {
        benchmark::DoNotOptimize(gettext(keys[static_cast<std::size_t>(i)].c_str()));
    });
}

void GettextCopied(benchmark::State& state, int half) {
    Prepare();
    const std::vector<std::string> keys = Keys();
    std::string text;
    Run(state, half, [&](int i) {
        text = gettext(keys[static_cast<std::size_t>(i)].c_str());
        benchmark::DoNotOptimize(text.data());
    });
}

const int kRegistered = [] {
    const std::string names[] = {"ASCII text of 1,000", "Japanese text of 1,000"};
    const auto add = [&](const std::string& name, void (*run)(benchmark::State&, int), int half) {
        benchmark::RegisterBenchmark(name.c_str(), run, half);
    };
    for (int half = 0; half < 2; ++half) {
        add(names[half] + "/genutil", Genutil, half);
        add(names[half] + "/gettext", Gettext, half);
        add(names[half] + "/gettext, copied", GettextCopied, half);
    }
    // From here on the thread has a table of variables.
    for (int half = 0; half < 2; ++half) {
        add(names[half] + ", a thread's/genutil", GenutilThread, half);
        add(names[half] + ", a thread's/gettext", Gettext, half);
    }
    for (int half = 0; half < 2; ++half) {
        add(names[half] + ", variables unused/genutil", Genutil, half);
        add(names[half] + ", variables unused/gettext", Gettext, half);
    }
    return 0;
}();

}  // namespace

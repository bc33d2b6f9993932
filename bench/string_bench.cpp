// CGNString compared with std::string in the most frequent operations of programs.
#include <benchmark/benchmark.h>

#include <string>

#include "genstr.h"

namespace {

// Operations that the two classes spell differently.
void GrowByDoubling(CGNString& s) {
    s.AllocateBuffer(16, 1);
}
void GrowByDoubling(std::string& s) {
    s.reserve(16);
}
const char* Text(const CGNString& s) {
    return s;
}
const char* Text(const std::string& s) {
    return s.c_str();
}

constexpr char kLabel[] = "some longer text of a label";

template <class String>
void AppendByte(benchmark::State& state) {
    for (auto _ : state) {
        String s;
        GrowByDoubling(s);
        for (int i = 0; i < 1000; ++i) s += 'x';
        benchmark::DoNotOptimize(Text(s));
    }
}

template <class String>
void AppendText(benchmark::State& state) {
    const char* text = "some text";
    for (auto _ : state) {
        benchmark::DoNotOptimize(text);
        String s;
        GrowByDoubling(s);
        for (int i = 0; i < 1000; ++i) s += text;
        benchmark::DoNotOptimize(Text(s));
    }
}

template <class String>
void Compare(benchmark::State& state) {
    String a(kLabel), b(kLabel);
    for (auto _ : state) {
        benchmark::DoNotOptimize(a);
        benchmark::DoNotOptimize(a == b);
    }
}

template <class String>
void Copy(benchmark::State& state) {
    const String a(kLabel);
    for (auto _ : state) {
        String b(a);
        benchmark::DoNotOptimize(Text(b));
    }
}

BENCHMARK(AppendByte<CGNString>)->Name("append 1000 bytes/genutil");
BENCHMARK(AppendByte<std::string>)->Name("append 1000 bytes/std::string");
BENCHMARK(AppendText<CGNString>)->Name("append 1000 texts/genutil");
BENCHMARK(AppendText<std::string>)->Name("append 1000 texts/std::string");
BENCHMARK(Compare<CGNString>)->Name("compare/genutil");
BENCHMARK(Compare<std::string>)->Name("compare/std::string");
BENCHMARK(Copy<CGNString>)->Name("copy/genutil");
BENCHMARK(Copy<std::string>)->Name("copy/std::string");

}  // namespace

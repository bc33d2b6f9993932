// Settings: one value of an ini file of 200 KB, and of the registry. "cold" alternates between so
// many files that none of them is cached; "warm" reads one unchanged file.
#include "bench/config_bench.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <thread>
#include <vector>

#include "osconfig.h"

namespace {

void MakeFiles() {
    std::string text;
    char line[64];
    for (int section = 0; section < kSections; ++section) {
        std::snprintf(line, sizeof line, "[section %d]\n", section);
        text += line;
        for (int key = 0; key < kKeys; ++key) {
            std::snprintf(line, sizeof line, "some key %02d = the value is %010d\n", key,
                          key * 7919);
            text += line;
        }
    }
    for (int i = 0; i < kFiles; ++i) std::ofstream(FileName(i)) << text;
    std::fprintf(stderr, "ini files of %zu bytes\n", text.size());
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
}

void ReadByGenutil(benchmark::State& state, int files) {
    std::vector<CGNString> names;
    for (int i = 0; i < files; ++i) names.emplace_back(FileName(i).c_str());
    const CGNString key("some key 57"), none("none");
    const CGNString sections[] = {SectionOf(0), SectionOf(1)};
    CGNString value;
    int turn = 0;
    for (auto _ : state) {
        ++turn;
        OSGetConfig(value, none, sections[turn % 2], key,
                    names[static_cast<std::size_t>(turn % files)]);
    }
    if (value == "none") state.SkipWithError("not read");
}

void WriteByGenutil(benchmark::State& state) {
    const CGNString name(FileName(kFiles - 1).c_str());
    int number = 0;
    for (auto _ : state) OSSetConfig(++number, "section 25", "some key 57", name);
}

void FillRegistry() {
    if (OSSetSystemConfigReg("text", "sub", "ready", "base")) {
        CGNString text;
        if (OSGetSystemConfigReg(text, "", "sub", ValueName(kValues - 1).c_str(), "base")) return;
    }
    for (int i = 0; i < kValues; ++i)
        OSSetSystemConfigReg("C:\\Program Files\\Tour", "sub", ValueName(i).c_str(), "base");
}

void RegistryRead(benchmark::State& state) {
    FillRegistry();
    std::vector<CGNString> names;
    for (int i = 0; i < kValues; ++i) names.emplace_back(ValueName(i).c_str());
    const CGNString none("none"), sub("sub"), base("base");
    CGNString value;
    std::size_t turn = 0;
    for (auto _ : state) OSGetSystemConfigReg(value, none, sub, names[++turn % kValues], base);
    if (value == "none") state.SkipWithError("not read");
}

void RegistryWrite(benchmark::State& state) {
    int number = 0;
    for (auto _ : state) OSSetSystemConfigReg(++number, "sub", "counter", "base");
}

const int kRegistered = [] {
    PrepareRegistry();
    MakeFiles();
    Register("ini read cold/genutil", ReadByGenutil, kFiles);
    Register("ini read warm/genutil", ReadByGenutil, 1);
    Register("ini write/genutil", WriteByGenutil);
    Register("registry read/genutil", RegistryRead);
    Register("registry write/genutil", RegistryWrite);
    RegisterPeers();
    return 0;
}();

}  // namespace

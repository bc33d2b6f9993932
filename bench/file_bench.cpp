// Whole files compared with std::ifstream and with the system's own calls into a buffer of the
// file's size. Entries of a directory compared with std::filesystem.
#include "bench/file_bench.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include "mbutil.h"
#include "osutil.h"

namespace {

namespace fs = std::filesystem;

const fs::path kFolder = fs::temp_directory_path() / "genutil_file_bench";

std::string FileOf(std::size_t bytes) {
    const fs::path path = kFolder / std::to_string(bytes);
    if (!fs::exists(path)) {
        fs::create_directories(kFolder);
        std::ofstream(path, std::ios::binary) << std::string(bytes, 'x');
    }
    return path.string();
}

std::string FolderOf(int entries) {
    const fs::path path = kFolder / ("folder" + std::to_string(entries));
    if (!fs::exists(path)) {
        fs::create_directories(path);
        for (int i = 0; i < entries; ++i)
            std::ofstream(path / ("report " + std::to_string(i) + ".txt")) << i;
    }
    return path.string();
}

void Genutil(benchmark::State& state, std::size_t bytes) {
    const std::string path = FileOf(bytes);
    for (auto _ : state) {
        char* buffer;
        benchmark::DoNotOptimize(OSGetBinaryFileContents(buffer, path.c_str()));
        std::free(buffer);
    }
}

void BareRead(benchmark::State& state, std::size_t bytes) {
    const std::string path = FileOf(bytes);
    for (auto _ : state)
        if (!ReadBare(path.c_str())) state.SkipWithError("not read");
}

void Stream(benchmark::State& state, std::size_t bytes) {
    const std::string path = FileOf(bytes);
    for (auto _ : state) {
        std::ifstream in(path, std::ios::binary | std::ios::ate);
        std::string text(static_cast<std::size_t>(in.tellg()), 0);
        in.seekg(0);
        in.read(text.data(), static_cast<std::streamsize>(text.size()));
        benchmark::DoNotOptimize(text.data());
    }
}

void List(benchmark::State& state, int entries, int codeSet) {
    const CGNString path(FolderOf(entries).c_str());
    mbIsMultiByte();
    InitMbutilExt(codeSet);
    for (auto _ : state) {
        CGNStringList list(1000, 1000);
        OSGetFileList(path, "*.txt", list, 0, 1);
        if (list.GetCount() != entries) state.SkipWithError("entries are missing");
    }
}

void ListByFilesystem(benchmark::State& state, int entries) {
    const std::string path = FolderOf(entries);
    for (auto _ : state) {
        std::vector<std::string> list;
        for (const auto& entry : fs::directory_iterator(path))
            if (!entry.is_directory() && entry.path().extension() == ".txt")
                list.push_back(entry.path().string());
        benchmark::DoNotOptimize(list.data());
    }
}

BENCHMARK_CAPTURE(Genutil, 1K, 1000)->Name("read-1K/genutil");
BENCHMARK_CAPTURE(BareRead, 1K, 1000)->Name("read-1K/system");
BENCHMARK_CAPTURE(Stream, 1K, 1000)->Name("read-1K/ifstream");
BENCHMARK_CAPTURE(Genutil, 100K, 100000)->Name("read-100K/genutil");
BENCHMARK_CAPTURE(BareRead, 100K, 100000)->Name("read-100K/system");
BENCHMARK_CAPTURE(Stream, 100K, 100000)->Name("read-100K/ifstream");
BENCHMARK_CAPTURE(Genutil, 10M, 10000000)->Name("read-10M/genutil");
BENCHMARK_CAPTURE(BareRead, 10M, 10000000)->Name("read-10M/system");
BENCHMARK_CAPTURE(Stream, 10M, 10000000)->Name("read-10M/ifstream");
BENCHMARK_CAPTURE(List, utf8, 1000, mbUtf8)->Name("list-1000-utf8/genutil");
BENCHMARK_CAPTURE(ListByFilesystem, utf8, 1000)->Name("list-1000-utf8/filesystem");
BENCHMARK_CAPTURE(List, sjis, 1000, mbShiftJis)->Name("list-1000-sjis/genutil");
BENCHMARK_CAPTURE(ListByFilesystem, sjis, 1000)->Name("list-1000-sjis/filesystem");

}  // namespace

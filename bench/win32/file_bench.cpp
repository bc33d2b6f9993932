#include "bench/file_bench.h"

#include <benchmark/benchmark.h>
#include <windows.h>

#include <cstdlib>

bool ReadBare(const char* path) {
    const HANDLE file =
        CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    const DWORD size = GetFileSize(file, nullptr);
    void* const buffer = std::malloc(size);
    DWORD count = 0;
    const bool isRead = ReadFile(file, buffer, size, &count, nullptr) && count == size;
    benchmark::DoNotOptimize(buffer);
    CloseHandle(file);
    std::free(buffer);
    return isRead;
}

#include "bench/file_bench.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

bool ReadBare(const char* path) {
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    struct stat status;
    fstat(file, &status);
    const auto size = static_cast<std::size_t>(status.st_size);
    void* const buffer = std::malloc(size);
    const bool isRead = read(file, buffer, size) == static_cast<ssize_t>(size);
    benchmark::DoNotOptimize(buffer);
    close(file);
    std::free(buffer);
    return isRead;
}

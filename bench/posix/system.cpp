#include "bench/support/system.h"

#include <cstring>

// The processor's time, which other programs do not disturb.
double TimeOf(const benchmark::BenchmarkReporter::Run& run) {
    return run.GetAdjustedCPUTime();
}

const char* const kFindBytesName = "memmem";

const char* FindBytes(const char* text, std::size_t size, const std::string& wanted) {
    return static_cast<const char*>(memmem(text, size, wanted.data(), wanted.size()));
}

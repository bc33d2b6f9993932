#include "bench/support/system.h"

#include <cstring>

// Processor time, which other programs do not influence.
double TimeOf(const benchmark::BenchmarkReporter::Run& run) {
    return run.GetAdjustedCPUTime();
}

const char* const kFindBytesName = "memmem";

const char* FindBytes(const char* text, std::size_t size, const std::string& wanted) {
    return static_cast<const char*>(memmem(text, size, wanted.data(), wanted.size()));
}

#include "bench/support/system.h"

#include <string_view>

// The processor's time comes in ticks of 10 ms.
double TimeOf(const benchmark::BenchmarkReporter::Run& run) {
    return run.GetAdjustedRealTime();
}

// The runtime has nothing for bytes that may hold a 0: the standard library's search.
const char* const kFindBytesName = "string_view";

const char* FindBytes(const char* text, std::size_t size, const std::string& wanted) {
    const std::size_t at = std::string_view(text, size).find(wanted);
    return at == std::string_view::npos ? nullptr : text + at;
}

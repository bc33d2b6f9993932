#include "bench/support/system.h"

#include <string_view>

// Real time, because processor time has a resolution of only 10 ms.
double TimeOf(const benchmark::BenchmarkReporter::Run& run) {
    return run.GetAdjustedRealTime();
}

// The runtime cannot search bytes that may include a 0, so the standard library's search is used.
const char* const kFindBytesName = "string_view";

const char* FindBytes(const char* text, std::size_t size, const std::string& wanted) {
    const std::size_t at = std::string_view(text, size).find(wanted);
    return at == std::string_view::npos ? nullptr : text + at;
}

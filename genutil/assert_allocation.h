// Where failures of allocation are reported.
#pragma once

namespace genutil {

// Reports a failure; false. File is the name of the source as the reports spell it
// ("genutil/genstr"). May be called from any thread.
bool ReportFailedAllocation(const char* file, long line);

// Reports when ok is false, and returns ok; the caller goes on either way.
inline bool AssertAllocation(bool ok, const char* file, long line) {
    return ok || ReportFailedAllocation(file, line);
}

}  // namespace genutil

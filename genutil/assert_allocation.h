// Reports of failed allocations.
#pragma once

namespace genutil {

// Reports a failed allocation. Returns false. May be called from any thread.
// @param file the name of the source as reports spell it ("genutil/genstr").
bool ReportFailedAllocation(const char* file, long line);

// Reports a failed allocation if ok is false. Returns ok.
inline bool AssertAllocation(bool ok, const char* file, long line) {
    return ok || ReportFailedAllocation(file, line);
}

}  // namespace genutil

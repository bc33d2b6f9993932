// Where failures of allocation are reported.
#pragma once

namespace genutil {

// Reports when ok is false, and returns ok; the caller goes on either way. File is the name of the
// source as the reports spell it ("genutil/genstr"). May be called from any thread.
bool AssertAllocation(bool ok, const char* file, long line);

}  // namespace genutil

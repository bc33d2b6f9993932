#include "genutil/assert_allocation.h"

#include <cstdio>

namespace genutil {

bool AssertAllocation(bool ok, const char* file, long line) {
    if (!ok) std::fprintf(stderr, "%s(%ld): Assertion Failure !!\n", file, line);
    return ok;
}

}  // namespace genutil

#include "genutil/assert_allocation.h"

#include "genassert.h"

namespace genutil {

// Reporting may itself need memory: a thread reports one failure at a time.
static thread_local bool t_reporting = false;

bool ReportFailedAllocation(const char* file, long line) {
    if (t_reporting) return false;
    t_reporting = true;
    if (CGNAssert* assertion = CGNAssert::Instance()) assertion->cgnassert(0, file, line);
    t_reporting = false;
    return false;
}

}  // namespace genutil

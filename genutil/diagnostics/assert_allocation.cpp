#include "genutil/assert_allocation.h"

#include "genassert.h"
#include "osutil/thread/thread_flag.h"

namespace genutil {

// Reporting may itself allocate, so a thread reports one failure at a time.
static constinit ThreadFlag g_reporting;

bool ReportFailedAllocation(const char* file, long line) {
    if (!g_reporting.Set()) return false;
    if (CGNAssert* assertion = CGNAssert::Instance()) assertion->cgnassert(0, file, line);
    g_reporting.Clear();
    return false;
}

}  // namespace genutil

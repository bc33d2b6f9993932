// Characters counted by ICU.
#include "bench/text_bench.h"

#include <unicode/ucnv.h>

namespace {

std::size_t IcuCount(const Text& t) {
    UErrorCode error = U_ZERO_ERROR;
    UConverter* converter = ucnv_open(t.set.icuName, &error);
    const char* end = t.begin() + t.bytes.size();
    std::size_t count = 0;
    for (const char* s = t.begin(); s < end; ++count) {
        ucnv_getNextUChar(converter, &s, end, &error);
        error = U_ZERO_ERROR;
    }
    ucnv_close(converter);
    return count;
}

const bool g_registered = (RegisterText("count", "icu", IcuCount), true);

}  // namespace

#include "genutil/locale/locale_edits.h"

namespace genutil {

std::atomic<std::uint32_t> g_localeEdits{0};

void LocaleEdits::Touch() {
    g_localeEdits.fetch_add(1, std::memory_order_relaxed);
}

}  // namespace genutil

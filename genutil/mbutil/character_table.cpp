#include "genutil/mbutil/character_table.h"

#include <mutex>

#include "osutil/platform/locale/locales.h"

namespace genutil {

CharacterPage g_characterPages[256];
std::atomic<bool> g_characterPageFilled[256];

namespace {
std::mutex g_filling;
}

void FillCharacterPage(unsigned page) {
    const std::lock_guard<std::mutex> guard(g_filling);
    if (g_characterPageFilled[page].load(std::memory_order_relaxed)) return;
    CharacterPage& table = g_characterPages[page];
    platform::ReadCharacterClasses(page, table.classes);
    for (unsigned i = 0; i < 256; ++i) {
        const auto character = static_cast<std::uint16_t>(page << 8 | i);
        table.upper[i] = platform::ToUpper(character);
        table.lower[i] = platform::ToLower(character);
    }
    g_characterPageFilled[page].store(true, std::memory_order_release);
}

}  // namespace genutil

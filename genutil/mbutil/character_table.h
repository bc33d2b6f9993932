// The class and the letter case of every 16-bit character. They are read from the platform 256
// characters at a time, when one of these is first requested.
#pragma once

#include <atomic>
#include <cstdint>

#include "osutil/platform/text/characters.h"

namespace genutil {

struct CharacterPage {
    std::uint8_t classes[256];  // bits of platform::CharacterClass
    std::uint16_t upper[256];
    std::uint16_t lower[256];
};

extern CharacterPage g_characterPages[256];
extern std::atomic<bool> g_characterPageFilled[256];
void FillCharacterPage(unsigned page);

// May be called from any thread.
inline const CharacterPage& PageOfCharacter(unsigned character) {
    const unsigned page = character >> 8;
    if (!g_characterPageFilled[page].load(std::memory_order_acquire)) FillCharacterPage(page);
    return g_characterPages[page];
}

inline bool IsOfClass(unsigned short character, unsigned classes) {
    return PageOfCharacter(character).classes[character & 0xFF] & classes;
}

}  // namespace genutil

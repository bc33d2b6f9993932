// The escape sequences of Japanese 7-bit text (JIS).
#pragma once

#include <cstddef>
#include <string_view>

namespace genutil::jis {

enum class Set { kAscii, kKana, kKanji, kSupplement };

constexpr unsigned char kEscape = 0x1B, kShiftOut = 0x0E, kShiftIn = 0x0F;

struct Escape {
    std::string_view text;  // after the escape byte
    bool designates;
    Set set;
};
// The Latin half of JIS X 0201 counts as ASCII. "&@" announces the revision of the set that is
// designated next and has no effect by itself.
constexpr Escape kEscapes[] = {
    {"$B", true, Set::kKanji},  {"(B", true, Set::kAscii},  {"$@", true, Set::kKanji},
    {"(J", true, Set::kAscii},  {"(I", true, Set::kKana},   {"$(D", true, Set::kSupplement},
    {"(H", true, Set::kAscii},  {"&@", false, Set::kAscii}, {"$(B", true, Set::kKanji},
    {"$(@", true, Set::kKanji},
};

// Returns the escape sequence at p, which must be an escape byte, or null if it is none of these.
inline const Escape* FindEscape(const unsigned char* p, std::size_t n) {
    const std::string_view rest(reinterpret_cast<const char*>(p) + 1, n - 1);
    for (const Escape& escape : kEscapes)
        if (rest.substr(0, escape.text.size()) == escape.text) return &escape;
    return nullptr;
}

// Returns true if the n bytes at p are an incomplete escape sequence.
inline bool EscapeGoesOn(const unsigned char* p, std::size_t n) {
    const std::string_view rest(reinterpret_cast<const char*>(p) + 1, n - 1);
    for (const Escape& escape : kEscapes)
        if (rest.size() < escape.text.size() && escape.text.substr(0, rest.size()) == rest)
            return true;
    return false;
}

}  // namespace genutil::jis

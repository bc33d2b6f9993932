// The escape sequences of Japanese 7-bit text (JIS).
#pragma once

#include <cstddef>
#include <cstdint>
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

// Returns the escape sequence that is written for a set.
constexpr std::string_view EscapeTo(Set set) {
    switch (set) {
        case Set::kKana:
            return "\x1B(I";
        case Set::kKanji:
            return "\x1B$B";
        case Set::kSupplement:
            return "\x1B$(D";
        default:
            return "\x1B(B";
    }
}

// Follows ASCII text in which an escape character is no more than a character. `next` receives how
// far the text resembles an escape sequence after one more character: 0 not at all, 1 to 4 after
// the escape byte and nothing, "$", "(" or "&", 5 after "$(". Returns false if the character would
// complete an escape sequence.
inline bool NextEscaped(unsigned escaped, unsigned character, std::uint8_t* next) {
    static constexpr std::string_view kBegun[] = {"", "", "$", "(", "&", "$("};
    *next = character == kEscape;
    if (escaped == 0 || character >= 0x80) return true;
    for (const Escape& escape : kEscapes) {
        const std::string_view begun = kBegun[escaped];
        if (escape.text.substr(0, begun.size()) != begun ||
            static_cast<unsigned char>(escape.text[begun.size()]) != character)
            continue;
        if (escape.text.size() == begun.size() + 1) return false;
        const std::string_view now = escape.text.substr(0, begun.size() + 1);
        for (std::uint8_t i = 2; i <= 5; ++i)
            if (kBegun[i] == now) *next = i;
    }
    return true;
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

#include "genutil/mbutil/best_fit.h"

#include <algorithm>
#include <iterator>

namespace genutil {

namespace {

constexpr NearLetter kNearLetters[] = {
#include "genutil/mbutil/best_fit.inc"
};

}  // namespace

const NearLetter* FindNearLetter(std::uint16_t character) {
    const NearLetter* end = std::end(kNearLetters);
    const NearLetter* found =
        std::lower_bound(kNearLetters, end, character,
                         [](const NearLetter& row, std::uint16_t c) { return row.character < c; });
    return found != end && found->character == character ? found : nullptr;
}

char PlainLetter(std::uint16_t character) {
    // Some characters are substitutes of each other.
    for (int steps = 0; character >= 0x80; ++steps) {
        const NearLetter* near = FindNearLetter(character);
        if (!near || steps == 8) return 0;
        character = near->plain;
    }
    return static_cast<char>(character);
}

}  // namespace genutil

#include "genutil/mbutil/cut_character.h"

#include "genutil/mbutil/align.h"
#include "genutil/mbutil/step.h"

namespace genutil {

std::size_t CutCharacter(const char* text, std::size_t length, int codeSet) {
    const StepTable* table = StepTableOf(codeSet);
    if (!table) return 0;
    constexpr std::size_t kLongestCut = 3;
    std::size_t at =
        AlignToCharacter(*table, Bytes(text), length > kLongestCut ? length - kLongestCut : 0);
    while (at < length) {
        const std::size_t left = length - at;
        const int whole = CharacterLength(*table, Bytes(text) + at, static_cast<unsigned>(left));
        if (whole > static_cast<int>(left)) return left;
        at += whole > 0 ? static_cast<std::size_t>(whole) : 1;
    }
    return 0;
}

}  // namespace genutil

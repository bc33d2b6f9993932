#include "genutil/mbutil/text_end.h"

#include <cstring>

#include "genutil/mbutil/step.h"

namespace genutil {
namespace {

constexpr char kEscape = 0x1B;

// Length of the escape sequence at p: three bytes, or four with "$(". 0 when the text ends in it.
std::size_t EscapeLength(const char* p, std::size_t left) {
    const std::size_t length = left >= 3 && p[1] == '$' && p[2] == '(' ? 4 : 3;
    return left >= length ? length : 0;
}

std::size_t CutJis(const char* text, std::size_t length, Shift* shift) {
    bool pairs = false;
    for (std::size_t at = 0; at < length;) {
        const std::size_t left = length - at;
        if (text[at] == kEscape) {
            const std::size_t escape = EscapeLength(text + at, left);
            if (!escape) return left;
            pairs = text[at + 1] == '$';
            *shift = {};
            if (pairs || text[at + 2] == 'I') std::memcpy(shift->escape, text + at, escape);
            at += escape;
        } else if (text[at] == '\n') {
            // Lines begin in ASCII.
            pairs = false;
            *shift = {};
            ++at;
        } else if (pairs) {
            if (left == 1) return 1;
            at += 2;
        } else {
            ++at;
        }
    }
    return 0;
}

}  // namespace

std::size_t CutCharacter(const char* text, std::size_t length, int codeSet, Shift* shift) {
    if (codeSet == mbJis) return CutJis(text, length, shift);
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

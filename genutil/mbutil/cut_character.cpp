#include "genutil/mbutil/cut_character.h"

#include <cstring>

#include "genutil/jaconv/reader.h"
#include "genutil/mbutil/align.h"
#include "genutil/mbutil/step.h"

namespace genutil {
namespace {

const char* EscapeInto(jis::Set set) {
    switch (set) {
        case jis::Set::kKana:
            return "\x1B(I";
        case jis::Set::kKanji:
            return "\x1B$B";
        case jis::Set::kSupplement:
            return "\x1B$(D";
        default:
            return "";
    }
}

std::size_t CutJis(const char* text, std::size_t length, Shift* shift) {
    jis::JisReader reader;
    reader.p = Bytes(text);
    reader.end = reader.p + length;
    while (reader.Left() && !reader.IsCut()) {
        if (reader.PlainNext()) {
            ++reader.p;
        } else {
            reader.p += reader.Pair() ? 2 : reader.Other().length;
        }
    }
    std::strcpy(shift->escape, EscapeInto(reader.Designated()));
    if (reader.IsShiftedOut()) std::strcat(shift->escape, "\x0E");
    return reader.Left();
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

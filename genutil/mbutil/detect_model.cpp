#include "genutil/mbutil/detect_model.h"

#include <algorithm>
#include <iterator>

namespace genutil::detect {

namespace {

constexpr Letter kLetters[] = {
#include "genutil/mbutil/detect_letters.inc"
};

constexpr std::uint16_t kMarks[] = {
#include "genutil/mbutil/detect_marks.inc"
};

struct IdeographTable {
    char name[4];
    const char* levels;  // two characters in each value
};
constexpr IdeographTable kIdeographs[kIdeographLanguages] = {
#include "genutil/mbutil/detect_ideographs.inc"
};

// The characters that the tables hold one after another. Only the Korean one has the last.
struct Range {
    std::uint16_t first, end;
};
constexpr Range kRanges[] = {
    {0x4E00, 0xA000}, {0x3000, 0x3100}, {0xFF00, 0xFFF0}, {0x2010, 0x2070}, {0xAC00, 0xD7A4}};
constexpr unsigned kOffsets[] = {0x60 + 0x100, 0x60, 0x60 + 0x100 + 0x5200, 0,
                                 0x60 + 0x100 + 0x5200 + 0xF0};

constexpr unsigned kLevels = 9;
constexpr std::uint8_t kLevelCosts[kLevels] = {27, 37, 46, 56, 65, 75, 85, 94, 104};
constexpr int kOutside = 104;

}  // namespace

constexpr Language kLanguageTable[kLanguages] = {
#include "genutil/mbutil/detect_languages.inc"
};

const Letter* FindLetter(unsigned character) {
    const Letter* const found =
        std::lower_bound(std::begin(kLetters), std::end(kLetters), character,
                         [](const Letter& letter, unsigned c) { return letter.character < c; });
    return found != std::end(kLetters) && found->character == character ? found : nullptr;
}

int FindMark(unsigned character) {
    const std::uint16_t* const found =
        std::lower_bound(std::begin(kMarks), std::end(kMarks), character);
    const bool known = found != std::end(kMarks) && *found == character;
    return known ? static_cast<int>(found - kMarks) : -1;
}

int IdeographCost(Ideographs language, unsigned character) {
    const unsigned ranges = language == Ideographs::kKorean ? 5 : 4;
    for (unsigned i = 0; i < ranges; ++i) {
        if (character < kRanges[i].first || character >= kRanges[i].end) continue;
        const unsigned at = kOffsets[i] + character - kRanges[i].first;
        const char* const levels = kIdeographs[static_cast<unsigned>(language)].levels;
        const unsigned both = static_cast<unsigned>(levels[at / 2] - '#');
        return kLevelCosts[at % 2 ? both % kLevels : both / kLevels];
    }
    return kOutside;
}

}  // namespace genutil::detect

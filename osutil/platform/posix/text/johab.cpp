// Johab encodes a syllable as three groups of five bits below the high bit: initial, medial, final.
// Symbols and hanja are those of KS X 1001, in rows of 188 cells.
#include "osutil/platform/posix/text/johab.h"

#include <algorithm>

#include "osutil/platform/text/codepages.h"

namespace genutil::platform {

namespace {

constexpr int kFill = 0;    // this part of the syllable is absent
constexpr int kWrong = -1;  // the group is unassigned

// The following functions return 1 for the first jamo of their kind, in the order of the groups.
int Initial(unsigned group) {
    if (group == 1) return kFill;
    return group >= 2 && group <= 20 ? static_cast<int>(group) - 1 : kWrong;
}

int Medial(unsigned group) {  // eight codes contain six vowels: two of each eight are omitted
    if (group == 2) return kFill;
    const unsigned column = group % 8, row = group / 8;
    if (group < 3 || group > 29 || (row > 0 && column < 2)) return kWrong;
    return static_cast<int>(row == 0 ? column - 2 : row * 6 + column - 2);
}

int Final(unsigned group) {  // 18 is omitted
    if (group == 1) return kFill;
    if (group < 2 || group > 29 || group == 18) return kWrong;
    return static_cast<int>(group < 18 ? group - 1 : group - 2);
}

std::uint16_t Syllable(unsigned code) {
    const int initial = Initial(code >> 10 & 31), medial = Medial(code >> 5 & 31),
              final = Final(code & 31);
    int character = kNoCharacter;
    if (initial > 0 && medial > 0 && final >= 0)
        character = 0xAC00 + ((initial - 1) * 21 + medial - 1) * 28 + final;
    else if (initial > 0 && medial == kFill && final == kFill)
        character = 0x1100 + initial - 1;
    else if (initial == kFill && medial > 0 && final == kFill)
        character = 0x1161 + medial - 1;
    else if (initial == kFill && medial == kFill && final > 0)
        character = 0x11A8 + final - 1;
    return static_cast<std::uint16_t>(character);
}

// Single jamo are written with the conjoining characters here, so KS X 1001 row 4 contains only
// those that are not part of a modern syllable.
constexpr std::uint16_t kOldJamo[] = {
    0x115F, 0x1114, 0x1115, 0x11C7, 0x11C8, 0x11CC, 0x11CE, 0x11D3, 0x11D7, 0x11D9, 0x111C,
    0x11DD, 0x11DF, 0x111D, 0x111E, 0x1120, 0x1122, 0x1123, 0x1127, 0x1128, 0x112B, 0x112C,
    0x112D, 0x112E, 0x112F, 0x1132, 0x1136, 0x1140, 0x1147, 0x114C, 0x1145, 0x1146, 0x1157,
    0x1158, 0x1159, 0x1184, 0x1185, 0x1188, 0x1191, 0x1192, 0x1194, 0x119E, 0x11A1};
constexpr unsigned kJamoRow = 3, kOldJamoCell = 51;  // counted from 0

constexpr unsigned kUserLead = 0xD8, kFirstSymbolLead = 0xD9, kFirstHanjaLead = 0xE0,
                   kFirstHanjaRow = 0x4A - 0x21;

std::uint16_t SymbolOrHanja(const std::uint16_t* koreanPairs, unsigned lead, unsigned index) {
    if (lead == kUserLead) return static_cast<std::uint16_t>(0xE000 + index);
    const unsigned cell = index % 94;
    const unsigned row =
        index / 94 + (lead < kFirstHanjaLead ? (lead - kFirstSymbolLead) * 2
                                             : (lead - kFirstHanjaLead) * 2 + kFirstHanjaRow);
    if (row == kJamoRow) return cell < kOldJamoCell ? kNoCharacter : kOldJamo[cell - kOldJamoCell];
    return koreanPairs[(row + 0xA1) << 8 | (cell + 0xA1)];
}

std::uint16_t Pair(const std::uint16_t* koreanPairs, unsigned lead, unsigned trail) {
    if (lead >= 0x84 && lead <= 0xD3) return Syllable(lead << 8 | trail);
    const bool hasRows =
        (lead >= kUserLead && lead <= 0xDE) || (lead >= kFirstHanjaLead && lead <= 0xF9);
    if (!hasRows) return kNoCharacter;
    if (trail >= 0x31 && trail <= 0x7E) return SymbolOrHanja(koreanPairs, lead, trail - 0x31);
    if (trail >= 0x91 && trail <= 0xFE) return SymbolOrHanja(koreanPairs, lead, trail - 0x43);
    return kNoCharacter;
}

}  // namespace

void ComputeJohab(const std::uint16_t* koreanPairs, std::uint16_t* bytes, std::uint16_t* pairs) {
    std::fill(bytes, bytes + 256, kNoCharacter);
    for (unsigned byte = 0; byte < 0x84; ++byte) bytes[byte] = static_cast<std::uint16_t>(byte);
    // Bytes that are neither characters nor lead bytes are published as private characters.
    std::uint16_t next = 0xF8EC;
    for (const unsigned byte : {0xD4, 0xD5, 0xD6, 0xD7, 0xDF, 0xFA, 0xFB, 0xFC, 0xFD, 0xFE, 0xFF})
        bytes[byte] = next++;
    for (unsigned code = 0; code < 0x10000; ++code)
        pairs[code] = Pair(koreanPairs, code >> 8, code & 0xFF);
}

}  // namespace genutil::platform

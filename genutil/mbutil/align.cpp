#include "genutil/mbutil/align.h"

#include "genutil/mbutil/character_blocks.h"

namespace genutil {

std::size_t AlignToCharacter(const StepTable& table, const unsigned char* s, std::size_t idx) {
    // The run of lead bytes before idx begins at the start of a character.
    if (idx == 0 || !BeginsLonger(table, s[idx - 1])) return idx;
    const RunOfLeads run = FindRunOfLeads(table, s, idx);
    if (run.hasShift) {
        std::size_t at = run.start, step = 0;
        while (at < idx) at += step = StepLength(table, s + at);
        return at > idx ? at - step : at;
    }
    // The run consists of pairs, because every lead byte may also be a trail byte.
    const bool odd = (idx - run.start) % 2 != 0;
    return odd && (table.later[s[idx]] & StepTable::kSecond) ? idx - 1 : idx;
}

std::size_t AlignToPromise(const StepTable& table, const unsigned char* s, std::size_t idx) {
    // A byte that does not begin a longer character ends a character, except as the second byte of
    // three or four.
    std::size_t at = idx, step = 0;
    const auto isShift = [&](std::size_t back) {
        return table.hasShifts && at >= back && (s[at - back] | 1) == 0x8F;
    };
    while (at > 0 && (BeginsLonger(table, s[at - 1]) || isShift(2) || isShift(3))) --at;
    while (at < idx) at += step = PromisedLength(&table, s + at);
    return at > idx ? at - step : at;
}

}  // namespace genutil

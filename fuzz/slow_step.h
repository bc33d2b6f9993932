// Stepping over characters one by one from the first byte, with explicit ranges: slow and obvious.
#pragma once

#include <cstring>
#include <string>
#include <vector>

namespace slow {

inline bool In(unsigned b, unsigned low, unsigned high) {
    return b >= low && b <= high;
}

// Returns the length of the character at p, from all of its bytes, or 1 if it is invalid.
inline unsigned Length(const unsigned char* p, int codeSet) {
    const auto high = [&](unsigned i) { return In(p[i], 0xA1, 0xFE); };
    switch (codeSet) {
        case 4:
            if (high(0)) return high(1) ? 2 : 1;
            if (p[0] == 0x8E) return In(p[1], 0xA1, 0xDF) ? 2 : 1;
            return p[0] == 0x8F && high(1) && high(2) ? 3 : 1;
        case 5:
            return (In(p[0], 0x81, 0x9F) || In(p[0], 0xE0, 0xEF)) && In(p[1], 0x40, 0xFC) ? 2 : 1;
        case 7:
        case 8:
        case 13:
            return high(0) && high(1) ? 2 : 1;
        case 9:
            return high(0) && (In(p[1], 0x40, 0x7E) || high(1)) ? 2 : 1;
        case 10:
            if (high(0)) return high(1) ? 2 : 1;
            return p[0] == 0x8E && In(p[1], 0xA2, 0xB0) && high(2) && high(3) ? 4 : 1;
        case 11:
            return In(p[0], 0x81, 0xFE) &&
                           (In(p[1], 0x41, 0x5A) || In(p[1], 0x61, 0x7A) || In(p[1], 0x81, 0xFE))
                       ? 2
                       : 1;
        case 12:
            return (In(p[0], 0x84, 0xD3) || In(p[0], 0xD8, 0xDE) || In(p[0], 0xE0, 0xF9)) &&
                           (In(p[1], 0x41, 0x7E) || In(p[1], 0x81, 0xFE))
                       ? 2
                       : 1;
        default:
            return 1;
    }
}

// Returns the byte indexes of the characters of a text, followed by its length.
inline std::vector<unsigned> Starts(const std::string& text, int codeSet) {
    std::vector<unsigned> starts;
    unsigned at = 0;
    for (; at < text.size();
         at += Length(reinterpret_cast<const unsigned char*>(text.c_str()) + at, codeSet))
        starts.push_back(at);
    starts.push_back(at);
    return starts;
}

// Returns the first or last index at which needle occurs as whole characters, or -1 if there is
// none.
inline long Find(const std::string& hay, const std::string& needle, int codeSet,
                 bool last = false) {
    long found = -1;
    const auto starts = Starts(hay, codeSet);
    for (unsigned i = 0; i + 1 < starts.size(); ++i) {
        unsigned end = i;
        while (starts[end] < starts[i] + needle.size() && end + 1 < starts.size()) ++end;
        if (starts[end] - starts[i] != needle.size() ||
            hay.compare(starts[i], needle.size(), needle))
            continue;
        found = starts[i];
        if (!last) break;
    }
    return found;
}

}  // namespace slow

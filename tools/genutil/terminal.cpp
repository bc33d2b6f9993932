#include "tools/genutil/terminal.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "tools/genutil/system.h"
#include "tools/genutil/utf8.h"

namespace {

struct Range {
    unsigned first, last;
};

// East Asian characters of two columns.
constexpr Range kWide[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},
                           {0xA960, 0xA97F},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},
                           {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},
                           {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};
// Combining marks of Latin, Hebrew, Arabic, Hindi and Thai text and of kana, joiners, variation
// selectors.
constexpr Range kMarks[] = {{0x0300, 0x036F}, {0x0591, 0x05BD}, {0x064B, 0x065F}, {0x0900, 0x0902},
                            {0x093C, 0x093C}, {0x0941, 0x0948}, {0x094D, 0x094D}, {0x0E31, 0x0E31},
                            {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E}, {0x200B, 0x200F}, {0x3099, 0x309A},
                            {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}};

template <std::size_t n>
bool IsIn(const Range (&ranges)[n], unsigned code) {
    const Range* const range = std::lower_bound(
        ranges, ranges + n, code, [](const Range& r, unsigned c) { return r.last < c; });
    return range != ranges + n && range->first <= code;
}

std::size_t ColumnsOf(unsigned code) {
    return IsIn(kMarks, code) ? 0 : IsIn(kWide, code) ? 2 : 1;
}

// Returns the end of the longest beginning of a text that fits in `columns`. Sets columns to its
// width.
std::size_t EndWithin(const std::string& utf8, std::size_t* columns) {
    std::size_t at = 0, taken = 0;
    while (at < utf8.size()) {
        const auto length = static_cast<std::size_t>(Utf8Length(utf8, at));
        const std::size_t width = length ? ColumnsOf(CodePoint({&utf8[at], length})) : 1;
        if (taken + width > *columns) break;
        taken += width;
        at += std::max<std::size_t>(length, 1);
    }
    *columns = taken;
    return at;
}

}  // namespace

std::size_t Columns(const std::string& utf8) {
    std::size_t columns = 2 * utf8.size();
    EndWithin(utf8, &columns);
    return columns;
}

std::string FittingInto(const std::string& utf8, std::size_t columns) {
    return utf8.substr(0, EndWithin(utf8, &columns));
}

std::string Styled(std::FILE* stream, Style style, const std::string& text) {
    const char* const none = std::getenv("NO_COLOR");
    if ((none && *none) || !ShowsStyles(stream)) return text;
    return (style == Style::kHeading ? "\x1B[1m" : "\x1B[1;31m") + text + "\x1B[0m";
}

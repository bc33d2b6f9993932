// Reading and writing one character of a code set with tables, and one of UTF-8. Every loop falls
// back to these functions.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genutil/mbutil/code_page.h"

namespace genutil {

constexpr bool IsHighSurrogate(unsigned unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(unsigned unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// A character and its length in bytes; length 0 if no character begins here.
struct CodeRead {
    unsigned character;
    unsigned length;
};

// Reads a code longer than two bytes at p.
inline CodeRead ReadPrefixed(const CodePage& page, const unsigned char* p,
                             const unsigned char* end) {
    const std::size_t n = page.prefixLength;
    if (n == 0 || static_cast<std::size_t>(end - p) < n + 2 || p[0] != page.prefix[0])
        return {0, 0};
    if (!page.isLead[p[n]] || !page.isTrail[p[n + 1]]) return {0, 0};
    // The second of two prefixes is the successor of the first. In the table, the trail bytes of
    // its cells have no high bit. The predecessor is that of the plane which needs no prefix.
    unsigned trail = p[n + 1];
    const std::uint16_t* table = page.prefixed.get();
    if (n == 2 && p[1] != page.prefix[1]) {
        if (p[1] == page.prefix[1] + 1)
            trail &= 0x7F;
        else if (p[1] == page.prefix[1] - 1)
            table = page.pairs.get();
        else
            return {0, 0};
    }
    const unsigned character = table[CodePage::PairIndex(p[n], trail)];
    return {character, character == kNoCharacter ? 0 : static_cast<unsigned>(n) + 2};
}

// Reads the character at p, before end, in a code set with tables.
inline CodeRead ReadCode(const CodePage& page, const unsigned char* p, const unsigned char* end) {
    unsigned character = page.bytes[*p];
    if (character != kNoCharacter) return {character, 1};
    if (!page.pairs || *p < 0x80) return {0, 0};
    if (end - p >= 2) {
        character = page.pairs[CodePage::PairIndex(p[0], p[1])];
        if (character != kNoCharacter) return {character, 2};
    }
    return ReadPrefixed(page, p, end);
}

// Reads a code of GB18030. Numbered in order, its codes of four bytes are those of the first plane,
// a gap, and all characters of the others.
inline CodeRead ReadGb18030(const CodePage& page, const unsigned char* p,
                            const unsigned char* end) {
    constexpr unsigned kFirstSupplementary = 189000;
    const CodeRead read = ReadCode(page, p, end);
    if (read.length != 0 || end - p < 4) return read;
    const unsigned b0 = p[0] - 0x81u, b1 = p[1] - 0x30u, b2 = p[2] - 0x81u, b3 = p[3] - 0x30u;
    if (b0 > 0x7D || b1 > 9 || b2 > 0x7D || b3 > 9) return {0, 0};
    const unsigned number = ((b0 * 10 + b1) * 126 + b2) * 10 + b3;
    if (number < kLongCodes) return {page.longCodes[number], 4};
    if (number < kFirstSupplementary || number - kFirstSupplementary > 0xFFFFF) return {0, 0};
    return {0x10000 + (number - kFirstSupplementary), 4};
}

// Writes the code of four bytes with a number. Returns 4.
inline unsigned WriteGb18030(unsigned number, unsigned char* out) {
    out[3] = static_cast<unsigned char>(0x30 + number % 10);
    out[2] = static_cast<unsigned char>(0x81 + number / 10 % 126);
    out[1] = static_cast<unsigned char>(0x30 + number / 1260 % 10);
    out[0] = static_cast<unsigned char>(0x81 + number / 12600);
    return 4;
}

// The tables of CodePage::Back() for loops. The bytes that a loop writes cannot alias these
// pointers.
struct BackTables {
    const std::uint16_t* rows;
    const std::uint16_t* cells;

    explicit BackTables(const CodePage& page) : rows(page.backRow), cells(page.back.get()) {}
    unsigned Cell(unsigned row, unsigned column) const { return cells[rows[row] + column]; }
};

// Writes the bytes of a cell of CodePage::Back(), which must not be 0. Returns their number, at
// most 4.
inline unsigned WriteCode(const CodePage& page, unsigned cell, unsigned char* out) {
    if (cell < 0x100) {
        out[0] = static_cast<unsigned char>(cell);
        return 1;
    }
    unsigned n = 0;
    if (cell < kLowestPairCell) {
        for (; n < page.prefixLength; ++n) out[n] = page.prefix[n];
        if (!(cell & 0x80)) ++out[n - 1];
        cell |= 0x8080;
    }
    out[n] = static_cast<unsigned char>(cell >> 8);
    out[n + 1] = static_cast<unsigned char>(cell & 0xFF);
    return n + 2;
}

constexpr bool IsContinuation(unsigned byte) {
    return (byte & 0xC0) == 0x80;
}

// Reads a well-formed UTF-8 sequence at p, before end.
inline CodeRead ReadUtf8(const unsigned char* p, const unsigned char* end) {
    const std::ptrdiff_t n = end - p;
    const unsigned b = p[0];
    if (b < 0x80) return {b, 1};
    if (b < 0xC2 || b > 0xF4 || n < 2 || !IsContinuation(p[1])) return {0, 0};
    if (b < 0xE0) return {(b & 0x1F) << 6 | (p[1] & 0x3Fu), 2};
    if (n < 3 || !IsContinuation(p[2])) return {0, 0};
    unsigned c = (b & 0x0F) << 12 | (p[1] & 0x3Fu) << 6 | (p[2] & 0x3Fu);
    if (b < 0xF0) {
        const bool valid = c >= 0x800 && !(c >= 0xD800 && c <= 0xDFFF);
        return {c, valid ? 3u : 0u};
    }
    if (n < 4 || !IsContinuation(p[3])) return {0, 0};
    c = ((b & 0x07u) << 18 | (p[1] & 0x3Fu) << 12 | (p[2] & 0x3Fu) << 6 | (p[3] & 0x3Fu));
    return {c, c >= 0x10000 && c <= 0x10FFFF ? 4u : 0u};
}

// Writes the UTF-8 sequence of a character below 0x10000. Returns its length, at most 3 bytes.
inline unsigned WriteUtf8(unsigned c, unsigned char* out) {
    if (c < 0x80) {
        out[0] = static_cast<unsigned char>(c);
        return 1;
    }
    if (c < 0x800) {
        out[0] = static_cast<unsigned char>(0xC0 | c >> 6);
        out[1] = static_cast<unsigned char>(0x80 | (c & 0x3F));
        return 2;
    }
    out[0] = static_cast<unsigned char>(0xE0 | c >> 12);
    out[1] = static_cast<unsigned char>(0x80 | (c >> 6 & 0x3F));
    out[2] = static_cast<unsigned char>(0x80 | (c & 0x3F));
    return 3;
}

}  // namespace genutil

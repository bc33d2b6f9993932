// The library's checksum: the table of the reflected CRC-32, applied from the high end.
//
// A step takes the top byte of the state, with a byte of data, through the table and shifts the
// state by a byte. It is linear over bits, so that what each of sixteen bytes does to the state
// after the last of them can be looked up by itself, and all is added up.
#include <array>
#include <cstddef>
#include <cstdint>

#include "genlist.h"

namespace {

constexpr std::size_t kBlock = 16;
using Table = std::array<std::uint32_t, 256>;

constexpr Table ReflectedTable() {
    Table table{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t value = i;
        for (int bit = 0; bit < 8; ++bit) value = value & 1 ? value >> 1 ^ 0xEDB88320 : value >> 1;
        table[i] = value;
    }
    return table;
}

// Entry n, i: the state after n + 1 steps over zeroes that started with i in the top byte.
constexpr std::array<Table, kBlock> StepTables() {
    std::array<Table, kBlock> tables{};
    tables[0] = ReflectedTable();
    for (std::size_t n = 1; n < kBlock; ++n)
        for (std::size_t i = 0; i < 256; ++i) {
            const std::uint32_t state = tables[n - 1][i];
            tables[n][i] = state << 8 ^ tables[0][state >> 24];
        }
    return tables;
}

constexpr std::array<Table, kBlock> kSteps = StepTables();
static_assert(kSteps[0][1] == 0x77073096 && kSteps[0][255] == 0x2D02EF8D);

}  // namespace

unsigned int gencrc32(unsigned int crc, const unsigned char* data, unsigned int length) {
    for (; length >= kBlock; length -= kBlock, data += kBlock) {
        std::uint32_t next =
            kSteps[15][crc >> 24 ^ data[0]] ^ kSteps[14][(crc >> 16 & 0xFF) ^ data[1]] ^
            kSteps[13][(crc >> 8 & 0xFF) ^ data[2]] ^ kSteps[12][(crc & 0xFF) ^ data[3]];
        for (std::size_t i = 4; i < kBlock; ++i) next ^= kSteps[kBlock - 1 - i][data[i]];
        crc = next;
    }
    for (; length; --length) crc = crc << 8 ^ kSteps[0][crc >> 24 ^ *data++];
    return crc;
}

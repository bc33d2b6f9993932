// The checksum, computed sixteen bytes at a time.
#include <array>
#include <cstdint>

#include "genlist.h"

namespace {

using Table = std::array<std::uint32_t, 256>;

constexpr std::uint32_t kPolynomial = 0xEDB88320;  // of CRC-32, reflected

constexpr Table MakeTable() {
    Table table = {};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t sum = i;
        for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ (sum & 1 ? kPolynomial : 0);
        table[i] = sum;
    }
    return table;
}

constexpr Table kTable = MakeTable();
static_assert(kTable[1] == 0x77073096 && kTable[255] == 0x2D02EF8D);

// Processes one byte. The table is for sums that shift to the right, but this one shifts to the
// left. Stored checksums depend on this combination.
constexpr std::uint32_t Step(std::uint32_t crc, std::uint32_t byte) {
    return (crc << 8) ^ kTable[(crc >> 24) ^ byte];
}

// A step is linear over the bits of sum and byte, and a byte at the low end of the sum takes three
// steps to reach the top unchanged. The contribution of a byte to the sum k steps after its own can
// therefore be looked up, and four bytes can be added to the sum at once.
constexpr int kSlices = 16;
constexpr std::array<Table, kSlices> MakeSlices() {
    std::array<Table, kSlices> slices = {kTable};
    for (int k = 1; k < kSlices; ++k)
        for (std::uint32_t i = 0; i < 256; ++i) slices[k][i] = Step(slices[k - 1][i], 0);
    return slices;
}

constexpr std::array<Table, kSlices> kSlice = MakeSlices();

// Processes kBytes bytes. The previous sum is combined with the first four.
template <int kBytes>
std::uint32_t Slice(std::uint32_t crc, const unsigned char* data) {
    std::uint32_t next = 0;
    for (int i = 0; i < 4; ++i)
        next ^= kSlice[kBytes - 1 - i][data[i] ^ ((crc >> (24 - 8 * i)) & 0xFF)];
    for (int i = 4; i < kBytes; ++i) next ^= kSlice[kBytes - 1 - i][data[i]];
    return next;
}

}  // namespace

unsigned int gencrc32(unsigned int crc, const unsigned char* data, unsigned int length) {
    for (; length >= kSlices; data += kSlices, length -= kSlices) crc = Slice<kSlices>(crc, data);
    for (; length >= 4; data += 4, length -= 4) crc = Slice<4>(crc, data);
    for (; length > 0; ++data, --length) crc = Step(crc, *data);
    return crc;
}

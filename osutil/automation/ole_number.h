// Decimal numbers and amounts of money in the form of automation, converted from and to text in the
// C spelling by integer arithmetic.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace genutil {

// A number of 96 bits in three parts, lowest first, divided by ten to the power of scale.
struct OleDecimal {
    std::uint32_t parts[3] = {};
    unsigned scale = 0;  // 0 to 28
    bool negative = false;
};
constexpr unsigned kMostOleDecimals = 28;

// The longest number has 29 digits, a "0", a symbol and a sign.
constexpr std::size_t kOleNumberSize = 40;

// number = ["-"] digits with at most one "." before, among or after them, then blanks
//
// Reads a number. An empty text is 0. Trailing zeroes of a fraction are kept unless the number fits
// only without them. Returns false if the text is not a number or does not fit exactly.
bool ReadOleDecimal(std::string_view text, OleDecimal* out);
// Writes a number without a terminator. Returns the number of bytes, at most kOleNumberSize.
std::size_t WriteOleDecimal(OleDecimal number, char* out);

// Read and write an amount in ten-thousandths. Its text has no trailing zeroes in the fraction.
bool ReadOleCurrency(std::string_view text, std::int64_t* out);
std::size_t WriteOleCurrency(std::int64_t amount, char* out);

}  // namespace genutil

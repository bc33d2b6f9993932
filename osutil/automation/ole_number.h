// Decimal numbers and amounts of money as automation has them, from and to text in the C spelling,
// by integer arithmetic.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace genutil {

// A number of 96 bits in three parts, the lowest first, divided by ten to the power of scale.
struct OleDecimal {
    std::uint32_t parts[3] = {};
    unsigned scale = 0;  // 0 to 28
    bool negative = false;
};
constexpr unsigned kMostOleDecimals = 28;

// The longest number has 29 digits, a "0", a symbol and a sign.
constexpr std::size_t kOleNumberSize = 40;

// number = ["-"] digits with at most one "." before, among or behind them, then blanks
// The empty text is 0. Zeroes at the end of a fraction stay unless the number fits without them
// only. False when the text is no number or does not fit exactly.
bool ReadOleDecimal(std::string_view text, OleDecimal* out);
// Writes at most kOleNumberSize bytes; returns how many.
std::size_t WriteOleDecimal(OleDecimal number, char* out);

// An amount in ten-thousandths; its text has no zeroes at the end of a fraction.
bool ReadOleCurrency(std::string_view text, std::int64_t* out);
std::size_t WriteOleCurrency(std::int64_t amount, char* out);

}  // namespace genutil

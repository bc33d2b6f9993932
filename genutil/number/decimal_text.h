// Decimal numbers as text: read, shifted and written digit by digit, so that none is ever lost. The
// symbols of a locale are handed in.
//
//   number = "-"? run blank*  |  run "-" blank*  |  nothing     (nothing stands in front)
//   run    = digit (digit | separator)* [decimal digit*]  |  decimal digit+
#pragma once

#include <cstddef>
#include <string_view>

#include "genutil/mbutil/step.h"

namespace genutil {

// Either part of a number has at most so many digits.
constexpr std::size_t kMaxDigits = 255;

// Each symbol is one byte, 0 for none; of a longer one the first byte.
struct DecimalSymbols {
    char decimal;
    char separator;                    // of groups
    const StepTable* steps = nullptr;  // where a symbol may be part of a longer character
};
constexpr DecimalSymbols kCSymbols = {'.', ','};

// The parts lie in the text that was read, or in the storage here.
struct DecimalNumber {
    std::string_view integer;
    std::string_view fraction;
    bool negative = false;
    char storage[2 * kMaxDigits];

    // Leaves the storage as it is: it is filled when it is used.
    DecimalNumber() {}  // NOLINT(modernize-use-equals-default)
    DecimalNumber(const DecimalNumber&) = delete;
    DecimalNumber& operator=(const DecimalNumber&) = delete;
};

enum class DecimalStatus {
    kValid,    // the empty text too, which has no digits
    kInvalid,  // the number has what was read so far
    kTooLong   // more digits than there is room for
};

// Reads a number from a text without 0 bytes. *end, unless null, becomes where the run of digits
// and symbols ends, 0 when there is none; invalid text has an end too.
DecimalStatus ParseDecimal(std::string_view text, const DecimalSymbols& symbols,
                           DecimalNumber& number, std::size_t* end = nullptr);

// The same for a text that may be in the C spelling, which it is in then, or in that of a locale.
DecimalStatus ParseCOrRegional(std::string_view text, const DecimalSymbols& regional,
                               DecimalNumber& number);

// Multiplies by ten to the power `exponent`. When it is positive, a fraction that goes on behind
// the new decimal symbol keeps at most `exponent` digits. False when the digits have no room;
// `shifted` is another object than `number`.
bool ShiftDecimal(const DecimalNumber& number, int exponent, DecimalNumber& shifted);

// A text of this size holds any number with a separator behind every digit.
constexpr std::size_t kMaxDecimalText = 3 * kMaxDigits + 2;

// Writes a number to the end of the buffer and returns it. `grouping` has one-digit sizes of the
// groups from the decimal symbol on, with ";" between them, or nothing: "3;2;0"; behind a 0 the
// last one repeats, and without a 0 there are no groups but these.
std::string_view WriteDecimal(char (&buffer)[kMaxDecimalText], const DecimalNumber& number,
                              const DecimalSymbols& symbols, std::string_view grouping = {});

}  // namespace genutil

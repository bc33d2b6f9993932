// Decimal numbers as text. They are read, shifted and written digit by digit, so that no digit is
// lost. The symbols of a locale are parameters.
//
//   number = "-"? run blank*  |  run "-" blank*  |  nothing     (nothing precedes it)
//   run    = digit (digit | separator)* [decimal digit*]  |  decimal digit+
#pragma once

#include <cstddef>
#include <string_view>

#include "genutil/mbutil/step.h"

namespace genutil {

// The maximum number of digits in either part of a number.
constexpr std::size_t kMaxDigits = 255;

// The symbols of numbers, each one byte, or 0 for none. Of a longer symbol, only the first byte.
struct DecimalSymbols {
    char decimal;
    char separator;                    // of digit groups
    const StepTable* steps = nullptr;  // null unless a symbol may be part of a longer character
};
constexpr DecimalSymbols kCSymbols = {'.', ','};

// A parsed number. Its parts refer to the text that was read, or to the storage here.
struct DecimalNumber {
    std::string_view integer;
    std::string_view fraction;
    bool negative = false;
    char storage[2 * kMaxDigits];

    // Does not initialise the storage, which is filled on use.
    DecimalNumber() {}  // NOLINT(modernize-use-equals-default)
    DecimalNumber(const DecimalNumber&) = delete;
    DecimalNumber& operator=(const DecimalNumber&) = delete;
};

enum class DecimalStatus {
    kValid,    // also for an empty text, which has no digits
    kInvalid,  // the number contains the part read so far
    kTooLong   // more digits than there is room for
};

// Parses a number in a text without 0 bytes.
// @param end receives the position after the run of digits and symbols, or 0 if there is none, also
//     for invalid text; may be null.
DecimalStatus ParseDecimal(std::string_view text, const DecimalSymbols& symbols,
                           DecimalNumber& number, std::size_t* end = nullptr);

// Same as above for a text in the C spelling or in that of a locale. The C spelling takes
// precedence.
DecimalStatus ParseCOrRegional(std::string_view text, const DecimalSymbols& regional,
                               DecimalNumber& number);

// Multiplies by ten to the power `exponent`. If the exponent is positive, a fraction that extends
// past the new decimal symbol keeps at most `exponent` digits. Returns false if there is no room
// for the digits. `shifted` must not be `number`.
bool ShiftDecimal(const DecimalNumber& number, int exponent, DecimalNumber& shifted);

// Size of a text that holds any number with a separator after every digit.
constexpr std::size_t kMaxDecimalText = 3 * kMaxDigits + 2;

// Writes a number at the end of the buffer. Returns its text.
// @param grouping one-digit sizes of the groups from the decimal symbol on, separated by ";":
//     "3;2;0". A final 0 repeats the preceding size. Without it there are no other groups. May be
//     empty.
std::string_view WriteDecimal(char (&buffer)[kMaxDecimalText], const DecimalNumber& number,
                              const DecimalSymbols& symbols, std::string_view grouping = {});

}  // namespace genutil

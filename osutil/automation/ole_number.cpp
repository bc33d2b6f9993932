#include "osutil/automation/ole_number.h"

#include <algorithm>

#include "genutil/ascii.h"

namespace genutil {

namespace {

// The parts of a number's text.
struct NumberText {
    bool negative = false;
    std::string_view whole, fraction;
};

bool AllDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), IsAsciiDigit);
}

bool Split(std::string_view text, NumberText* out) {
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    if (text.empty()) return true;
    out->negative = text.front() == '-';
    if (out->negative) text.remove_prefix(1);
    const std::size_t symbol = text.find('.');
    out->whole = text.substr(0, symbol);
    if (symbol != text.npos) out->fraction = text.substr(symbol + 1);
    return out->whole.size() + out->fraction.size() > 0 && AllDigits(out->whole) &&
           AllDigits(out->fraction);
}

void DropZeroes(std::string_view* fraction) {
    while (!fraction->empty() && fraction->back() == '0') fraction->remove_suffix(1);
}

// Computes number * 10 + digit. Returns false if the result has more than 96 bits.
bool Append(OleDecimal* number, unsigned digit) {
    std::uint64_t carry = digit;
    for (std::uint32_t& part : number->parts) {
        carry += std::uint64_t{part} * 10;
        part = static_cast<std::uint32_t>(carry);
        carry >>= 32;
    }
    return carry == 0;
}

// Divides the number by 10. Returns the remainder.
unsigned TakeDigit(OleDecimal* number) {
    std::uint64_t rest = 0;
    for (int i = 2; i >= 0; --i) {
        rest = rest << 32 | number->parts[i];
        number->parts[i] = static_cast<std::uint32_t>(rest / 10);
        rest %= 10;
    }
    return static_cast<unsigned>(rest);
}

bool IsZero(const OleDecimal& number) {
    return (number.parts[0] | number.parts[1] | number.parts[2]) == 0;
}

bool Build(const NumberText& text, OleDecimal* out) {
    OleDecimal number;
    if (text.fraction.size() > kMostOleDecimals) return false;
    for (const std::string_view digits : {text.whole, text.fraction})
        for (const char c : digits)
            if (!Append(&number, static_cast<unsigned>(c - '0'))) return false;
    number.scale = static_cast<unsigned>(text.fraction.size());
    number.negative = text.negative && !IsZero(number);
    *out = number;
    return true;
}

}  // namespace

bool ReadOleDecimal(std::string_view text, OleDecimal* out) {
    NumberText pieces;
    if (!Split(text, &pieces)) return false;
    if (Build(pieces, out)) return true;
    DropZeroes(&pieces.fraction);
    return Build(pieces, out);
}

std::size_t WriteOleDecimal(OleDecimal number, char* out) {
    char digits[kOleNumberSize];
    std::size_t count = 0, length = 0;
    do {
        if (count == number.scale && count != 0) digits[length++] = '.';
        digits[length++] = static_cast<char>('0' + TakeDigit(&number));
        ++count;
    } while (!IsZero(number) || count <= number.scale);
    if (number.negative) digits[length++] = '-';
    std::reverse_copy(digits, digits + length, out);
    return length;
}

bool ReadOleCurrency(std::string_view text, std::int64_t* out) {
    NumberText pieces;
    if (!Split(text, &pieces)) return false;
    DropZeroes(&pieces.fraction);
    OleDecimal number;
    if (pieces.fraction.size() > 4 || !Build(pieces, &number)) return false;
    for (; number.scale < 4; ++number.scale)
        if (!Append(&number, 0)) return false;
    const std::uint64_t amount = std::uint64_t{number.parts[1]} << 32 | number.parts[0];
    const std::uint64_t most = (std::uint64_t{1} << 63) - !number.negative;
    if (number.parts[2] != 0 || amount > most) return false;
    *out = static_cast<std::int64_t>(number.negative ? 0 - amount : amount);
    return true;
}

std::size_t WriteOleCurrency(std::int64_t amount, char* out) {
    OleDecimal number;
    number.negative = amount < 0;
    const std::uint64_t value = static_cast<std::uint64_t>(amount);
    const std::uint64_t size = number.negative ? 0 - value : value;
    number.parts[0] = static_cast<std::uint32_t>(size);
    number.parts[1] = static_cast<std::uint32_t>(size >> 32);
    number.scale = 4;
    std::size_t length = WriteOleDecimal(number, out);
    while (out[length - 1] == '0') --length;
    return out[length - 1] == '.' ? length - 1 : length;
}

}  // namespace genutil

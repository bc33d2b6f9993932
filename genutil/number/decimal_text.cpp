#include "genutil/number/decimal_text.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "genutil/ascii.h"
#include "genutil/number/digit_masks.h"

namespace genutil {
namespace {

bool AreDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), IsAsciiDigit);
}

std::string_view WithoutTrailingBlanks(std::string_view text) {
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return text;
}

// Counts leading blanks. They are never digits or symbols, even if a blank is a symbol.
std::size_t CountBlanks(std::string_view text) {
    return std::min(text.find_first_not_of(' '), text.size());
}

// Finds the first decimal symbol of a run that is not within a longer character.
std::size_t FindDecimal(std::string_view run, char decimal, const StepTable* steps) {
    if (!steps) return run.find(decimal);
    for (std::size_t i = 0; i < run.size();) {
        if (run[i] == decimal) return i;
        const unsigned left = static_cast<unsigned>(run.size() - i);
        const int length = CharacterLength(*steps, Bytes(run.data() + i), left);
        i += length > 1 ? static_cast<unsigned>(length) : 1;
    }
    return run.npos;
}

// Determines the sign from the text around the run. Parentheses make a number negative and are then
// rejected like any other sign but "-", on which programs rely.
bool TakeSign(std::string_view prefix, std::string_view suffix, DecimalNumber& number) {
    if (!prefix.empty() && !suffix.empty()) {
        number.negative = prefix == "(" && suffix == ")";
        return false;
    }
    if (prefix.empty() && suffix.empty()) return true;
    number.negative = (prefix.empty() ? suffix : prefix) == "-";
    return number.negative;
}

// Drops the separators at any position.
DecimalStatus TakeInteger(std::string_view digits, char separator, DecimalNumber& number) {
    std::size_t n = 0;
    for (const char c : digits) {
        const bool isDigit = IsAsciiDigit(c);
        if (!(isDigit | (c == separator))) {
            number.integer = {number.storage, n};
            return DecimalStatus::kInvalid;
        }
        number.storage[n] = c;
        n += isDigit;
        if (n > kMaxDigits) return DecimalStatus::kTooLong;
    }
    number.integer = {number.storage, n};
    return DecimalStatus::kValid;
}

}  // namespace

namespace {

constexpr std::size_t kNone = std::string_view::npos;

// The run of digits and symbols in a text.
struct Run {
    std::size_t begin = kNone, end = 0;
    std::size_t point = kNone;                        // the decimal symbol
    bool plainInteger = false, plainFraction = true;  // consisting of digits only
};

Run FindRun(std::string_view text, const DecimalSymbols& symbols) {
    Run run;
    const auto begins = [&](char c) { return IsAsciiDigit(c) || c == symbols.decimal; };
    std::size_t at = CountBlanks(text);
    while (at < text.size() && !begins(text[at])) ++at;
    if (at == text.size()) return run;
    run.begin = at;
    while (at < text.size() && (begins(text[at]) || text[at] == symbols.separator)) ++at;
    run.end = at;
    text = text.substr(run.begin, run.end - run.begin);
    const std::size_t point = FindDecimal(text, symbols.decimal, symbols.steps);
    run.plainInteger = AreDigits(text.substr(0, point));
    if (point == kNone) return run;
    run.point = run.begin + point;
    run.plainFraction = AreDigits(text.substr(point + 1));
    return run;
}

// Same as above with masks, for symbols that are not part of a longer character.
Run FindRun(const DigitMasks& masks, std::size_t blanks) {
    Run run;
    const std::uint64_t begins = masks.digits | masks.decimals, others = ~masks.digits;
    const std::uint64_t first = begins & ~BitsBelow(blanks);
    if (first == 0) return run;
    run.begin = static_cast<std::size_t>(std::countr_zero(first));
    const std::uint64_t behind = ~(begins | masks.separators) & ~BitsBelow(run.begin);
    run.end = static_cast<std::size_t>(std::countr_zero(behind));
    const std::uint64_t inRun = BitsBelow(run.end) & ~BitsBelow(run.begin);
    const std::uint64_t points = masks.decimals & inRun;
    if (points == 0) {
        run.plainInteger = (others & inRun) == 0;
        return run;
    }
    run.point = static_cast<std::size_t>(std::countr_zero(points));
    run.plainInteger = (others & inRun & BitsBelow(run.point)) == 0;
    run.plainFraction = (others & inRun & ~BitsBelow(run.point + 1)) == 0;
    return run;
}

bool CanMask(std::string_view text, const DecimalSymbols& symbols) {
    return text.size() <= kMaskedText && !symbols.steps;
}

// Returns the position of digits and "." in the C spelling: after blanks and a "-".
std::size_t BeginOfCDigits(std::string_view text) {
    const std::size_t at = CountBlanks(text);
    return at + (at < text.size() && text[at] == '-');
}

// Returns true if only digits and "." follow an optional "-". Surrounding blanks are ignored. True
// for an empty text.
bool IsCDecimal(std::string_view text) {
    text = WithoutTrailingBlanks(text);
    text.remove_prefix(BeginOfCDigits(text));
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return IsAsciiDigit(c) || c == kCSymbols.decimal; });
}

// Parses a text without trailing blanks, given its run.
DecimalStatus Parse(std::string_view text, const Run& run, char separator, DecimalNumber& number,
                    std::size_t* end) {
    number.integer = {};
    number.fraction = {};
    number.negative = false;
    if (end) *end = 0;
    if (run.begin == kNone) return DecimalStatus::kInvalid;
    if (end) *end = run.end;
    // Leading blanks are part of the prefix, so that " 5" is not a number while "5 " is one.
    if (!TakeSign(text.substr(0, run.begin), text.substr(run.end), number))
        return DecimalStatus::kInvalid;

    if (run.point != kNone) {
        if (run.end - run.begin == 1) return DecimalStatus::kInvalid;
        number.fraction = text.substr(run.point + 1, run.end - run.point - 1);
        if (number.fraction.size() > kMaxDigits) return DecimalStatus::kTooLong;
        if (!run.plainFraction) return DecimalStatus::kInvalid;
    }
    const std::size_t behind = run.point == kNone ? run.end : run.point;
    const std::string_view digits = text.substr(run.begin, behind - run.begin);
    if (!run.plainInteger || digits.size() > kMaxDigits)
        return TakeInteger(digits, separator, number);
    number.integer = digits;
    return DecimalStatus::kValid;
}

DecimalStatus NoDigits(DecimalNumber& number) {
    number.integer = {};
    number.fraction = {};
    number.negative = false;
    return DecimalStatus::kValid;
}

}  // namespace

DecimalStatus ParseDecimal(std::string_view text, const DecimalSymbols& symbols,
                           DecimalNumber& number, std::size_t* end) {
    if (end) *end = 0;
    if (text.empty()) return NoDigits(number);
    text = WithoutTrailingBlanks(text);
    const Run run =
        CanMask(text, symbols)
            ? FindRun(MasksOf(text, symbols.decimal, symbols.separator), CountBlanks(text))
            : FindRun(text, symbols);
    return Parse(text, run, symbols.separator, number, end);
}

DecimalStatus ParseCOrRegional(std::string_view text, const DecimalSymbols& regional,
                               DecimalNumber& number) {
    if (text.empty()) return NoDigits(number);
    const std::string_view trimmed = WithoutTrailingBlanks(text);
    if (!CanMask(trimmed, regional))
        return ParseDecimal(text, IsCDecimal(trimmed) ? kCSymbols : regional, number);
    DigitMasks masks = MasksOf(trimmed, regional.decimal, regional.separator);
    const std::uint64_t body = BitsBelow(trimmed.size()) & ~BitsBelow(BeginOfCDigits(trimmed));
    if ((masks.digits | masks.points) == body) {
        masks.decimals = masks.points;
        masks.separators = 0;
    }
    return Parse(trimmed, FindRun(masks, CountBlanks(trimmed)), regional.separator, number,
                 nullptr);
}

// -- Shifting ------------------------------------------------------------------------------------

namespace {

struct Appender {
    char* to;
    void Digits(std::string_view digits) {
        if (!digits.empty()) std::memcpy(to, digits.data(), digits.size());
        to += digits.size();
    }
    void Zeroes(std::size_t n) {
        std::memset(to, '0', n);
        to += n;
    }
};

}  // namespace

bool ShiftDecimal(const DecimalNumber& number, int exponent, DecimalNumber& shifted) {
    const std::string_view integer = number.integer, fraction = number.fraction;
    // Negated as unsigned, so that the smallest exponent does not overflow.
    const std::size_t places =
        exponent < 0 ? 0u - static_cast<unsigned>(exponent) : static_cast<unsigned>(exponent);
    const std::size_t used = (exponent < 0 ? fraction : integer).size();
    if (places > kMaxDigits - used) return false;

    shifted.negative = number.negative;
    Appender append{shifted.storage};
    if (exponent < 0) {
        const std::size_t kept = integer.size() - std::min(places, integer.size());
        append.Digits(integer.substr(0, kept));
        shifted.integer = {shifted.storage, kept};
        append.Zeroes(places - (integer.size() - kept));
        append.Digits(integer.substr(kept));
        append.Digits(fraction);
        shifted.fraction = {shifted.storage + kept, places + fraction.size()};
        return true;
    }
    const std::size_t moved = std::min(places, fraction.size());
    append.Digits(integer);
    append.Digits(fraction.substr(0, moved));
    append.Zeroes(places - moved);
    shifted.integer = {shifted.storage, integer.size() + places};
    // Programs expect at most as many digits after the symbol as it was moved.
    shifted.fraction = {append.to, std::min(fraction.size() - moved, places)};
    append.Digits(fraction.substr(moved, places));
    return true;
}

// -- Writing -------------------------------------------------------------------------------------

namespace {

// The sizes of groups, from the decimal symbol on.
class Groups {
  public:
    explicit Groups(std::string_view grouping) : m_rest(grouping) {}

    // Returns 0 if there are no more groups, so that all further digits are together.
    std::size_t Next() {
        while (!m_rest.empty() && m_rest.front() != '0') {
            const char c = m_rest.front();
            m_rest.remove_prefix(1);
            if (c == ';') continue;
            if (!IsAsciiDigit(c)) {
                m_rest = {};
                return 0;
            }
            return m_last = static_cast<std::size_t>(c - '0');
        }
        return m_rest.empty() ? 0 : m_last;
    }

  private:
    std::string_view m_rest;  // is not advanced past a 0
    std::size_t m_last = 0;
};

// Both write before `to` and return the start of the text.
char* PutBack(char* to, std::string_view digits) {
    if (!digits.empty()) std::memcpy(to - digits.size(), digits.data(), digits.size());
    return to - digits.size();
}

char* PutGroups(char* to, std::string_view digits, char separator, std::string_view grouping) {
    Groups groups(separator ? grouping : std::string_view());
    const char* from = digits.data() + digits.size();
    std::size_t left = digits.size();
    for (std::size_t size; (size = groups.Next()) != 0 && size < left; left -= size) {
        for (std::size_t i = 0; i < size; ++i) *--to = *--from;
        *--to = separator;
    }
    return PutBack(to, digits.substr(0, left));
}

}  // namespace

std::string_view WriteDecimal(char (&buffer)[kMaxDecimalText], const DecimalNumber& number,
                              const DecimalSymbols& symbols, std::string_view grouping) {
    char* const end = buffer + sizeof buffer;
    char* to = end;
    if (!number.fraction.empty()) {
        to = PutBack(to, number.fraction);
        *--to = symbols.decimal ? symbols.decimal : kCSymbols.decimal;
    }
    if (number.integer.empty())
        *--to = '0';
    else
        to = PutGroups(to, number.integer, symbols.separator, grouping);
    if (number.negative) *--to = '-';
    return {to, static_cast<std::size_t>(end - to)};
}

}  // namespace genutil

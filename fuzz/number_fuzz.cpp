// Decimal numbers and amounts of money from any bytes, in any locale, compared with the slow rules.
// The first four bytes choose the decimal symbol, the separator, the grouping and the power of ten;
// the rest is the text.
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>

#include "fuzz/check.h"
#include "fuzz/slow_decimal.h"
#include "gennum.h"
#include "mbutil.h"

namespace {

constexpr const char* kGroupings[] = {"3;0", "3;2;0", "", "12;0", "3", "0", "1;0", "9;8;7;x;0"};
constexpr int kCodeSets[] = {mbWestern, mbUtf8, mbShiftJis, mbJohab};

struct Choice {
    char decimal, separator;
    const char* grouping;
    int exponent;
    int codeSet;
};

void ChangeLocale(const Choice& choice) {
    mbIsMultiByte();
    InitMbutilExt(choice.codeSet);
    const char decimal[] = {choice.decimal, 0}, separator[] = {choice.separator, 0};
    CLCGlobalLocale* locale = CLCGlobalLocale::Instance();
    locale->Customize("", "", "", 1, choice.grouping, 1, 1, decimal, "-", separator, "en_US");
}

std::string Display(const CGNDecimal& number) {
    CGNString text;
    number.GetDisplayBuffer(text);
    return static_cast<const char*>(text);
}

// Checks the display text, if the slow rules support the code set.
void CheckDisplay(const CGNDecimal& number, bool converted, bool known,
                  const std::optional<std::string>& slow, const char* what) {
    const std::string shown = Display(number);
    Check(converted || shown.empty(), "a failure displays nothing");
    if (known) Check(slow ? converted && shown == *slow : !converted, what);
}

void CheckNumber(const std::string& text, const Choice& choice) {
    const char decimal = choice.decimal, separator = choice.separator;
    // Only a symbol above ASCII may be part of a longer character.
    const bool known = choice.codeSet < mbJis || ((decimal | separator) & 0x80) == 0;
    const auto parsed = slow::Parse(text, separator, decimal);
    const int valid = CGNDecimal::IsValid(text.c_str());
    Check(!known || (valid == 0) == parsed.valid, "validity");
    Check(CGNDecimal::DetermineNumDecimalChars(text.c_str()) == static_cast<int>(parsed.end),
          "end of a number");

    CGNDecimal number(text.c_str());
    for (const bool regional : {false, true}) {
        const bool converted = number.ConvertToCLocale(regional) != 0;
        CheckDisplay(number, converted, known, slow::ToC(text, separator, decimal, regional), "C");
        if (!converted) continue;
        CGNDecimal again(Display(number).c_str());
        Check(again.ConvertToCLocale(0) && Display(again) == Display(number).substr(0, 63),
              "the C spelling stays");
    }
    for (const bool groups : {true, false}) {
        const bool converted = number.ConvertToRegionalLocale(groups) != 0;
        CheckDisplay(number, converted, known,
                     slow::ToRegional(text, separator, decimal, groups ? choice.grouping : ""),
                     "regional");
    }
    const std::string before = Display(number);
    number.ApplyExponent(choice.exponent);
    if (known && choice.exponent != 0 && slow::Parse(before, separator, decimal).valid)
        Check(Display(number) == slow::Shift(before, choice.exponent, separator, decimal), "shift");
    for (int i = 0; i < 8; ++i) number.ApplyExponent(choice.exponent * 5);
    Check(Display(number).size() < 600, "size of a shifted number");
}

void CheckCurrency(const std::string& text) {
    CGNCurrency money(text.c_str());
    const std::string amount(money.GetDecimalPortion()), code(money.GetCodePortion());
    Check(code.empty() || code.size() == 3, "code of three letters");
    Check(amount.empty() || (amount.front() != ' ' && amount.back() != ' '), "amount in blanks");
    Check(text.find(amount) != text.npos && text.find(code) != text.npos, "portions of the text");
    if (!code.empty()) {
        std::string trimmed = text;
        trimmed.erase(trimmed.find_last_not_of(' ') + 1);
        Check(trimmed.size() >= 3 && trimmed.substr(trimmed.size() - 3) == code, "code at the end");
    }
    for (const unsigned char groups : {0, 1}) {
        money.FormatCurrencyToRegional(groups);
        CGNDecimal number(amount.c_str());
        const bool converted = !amount.empty() && number.ConvertToRegionalLocale(groups);
        std::string expected = converted ? Display(number) : "";
        const std::string shownCode(money.GetCodePortion());
        if (converted && !shownCode.empty()) expected.append(" ");
        expected.append(shownCode);
        Check(money.GetDisplayCurrency() == expected.c_str(), "display");
    }
    money.FormatCurrencyToCLocale();
    money.UpdateCodePortion("usd");
    Check(money.GetCodePortion() == "usd", "new code");
    money.UpdateDecimalPortion(text.c_str());
    money.ResetDisplayBuffer();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4) return 0;
    const auto symbol = [](unsigned byte) {
        return static_cast<char>(byte == 0 || (byte >= '0' && byte <= '9') ? '.' : byte);
    };
    const Choice choice = {symbol(data[0]), symbol(data[1]), kGroupings[data[2] & 7],
                           static_cast<signed char>(data[3]), kCodeSets[data[2] >> 6]};
    std::string text(reinterpret_cast<const char*>(data + 4), size - 4);
    text.resize(std::strlen(text.c_str()));
    ChangeLocale(choice);
    CheckNumber(text, choice);
    CheckCurrency(text);
    return 0;
}

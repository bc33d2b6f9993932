// Numbers, money and dates while an allocation fails. The result is right or missing, and nothing
// of an old value remains. The first byte chooses the operation, the second the allocation; the
// rest is the text.
#include <cstdint>
#include <string>

#include "fuzz/check.h"
#include "gendate.h"
#include "gennum.h"
#include "tests/support/allocation_gate.h"
#include "tests/support/custom_locale.h"
#include "tests/support/number_locale.h"
#include "tests/support/reported_failures.h"
#include "tests/support/texts.h"
#include "tests/support/zone_guard.h"

namespace {

void CheckNumber(const std::string& digits, int failing) {
    const NumberLocale locale(".", ",");
    CGNDecimal number("1");
    number.ConvertToCLocale(0);
    const ReportedFailures reported;
    bool converted, failed;
    {
        const AllocationGate gate(failing, 1);
        number.SetRawBuffer(digits.c_str());
        number.ConvertToCLocale(0);
        converted = number.ConvertToRegionalLocale(0) != 0;
        failed = gate.Count() > failing;
    }
    const std::string shown = Display(number);
    Check(shown == (converted ? digits : "") || (converted && failed && shown == "0"), "number");
    Check(failed || shown == digits, "a number with memory");
}

void CheckMoney(const std::string& digits, int failing) {
    const NumberLocale locale(".", ",");
    CGNCurrency money("1 USD"), updated("2 USD");
    money.FormatCurrencyToCLocale();
    CGNCurrency assigned(money);
    const ReportedFailures reported;
    {
        const AllocationGate gate(failing, 1);
        money.SetBuffer(Join({digits, "eur"}).c_str());
        money.FormatCurrencyToRegional(0);
        updated.UpdateDecimalPortion(digits.c_str());
        assigned = money;
    }
    const std::string amount = Bytes(money.GetDisplayCurrency());
    Check(amount == Join({digits, " EUR"}) || amount == "eur" || amount == "EUR" || amount.empty(),
          "amount");
    const std::string buffer = Bytes(updated.GetBuffer());
    Check(
        buffer == Join({digits, " USD"}) || buffer == "2 USD" || buffer == " USD" || buffer.empty(),
        "updated amount");
    const std::string copied = Bytes(assigned.GetDisplayCurrency());
    Check(copied == amount || copied == "1 USD" || copied.empty(), "copied amount");
}

// Parsed formats are kept, so each locale needs its own formats for them to be parsed again.
CGNString NewFormat(const char* parts) {
    static int round = 0;
    CGNString format("'");
    for (int i = ++round; i > 0; i /= 2) format += i % 2 ? "a" : "b";
    format += "'";
    format += parts;
    return format;
}

// A text is read in the order of the locale or not at all, never in the order of another locale.
void CheckMoment(unsigned choice, int failing) {
    static const CGNString kTexts[] = {"5.3.2010 10:30", "5 de marzo de 2010 10:30",
                                       "5/3/10, 10h30"};
    const CGNString& text = kTexts[choice % 3];
    const ZoneGuard zone("Asia/Tokyo");
    const CGNString shortDate = NewFormat("d/M/yyyy"), longDate = NewFormat("dddd' de 'MMMM");
    const CustomLocale locale("es_ES", shortDate, longDate, NewFormat("H:mm"));
    CGNDateTime moment(60L);
    moment.FormatForDisplay(7);
    const ReportedFailures reported;
    bool read;
    {
        const AllocationGate gate(failing, 1);
        read = moment.FromString(text) != 0;
    }
    Check(moment.GetSecsFrom70() == (read ? 1267752600 : 60), "moment");
    Check(read || reported.Count() > 0, "a failure is reported");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    std::string digits = "5";
    for (std::size_t i = 2; i < size && i < 50; ++i)
        digits += static_cast<char>('0' + data[i] % 10);
    const int failing = data[1] % 40;
    switch (data[0] % 3) {
        case 0:
            CheckNumber(digits, failing);
            break;
        case 1:
            CheckMoney(digits, failing);
            break;
        case 2:
            CheckMoment(data[2], failing);
    }
    return 0;
}

// The same invoice for customers in several countries: the date and the amounts as each of them
// reads it, from values that are stored in one form.
//
//     invoice
#include <genutil.h>

#include <cstdio>
#include <cstdlib>
#include <initializer_list>

namespace {

// Prints a text in the code set of a locale for a terminal in UTF-8.
void Print(const CGNString& text, const CLCLocale& locale) {
    char* utf8 = nullptr;
    if (!mbConvertAlloc(text, text.GetLength(), locale.GetCodeSet(), &utf8, mbUtf8, nullptr))
        return;
    std::printf("  %s\n", utf8);
    std::free(utf8);
}

void PrintInvoice(const char* country) {
    // Dates, numbers and amounts go by the locale of the process.
    CLCGlobalLocale* locale = CLCGlobalLocale::Instance();
    if (!locale) return;
    locale->SetLocale(country);
    InitMbutilExt(locale->GetCodeSet());
    std::printf("%s\n", country);

    CGNString text;
    CGNDate issued(2025, 0, 3, 10, 2);  // a Monday
    issued.FormatForDisplay(2);
    issued.GetDisplayBuffer(text);
    Print(text, *locale);

    CGNDecimal hours("1437.5");
    hours.ConvertToRegionalLocale(1);
    hours.GetDisplayBuffer(text);
    Print(text, *locale);

    CGNCurrency total("178968.75 EUR");
    total.FormatCurrencyToRegional(1);
    Print(total.GetDisplayCurrency(), *locale);
}

}  // namespace

int main() {
    InitMbutil();
    for (const char* country : {"en_US", "de_DE", "fr_FR", "ja_JP"}) PrintInvoice(country);
    CLCGlobalLocale::Free();
}

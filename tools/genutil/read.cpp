// genutil read: reads a date and time as a user types it.
#include <cstdio>

#include "gendate.h"
#include "genlocale.h"
#include "gennum.h"
#include "mbutil.h"
#include "tools/genutil/command.h"
#include "tools/genutil/locale_name.h"
#include "tools/genutil/moment.h"
#include "tools/genutil/system.h"

namespace {

bool IsAscii(const CGNString& text, const char* set) {
    const char* p = text;
    while (*p && std::string(set).find(*p) != std::string::npos) ++p;
    return *p == 0;
}

// Returns true if a word may occur in a date: a number, a sign, or a name known to a reader of
// dates.
bool IsDateWord(const CGNString& word) {
    if (IsAscii(word, "0123456789") || IsAscii(word, "/-.,:'()")) return true;
    for (const char* frame : {"1 %s 2000", "%s 1 January 2000", "1%s March 2000", "%s1/1/1"}) {
        char text[256];
        std::snprintf(text, sizeof text, frame, static_cast<const char*>(word));
        CGNString rest;
        if (CGNDate().parseDate(text, rest) && rest.IsEmpty()) return true;
    }
    return false;
}

// Returns the rest of the text from the first word that cannot occur in a date, or the whole text
// if there is none.
CGNString FromStrangeWord(const CGNString& text) {
    CGNString rest(text), word;
    while (CGNDate::extractDateWord(rest, word, rest)) {
        if (IsDateWord(word)) continue;
        word += rest;
        return word;
    }
    return text;
}

struct Fault {
    std::string what;
    CGNString from;  // the text from the position where reading failed
};

Fault FindFault(const CGNString& text, long status) {
    CGNDate date;
    CGNString rest;
    if (!date.parseDate(text, rest))
        return date.GetDateStatus() == 1 ? Fault{"there is no such date", text}
                                         : Fault{"no date is recognised", FromStrangeWord(text)};
    CGNString word, behind(rest);
    while (CGNDate::extractDateWord(behind, word, behind))
        if (!(word == ",")) {
            word += behind;
            break;
        }
    switch (status) {
        case 3:
            return {"the time is out of range", word};
        case 5:
            return {"the text after the date is not a time", word};
        case 4:
            return {"the time is after the last possible moment, 03:14:07 UTC on 19 January 2038",
                    word};
        default:
            return {"there is no such moment between 1970 and 18 January 2038 in this zone", text};
    }
}

// Returns the number, or the amount with its code, in the C spelling, or an empty text if the text
// is neither.
std::string NumberOrAmount(const CGNString& text) {
    CGNString display;
    CGNCurrency amount(text);
    CGNDecimal number(amount.GetDecimalPortion());
    if (amount.GetDecimalPortion().IsEmpty() || !number.ConvertToCLocale(1)) return "";
    number.GetDisplayBuffer(display);
    const char* const value = display;
    if (amount.GetCodePortion().IsEmpty()) return std::string("the number ") + value;
    amount.FormatCurrencyToCLocale();
    return std::string("the amount ") + static_cast<const char*>(amount.GetDisplayCurrency());
}

Status ReadText(const std::string& utf8, CLCGlobalLocale& locale) {
    CGNString text;
    std::size_t lostAt = 0;
    const int codeSet = locale.GetCodeSet();
    if (!FromUtf8(utf8, codeSet, &text, &lostAt)) {
        std::printf("%s: not read: the locale's encoding lacks a character, at character %zu\n",
                    utf8.c_str(), CountCharacters(utf8.substr(0, lostAt)) + 1);
        return kLoss;
    }
    CGNDateTime moment;
    if (moment.FromString(text)) {
        std::printf("%s: %s\n", utf8.c_str(), DescribeMoment(moment.GetSecsFrom70()).c_str());
        return kOk;
    }
    const std::string number = NumberOrAmount(text);
    if (!number.empty()) {
        std::printf("%s: %s\n", utf8.c_str(), number.c_str());
        return kOk;
    }
    const Fault fault = FindFault(text, moment.GetDateTimeRangeStatus());
    const std::size_t left = CountCharacters(ToUtf8(fault.from, codeSet));
    std::printf("%s: not read: %s, at character %zu\n", utf8.c_str(), fault.what.c_str(),
                CountCharacters(utf8) - left + 1);
    return kLoss;
}

Status RunRead(const Arguments& arguments) {
    Arguments texts;
    std::string locale, zone;
    const std::vector<Option> options = {{"--locale", nullptr, &locale, nullptr},
                                         {"--zone", nullptr, &zone, nullptr}};
    if (!ParseArguments(arguments, options, &texts)) return kError;
    if (texts.empty()) return Complain("read: give a date, or a date and time, as one argument");
    const std::string name = TableName(locale.empty() ? "en_US" : locale);
    if (name.empty()) return Complain("locale '" + locale + "' is not known");
    if (!UseZone(zone)) return kError;
    CLCGlobalLocale* global = CLCGlobalLocale::Instance();
    if (!global) return Complain("out of memory");
    global->SetLocale(name.c_str());
    UseCodeSetOf(*global);
    Status status = kOk;
    for (const std::string& text : texts)
        status = Worse(status, ReadText(ArgumentToUtf8(text), *global));
    return status;
}

}  // namespace

const Command kReadCommand = {
    "read", "[--locale NAME] TEXT...   reads dates, times and numbers as a user types them",
    "genutil read [--locale NAME] [--zone NAME] TEXT...\n"
    "\n"
    "Reads each text as a date, or a date and time, in the format of a locale, and prints the\n"
    "moment in ISO 8601 with its zone, and in seconds since 1970. A text that is not a date\n"
    "is read as a number, or an amount of money with the code of its currency, and printed with\n"
    "\".\" as decimal symbol. For other texts, prints why they cannot be read and at which\n"
    "character, counted from 1.\n"
    "\n"
    "  --locale NAME   a locale, such as de_DE (en_US)\n"
    "  --zone NAME     the time zone, such as Asia/Tokyo (that of the machine)\n"
    "\n"
    "Exit status: 0 success, 1 a text could not be read, 2 wrong usage.\n",
    RunRead};

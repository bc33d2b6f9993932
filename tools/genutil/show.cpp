// genutil show: displays a moment in the formats of several locales.
#include <cstdio>

#include "gendate.h"
#include "gennum.h"
#include "mbutil.h"
#include "tools/genutil/command.h"
#include "tools/genutil/locale_name.h"
#include "tools/genutil/moment.h"

namespace {

// Displays one moment in one locale after another, and reads each text back.
class Show {
  public:
    explicit Show(long seconds) : m_seconds(seconds) {}

    void In(const std::string& name) {
        CLCLocale locale;
        locale.SetLocale(name.c_str());
        UseCodeSetOf(locale);
        m_name = name;
        Both(locale);
        if (locale.LocaleIsJapanese()) {
            locale.SetCalendarType(clcCalendarJapaneseEras);
            Both(locale);
        }
        // Numbers are written in the global locale.
        CLCGlobalLocale* global = CLCGlobalLocale::Instance();
        if (!global) return;
        global->SetLocale(name.c_str());
        Number(locale.GetCodeSet());
        Amount(locale.GetCodeSet());
    }

    Status Sum() const {
        if (m_failed == 0)
            std::printf("\n%d texts, each read back to the same value\n", m_count);
        else
            std::printf("\n%d texts, %d not read back to the same value\n", m_count, m_failed);
        return m_failed == 0 ? kOk : kLoss;
    }

  private:
    void Both(CLCLocale& locale) {
        for (const long style : {2L, 1L}) One(locale, style);
    }

    // In a calendar of eras, a date contains the year within the era. The era itself is printed
    // before it here.
    void One(CLCLocale& locale, long style) {
        CLCDateTime moment(&locale, m_seconds), again(&locale);
        moment.FormatForDisplay(style);
        CGNString display, text;
        moment.GetDisplayBuffer(display);
        if (locale.GetCalendarType() == clcCalendarJapaneseEras) moment.Moment().Emperor(text);
        text += display;
        const bool read = again.FromString(text) != 0;
        const bool same = read && again.Moment().GetSecsFrom70() == m_seconds;
        Print(text, locale.GetCodeSet(), read, same);
    }

    void Number(int codeSet) {
        constexpr char kNumber[] = "-1234567.89";
        CGNString text, back;
        CGNDecimal number(kNumber), again;
        number.ConvertToRegionalLocale(1);
        number.GetDisplayBuffer(text);
        again.SetRawBuffer(text);
        const bool read = again.ConvertToCLocale(1) != 0;
        again.GetDisplayBuffer(back);
        Print(text, codeSet, read, back == kNumber);
    }

    void Amount(int codeSet) {
        constexpr char kAmount[] = "9876543.21 EUR";
        CGNCurrency amount(kAmount);
        amount.FormatCurrencyToRegional(1);
        const CGNString text = amount.GetDisplayCurrency();
        CGNCurrency again(text);
        again.FormatCurrencyToCLocale();
        Print(text, codeSet, true, again.GetDisplayCurrency() == kAmount);
    }

    void Print(const CGNString& text, int codeSet, bool read, bool same) {
        ++m_count;
        m_failed += !same;
        std::printf("%-8s %-10s %s\n", m_name.c_str(),
                    same   ? "the same"
                    : read ? "another"
                           : "not read",
                    ToUtf8(text, codeSet).c_str());
        m_name.clear();
    }

    long m_seconds;
    std::string m_name;  // not yet printed in a row
    int m_count = 0, m_failed = 0;
};

Status RunShow(const Arguments& arguments) {
    Arguments locales, rest;
    std::string zone, time;
    const std::vector<Option> options = {{"--locale", nullptr, nullptr, nullptr, &locales},
                                         {"--zone", nullptr, &zone, nullptr},
                                         {"--time", nullptr, &time, nullptr}};
    if (!ParseArguments(arguments, options, &rest)) return kError;
    if (!rest.empty()) return Complain("show: '" + rest.front() + "' is not an option");
    if (locales.empty())
        locales = {"en_US", "en_GB", "de_DE", "fr_FR", "ru_RU",
                   "ja_JP", "zh_TW", "ko_KR", "th_TH", "ar_SA"};
    for (std::string& locale : locales) {
        const std::string name = TableName(locale);
        if (name.empty()) return Complain("locale '" + locale + "' is not known");
        locale = name;
    }
    long seconds = 0;
    if (!UseZone(zone) || !ParseSeconds(time, &seconds)) return kError;
    std::printf("%s\n\nlocale   read back  text\n", DescribeMoment(seconds).c_str());
    Show show(seconds);
    for (const std::string& locale : locales) show.In(locale);
    return show.Sum();
}

}  // namespace

const Command kShowCommand = {
    "show", "[--locale NAME]...        shows a moment in the formats of several locales",
    "genutil show [--locale NAME]... [--zone NAME] [--time SECONDS|now]\n"
    "\n"
    "Shows a moment with its date, long and short, and its time in each locale, a number and an\n"
    "amount of money, reads every text back, and reports whether the value is the same. Texts\n"
    "are in UTF-8. Japan is shown with years of the Gregorian calendar and of the eras.\n"
    "\n"
    "  --locale NAME   a locale, such as de_DE; may be repeated (ten countries)\n"
    "  --zone NAME     the time zone, such as Asia/Tokyo (that of the machine)\n"
    "  --time SECONDS  the moment, in seconds since 1970 (now)\n"
    "\n"
    "Exit status: 0 success, 1 a text was not read back to the same value, 2 wrong usage.\n",
    RunShow};

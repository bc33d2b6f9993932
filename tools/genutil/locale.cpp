// genutil locale: every setting of a locale.
#include <cstdio>

#include "genlocale.h"
#include "mbutil.h"
#include "tools/genutil/command.h"
#include "tools/genutil/encoding.h"
#include "tools/genutil/locale_name.h"

namespace {

using TextGetter = unsigned char (CLCLocale::*)(CGNString&) const;
using ItemGetter = unsigned char (CLCLocale::*)(long, CGNString&) const;

// Rows of a name and a value. Texts are in quotation marks, so that blanks are visible.
class Table {
  public:
    explicit Table(const CLCLocale& locale) : m_locale(locale), m_codeSet(locale.GetCodeSet()) {}

    void Plain(const char* name, const std::string& value) const {
        std::printf("%-22s %s\n", name, value.c_str());
    }
    void Number(const char* name, long value) const { Plain(name, std::to_string(value)); }
    void Flag(const char* name, bool value) const { Plain(name, value ? "yes" : "no"); }

    void Text(const char* name, TextGetter get) const {
        CGNString text;
        (m_locale.*get)(text);
        Plain(name, Quoted(text));
    }
    void Item(const char* name, ItemGetter get, long index) const {
        CGNString text;
        (m_locale.*get)(index, text);
        Plain(name, Quoted(text));
    }
    // Omits empty texts, such as a thirteenth month.
    void List(const char* name, ItemGetter get, long count) const {
        std::string all;
        for (long i = 0; i < count; ++i) {
            CGNString text;
            (m_locale.*get)(i, text);
            if (!text.IsEmpty()) all += (i == 0 ? "" : ", ") + ToUtf8(text, m_codeSet);
        }
        Plain(name, all);
    }

  private:
    std::string Quoted(const CGNString& text) const { return '"' + ToUtf8(text, m_codeSet) + '"'; }

    const CLCLocale& m_locale;
    int m_codeSet;
};

void PrintIdentity(const Table& table, const CLCLocale& locale, const std::string& name) {
    char id[16];
    std::snprintf(id, sizeof id, "0x%04lx", locale.GetLocaleId());
    char suffix[3];
    locale.GetFileSuffix(suffix);
    table.Plain("name", name);
    table.Plain("identifier", id);
    table.Plain("language", static_cast<const char*>(locale.GetLangName()));
    table.Number("language number", locale.GetLang());
    table.Plain("file suffix", suffix);
    table.Plain("encoding", NameOf({locale.GetCodeSet()}));
    table.Flag("multi-byte", locale.IsMultiByte() != 0);
}

void PrintDates(const Table& table, const CLCLocale& locale) {
    constexpr long kShort = 1, kLong = 2;
    table.Item("short date", &CLCLocale::DateFormatString, kShort);
    table.Item("long date", &CLCLocale::DateFormatString, kLong);
    table.Text("date separator", &CLCLocale::DateSep);
    table.Text("time", &CLCLocale::TimeFormatString);
    table.Text("time separator", &CLCLocale::TimeSep);
    table.Item("before noon", &CLCLocale::AMPMMarker, 0);
    table.Item("after noon", &CLCLocale::AMPMMarker, 1);
    table.List("months", &CLCLocale::MonthName, 13);
    table.List("month abbreviations", &CLCLocale::MonthAbbrev, 13);
    table.List("days", &CLCLocale::DayName, 7);
    table.List("day abbreviations", &CLCLocale::DayAbbrev, 7);
    table.Number("calendar", locale.GetCalendarType());
    for (long i = 0; i < 3; ++i) {
        CGNString era;
        locale.Emperor(i, era);
        if (!era.IsEmpty()) table.Plain("era", ToUtf8(era, mbShiftJis));
    }
}

void PrintNumbers(const Table& table, const CLCLocale& locale) {
    table.Text("decimal symbol", &CLCLocale::GetDecDecimalSymbol);
    table.Text("group separator", &CLCLocale::GetDecDigitGroupSeparator);
    table.Text("digits in group", &CLCLocale::GetDecNumDigitsInGroup);
    table.Text("negative sign", &CLCLocale::GetDecNegativeSign);
    table.Number("negative format", locale.GetDecNegativeNumFormat());
    table.Flag("leading zero", locale.GetDecDisplayLeadingZeroes() != 0);
}

void Print(const std::string& name) {
    CLCLocale locale;
    locale.SetLocale(name.c_str());
    const Table table(locale);
    PrintIdentity(table, locale, name);
    PrintDates(table, locale);
    PrintNumbers(table, locale);
}

Status RunLocale(const Arguments& arguments) {
    Arguments names;
    if (!ParseArguments(arguments, {}, &names)) return kError;
    if (names.empty()) return Complain("locale: name a locale, such as de_DE");
    Status status = kOk;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string name = TableName(names[i]);
        if (name.empty()) {
            status = Complain("locale '" + names[i] + "' is not known");
            continue;
        }
        if (i != 0) std::puts("");
        Print(name);
    }
    return status;
}

}  // namespace

const Command kLocaleCommand = {
    "locale", "NAME...                   shows every setting of a locale",
    "genutil locale NAME...\n"
    "\n"
    "Shows every setting of each locale as a table, in UTF-8: identifier, language and\n"
    "encoding, date and time formats with their texts, month and day names, eras, and how\n"
    "numbers are written. Names are of the form de_DE, in any letter case, or a language alone;\n"
    "genutil locales lists them.\n"
    "\n"
    "Exit status: 0 success, 2 a locale is not known.\n",
    RunLocale};

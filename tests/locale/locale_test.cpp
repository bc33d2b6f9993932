// The locale object: facts of known locales, and settings of applications.
#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "genlocale.h"
#include "osfile.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/temporary_file.h"

namespace {

using Getter = unsigned char (CLCLocale::*)(CGNString&) const;
using ItemGetter = unsigned char (CLCLocale::*)(long, CGNString&) const;

std::string Text(const CLCLocale& locale, Getter get) {
    CGNString text("before");
    EXPECT_EQ((locale.*get)(text), 1);
    return static_cast<const char*>(text);
}
std::string Item(const CLCLocale& locale, ItemGetter get, long index) {
    CGNString text("before");
    EXPECT_EQ((locale.*get)(index, text), 1);
    return static_cast<const char*>(text);
}

constexpr long kShort = 1, kLong = 2;
std::string Date(const CLCLocale& locale, long which) {
    return Item(locale, &CLCLocale::DateFormatString, which);
}
std::string Time(const CLCLocale& locale) {
    return Text(locale, &CLCLocale::TimeFormatString);
}

CLCLocale Named(const char* name) {
    CLCLocale locale;
    locale.SetLocale(name);
    return locale;
}

// Facts in which the systems agree, except for the digits of days.
TEST(Locale, HasTheFactsOfKnownLocales) {
    static const struct {
        int line;
        const char* name;
        unsigned long id;
        CLCLanguage language;
        int codeSet;
        const char *shortDate, *otherShortDate, *time, *dateSeparator, *decimal, *group, *grouping;
        const char *january, *monday, *saturday, *pm;
    } kRows[] = {
        {__LINE__, "en_US", 0x0409, clcEnglish, mbWestern, "M/d/yyyy", "", "h:mm:ss tt", "/", ".",
         ",", "3;0", "January", "Monday", "Saturday", "PM"},
        {__LINE__, "de_DE", 0x0407, clcGerman, mbWestern, "dd.MM.yyyy", "d.M.yyyy", "HH:mm:ss", ".",
         ",", ".", "3;0", "Januar", "Montag", "Samstag", ""},
        {__LINE__, "ja_JP", 0x0411, clcJapanese, mbShiftJis, "yyyy/MM/dd", "yyyy/M/d", "H:mm:ss",
         "/", ".", ",", "3;0", "1\x8C\x8E", "\x8C\x8E\x97\x6A\x93\xFA", "\x93\x79\x97\x6A\x93\xFA",
         "\x8C\xDF\x8C\xE3"},
        {__LINE__, "ko_KR", 0x0412, clcKorean, mbKorean, "yyyy. M. d.", "yyyy-MM-dd", "tt h:mm:ss",
         ". ", ".", ",", "3;0", "1\xBF\xF9", "\xBF\xF9\xBF\xE4\xC0\xCF", "\xC5\xE4\xBF\xE4\xC0\xCF",
         ""},
        {__LINE__, "zh_TW", 0x0404, clcChinese, mbBig5, "yyyy/M/d", "", "tt h:mm:ss", "/", ".", ",",
         "3;0", "1\xA4\xEB", "\xAC\x50\xB4\xC1\xA4\x40", "\xAC\x50\xB4\xC1\xA4\xBB",
         "\xA4\x55\xA4\xC8"},
        {__LINE__, "ar_SA", 0x0401, clcArabic, mbWindows1256, "d/M/yyyy", "d\xFE/M\xFE/yyyy",
         "h:mm:ss tt", "/", ".", ",", "3;0", "", "", "", "\xE3"},
        {__LINE__, "ru_RU", 0x0419, clcRussian, mbWindows1251, "dd.MM.yyyy", "", "HH:mm:ss", ".",
         ",", "\xA0", "3;0", "", "\xEF\xEE\xED\xE5\xE4\xE5\xEB\xFC\xED\xE8\xEA", "", ""},
        {__LINE__, "hi_IN", 0x0439, clcHindi, mbWestern, "d/M/yyyy", "dd-MM-yyyy", "h:mm:ss tt",
         "/", ".", ",", "3;2;0", "January", "Monday", "Saturday", ""},
    };
    const auto expect = [](const std::string& text, const char* expected) {
        if (*expected) {
            EXPECT_EQ(text, expected);
        }
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        const CLCLocale locale = Named(row.name);
        EXPECT_EQ(locale.GetLocaleId(), row.id);
        EXPECT_EQ(locale.GetLang(), row.language);
        EXPECT_EQ(locale.GetCodeSet(), row.codeSet);
        EXPECT_EQ(locale.IsMultiByte(), row.codeSet >= mbShiftJis && row.codeSet <= mbKorean);
        EXPECT_EQ(locale.IsUnicode(), 0);
        EXPECT_EQ(locale.Customized(), 0);
        if (Date(locale, kShort) != row.otherShortDate) {
            EXPECT_EQ(Date(locale, kShort), row.shortDate);
        }
        std::string time = Time(locale);
        if (time == "tth:mm:ss") time = "tt h:mm:ss";
        EXPECT_EQ(time, row.time);
        EXPECT_EQ(locale.Is24Hour() != 0, std::strchr(row.time, 'H') != nullptr);
        EXPECT_NE(Text(locale, &CLCLocale::DateSep).find(row.dateSeparator), std::string::npos);
        EXPECT_EQ(Text(locale, &CLCLocale::TimeSep), ":");
        EXPECT_EQ(Text(locale, &CLCLocale::GetDecDecimalSymbol), row.decimal);
        expect(Text(locale, &CLCLocale::GetDecDigitGroupSeparator), row.group);
        EXPECT_EQ(Text(locale, &CLCLocale::GetDecNumDigitsInGroup), row.grouping);
        EXPECT_EQ(Text(locale, &CLCLocale::GetDecNegativeSign), "-");
        EXPECT_EQ(locale.GetDecNegativeNumFormat(), 1);
        EXPECT_EQ(locale.GetDecDisplayLeadingZeroes(), 1);
        expect(Item(locale, &CLCLocale::MonthName, 0), row.january);
        expect(Item(locale, &CLCLocale::DayName, 0), row.monday);
        expect(Item(locale, &CLCLocale::DayName, 5), row.saturday);
        expect(Item(locale, &CLCLocale::AMPMMarker, 1), row.pm);
        EXPECT_EQ(Item(locale, &CLCLocale::MonthName, 12), "");
    }
}

TEST(Locale, NewAndUnknownLocalesAreEnglish) {
    CLCLocale unknown = Named("de_DE");
    unknown.SetLocale("tlh_QO");
    EXPECT_EQ(unknown.GetLocaleId(), 0u);
    EXPECT_EQ(unknown.GetCodeSet(), mbWestern);
    const CLCLocale fresh;
    EXPECT_EQ(fresh.GetLocaleId(), 0x0400u);
    for (const CLCLocale* locale : {&fresh, const_cast<const CLCLocale*>(&unknown)}) {
        EXPECT_EQ(locale->GetLang(), clcEnglish);
        EXPECT_EQ(Date(*locale, kShort), "M/d/yyyy");
        EXPECT_EQ(Date(*locale, kLong), "dddd, MMMM d, yyyy");
        EXPECT_EQ(Time(*locale), "h:mm:ss tt");
        EXPECT_EQ(locale->LongOrShort(), kShort);
        EXPECT_EQ(locale->GetCalendarType(), 1);
        EXPECT_EQ(Item(*locale, &CLCLocale::MonthAbbrev, 11), "Dec");
        EXPECT_EQ(Item(*locale, &CLCLocale::DayAbbrev, 6), "Sun");
        EXPECT_STREQ(locale->GetLangName(), "English");
    }
    unknown.SetLocale("de_DE.UTF-8@euro");
    EXPECT_EQ(unknown.GetLocaleId(), 0x0407u);
    EXPECT_EQ(Item(unknown, &CLCLocale::MonthName, 2), "M\xE4rz");
}

TEST(Locale, GlobalLocaleIsTheUsers) {
    const char* user = std::getenv("TEST_LANGUAGE");
    if (!user) GTEST_SKIP() << "TEST_LANGUAGE is not set";
    CLCGlobalLocale::Free();
    CLCGlobalLocale* global = CLCGlobalLocale::Instance();
    ASSERT_NE(global, nullptr);
    EXPECT_EQ(CLCGlobalLocale::Instance(), global);
    const CLCLocale named = Named(user);
    EXPECT_EQ(global->GetLang(), named.GetLang());
    EXPECT_EQ(global->LocaleIsJapanese() != 0, std::strcmp(user, "ja_JP") == 0);
    EXPECT_EQ(Date(*global, kLong), Date(named, kLong));
    EXPECT_EQ(Time(*global), Time(named));
    CGNString format, name, text;
    long number;
    unsigned char flag;
    global->GetDefaults(format, text, text, number, text, number, flag, text, text, text, name);
    EXPECT_STREQ(name, user);
    EXPECT_EQ(global->GetLocaleId(), 0x0400u);
    global->SetDateSep("#");
    EXPECT_EQ(Text(*CLCGlobalLocale::Instance(), &CLCLocale::DateSep), "#");
    CLCGlobalLocale::Free();
    EXPECT_EQ(Text(*CLCGlobalLocale::Instance(), &CLCLocale::DateSep), "/");
    CLCGlobalLocale::Free();
}

// A copy has all settings of its own.
TEST(Locale, CopiesAreIndependent) {
    CLCLocale japanese = Named("ja_JP");
    japanese.SetLongOrShort(kLong);
    japanese.SetCalendarType(3);
    const CLCLocale copy(japanese);
    CLCLocale assigned;
    assigned = copy;
    japanese.SetLocale("en_US");
    for (const CLCLocale* locale : {&copy, static_cast<const CLCLocale*>(&assigned)}) {
        EXPECT_TRUE(locale->LocaleIsJapanese());
        EXPECT_EQ(locale->GetCalendarType(), 3);
        EXPECT_EQ(locale->LongOrShort(), kLong);
        EXPECT_EQ(Item(*locale, &CLCLocale::AMPMMarker, 0), "\x8C\xDF\x91\x4F");
        EXPECT_EQ(Text(*locale, &CLCLocale::DateFormatString), Date(*locale, kLong));
        CGNString era;
        EXPECT_EQ(locale->EmperorFromGregorianYr(2010, era), 1);
        EXPECT_STREQ(era, "\x95\xBD\x90\xAC");
    }
}

void CustomizeTime(CLCLocale& locale, const char* timeFormat, const char* localeName) {
    locale.Customize(timeFormat, "yy.M.d", "", 2, "", 3, 0, "\xA5", "", "'", localeName);
}

// Loads the section [s] of a file with these bytes.
void Load(CLCLocale& locale, const std::string& bytes) {
    const TemporaryFile file(bytes);
    CGNString section("s");
    locale.LoadIniDateTimeSettings(const_cast<char*>(file.Path()), section);
}
TEST(Locale, CustomizedSettingsAreKept) {
    CLCLocale locale = Named("en_US");
    CustomizeTime(locale, "", "de_DE");
    EXPECT_EQ(locale.Customized(), 1);
    EXPECT_EQ(locale.GetLocaleId(), 0x0407u);
    EXPECT_EQ(Time(locale), "HH:mm:ss");
    EXPECT_EQ(Date(locale, kShort), "yy.M.d");
    EXPECT_EQ(Date(locale, kLong), "dddd, d. MMMM yyyy");
    EXPECT_EQ(Text(locale, &CLCLocale::DateFormatString), Date(locale, kLong));
    EXPECT_EQ(Text(locale, &CLCLocale::GetDecNumDigitsInGroup), "");  // taken though empty
    EXPECT_EQ(locale.GetDecNegativeNumFormat(), 3);
    EXPECT_EQ(locale.GetDecDisplayLeadingZeroes(), 0);
    EXPECT_EQ(Text(locale, &CLCLocale::GetDecDecimalSymbol), "\xA5");
    EXPECT_EQ(Text(locale, &CLCLocale::GetDecNegativeSign), "-");
    EXPECT_EQ(Text(locale, &CLCLocale::GetDecDigitGroupSeparator), "'");

    // Neither a refresh nor another locale takes the application's settings away.
    locale.SetAMPMMarker(0, "early");
    locale.InitControlPanelDateSettings();
    locale.InitControlPanelTimeSettings();
    locale.Init();
    locale.SetLocale("fr_FR");
    EXPECT_EQ(Date(locale, kShort), "yy.M.d");
    EXPECT_EQ(locale.LongOrShort(), kLong);
    EXPECT_EQ(Text(locale, &CLCLocale::GetDecDecimalSymbol), "\xA5");
    EXPECT_EQ(Item(locale, &CLCLocale::MonthName, 0), "janvier");
    EXPECT_STREQ(locale.GetAMString(), "early");
    locale.SetCustomized(0);
    locale.InitControlPanelDateSettings();
    locale.InitControlPanelTimeSettings();
    EXPECT_STRNE(locale.GetAMString(), "early");
    EXPECT_EQ(Date(locale, kShort), "dd/MM/yyyy");
    EXPECT_EQ(Text(locale, &CLCLocale::GetDecDecimalSymbol), "\xA5");
    locale.Init();
    EXPECT_EQ(Text(locale, &CLCLocale::GetDecDecimalSymbol), ",");

    // Empty signs are none that an application gave.
    locale.Customize("", "", "", kShort, "3;0", 1, 1, "", "", "", "de_DE");
    EXPECT_EQ(Text(locale, &CLCLocale::GetDecDecimalSymbol), ",");
    EXPECT_EQ(Text(locale, &CLCLocale::GetDecNegativeSign), "-");
    EXPECT_EQ(Text(locale, &CLCLocale::GetDecDigitGroupSeparator), ".");
}

TEST(Locale, TimeFormatDecidesSeparatorAndClock) {
    static const struct {
        int line;
        const char *locale, *format, *separator;
        bool is24Hour;
    } kRows[] = {
        {__LINE__, "en_US", "H.mm.ss", ".", true},
        {__LINE__, "en_US", "tt h-mm", "-", false},
        {__LINE__, "en_US", "hhmm tt", ":", false},    // no separator in it
        {__LINE__, "en_US", "h'H'mm.ss", ":", false},  // an apostrophe comes first
        {__LINE__, "ja_JP", "H\x8E\x9Emm", "\x8E\x9E", true},
        {__LINE__, "ja_JP", "h\x83\x48mm", "\x83\x48", false},  // its second byte is an H
    };
    for (const auto& row : kRows) {
        CLCLocale locale = Named(row.locale);
        CustomizeTime(locale, row.format, row.locale);
        EXPECT_EQ(Time(locale), row.format) << row.line;
        EXPECT_EQ(Text(locale, &CLCLocale::TimeSep), row.separator) << row.line;
        EXPECT_EQ(locale.Is24Hour() != 0, row.is24Hour) << row.line;
    }
}

TEST(Locale, CustomizeAcceptsTheDefaults) {
    CLCLocale german = Named("de_DE");
    CGNString time, shortDate, longDate, digits, decimal, sign, group, name;
    long which = 0, negative = 0;
    unsigned char zeroes = 0;
    german.SetDateSep("#");
    german.GetDefaults(time, shortDate, longDate, which, digits, negative, zeroes, decimal, sign,
                       group, name);
    EXPECT_STREQ(name, "de_DE");
    CLCLocale other = Named("ja_JP");
    other.Customize(time, shortDate, longDate, which, digits, negative, zeroes, decimal, sign,
                    group, name);
    EXPECT_EQ(other.GetLocaleId(), german.GetLocaleId());
    EXPECT_EQ(Time(other), Time(german));
    EXPECT_EQ(Date(other, kShort), Date(german, kShort));
    EXPECT_EQ(Text(other, &CLCLocale::GetDecNumDigitsInGroup), "3;0");
    EXPECT_EQ(Text(other, &CLCLocale::DateSep), ".");
}

TEST(Locale, SettersChangeTexts) {
    CLCLocale locale = Named("ja_JP");
    locale.SetDateFormatString(kLong, "long");
    locale.SetDateFormatString(0, "short");
    locale.SetLongOrShort(3);  // any number but 2
    EXPECT_EQ(Text(locale, &CLCLocale::DateFormatString), "short");
    EXPECT_EQ(Date(locale, kLong), "long");
    locale.SetAMPMMarker(7, "p");
    locale.SetAMPMMarker(0, "a");
    EXPECT_STREQ(locale.GetAMString(), "a");
    EXPECT_STREQ(locale.GetPMString(), "p");
    locale.SetTimeSep("");
    EXPECT_EQ(Text(locale, &CLCLocale::TimeSep), "");

    static const struct {
        Getter get;
        const char* unit;
    } kUnits[] = {
        {&CLCLocale::YearChar, "\x94\x4E"},   {&CLCLocale::MonthChar, "\x8C\x8E"},
        {&CLCLocale::DayChar, "\x93\xFA"},    {&CLCLocale::HourChar, "\x8E\x9E"},
        {&CLCLocale::MinuteChar, "\x95\xAA"}, {&CLCLocale::SecondChar, "\x95\x62"},
    };
    const CLCLocale english = Named("en_US");
    for (const auto& row : kUnits) {
        EXPECT_EQ(Text(locale, row.get), row.unit);
        EXPECT_EQ(Text(english, row.get), "");
    }
    char suffix[4] = "xyz";
    locale.GetFileSuffix(suffix);
    EXPECT_EQ(std::string(suffix, 4), std::string("JP\0", 4));
    CGNString name("en_US.1252"), five("en_US");
    EXPECT_EQ(CLCLocale::GetShortLocaleString(name), 1);
    EXPECT_STREQ(name, "en_US");
    CLCLocale::GetShortLocaleString(five);
    EXPECT_STREQ(five, "en_US");
}

TEST(Locale, ReplacesDecimalPoints) {
    static const struct {
        const char *symbol, *text, *result;
        bool changed;
    } kRows[] = {
        {",", "1.5 2.", "1,5 2,", true}, {",", "15", "15", false},    {",", "", "", false},
        {".", "1.5", "1.5", false},      {"::", "1.5", "1::5", true}, {",", ".", ",", true},
    };
    for (const auto& row : kRows) {
        CLCLocale locale;
        locale.Customize("", "", "", 1, "", 1, 1, row.symbol, "", "", "");
        CGNString text(row.text);
        EXPECT_EQ(locale.RegionalizeDecimalSeparator(text) != 0, row.changed) << row.text;
        EXPECT_STREQ(text, row.result);
    }
}

TEST(Locale, ListsFormats) {
    EXPECT_STREQ(CLCLocale::TimeFormats()[3], "HH:mm:ss");
    EXPECT_STREQ(CLCLocale::ShortDateFormats()[23], "yy/M/d");
    EXPECT_STREQ(CLCLocale::ShortDateFormats()[24], "");
    EXPECT_STREQ(CLCLocale::LongDateFormats()[47], "ddd, d MMM, yy");
    EXPECT_STREQ(CLCLocale::LongDateFormats()[48], "");
}
TEST(Locale, ConvertsOldFormats) {
    static const struct {
        int line;
        const char *locale, *old, *shortDate, *longDate;
    } kRows[] = {
        {__LINE__, "en_US", "MM/DD/YYYY", "MM/dd/yyyy", "MM/dd/yyyy"},
        {__LINE__, "en_US", "M/D/YY", "M/d/yy", "MMMM/d/yy"},
        {__LINE__, "en_US", "D M Y", "d M yyyy", "d MMMM yyyy"},
        {__LINE__, "en_US", "dd/mm/YY", "dd/MM/yy", "dd/MM/yy"},
        {__LINE__, "en_US", "DDDD, MMMM D 'Day M' YY", "dddd, MMMM d 'Day M' yy",
         "dddd, MMMM d 'Day M' yy"},
        {__LINE__, "en_US", "dddd, d M yyyy", "dddd, d M yyyy", "dddd, d M yyyy"},  // of today
        {__LINE__, "en_US", "d 'D' M", "d 'D' M", "d 'D' M"},
        {__LINE__, "en_US", "", "", ""},
        {__LINE__, "ja_JP", "d\x83\x44", "d\x83\x44", "d\x83\x44"},  // a second byte D is no day
        {__LINE__, "ja_JP",
         "Y\x94\x4EM\x8C\x8E"
         "D\x93\xFA",
         "yyyy\x94\x4EM\x8C\x8E"
         "d\x93\xFA",
         "yyyy\x94\x4EMMMM\x8C\x8E"
         "d\x93\xFA"},
    };
    for (const auto& row : kRows) {
        const CLCLocale locale = Named(row.locale);
        CGNString shortDate(row.old), longDate(row.old);
        locale.ConvertOldImportShortDateFormat(shortDate);
        locale.ConvertOldImportLongDateFormat(longDate);
        EXPECT_STREQ(shortDate, row.shortDate) << row.line;
        EXPECT_STREQ(longDate, row.longDate) << row.line;
    }
}

TEST(Locale, ReadsFormatsFromAnIniFile) {
    const std::string limit(255, 'x'), tooLong(256, 'x'), german = "dddd, d. MMMM yyyy";
    const struct {
        int line;
        std::string keys, time = "h:mm:ss tt", separators = "/:", shortDate = "M/d/yyyy",
                          longDate = "dddd, MMMM d, yyyy";
        const char* locale = "en_US";
    } kRows[] = {
        {__LINE__, ""},
        {__LINE__, "DateSeparator=-\nTimeSeparator=.\n", "h.mm.ss tt", "-.", "M-d-yyyy"},
        {__LINE__, "DateSeparator=\nTimeSeparator=\"\"\nShortDateFormat=\n"},
        {__LINE__, "ShortDateFormat=D.M.YY\nLongDateFormat=D. M YYYY\n", "h:mm:ss tt",
         "/:", "d.M.yy", "d. MMMM yyyy"},
        {__LINE__,
         "ShortDateFormat=D.M.YY\nNewShortDateFormat=yy/M\nNewLongDateFormat=D\nLongDateFormat=Y\n",
         "h:mm:ss tt", "/:", "yy/M", "D"},
        {__LINE__, "NewShortDateFormat=" + tooLong + "\nNewLongDateFormat=" + limit + "\n",
         "h:mm:ss tt", "/:", "M/d/yyyy", limit},
        {__LINE__, "24HourTimeFormat=1\n", "H:mm:ss"},
        {__LINE__, "AMPMPrefix=1\n", "tt h:mm:ss"},
        {__LINE__, "24HourTimeFormat=2\nAMPMPrefix=x\n"},
        {__LINE__, "24HourTimeFormat=0\nAMPMPrefix=1\n", "tt hh:mm:ss", ".:", "", german, "de_DE"},
        {__LINE__, "24HourTimeFormat=1\nAMPMPrefix=1\n", "HH:mm:ss", ".:", "", german, "de_DE"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        CLCLocale locale = Named(row.locale);
        Load(locale, "[other]\nDateSeparator=!\n[S]\n" + row.keys);
        if (!row.shortDate.empty()) {
            EXPECT_EQ(Date(locale, kShort), row.shortDate);
        }
        EXPECT_EQ(Date(locale, kLong), row.longDate);
        EXPECT_EQ(Time(locale), row.time);
        EXPECT_EQ(locale.Is24Hour() != 0, row.time.find('H') != std::string::npos);
        EXPECT_EQ(Text(locale, &CLCLocale::DateSep) + Text(locale, &CLCLocale::TimeSep),
                  row.separators);
    }
}

TEST(Locale, IgnoresInvalidIniSettings) {
    CLCLocale locale = Named("ja_JP");
    for (const char* keys : {"CalendarType=3\nDateDisplayMode=2\nAMString=' a'\nPMString=p\n",
                             "CalendarType=0\nDateDisplayMode=-1\nPMString=\n",
                             "CalendarType=24\nDateDisplayMode=99999999999999999999\n"})
        Load(locale, std::string("[s]\n") + keys);
    locale.SetDateFormatString(kShort, "d/M 'a/b'");
    Load(locale, "[s]\nDateSeparator=-\n");
    EXPECT_EQ(Date(locale, kShort), "d-M 'a/b'");
    CGNString section("s");
    char missing[] = "no such file.ini", folder[] = ".";
    for (char* path : {missing, folder, static_cast<char*>(nullptr)})
        locale.LoadIniDateTimeSettings(path, section);
    EXPECT_EQ(locale.GetCalendarType(), 3);
    EXPECT_EQ(locale.LongOrShort(), kLong);
    EXPECT_STREQ(locale.GetAMString(), " a");
    EXPECT_STREQ(locale.GetPMString(), "p");

    const CodeSetGuard shiftJis(mbShiftJis);  // that of the path, too
    char text[] = "[s]\nPMString=q\n", path[] = "./\x90\xDD\x92\xE8.ini";
    EXPECT_GT(OSWriteBinaryFileContents(text, sizeof text - 1, path, osOverwriteIfExists), 0);
    locale.LoadIniDateTimeSettings(path, section);
    EXPECT_STREQ(locale.GetPMString(), "q");
    EXPECT_EQ(OSRemoveFile(path), 0);
}

constexpr char kHeisei[] = "\x95\xBD\x90\xAC", kShowa[] = "\x8F\xBA\x98\x61",
               kReiwa[] = "\x97\xDF\x98\x61";

TEST(Era, FindsTheEraOfAYear) {
    static const struct {
        long year, eraYear;
        const char* name;
    } kRows[] = {{2010, 22, kHeisei}, {1989, 1, kHeisei}, {1988, 63, kShowa},
                 {1926, 1, kShowa},   {1925, 1925, ""},   {2100, 112, kHeisei}};
    const CodeSetGuard western(mbWestern);  // names are always in Shift-JIS
    const CLCLocale locale = Named("fr_FR");
    for (const auto& row : kRows) {
        CGNString name;
        EXPECT_EQ(locale.EmperorFromGregorianYr(row.year, name) != 0, *row.name != 0) << row.year;
        EXPECT_STREQ(name, row.name);
        EXPECT_EQ(locale.EmperorYrFromGregorianYr(row.year), row.eraYear);
    }
    CGNString name("kept");
    EXPECT_EQ(locale.EmperorFromGregorianYr(1925, name), 0);
    EXPECT_STREQ(name, "kept");
    EXPECT_EQ(locale.GregorianYrFromEmperorYr(CEmperor(kShowa, 1926, 63), 64), 1989);
    EXPECT_EQ(Item(locale, &CLCLocale::Emperor, 1), kShowa);
    for (const long none : {2l, 3l, -1l}) EXPECT_EQ(Item(locale, &CLCLocale::Emperor, none), "");
}

TEST(Era, CountsYearsOfOneEra) {
    CEmperor era("e", 1900, 10);
    EXPECT_EQ(era.EmperorYrFromGregorianYr(2000), 101);  // a count does not end it
    EXPECT_EQ(era.EmperorYrFromGregorianYr(1899), 0);
    EXPECT_EQ(era.EmperorYrFromGregorianYr(LONG_MIN), 0);
    EXPECT_EQ(era.EmperorYrFromGregorianYr(LONG_MAX), LONG_MAX - 1899);
    EXPECT_EQ(CLCLocale().GregorianYrFromEmperorYr(era, LONG_MAX), LONG_MIN + 1898);
    EXPECT_EQ(CEmperor("e", -1, 0).EmperorYrFromGregorianYr(LONG_MAX), LONG_MIN + 1);
    era.Set("e", 1900, -1);
    EXPECT_EQ(era.EmperorYrFromGregorianYr(2000), 0);
    EXPECT_EQ(era.IsEmpty(), 0);
    const CEmperor copy(era);
    era.Set("", 0, 0);
    EXPECT_EQ(era.IsEmpty(), 1);
    EXPECT_EQ(CEmperor("", 0, 1).IsEmpty(), 0);
    EXPECT_EQ(CEmperor().IsEmpty(), 1);
    EXPECT_EQ(copy.GetFirstYear(), 1900);
    CGNString name;
    copy.Emperor(name);
    EXPECT_STREQ(name, "e");
}

TEST(Era, ReadsErasFromAnIniFile) {
    static const struct {
        int line;
        std::string keys;
        const char* eras;  // names, each followed by a blank
        long yearOf2020;
    } kRows[] = {
        {__LINE__, "Era1=R,2019\nEra2=H , 1989, 30\nEra3=S,1926,63\n", "R H S ", 2},
        {__LINE__, "Era1=R,2019\n", "R ", 2},
        {__LINE__, "Era1=R,2019\nEra3=S,1926\n", "R ", 2},
        {__LINE__, "Era2=R,2019\n", "\x95\xBD\x90\xAC \x8F\xBA\x98\x61 ", 32},
        {__LINE__, "Era1=R\n", "\x95\xBD\x90\xAC \x8F\xBA\x98\x61 ", 32},
        {__LINE__, "Era1=,2019\n", "\x95\xBD\x90\xAC \x8F\xBA\x98\x61 ", 32},
        {__LINE__, "Era1=R,2019,x\n", "\x95\xBD\x90\xAC \x8F\xBA\x98\x61 ", 32},
        {__LINE__, "Era1=R,20190\n", "\x95\xBD\x90\xAC \x8F\xBA\x98\x61 ", 32},
        {__LINE__, std::string("Era1=") + kReiwa + ",2019\n", "\x97\xDF\x98\x61 ", 2},
    };
    for (const auto& row : kRows) {
        CLCLocale locale = Named("ja_JP");
        Load(locale, "[s]\n" + row.keys);
        std::string eras;
        for (long i = 0; i < 3; ++i) {
            const std::string name = Item(locale, &CLCLocale::Emperor, i);
            if (!name.empty()) eras += name + ' ';
        }
        EXPECT_EQ(eras, row.eras) << row.line;
        EXPECT_EQ(locale.EmperorYrFromGregorianYr(2020), row.yearOf2020) << row.line;
    }
}

}  // namespace

/* Locale settings: how a locale writes dates, times and numbers.

   CLCLocale holds the settings of one locale. Functions for dates, times and numbers that take no
   locale use CLCGlobalLocale, which follows the settings of the user:

       CLCGlobalLocale* user = CLCGlobalLocale::Instance();
       CGNString format;
       user->DateFormatString(format);          // "M/d/yyyy"

       CLCLocale german;
       german.SetLocale("de_DE");
       german.DateFormatString(2, format);      // "dddd, d. MMMM yyyy"

   Date and time formats consist of these tokens:
   - d and dd: the day with one or two digits; ddd and dddd: its abbreviated and full name.
   - M and MM: the month with one or two digits; MMM and MMMM: its abbreviated and full name.
   - yy and yyyy: the year with two or four digits.
   - h and hh: the hour of a 12-hour clock; H and HH: the hour of a 24-hour clock.
   - m and mm: the minute; s and ss: the second; tt: the AM or PM text.

   Text between apostrophes and all other characters are copied literally.

   Texts are encoded in the code set of the locale's ANSI code page, independently of the current
   code set: the names of ja_JP are always Shift-JIS. A character missing in that code set is
   replaced by its best-fit character or by English text.

   Settings are read from the system once for each language and cached. Another object of the same
   language costs little more than copying its texts. Boolean results are an unsigned char, 1 or 0.
   Nothing throws. If allocation of a text fails, the failure is reported as in CGNString and the
   old text is kept. An object may be used by one thread at a time. */
#ifndef GENUTIL_GENLOCALE_H
#define GENUTIL_GENLOCALE_H

#include <cstdint>

#include "genexport.h"
#include "genstr.h"

namespace genutil {
struct LocaleFacts;
struct LocaleAccess;

/** Counts the changes to all locale objects. Data derived from locale settings remains valid while
    the count is unchanged. An empty base class, so it adds nothing to the size of a locale. */
struct GENUTIL_API LocaleEdits {
    LocaleEdits() { Touch(); }
    /** Counts as a change, because a new object exists. */
    LocaleEdits(const LocaleEdits&) { Touch(); }
    /** Counts as a change, because the settings of an object are replaced. */
    LocaleEdits& operator=(const LocaleEdits&) {
        Touch();
        return *this;
    }
    ~LocaleEdits() { Touch(); }
    /** Records a change. May be called from any thread. */
    static void Touch();
};
}  // namespace genutil

/** A Japanese era: its name, its first Gregorian year and its length in years. */
class GENUTIL_API CEmperor {
  public:
    /** Constructs an empty era. */
    CEmperor();
    /** Constructs an era.
        @param name the name of the era in the locale's code set.
        @param firstYear the Gregorian year in which the era begins.
        @param yearCount the length of the era in years; 0 for the current era. */
    CEmperor(CGNString name, long firstYear, long yearCount);
    /** Copies every field. */
    CEmperor(const CEmperor& other);
    /** Copies every field. */
    CEmperor& operator=(const CEmperor& other);
    ~CEmperor();

    /** Replaces name, first year and length; see the constructor. */
    void Set(CGNString name, long firstYear, long yearCount);

    /** Copies the name of the era to name. */
    void Emperor(CGNString& name) const;
    /** Returns the Gregorian year in which the era begins. */
    long GetFirstYear() const;
    /** Returns 1 if the name is empty and both numbers are 0. */
    unsigned char IsEmpty() const;

    /** Returns the year within the era, counted from 1, of a Gregorian year. Returns 0 for a year
        before the era. The length of the era is ignored; CLCLocale::EmperorYrFromGregorianYr()
        first finds the era of the year. */
    long EmperorYrFromGregorianYr(long year) const;

  private:
    CGNString m_name;
    std::int32_t m_firstYear;
    std::int32_t m_yearCount;
};

/** Languages. Programs store these numbers, so they never change. */
enum CLCLanguage : std::int32_t {
    clcNoLanguage = 0, /**< unknown language */
    clcAfrikaans = 1,
    clcAlbanian = 2,
    clcArabic = 3,
    clcBasque = 4,
    clcBelarusian = 5,
    clcBulgarian = 6,
    clcCatalan = 7,
    clcChinese = 8,
    clcCroatian = 9,
    clcCzech = 10,
    clcDanish = 11,
    clcDutch = 12,
    clcEnglish = 13,
    clcEstonian = 14,
    clcFaroese = 15,
    clcFinnish = 16,
    clcFrench = 17,
    clcGalician = 18,
    clcGeorgian = 19,
    clcGerman = 20,
    clcGreek = 21,
    clcGujarati = 22,
    clcHebrew = 23,
    clcHindi = 24,
    clcHungarian = 25,
    clcIcelandic = 26,
    clcIndonesian = 27,
    clcIrish = 28,
    clcItalian = 29,
    clcJapanese = 30,
    clcKannada = 31,
    clcKashmiri = 32,
    clcKazakh = 33,
    clcKonkani = 34,
    clcKorean = 35,
    clcLatvian = 36,
    clcLithuanian = 37,
    clcMacedonian = 38,
    clcMalay = 39,
    clcMalayalam = 40,
    clcMaltese = 41,
    clcManipuri = 42,
    clcMarathi = 43,
    clcNepali = 44,
    clcNorwegian = 45,
    clcOdia = 46,
    clcPersian = 47,
    clcPolish = 48,
    clcPortuguese = 49,
    clcPunjabi = 50,
    clcRomanian = 51,
    clcRussian = 52,
    clcSanskrit = 53,
    clcSerbian = 54,
    clcSindhi = 55,
    clcSlovak = 56,
    clcSlovenian = 57,
    clcSpanish = 58,
    clcSwahili = 59,
    clcSwedish = 60,
    clcTamil = 61,
    clcTatar = 62,
    clcTelugu = 63,
    clcThai = 64,
    clcTurkish = 65,
    clcUkrainian = 66,
    clcUrdu = 67,
    clcUzbek = 68,
    clcVietnamese = 69,
    clcArmenian = 70,
    clcAssamese = 71,
    clcAzerbaijani = 72,
    clcBangla = 73
};

/** The calendars of locales, by the numbers that Windows uses. */
enum CLCCalendar {
    clcCalendarGregorian = 1,
    clcCalendarJapaneseEras = 3,
    clcCalendarTaiwan = 4,
    clcCalendarKorean = 5,
    clcCalendarHijri = 6,
    clcCalendarThai = 7,
    clcCalendarPersian = 22,
    clcCalendarUmmAlQura = 23
};

/** The settings of one locale. Functions with a CGNString& parameter copy a text to it and return
    1. */
class GENUTIL_API CLCLocale : private genutil::LocaleEdits {
  public:
    /* -- Construction ---------------------------------------------------------------------- */

    /** Constructs plain English settings. The locale identifier is 0x0400, the user's locale, whose
        settings Init() reads. */
    CLCLocale();
    /** Copies every setting. */
    CLCLocale(const CLCLocale& other);
    /** Copies every setting. */
    CLCLocale& operator=(const CLCLocale& other);
    ~CLCLocale();

    /** Selects a locale by name and reads all its settings from the system. The part of the name
        after "." or "@" is ignored. An empty name selects the user's locale. An unknown name gives
        plain English settings and the identifier 0. */
    void SetLocale(CGNString name);

    /** Reads all settings of the current locale identifier from the system. Settings that the user
        changed in the control panel are included, and are read again for the user's locale. An
        unknown locale gets plain English settings. A customised locale keeps its date, time and
        number settings. */
    void Init();

    /** Sets all settings to plain English, with the formats "M/d/yyyy" and "h:mm:ss tt". The name
        and identifier of the locale are unchanged. */
    void InitDefault();

    /** Reads the date settings of the locale again from the system: separator, short date format
        and long date format. A setting that cannot be read is unchanged. A customised locale is
        unchanged. */
    void InitControlPanelDateSettings();
    /** Reads the time settings of the locale again from the system: separator, time format, AM and
        PM texts. A setting that cannot be read is unchanged. A customised locale is unchanged. */
    void InitControlPanelTimeSettings();

    /* -- Formats and texts ----------------------------------------------------------------- */

    /** Copies the time format, such as "h:mm:ss tt". */
    unsigned char TimeFormatString(CGNString& format) const;
    /** Returns 1 if the time format uses a 24-hour clock. */
    unsigned char Is24Hour() const;
    /** Copies the long date format if LongOrShort() is 2, or else the short date format. */
    unsigned char DateFormatString(CGNString& format) const;
    /** Copies the long date format if which is 2, or else the short date format. */
    unsigned char DateFormatString(long which, CGNString& format) const;
    /** Replaces the long date format if which is 2, or else the short date format. */
    void SetDateFormatString(long which, CGNString format);

    /** Returns the preferred date format: 2 for the long date format, any other number for the
        short one. */
    long LongOrShort() const;
    /** Sets the preferred date format. */
    void SetLongOrShort(long which);

    /** Copies the separator between the parts of a short date, such as "/". */
    unsigned char DateSep(CGNString& separator) const;
    /** Sets the date separator. The date formats are unchanged. */
    void SetDateSep(CGNString separator);
    /** Copies the separator between the parts of a time, such as ":". */
    unsigned char TimeSep(CGNString& separator) const;
    /** Sets the time separator. The time format is unchanged. */
    void SetTimeSep(CGNString separator);

    /** Copies the name of a month.
        @param i 0 (January) to 12, unchecked. The thirteenth name is empty in calendars of
            twelve months.
        @param name receives the name. */
    unsigned char MonthName(long i, CGNString& name) const;
    /** Copies the abbreviated name of a month; see MonthName(). */
    unsigned char MonthAbbrev(long i, CGNString& name) const;
    /** Copies the name of a weekday.
        @param i 0 (Monday) to 6 (Sunday), unchecked.
        @param name receives the name. */
    unsigned char DayName(long i, CGNString& name) const;
    /** Copies the abbreviated name of a weekday; see DayName(). */
    unsigned char DayAbbrev(long i, CGNString& name) const;

    /** Copies the PM text if pm is nonzero, or else the AM text. Both are empty in locales without
        such texts. */
    unsigned char AMPMMarker(long pm, CGNString& marker) const;
    /** Replaces the PM text if pm is nonzero, or else the AM text. */
    void SetAMPMMarker(long pm, CGNString marker);
    /** Returns the AM text. */
    CGNString GetAMString() const;
    /** Returns the PM text. */
    CGNString GetPMString() const;

    /** Copies the Japanese character that follows the number of a year, in Shift-JIS. Other
        languages give an empty text. */
    unsigned char YearChar(CGNString& unit) const;
    /** Copies the character that follows a month. */
    unsigned char MonthChar(CGNString& unit) const;
    /** Copies the character that follows a day. */
    unsigned char DayChar(CGNString& unit) const;
    /** Copies the character that follows an hour. */
    unsigned char HourChar(CGNString& unit) const;
    /** Copies the character that follows a minute. */
    unsigned char MinuteChar(CGNString& unit) const;
    /** Copies the character that follows a second. */
    unsigned char SecondChar(CGNString& unit) const;

    /** Returns the calendar, a CLCCalendar or another number of Windows. */
    long GetCalendarType() const;
    /** Sets the calendar. */
    void SetCalendarType(long type);

    /* -- Numbers --------------------------------------------------------------------------- */

    /** Copies the decimal symbol, such as ".". */
    unsigned char GetDecDecimalSymbol(CGNString& symbol) const;
    /** Copies the sign of negative numbers, such as "-". */
    unsigned char GetDecNegativeSign(CGNString& sign) const;
    /** Copies the sizes of the digit groups, starting at the decimal symbol and separated by ";". A
        final 0 repeats the last size: "3;0", "3;2;0". */
    unsigned char GetDecNumDigitsInGroup(CGNString& digits) const;
    /** Copies the separator between digit groups, such as ",". */
    unsigned char GetDecDigitGroupSeparator(CGNString& separator) const;
    /** Returns the format of negative numbers: 0 for (1.1), 1 for -1.1, 2 for - 1.1, 3 for 1.1-, 4
        for 1.1 -. */
    long GetDecNegativeNumFormat() const;
    /** Returns 1 if a number below 1 has a 0 before its decimal symbol. */
    unsigned char GetDecDisplayLeadingZeroes() const;

    /** Replaces each "." in s with the decimal symbol. Returns 1 if s changed. */
    unsigned char RegionalizeDecimalSeparator(CGNString& s) const;

    /* -- Identity of the locale ------------------------------------------------------------ */

    /** Returns the Windows locale identifier; 0x0400 for the user's locale. */
    unsigned long GetLocaleId() const;
    /** Returns the code set of the locale's texts (enum mbCodeSet). */
    int GetCodeSet() const;
    /** Returns 1 if the locale's code set has multibyte characters. */
    unsigned char IsMultiByte() const;
    /** Returns 1 if the locale's code set is a Unicode encoding. */
    unsigned char IsUnicode() const;

    /** Returns the language. */
    CLCLanguage GetLang() const;
    /** Returns the English name of the language, such as "Japanese". Returns an empty string for
        clcNoLanguage. */
    CGNString GetLangName() const;
    /** Returns 1 if the language is English. */
    unsigned char LocaleIsEnglish() const;
    /** Returns 1 if the language is Japanese. */
    unsigned char LocaleIsJapanese() const;

    /** Writes the suffix for language-specific files, such as "EN" or "JP": the first two bytes of
        the system's abbreviation of the language. Writes fewer bytes if the abbreviation is shorter
        or if a character would be split.
        @param out buffer of at least 3 bytes; receives the suffix and a terminator. */
    void GetFileSuffix(char* out) const;

    /** Truncates a text to its first 5 bytes, so that "en_US.1252" becomes "en_US". */
    static unsigned char GetShortLocaleString(CGNString& s);

    /* -- Customisation --------------------------------------------------------------------- */

    /** Calls Init() and copies the settings that Customize() accepts. */
    void GetDefaults(CGNString& timeFormat, CGNString& shortDateFormat, CGNString& longDateFormat,
                     long& longOrShort, CGNString& digitsInGroup, long& negativeNumFormat,
                     unsigned char& displayLeadingZeroes, CGNString& decimalSymbol,
                     CGNString& negativeSign, CGNString& digitGroupSeparator,
                     CGNString& localeName);

    /** Replaces settings with those of an application and marks the locale as customised. If
        localeName differs from the current name, that locale is selected first. An empty text
        leaves its setting unchanged, except that digitsInGroup is always stored. The time format
        also determines the 12-hour or 24-hour clock. Its first character other than a token, a
        blank or an apostrophe becomes the time separator. */
    void Customize(const CGNString& timeFormat, const CGNString& shortDateFormat,
                   const CGNString& longDateFormat, long longOrShort,
                   const CGNString& digitsInGroup, long negativeNumFormat,
                   unsigned char displayLeadingZeroes, const CGNString& decimalSymbol,
                   const CGNString& negativeSign, const CGNString& digitGroupSeparator,
                   const CGNString& localeName);

    /** Returns 1 if settings of an application are in force. */
    unsigned char Customized() const;
    /** Sets or clears the customised mark and changes nothing else. */
    void SetCustomized(unsigned char customized);

    /** Reads date and time settings from a section of an ini file. The values are in the locale's
        code set. The keys are:

          DateSeparator, TimeSeparator, AMString, PMString   texts
          ShortDateFormat, LongDateFormat         formats in old or current syntax (see below)
          NewShortDateFormat, NewLongDateFormat   formats in current syntax; preferred
          CalendarType                            1 to 23, see GetCalendarType()
          DateDisplayMode                         see LongOrShort()
          24HourTimeFormat     1 selects a 24-hour clock in the time format, 0 a 12-hour clock
          AMPMPrefix           1 moves the AM or PM text to the start of the time format, 0 to
                               its end
          Era1, Era2, Era3     "name,first year[,number of years]": the eras, newest first

        If Era1 is present, the keys replace the list of eras. This allows a new era to be added
        without a new version of the library. A setting is unchanged if its key is missing or empty,
        if its number is malformed, or if its value has 256 bytes or more. Formatting replaces these
        settings with the system's current ones unless the locale is customised; call
        SetCustomized(1) to keep them.
        @param iniFile path of the file, in the current code set.
        @param section name of the section. */
    void LoadIniDateTimeSettings(char* iniFile, CGNString& section);

    /** Converts a long date format in old syntax to current syntax. Capital D and Y become d and y,
        a month in lower-case m becomes M, and a single M becomes the name of the month. A format in
        current syntax is unchanged. */
    void ConvertOldImportLongDateFormat(CGNString& format) const;
    /** Converts a short date format in old syntax to current syntax as above. A single M remains
        the number of the month. */
    void ConvertOldImportShortDateFormat(CGNString& format) const;

    /** Returns the time formats to choose from: an array of four without an end marker. */
    static const char* const* TimeFormats();
    /** Returns the short date formats to choose from: 24 formats followed by an empty text. */
    static const char* const* ShortDateFormats();
    /** Returns the long date formats to choose from: 48 formats followed by an empty text. */
    static const char* const* LongDateFormats();

    /* -- Eras ------------------------------------------------------------------------------ */

    /** Copies the name of an era of the list.
        @param index 0 (newest) to 2.
        @param name receives the name; empty if the index is out of range or the list has no era
            there. */
    unsigned char Emperor(long index, CGNString& name) const;
    /** Copies the name of the era of a Gregorian year: the newest era that began in or before that
        year. Returns 0 and leaves name unchanged if all eras of the list began later. */
    unsigned char EmperorFromGregorianYr(long year, CGNString& name) const;
    /** Returns the year within the era of a Gregorian year, counted from 1. Returns the Gregorian
        year itself if all eras of the list began later. */
    long EmperorYrFromGregorianYr(long year) const;
    /** Returns the Gregorian year of a year within an era. The result may be after the end of the
        era. */
    long GregorianYrFromEmperorYr(CEmperor era, long eraYear) const;

  private:
    friend struct genutil::LocaleAccess;

    void TakeFacts(const genutil::LocaleFacts& facts);
    void TakeDateFacts(const genutil::LocaleFacts& facts);
    void TakeTimeFacts(const genutil::LocaleFacts& facts);
    void TakeNumberFacts(const genutil::LocaleFacts& facts);
    void TakeTimeFormat(const CGNString& format);

    static constexpr int kMonths = 13, kDays = 7, kEras = 3;

    unsigned char m_multiByte;
    unsigned char m_unicode;
    std::uint32_t m_reserved; /**< always 0; reserves space in the layout */
    CLCLanguage m_language;
    CGNString m_localeText; /**< the system's abbreviation of the language, such as "ENU" */
    std::int32_t m_24Hour;
    CGNString m_timeSeparator;
    CEmperor m_eras[kEras]; /**< newest first; an empty era ends the list */
    unsigned char m_customized;
    CGNString m_localeName;
    std::uint32_t m_localeId;
    std::int32_t m_calendarType;
    CGNString m_dateSeparator;
    CGNString m_timeFormat;
    CGNString m_shortDateFormat;
    CGNString m_longDateFormat;
    CGNString m_am;
    CGNString m_pm;
    CGNString m_monthNames[kMonths];
    CGNString m_monthAbbreviations[kMonths];
    CGNString m_dayNames[kDays]; /**< starting with Monday */
    CGNString m_dayAbbreviations[kDays];
    std::int32_t m_longOrShort;
    std::int32_t m_negativeFormat;
    unsigned char m_leadingZeroes;
    CGNString m_decimalSymbol;
    CGNString m_negativeSign;
    CGNString m_digitsInGroup;
    CGNString m_groupSeparator;
};

/** The locale of the process. */
class GENUTIL_API CLCGlobalLocale : public CLCLocale {
  public:
    /** Returns the instance. The first call creates it with the user's settings. Returns null if
        allocation fails; the next call then tries again. Not synchronised; make the first call
        while the process starts. */
    static CLCGlobalLocale* Instance();
    /** Destroys the instance and the catalogue of locales. The next call of Instance() creates a
        new one. */
    static void Free();

  private:
    static CLCGlobalLocale* m_pInstance;
};

#include "gencatalogue.h"

#endif

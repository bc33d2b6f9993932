/* The conventions of a locale: how it writes dates, times and numbers.

   CLCLocale holds those of one locale. Dates, times and numbers that are given no locale go by
   CLCGlobalLocale, which follows the user:

       CLCGlobalLocale* user = CLCGlobalLocale::Instance();
       CGNString picture;
       user->DateFormatString(picture);         // "M/d/yyyy"

       CLCLocale german;
       german.SetLocale("de_DE");
       german.DateFormatString(2, picture);     // "dddd, d. MMMM yyyy"

   Formats are pictures: d day, dd in two digits, ddd and dddd its abbreviation and name; M, MM,
   MMM, MMMM likewise the month; yy and yyyy the year; h and hh the hour to 12, H and HH to 24; m,
   mm minute; s, ss second; tt the AM or PM text. Text between apostrophes, and any other character,
   stands for itself.

   Texts are bytes in the locale's own code set, the one that its ANSI code page is, whichever code
   set is current: the names of ja_JP are always Shift-JIS. What a code set has no letter for is
   written with its nearest one, or in English.

   Settings come from the system, asked once for each language and then kept, so that a second
   locale object of a language costs little more than the copies of its texts. Results that answer
   yes or no are an unsigned char of 1 or 0. Nothing throws; a text that there is no memory for is
   reported as CGNString does, and stays as it was. One object belongs to one thread at a time. */
#ifndef GENUTIL_GENLOCALE_H
#define GENUTIL_GENLOCALE_H

#include <cstdint>

#include "genexport.h"
#include "genstr.h"

namespace genutil {
struct LocaleFacts;
struct LocaleAccess;

/** Counts the changes of all locale objects, so that what was derived from their settings is known
    to be right as long as there were none. Takes no room in them. */
struct GENUTIL_API LocaleEdits {
    LocaleEdits() { Touch(); }
    /** A new object is a change. */
    LocaleEdits(const LocaleEdits&) { Touch(); }
    /** So are other settings in an object. */
    LocaleEdits& operator=(const LocaleEdits&) {
        Touch();
        return *this;
    }
    ~LocaleEdits() { Touch(); }
    /** Notes a change. Any thread. */
    static void Touch();
};
}  // namespace genutil

/** A Japanese era: its name, the Gregorian year in which it begins and how long it lasted. */
class GENUTIL_API CEmperor {
  public:
    /** An empty record. */
    CEmperor();
    /** @param name the era's name in the locale's code set. @param firstYear the Gregorian year in
        which it begins. @param yearCount years that it lasted; 0 while it goes on. */
    CEmperor(CGNString name, long firstYear, long yearCount);
    /** A copy of all three values. */
    CEmperor(const CEmperor& other);
    /** Takes all three values. */
    CEmperor& operator=(const CEmperor& other);
    ~CEmperor();

    /** Replaces all three values. */
    void Set(CGNString name, long firstYear, long yearCount);

    /** Assigns the era's name. */
    void Emperor(CGNString& name) const;
    /** @return the Gregorian year in which the era begins. */
    long GetFirstYear() const;
    /** @return 1 when the name is empty and both numbers are 0. */
    unsigned char IsEmpty() const;

    /** @return the year within the era, from 1; 0 for a year before it. Only an era list knows
       where an era ends: an era by itself counts on, whatever its number of years. */
    long EmperorYrFromGregorianYr(long year) const;

  private:
    CGNString m_name;
    std::int32_t m_firstYear;
    std::int32_t m_yearCount;
};

/** Languages as programs tell them apart. The numbers are stored by programs and stay. */
enum CLCLanguage : std::int32_t {
    clcNoLanguage = 0, /**< not known */
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

/** The settings of one locale. Text accessors assign to their CGNString argument and return 1. */
class GENUTIL_API CLCLocale : private genutil::LocaleEdits {
  public:
    /* -- Construction ---------------------------------------------------------------------- */

    /** Plain English settings; the locale identifier is 0x0400, which means the user's locale: Init
        makes it so. */
    CLCLocale();
    /** A copy of every setting. */
    CLCLocale(const CLCLocale& other);
    /** Takes every setting. */
    CLCLocale& operator=(const CLCLocale& other);
    ~CLCLocale();

    /** Takes a locale by its name and fills all settings from the system. Not for what the name has
        behind "." or "@". An empty name means the user's locale; with a name that is not known the
        settings are plain English and the identifier is 0. */
    void SetLocale(CGNString name);

    /** Fills all settings from the system's for the locale identifier; settings that the user
        changed in the control panel count, and are read anew for the user's locale. A locale that
       the system does not know gets plain English. In a customised locale, date and time settings
       and those of numbers stay. */
    void Init();

    /** Fills all settings in plain English, "M/d/yyyy" and "h:mm:ss tt"; the name and the
        identifier of the locale stay. */
    void InitDefault();

    /** Reads the date settings of the locale identifier from the system anew: separator, short and
        long format. What cannot be read stays; a customised locale stays as it is. */
    void InitControlPanelDateSettings();
    /** The same for the time settings: separator, format, AM and PM texts. */
    void InitControlPanelTimeSettings();

    /* -- Formats and texts ----------------------------------------------------------------- */

    /** The time format, such as "h:mm:ss tt". */
    unsigned char TimeFormatString(CGNString& format) const;
    /** @return whether the time format counts hours to 24. */
    unsigned char Is24Hour() const;
    /** The long date format when LongOrShort() is 2, else the short one. */
    unsigned char DateFormatString(CGNString& format) const;
    /** The long date format when which is 2, else the short one. */
    unsigned char DateFormatString(long which, CGNString& format) const;
    /** Replaces the long date format when which is 2, else the short one. */
    void SetDateFormatString(long which, CGNString format);

    /** @return 2 when dates are to be written in the long format, any other number for the short.
     */
    long LongOrShort() const;
    /** Sets it. */
    void SetLongOrShort(long which);

    /** The separator of the parts of a short date, such as "/". */
    unsigned char DateSep(CGNString& separator) const;
    /** Sets it; the formats stay. */
    void SetDateSep(CGNString separator);
    /** The separator of the parts of a time, such as ":". */
    unsigned char TimeSep(CGNString& separator) const;
    /** Sets it; the format stays. */
    void SetTimeSep(CGNString separator);

    /** A month's name. @param i 0 (January) to 12, unchecked; the thirteenth is empty where the
        calendar has twelve. @param name receives it. */
    unsigned char MonthName(long i, CGNString& name) const;
    /** The same for its abbreviation. */
    unsigned char MonthAbbrev(long i, CGNString& name) const;
    /** A weekday's name. @param i 0 (Monday) to 6 (Sunday), unchecked. @param name receives it. */
    unsigned char DayName(long i, CGNString& name) const;
    /** The same for its abbreviation. */
    unsigned char DayAbbrev(long i, CGNString& name) const;

    /** The text for the afternoon when pm is not 0, else that for the morning. Empty in locales
       that have none. */
    unsigned char AMPMMarker(long pm, CGNString& marker) const;
    /** Replaces the text for the afternoon when pm is not 0, else that for the morning. */
    void SetAMPMMarker(long pm, CGNString marker);
    /** @return the text for the morning. */
    CGNString GetAMString() const;
    /** @return the text for the afternoon. */
    CGNString GetPMString() const;

    /** The character written behind the number of a year in Japanese (in Shift-JIS); empty for
       other languages. */
    unsigned char YearChar(CGNString& unit) const;
    unsigned char MonthChar(CGNString& unit) const;  /**< the same for a month */
    unsigned char DayChar(CGNString& unit) const;    /**< the same for a day */
    unsigned char HourChar(CGNString& unit) const;   /**< the same for an hour */
    unsigned char MinuteChar(CGNString& unit) const; /**< the same for a minute */
    unsigned char SecondChar(CGNString& unit) const; /**< the same for a second */

    /** @return the calendar by the system's number: 1 Gregorian, 3 Japanese eras, 4 Taiwan, 5
        Korean, 6 Hijri, 7 Thai, 22 Persian, 23 Umm al-Qura. */
    long GetCalendarType() const;
    /** Sets it. */
    void SetCalendarType(long type);

    /* -- Numbers --------------------------------------------------------------------------- */

    /** The decimal symbol, such as ".". */
    unsigned char GetDecDecimalSymbol(CGNString& symbol) const;
    /** The sign of negative numbers, such as "-". */
    unsigned char GetDecNegativeSign(CGNString& sign) const;
    /** Sizes of the groups of digits from the decimal symbol on, as numbers between ";"; behind a 0
        the last one repeats: "3;0", "3;2;0". */
    unsigned char GetDecNumDigitsInGroup(CGNString& digits) const;
    /** The text between groups of digits, such as ",". */
    unsigned char GetDecDigitGroupSeparator(CGNString& separator) const;
    /** @return how negative numbers are written: 0 (1.1), 1 -1.1, 2 - 1.1, 3 1.1-, 4 1.1 -. */
    long GetDecNegativeNumFormat() const;
    /** @return whether a fraction has a 0 in front of its decimal symbol. */
    unsigned char GetDecDisplayLeadingZeroes() const;

    /** Replaces each "." by the decimal symbol. @return whether the text changed. */
    unsigned char RegionalizeDecimalSeparator(CGNString& s) const;

    /* -- The locale itself ----------------------------------------------------------------- */

    /** @return the Windows locale identifier; 0x0400 for the user's locale. */
    unsigned long GetLocaleId() const;
    /** @return the code set that the locale's texts are in (enum mbCodeSet). */
    int GetCodeSet() const;
    /** @return whether the locale's code set has characters of several bytes. */
    unsigned char IsMultiByte() const;
    /** @return whether the locale's code set is a form of Unicode. */
    unsigned char IsUnicode() const;

    /** @return the language. */
    CLCLanguage GetLang() const;
    /** @return the language's name in English, such as "Japanese"; empty for clcNoLanguage. */
    CGNString GetLangName() const;
    /** @return whether the language is English. */
    unsigned char LocaleIsEnglish() const;
    /** @return whether the language is Japanese. */
    unsigned char LocaleIsJapanese() const;

    /** Writes the two letters that tell a language's files apart, such as "EN" or "JP": the first
        two of the system's abbreviation of the language. Less when it is shorter, never half a
        character.
        @param out at least 3 bytes. */
    void GetFileSuffix(char* out) const;

    /** Cuts a text of 6 or more bytes to its first 5, so that "en_US.1252" becomes "en_US". */
    static unsigned char GetShortLocaleString(CGNString& s);

    /* -- Customisation --------------------------------------------------------------------- */

    /** Runs Init and copies out what Customize takes. */
    void GetDefaults(CGNString& timeFormat, CGNString& shortDateFormat, CGNString& longDateFormat,
                     long& longOrShort, CGNString& digitsInGroup, long& negativeNumFormat,
                     unsigned char& displayLeadingZeroes, CGNString& decimalSymbol,
                     CGNString& negativeSign, CGNString& digitGroupSeparator,
                     CGNString& localeName);

    /** Takes an application's own settings and marks the locale as customised. A locale name that
        differs is set first. Texts that are empty leave the setting, but digitsInGroup is always
        taken. A time format decides whether hours count to 24, and its first character that is no
        token, blank or apostrophe becomes the time separator. */
    void Customize(const CGNString& timeFormat, const CGNString& shortDateFormat,
                   const CGNString& longDateFormat, long longOrShort,
                   const CGNString& digitsInGroup, long negativeNumFormat,
                   unsigned char displayLeadingZeroes, const CGNString& decimalSymbol,
                   const CGNString& negativeSign, const CGNString& digitGroupSeparator,
                   const CGNString& localeName);

    /** @return whether an application's own settings are in force. */
    unsigned char Customized() const;
    /** Sets the mark, and nothing else. */
    void SetCustomized(unsigned char customized);

    /** Takes settings from a section of an ini file, in the locale's code set. Keys:

          DateSeparator, TimeSeparator, AMString, PMString   texts
          ShortDateFormat, LongDateFormat                    pictures of either style (see below)
          NewShortDateFormat, NewLongDateFormat              pictures of today; preferred
          CalendarType                                       1 to 23, as GetCalendarType
          DateDisplayMode                                    as LongOrShort
          24HourTimeFormat     1 makes the hours of the time format count to 24, 0 to 12
          AMPMPrefix           1 moves the AM or PM text of the time format to its front, 0 behind
          Era1, Era2, Era3     "name,first year[,number of years]": the eras, newest first

        With Era1 the era list is what the keys say, so a new era needs no new library. A key that
       is missing or empty, a number that is none and a value of 256 bytes or more leave the
       setting. Dates and times are formatted with what the system has today unless the locale is
        customised: SetCustomized(1) keeps what the file had.
        @param iniFile path of the file, in the current code set. @param section its section. */
    void LoadIniDateTimeSettings(char* iniFile, CGNString& section);

    /** Turns a long date picture as older programs stored it into one of today: capital D and Y
        become d and y, a month in small m becomes M, a lone M becomes the month's name. One that is
        a picture of today stays. */
    void ConvertOldImportLongDateFormat(CGNString& format) const;
    /** The same for a short date picture; there a lone M stays the month's number. */
    void ConvertOldImportShortDateFormat(CGNString& format) const;

    /** The time formats to choose from: four, without an end marker. */
    static const char* const* TimeFormats();
    /** The short date formats to choose from: 24 and an empty text. */
    static const char* const* ShortDateFormats();
    /** The long date formats to choose from: 48 and an empty text. */
    static const char* const* LongDateFormats();

    /* -- Eras ------------------------------------------------------------------------------ */

    /** The name of the era in a slot of the list, newest first. @param index 0 to 2, unchecked.
        @param name receives it; empty for a slot without an era. */
    unsigned char Emperor(long index, CGNString& name) const;
    /** The name of the era that contains a year; a year in which an era begins is the new era's.
        @return 0, with name unchanged, when none does. */
    unsigned char EmperorFromGregorianYr(long year, CGNString& name) const;
    /** @return the year within the era that contains a year; the year itself when none does. */
    long EmperorYrFromGregorianYr(long year) const;
    /** @return the Gregorian year of a year within an era, which may lie behind the era's end. */
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
    std::uint32_t m_reserved; /**< 0; has its place in the layout */
    CLCLanguage m_language;
    CGNString m_localeText; /**< the system's abbreviation of the language, such as "ENU" */
    std::int32_t m_24Hour;
    CGNString m_timeSeparator;
    CEmperor m_eras[kEras]; /**< newest first, ended by an empty one */
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
    CGNString m_dayNames[kDays]; /**< from Monday */
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
    /** @return the instance, created and filled from the user's settings at first; null when memory
        runs out, and the next call tries again. Not synchronised: call it first while the process
        starts. */
    static CLCGlobalLocale* Instance();
    /** Destroys the instance, and the catalogue of locales with it; the next Instance() creates
        another. */
    static void Free();

  private:
    static CLCGlobalLocale* m_pInstance;
};

#include "gencatalogue.h"

#endif

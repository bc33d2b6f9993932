/* CGNDate: a day of the calendar, from 4713 B.C. to 9999.

   Days up to 4 October 1582 are those of the Julian calendar, days from the next one, 15 October
   1582, those of the Gregorian; the ten dates between never were. A day is also a Julian day
   number: day 0 is 1 January 4713 B.C., day 2440588 is 1 January 1970.

   Years are told in two ways. A value holds the year from 1 with a flag for those before Christ; a
   function that takes or gives an astronomical year counts through: 0 is 1 B.C., -1 is 2 B.C. */
#ifndef GENUTIL_GENCALENDAR_H
#define GENUTIL_GENCALENDAR_H

#include <cstdint>
#include <ctime>

#include "genexport.h"
#include "genstr.h"
#include "osthread.h"

/** A calendar date, with what formatting it last gave and reading it last found. */
class GENUTIL_API CGNDate {
  public:
    /* -- Construction and state ------------------------------------------------------------ */

    /** The empty date: year, month and day are 0, the status is 0, the weekday 2. */
    CGNDate();
    /** @param dayNumber a Julian day number; below 1 counts as 1 January 4713 B.C., above 5373120
        as that day, 1 January 9999. */
    explicit CGNDate(int dayNumber);
    /** Takes five values as they are, without a check. @param year from 1. @param bc 1 for a year
        before Christ. @param month from 1. @param day from 1. @param weekday 1 is Sunday. */
    CGNDate(int year, unsigned char bc, int month, int day, int weekday);
    CGNDate(const CGNDate& other);            /**< a copy of all of it */
    CGNDate& operator=(const CGNDate& other); /**< takes all of it */
    ~CGNDate();

    /** @return 1 when year, month and day are all 0. */
    unsigned char IsEmpty() const;
    /** Empties the display buffer and zeroes the date, its weekday and its B.C. flag. The status
       and the era code stay. */
    void Empty();

    /** @return 0 a valid date, 1 an invalid one, 2 text that was not recognised as a date. */
    long GetDateStatus() const { return m_status; }
    /** @return the year from 1; before Christ when GetYearBC() is 1. */
    int GetYear() const { return m_year; }
    int GetMonth() const { return m_month; }     /**< @return 1 to 12 */
    int GetDay() const { return m_day; }         /**< @return 1 to 31 */
    int GetWeekday() const { return m_weekday; } /**< @return 1 (Sunday) to 7, or 0 */
    /** @return 1 for a year before Christ. */
    unsigned char GetYearBC() const { return m_bc; }
    /** Copies what was last formatted. @param out receives it. */
    void GetDisplayBuffer(CGNString& out) const { out = m_display; }

    /** Fills a record with the present local time and writes the date over it. Programs depend on
        its month and weekday counting from 1 here, unlike elsewhere in the record.
        @param out receives it. */
    void ToTM(struct tm* out) const;

    /* -- Day numbers and the calendar ------------------------------------------------------ */

    /** @return the Julian day number of the date. */
    int GetDateValue() const;
    /** @param year astronomical. @param month 1 to 12. @param day 1 to 31.
        @return the Julian day number; of a date that does not exist it is unspecified. */
    static int DateToJulianDate(int year, int month, int day);
    /** @param dayNumber a Julian day number. @param year receives the astronomical year.
        @param month receives 1 to 12. @param day receives 1 to 31. */
    static void JulianDateToDate(int dayNumber, int& year, int& month, int& day);

    /** Whether a year is a leap year, as programs have it from this function: the century rule
        that makes 2000 one holds only in a month from October and on a day from the 15th, of years
        from 1582; else no century year is one. */
    static unsigned char IsLeapYear(int year, int month, int day);
    /** @param dayNumber a Julian day number. @return its week by ISO 8601, 1 to 53. */
    static int GetWeekNumber(int dayNumber);
    /** Puts a year of two digits into a century: the present one, or the last when the year would
        lie more than 29 years ahead.
        @param twoDigits 0 to 99, unchecked. @param year receives the result. */
    static void Convert2DigitTo4DigitYear(int twoDigits, int& year);

    /** Whether a date exists. The year is taken with the B.C. flag of this object.
        @param year from 1. @param month from 1. @param day from 1.
        @param weekday receives the weekday's name in the global locale; unchanged when it does not
        exist. @return 1 when it does. */
    unsigned char VerifyDate(int year, int month, int day, CGNString& weekday) const;
    /** The same; the weekday as a number, 1 is Sunday. */
    unsigned char VerifyDate(int year, int month, int day, int& weekday) const;
    /** Whether the date exists; stores its weekday if it does and changes nothing if not. */
    unsigned char VerifyDate();
    /** @param year from 1, with this object's B.C. flag. @param month from 1. @param weekday
        receives the name of the last day's weekday.
        @return the last day of the month; -1 when there is no such month. */
    int GetLastDayOfYearAndMonth(int year, int month, CGNString& weekday) const;
    /** The same; the weekday as a number, 1 is Sunday. */
    int GetLastDayOfYearAndMonth(int year, int month, int& weekday) const;

    /* -- Clock and zone; any thread -------------------------------------------------------- */

    /** Creates the mutex under which the functions below work; until then they work without. Called
        once while the process starts, behind OSSetThreaded. @return whether there is one. */
    static unsigned char ModuleInit();
    /** Breaks a moment down in the zone of the thread (see OSTimeZone). @param t seconds since
       1970; a negative number counts as 2147483647. @param out receives the local date and time. */
    static void LocalTimeTS(const long& t, struct tm& out);
    /** The reverse, which also brings the fields into their ranges. @param t local date and time;
        with a negative tm_isdst the zone decides whether it is daylight time.
        @return seconds since 1970; -1, with t as it was, outside of 0 to 2147483647. */
    static long MkTimeTS(struct tm* t);
    /** Makes the zone that the process started with that of the process again and reads the clock.
        @param t receives the result; may be null. @return seconds since 1970. */
    static long TimeTS(long* t);
    /** TimeTS without the argument. */
    static long Now();

    /* -- Writing (date_format) ------------------------------------------------------------- */

    /** Appends the date to the display buffer. @param style 0 and 1 for the short date format of
       the global locale, 2 for the long one, 3 for the locale's default; any other appends nothing.
        @return 0 when the format is malformed; what was written up to there stays. */
    unsigned char AddDateString(long style);
    /** Replaces the display buffer by the date. @param style as AddDateString.
        @return 0 for an empty date and a malformed format. */
    unsigned char FormatForDisplay(long style);
    /** FormatForDisplay with the weekday's name added, unless style is 2: in front when the long
        date format begins with it, else behind. */
    unsigned char FormatForCalendarDisplay(long style);

    /* Each replaces out by one component of the date; results are 1 unless a line says otherwise.
     */
    unsigned char DayNum(CGNString& out) const;      /**< "5" */
    unsigned char DayNumLZ(CGNString& out) const;    /**< "05" */
    unsigned char WeekDayNum(CGNString& out) const;  /**< "1" is Sunday */
    unsigned char DayAbbrev(CGNString& out) const;   /**< @return 0, and empty, without a weekday */
    unsigned char DayName(CGNString& out) const;     /**< @return 0, and empty, without a weekday */
    unsigned char MonthNum(CGNString& out) const;    /**< "3" */
    unsigned char MonthNumLZ(CGNString& out) const;  /**< "03" */
    unsigned char MonthAbbrev(CGNString& out) const; /**< empty without a month */
    unsigned char MonthName(CGNString& out) const;   /**< empty without a month */
    unsigned char Year4Digit(CGNString& out) const;  /**< "2010", "0044 B.C." */
    static unsigned char DateSep(CGNString& out);    /**< the locale's date separator */

    /* -- Reading (date_parse) -------------------------------------------------------------- */

    /** Reads a whole text as a date: in the long or the short date format of the global locale, or
        in any form that parseDate knows. The date, its weekday and the era code follow. The status
        is then 0; it becomes 1 for a date that does not exist or more than 255 bytes of text, and 2
        for text that is none, and the date stays. A weekday's name in the text is only skipped.
        @return whether a date was read. */
    unsigned char FromString(const CGNString& text);

    /* Each reads what its name says from the front of text, behind blanks, into the scratch values
       that the next calls and FromString use, and copies what is left to rest. On failure rest is
       left alone, or the whole text where a line says so. Digits are those of ASCII. */

    /** The long date format, else the short one. On failure rest is the whole text. */
    unsigned char GetDateFromString(const CGNString& text, CGNString& rest);
    /** The long date format of the global locale. On failure rest is the whole text. */
    unsigned char GetLongDateFromString(const CGNString& text, CGNString& rest);
    /** The short date format of the global locale. On failure rest is the whole text. */
    unsigned char GetShortDateFromString(const CGNString& text, CGNString& rest);
    /** A date in a given format. Blanks, and letters that are no token, may be missing in the text;
        so may a year at its end, which is then the present one. On failure rest is the whole text
        and the scratch values are as they were. */
    unsigned char GetDateFromStringUsingFormat(const CGNString& text, CGNString& rest,
                                               const CGNString& format);
    /** 1 or 2 digits; above 12 the status becomes 1. */
    unsigned char GetMonthNumFromString(const CGNString& text, CGNString& rest);
    /** A month's abbreviation in the global locale, in its exact letters. */
    unsigned char GetMonthAbbrevFromString(const CGNString& text, CGNString& rest);
    /** A month's name in the global locale, in its exact letters. */
    unsigned char GetMonthNameFromString(const CGNString& text, CGNString& rest);
    /** 1 or 2 digits; above 31 the status becomes 1. */
    unsigned char GetDayNumFromString(const CGNString& text, CGNString& rest);
    /** A weekday's abbreviation in the global locale; it is only skipped. */
    unsigned char GetDayAbbrevFromString(const CGNString& text, CGNString& rest);
    /** A weekday's name in the global locale; it is only skipped. */
    unsigned char GetDayNameFromString(const CGNString& text, CGNString& rest);
    /** A year with or without a B.C. marker. Of one or two digits it is put into a century, also
        when there is no digit at all: that is the year 00. @return 1 always. */
    unsigned char Get4DigitYearFromString(const CGNString& text, CGNString& rest);
    /** The date separator of the global locale. */
    unsigned char GetDateSepFromString(const CGNString& text, CGNString& rest);
    /** One byte. */
    unsigned char GetMatchingCharFromString(const CGNString& text, CGNString& rest, char c);
    /** An era's name, while the calendar of the global locale is that of eras (else rest is the
        whole text). @return the era's slot; 0 also when there is none, which callers cannot tell
        from the first. */
    long GetEmperorFromString(const CGNString& text, CGNString& rest);

    /* Free forms. Each reads a date from the front of text, perhaps with a weekday in
       front or behind, into the scratch values and copies what is left to rest; the status is 0
       then. On failure the scratch values and rest are left alone, and the status is 1 for numbers
       that are no date and 2 for text that is none. Letter case and width do not matter, nor the
       script of digits. A year of two digits is put into a century, a missing one is the present
       one, and one before Christ has its marker in front or behind. Only dates that exist are
       read; years end with 9999. */

    /** Any of the locale's formats and of the three kinds below: the reading that leaves least of
        the text counts, so that "5 March 2010" is not read as 5 March of this year. */
    unsigned char parseDate(const CGNString& text, CGNString& rest);
    /** Numbers between which one of / - . , or a blank stands, always the same, in the order of the
        global locale's short format. A number of three digits or more, or above 31, is the year by
        its size; in front it has month and day behind it, as in ISO 8601, which may also be eight
        digits without separators. Month and day do not change places to make a date of what would
        be none: "13/5/2010" is status 1 where the month comes first. */
    unsigned char parseNumDate(const CGNString& text, CGNString& rest);
    /** A month by its name or abbreviation, in the global locale or English, with the day in front
        of it or behind, also as an ordinal ("1st", "2."). */
    unsigned char parseCharDate(const CGNString& text, CGNString& rest);
    /** Numbers, in digits or Japanese numerals, with the Japanese or Korean characters for year,
        month and day behind them. In front may stand the name of an era in the locale's list, in a
        Japanese locale also its letter ("S63.1.7"); its first year may be called the origin. A year
        behind the era's end is status 1. */
    unsigned char parseKanjiDate(const CGNString& text, CGNString& rest);
    /** The first word of text behind blanks: a run of letters, a run of digits, or one character of
        any other kind. @param text the text. @param word receives it. @param rest receives what
        follows. @return 0, with both empty, at the end. */
    static unsigned char extractDateWord(const CGNString& text, CGNString& word, CGNString& rest);

    /** Serialises the clock and zone functions of this class; null before ModuleInit. */
    static _osmutex* osMutexLocalTime;

  private:
    static void CheckLayout();
    template <class Read>
    unsigned char ReadWith(const CGNString& text, CGNString& rest, Read read);
    template <class Read>
    unsigned char ParseWith(const CGNString& text, CGNString& rest, Read read);

    std::int32_t m_status;
    std::int32_t m_year;
    std::int32_t m_month;
    std::int32_t m_day;
    std::int32_t m_weekday;
    unsigned char m_bc;
    unsigned char m_yearFirst;
    CGNString m_display;
    std::int32_t m_parsedYear;   // astronomical
    std::int32_t m_parsedMonth;  // from 0
    std::int32_t m_parsedDay;
    std::int32_t m_spare;
    std::int32_t m_era;
};

#endif

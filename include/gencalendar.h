/* CGNDate: a calendar date from 4713 B.C. to 9999.

   Dates up to 4 October 1582 belong to the Julian calendar. Dates from the following day, 15
   October 1582, belong to the Gregorian calendar. The ten dates in between do not exist. Every date
   also has a Julian day number: day 0 is 1 January 4713 B.C. and day 2440588 is 1 January 1970.

   Years have two representations. A CGNDate stores the year counted from 1 with a separate flag for
   years before Christ. Functions that use an astronomical year count continuously: 0 is 1 B.C. and
   -1 is 2 B.C. */
#ifndef GENUTIL_GENCALENDAR_H
#define GENUTIL_GENCALENDAR_H

#include <cstdint>
#include <ctime>

#include "genexport.h"
#include "genstr.h"
#include "osthread.h"

/** A calendar date. Also keeps the text that was last formatted and the values that were last
    parsed. */
class GENUTIL_API CGNDate {
  public:
    /* -- Construction and state ------------------------------------------------------------ */

    /** Constructs the empty date. Year, month, day and status are 0; the weekday is 2. */
    CGNDate();
    /** Constructs the date of a Julian day number. A number below 1 gives 1 January 4713 B.C. A
        number above 5373120 gives 1 January 9999, the date of day 5373120. */
    explicit CGNDate(int dayNumber);
    /** Constructs a date from its components. They are stored unchecked.
        @param year counted from 1.
        @param bc 1 if the year is before Christ.
        @param month counted from 1.
        @param day counted from 1.
        @param weekday counted from 1, Sunday. */
    CGNDate(int year, unsigned char bc, int month, int day, int weekday);
    CGNDate(const CGNDate& other);            /**< Copies every field. */
    CGNDate& operator=(const CGNDate& other); /**< Copies every field. */
    ~CGNDate();

    /** Returns 1 if year, month and day are all 0. */
    unsigned char IsEmpty() const;
    /** Clears the display buffer, the date, its weekday and its B.C. flag. The status and the era
        code are unchanged. */
    void Empty();

    /** Returns the status: 0 for a valid date, 1 for an invalid date, 2 for text that is not a
        date. */
    long GetDateStatus() const { return m_status; }
    /** Returns the year, counted from 1. GetYearBC() returns 1 if it is before Christ. */
    int GetYear() const { return m_year; }
    int GetMonth() const { return m_month; } /**< Returns the month, 1 to 12. */
    int GetDay() const { return m_day; }     /**< Returns the day of the month, 1 to 31. */
    /** Returns the weekday, 1 (Sunday) to 7, or 0 if unknown. */
    int GetWeekday() const { return m_weekday; }
    /** Returns 1 if the year is before Christ. */
    unsigned char GetYearBC() const { return m_bc; }
    /** Copies the text that was last formatted to out. */
    void GetDisplayBuffer(CGNString& out) const { out = m_display; }

    /** Writes the date to a tm record. All other fields receive the current local time. In contrast
        to the usual convention, tm_mon is counted from 1 and tm_wday is counted from 1 (Sunday),
        because existing programs depend on it. */
    void ToTM(struct tm* out) const;

    /* -- Day numbers and the calendar ------------------------------------------------------ */

    /** Returns the Julian day number of the date. */
    int GetDateValue() const;
    /** Returns the Julian day number of a date. The result is unspecified if the date does not
        exist.
        @param year astronomical year.
        @param month 1 to 12.
        @param day 1 to 31. */
    static int DateToJulianDate(int year, int month, int day);
    /** Converts a Julian day number to a date.
        @param dayNumber the Julian day number.
        @param year receives the astronomical year.
        @param month receives 1 to 12.
        @param day receives 1 to 31. */
    static void JulianDateToDate(int dayNumber, int& year, int& month, int& day);

    /** Returns 1 if the year is a leap year by the rule that existing programs depend on. The year
        must be divisible by 4. A century year divisible by 400 counts as a leap year only if the
        year is 1582 or later, the month is 10 or later and the day is 15 or later. All other
        century years are common years. */
    static unsigned char IsLeapYear(int year, int month, int day);
    /** Returns the ISO 8601 week number, 1 to 53, of a Julian day number. */
    static int GetWeekNumber(int dayNumber);
    /** Expands a two-digit year. The result is in the current century, or in the previous one if it
        would otherwise be more than 29 years in the future.
        @param twoDigits 0 to 99, unchecked.
        @param year receives the expanded year. */
    static void Convert2DigitTo4DigitYear(int twoDigits, int& year);

    /** Returns 1 if a date exists. The B.C. flag of this object applies to the year.
        @param year counted from 1.
        @param month counted from 1.
        @param day counted from 1.
        @param weekday receives the name of the weekday in the global locale; unchanged if the
            date does not exist. */
    unsigned char VerifyDate(int year, int month, int day, CGNString& weekday) const;
    /** Same as above; weekday receives a number from 1 (Sunday) to 7. */
    unsigned char VerifyDate(int year, int month, int day, int& weekday) const;
    /** Returns 1 if this date exists, and then stores its weekday. Otherwise returns 0 and changes
        nothing. */
    unsigned char VerifyDate();
    /** Returns the last day of a month, or -1 if the month does not exist.
        @param year counted from 1; the B.C. flag of this object applies to it.
        @param month counted from 1.
        @param weekday receives the name of the weekday of the last day. */
    int GetLastDayOfYearAndMonth(int year, int month, CGNString& weekday) const;
    /** Same as above; weekday receives a number from 1 (Sunday) to 7. */
    int GetLastDayOfYearAndMonth(int year, int month, int& weekday) const;

    /* -- Clock and time zone; callable from any thread ------------------------------------- */

    /** Creates the mutex that serialises the functions below. Call it once while the process
        starts, after OSSetThreaded(). Before this call the functions run without a lock. Returns 1
        if the mutex exists. */
    static unsigned char ModuleInit();
    /** Converts a moment to local time in the time zone of the thread (see OSTimeZone).
        @param t seconds since 1970; a negative number is treated as 2147483647.
        @param out receives the local date and time. */
    static void LocalTimeTS(const long& t, struct tm& out);
    /** Converts local time to seconds since 1970 and normalises the fields of t. If tm_isdst is
        negative, the time zone determines whether daylight saving time applies. Returns -1 and
        leaves t unchanged if the result is outside 0 to 2147483647. */
    static long MkTimeTS(struct tm* t);
    /** Restores the initial time zone of the process and returns the current time in seconds since
        1970. The same value is stored in t unless t is null. */
    static long TimeTS(long* t);
    /** Returns TimeTS(nullptr). */
    static long Now();

    /* -- Formatting ------------------------------------------------------------------------ */

    /** Appends the date to the display buffer. Returns 0 if the format is malformed; the text
        produced before the error is kept.
        @param style 0 or 1 for the short date format of the global locale, 2 for the long date
            format, 3 for the locale's default. Any other value appends nothing. */
    unsigned char AddDateString(long style);
    /** Replaces the display buffer with the date. Returns 0 if the date is empty or the format is
        malformed.
        @param style as for AddDateString(). */
    unsigned char FormatForDisplay(long style);
    /** Same as FormatForDisplay(), with the name of the weekday added unless style is 2. The name
        precedes the date if the long date format begins with the weekday. Otherwise it follows the
        date. */
    unsigned char FormatForCalendarDisplay(long style);

    /* Component formatters. Each function replaces out with one component of the date. Each returns
       1 unless stated otherwise. */
    unsigned char DayNum(CGNString& out) const;     /**< Formats the day: "5". */
    unsigned char DayNumLZ(CGNString& out) const;   /**< Formats the day with two digits: "05". */
    unsigned char WeekDayNum(CGNString& out) const; /**< Formats the weekday: "1" is Sunday. */
    /** Formats the abbreviated weekday name. Returns 0 and empties out if unknown. */
    unsigned char DayAbbrev(CGNString& out) const;
    /** Formats the weekday name. Returns 0 and empties out if unknown. */
    unsigned char DayName(CGNString& out) const;
    unsigned char MonthNum(CGNString& out) const; /**< Formats the month: "3". */
    /** Formats the month with two digits: "03". */
    unsigned char MonthNumLZ(CGNString& out) const;
    /** Formats the abbreviated month name; empty if unknown. */
    unsigned char MonthAbbrev(CGNString& out) const;
    /** Formats the month name; empty if unknown. */
    unsigned char MonthName(CGNString& out) const;
    unsigned char Year4Digit(CGNString& out) const; /**< Formats the year: "2010", "0044 B.C.". */
    /** Writes the date separator of the locale. */
    static unsigned char DateSep(CGNString& out);

    /* -- Parsing --------------------------------------------------------------------------- */

    /** Parses a complete text as a date. Accepts the long and short date formats of the global
        locale and every form that parseDate() accepts. On success, sets the date, its weekday and
        the era code, sets the status to 0 and returns 1. On failure, returns 0 and leaves the date
        unchanged. The status is then 1 if the date does not exist or the text is longer than 255
        bytes, and 2 if the text is not a date. A weekday name in the text is skipped without being
        checked. */
    unsigned char FromString(const CGNString& text);

    /* Format-driven parsing. Each function skips leading blanks and reads one element from the
       start of text. It stores the value in scratch fields for later calls and for FromString(). On
       success it copies the remaining text to rest. On failure, rest is unchanged unless stated
       otherwise. Only ASCII digits are recognised. */

    /** Reads a date in the long date format, or else in the short date format. On failure, rest
        receives the whole text. */
    unsigned char GetDateFromString(const CGNString& text, CGNString& rest);
    /** Reads a date in the long date format of the global locale. On failure, rest receives the
        whole text. */
    unsigned char GetLongDateFromString(const CGNString& text, CGNString& rest);
    /** Reads a date in the short date format of the global locale. On failure, rest receives the
        whole text. */
    unsigned char GetShortDateFromString(const CGNString& text, CGNString& rest);
    /** Reads a date in the given format. Blanks and literal letters of the format may be missing in
        the text. A year at the end of the format may be missing too; the current year is then used.
        On failure, rest receives the whole text and the scratch fields are unchanged. */
    unsigned char GetDateFromStringUsingFormat(const CGNString& text, CGNString& rest,
                                               const CGNString& format);
    /** Reads a month of 1 or 2 digits. A number above 12 sets the status to 1. */
    unsigned char GetMonthNumFromString(const CGNString& text, CGNString& rest);
    /** Reads the abbreviated name of a month in the global locale. Letter case must match. */
    unsigned char GetMonthAbbrevFromString(const CGNString& text, CGNString& rest);
    /** Reads the name of a month in the global locale. Letter case must match. */
    unsigned char GetMonthNameFromString(const CGNString& text, CGNString& rest);
    /** Reads a day of 1 or 2 digits. A number above 31 sets the status to 1. */
    unsigned char GetDayNumFromString(const CGNString& text, CGNString& rest);
    /** Skips the abbreviated name of a weekday in the global locale. */
    unsigned char GetDayAbbrevFromString(const CGNString& text, CGNString& rest);
    /** Skips the name of a weekday in the global locale. */
    unsigned char GetDayNameFromString(const CGNString& text, CGNString& rest);
    /** Reads a year with an optional B.C. marker. A year of one or two digits is expanded to four.
        If there are no digits, the year is read as 00 and expanded. Always returns 1. */
    unsigned char Get4DigitYearFromString(const CGNString& text, CGNString& rest);
    /** Skips the date separator of the global locale. */
    unsigned char GetDateSepFromString(const CGNString& text, CGNString& rest);
    /** Skips the byte c. */
    unsigned char GetMatchingCharFromString(const CGNString& text, CGNString& rest, char c);
    /** Reads the name of an era. Returns the index of the era. Returns 0 if no era is found, which
        is also the index of the first era. If the global locale does not use a calendar of eras,
        rest receives the whole text. */
    long GetEmperorFromString(const CGNString& text, CGNString& rest);

    /* Free-form parsing. Each function reads a date from the start of text, optionally with a
       weekday before or after it. It stores the date in the scratch fields, copies the remaining
       text to rest and sets the status to 0. On failure, the scratch fields and rest are unchanged.
       The status is then 1 for numbers that do not form a date and 2 for text that is not a date.

       Letter case and character width are ignored, and digits of every script are recognised. A
       two-digit year is expanded and a missing year is the current year. A year before Christ has
       its marker before or after it. Only dates that exist are accepted, up to the year 9999. */

    /** Reads a date in any format of the locale or in any of the three forms below. The
        interpretation that uses the most text is chosen, so that "5 March 2010" is not read as 5
        March of the current year. */
    unsigned char parseDate(const CGNString& text, CGNString& rest);
    /** Reads a numeric date in the order of the short date format of the global locale. The numbers
        are separated by one of / - . , or a blank, and the separators must all be the same. A
        number above 31 or with three or more digits is the year. If the year is first, the month
        and then the day follow, as in ISO 8601; eight digits without separators are accepted too.
        Month and day are never exchanged to obtain an existing date: "13/5/2010" sets the status to
        1 if the format puts the month first. */
    unsigned char parseNumDate(const CGNString& text, CGNString& rest);
    /** Reads a date with the name or abbreviation of a month, in the global locale or in English.
        The day precedes or follows the month and may be an ordinal ("1st", "2."). */
    unsigned char parseCharDate(const CGNString& text, CGNString& rest);
    /** Reads a date whose numbers are followed by the Japanese or Korean characters for year, month
        and day. The numbers may be digits or Japanese numerals. The date may begin with the name of
        an era of the locale or, in a Japanese locale, with the era's letter ("S63.1.7"). The first
        year of an era may be written with the character for "origin". A year after the end of its
        era sets the status to 1. */
    unsigned char parseKanjiDate(const CGNString& text, CGNString& rest);
    /** Reads the first word of a text after leading blanks. A word is a run of letters, a run of
        digits, or one other character. Returns 0 and empties word and rest at the end of the text.
        @param text the text.
        @param word receives the word.
        @param rest receives the remaining text. */
    static unsigned char extractDateWord(const CGNString& text, CGNString& word, CGNString& rest);

    /** The mutex that serialises the clock and time zone functions of this class; null before
        ModuleInit(). */
    static _osmutex* osMutexLocalTime;

  private:
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
    std::int32_t m_parsedYear;   // astronomical year
    std::int32_t m_parsedMonth;  // counted from 0
    std::int32_t m_parsedDay;
    std::int32_t m_spare;
    std::int32_t m_era;
};

#endif

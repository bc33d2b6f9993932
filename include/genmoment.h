/* CGNDateTime: a moment, in seconds since 1 January 1970 UTC, with its local date and time.

   A moment is a signed 32-bit number of seconds, from 0 to 03:14:07 UTC on 19 January 2038. Where
   long has more than 32 bits, a larger number is treated as the nearest moment in this range. The
   date and time fields are local to the time zone that the thread had when the value was
   constructed (gentimezone.h). */
#ifndef GENUTIL_GENMOMENT_H
#define GENUTIL_GENMOMENT_H

#include <cstdint>
#include <ctime>

#include "genexport.h"
#include "genlocale.h"
#include "genstr.h"
#include "osthread.h"

/** A moment with its local date and time. Also keeps the text that was last formatted. Months count
    from 0 and weekdays count from 0 (Sunday), as in struct tm. CGNDate counts both from 1. */
class GENUTIL_API CGNDateTime {
  public:
    /* -- Construction and state ------------------------------------------------------------ */

    /** Constructs the empty value. */
    CGNDateTime();
    /** Constructs the empty value. The locale has no effect. */
    explicit CGNDateTime(CLCLocale* locale);
    /** Constructs a moment from seconds since 1970. A negative number is stored unchanged, but the
        date and time are those of second 2147483647. */
    explicit CGNDateTime(long seconds);
    /** Takes the local date and time of a tm record and formats them in style 3. The seconds since
        1970 are 0; callers that need them call MkTimeTS(). */
    explicit CGNDateTime(struct tm* local);
    CGNDateTime(const CGNDateTime& other);            /**< Copies every field. */
    CGNDateTime& operator=(const CGNDateTime& other); /**< Copies every field. */
    ~CGNDateTime();

    /** Returns 1 if date, time and seconds are all 0. The weekday is ignored. */
    unsigned char IsEmpty() const;
    /** Resets the object to the empty value. The range status is unchanged. */
    void Empty();

    /** Returns the seconds since 1970. */
    long GetSecsFrom70() const { return m_seconds; }
    int GetHour() const { return m_hour; }     /**< Returns the hour, 0 to 23. */
    int GetMinute() const { return m_minute; } /**< Returns the minute, 0 to 59. */
    int GetSecond() const { return m_second; } /**< Returns the second, 0 to 59. */
    /** Returns the range status:
        - 1: the moment is valid.
        - 2: the date is out of range or does not exist.
        - 3: the time is out of range.
        - 4: the time is after the last moment of the last day.
        - 5: the time text could not be read. */
    long GetDateTimeRangeStatus() const { return m_rangeStatus; }
    /** Copies the text that was last formatted to out. */
    void GetDisplayBuffer(CGNString& out) const { out = m_display; }

    /** Writes the date and time to a tm record. All other fields receive the current local time. */
    void ToTM(struct tm* out) const;

    /* -- Clock and time zone; any thread. Same as in CGNDate, with a separate mutex --------- */

    /** Creates the mutex; see CGNDate::ModuleInit(). */
    static unsigned char ModuleInit();
    /** Converts to local time; see CGNDate::LocalTimeTS(). */
    static void LocalTimeTS(const long& t, struct tm& out);
    /** Converts to seconds; see CGNDate::MkTimeTS(). */
    static long MkTimeTS(struct tm* t);
    /** Reads the clock; see CGNDate::TimeTS(). */
    static long TimeTS(long* t);
    /** Reads the clock; see CGNDate::Now(). */
    static long Now();
    /** Returns the moment at which the current day began in the time zone of the thread. The result
        may differ by an hour if clocks change at midnight. */
    static long GetLocalMidnightToday();

    /* -- Range ----------------------------------------------------------------------------- */

    /** Formats the first and the last date that a moment can have.
        @param least receives the first date.
        @param most receives the last date.
        @param style as for CGNDate::AddDateString(). */
    static void GetMinMaxDateRange(CGNString& least, CGNString& most, long style);
    /** Formats the times 00:00:00 and 23:59:59. */
    static void GetMinMaxTimeRange(CGNString& least, CGNString& most);
    /** Formats the first and the last moment. */
    static void GetMinMaxDateTimeRange(CGNString& least, CGNString& most, long style);
    /** Returns the local year of second 0, in years since 1900: 70, or 69 west of Greenwich. */
    static int MinYear();
    /** Returns the local time of second 2147483647 through the three pointers. */
    static void MaxTime(int* hour, int* minute, int* second);
    /** Returns 1 if a local date is within the range of moments.
        @param year years since 1900.
        @param month counted from 0.
        @param day counted from 1. */
    static unsigned char IsValidDate(int year, int month, int day);
    /** Returns 1 if a local date and time are in range and exist in the calendar. Sets the range
        status. The last accepted day is 18 January 2038 in every time zone. */
    unsigned char VerifyDateTime(struct tm* local);
    /** Returns 1 if a local date and time exist in the time zone of the thread. Otherwise sets the
        range status to 2 and returns 0. If the conversion to seconds fails, returns 0 and leaves
        the range status unchanged. */
    unsigned char VerifyDay(struct tm* local);

    /* -- Formatting ------------------------------------------------------------------------ */

    /** Replaces the display buffer with the date, a blank and the time. Returns 0 and empties the
        buffer if the value is empty.
        @param style as for CGNDate::AddDateString(). */
    unsigned char FormatForDisplay(long style);
    /** Replaces the display buffer with the date. Returns 0 if the value is empty or the format is
        malformed. An empty value leaves the buffer unchanged. */
    unsigned char FormatDateForDisplay(long style);
    /** Replaces the display buffer with the time. Always returns 1. */
    unsigned char FormatTimeForDisplay();
    /** Appends the date to the display buffer as CGNDate::AddDateString() does, with two
        differences. One "y" or two give a year of one or two digits. Years are counted in eras if
        the locale uses an era calendar. */
    unsigned char AddDateString(long style);
    /** Appends the time to the display buffer. Always returns 1. */
    unsigned char AddTimeString();

    /** Returns 1 if the global locale uses a 12-hour clock. */
    static unsigned char Is12Hour();
    /** Copies the time separator of the global locale to out. Always returns 1. */
    static unsigned char TimeSep(CGNString& out);

    /* Component formatters. Each function replaces out with one component of the value and returns
       1. Names are those of the global locale. */
    unsigned char DayNum(CGNString& out) const;     /**< Formats the day: "5". */
    unsigned char DayNumLZ(CGNString& out) const;   /**< Formats the day with two digits: "05". */
    unsigned char WeekDayNum(CGNString& out) const; /**< Formats the weekday: "1" is Sunday. */
    unsigned char DayAbbrev(CGNString& out) const;  /**< Formats the abbreviated weekday name. */
    unsigned char DayName(CGNString& out) const;    /**< Formats the weekday name. */
    unsigned char MonthNum(CGNString& out) const;   /**< Formats the month: "3" is March. */
    /** Formats the month with two digits: "03". */
    unsigned char MonthNumLZ(CGNString& out) const;
    unsigned char MonthAbbrev(CGNString& out) const; /**< Formats the abbreviated month name. */
    unsigned char MonthName(CGNString& out) const;   /**< Formats the month name. */
    unsigned char Year1Digit(CGNString& out) const;  /**< Formats the year modulo 100: "5". */
    unsigned char Year2Digit(CGNString& out) const;  /**< Formats the year modulo 100: "05". */
    /** Formats the year: "2010". A year of an era has two digits. */
    unsigned char Year4Digit(CGNString& out) const;
    /** Writes the date separator of the locale. */
    static unsigned char DateSep(CGNString& out);
    /** Writes the name of the era; empty if there is none. */
    unsigned char Emperor(CGNString& out) const;
    unsigned char Hour12(CGNString& out) const;     /**< See CGNTime::Hour12(). */
    unsigned char Hour12LZ(CGNString& out) const;   /**< See CGNTime::Hour12LZ(). */
    unsigned char Hour24(CGNString& out) const;     /**< See CGNTime::Hour24(). */
    unsigned char Hour24LZ(CGNString& out) const;   /**< See CGNTime::Hour24LZ(). */
    unsigned char Minute(CGNString& out) const;     /**< See CGNTime::Minute(). */
    unsigned char MinuteLZ(CGNString& out) const;   /**< See CGNTime::MinuteLZ(). */
    unsigned char Second(CGNString& out) const;     /**< See CGNTime::Second(). */
    unsigned char SecondLZ(CGNString& out) const;   /**< See CGNTime::SecondLZ(). */
    unsigned char AMPMMarker(CGNString& out) const; /**< See CGNTime::AMPMMarker(). */

    /* -- Parsing --------------------------------------------------------------------------- */

    /** Parses a complete text with a date, or with a date and a time in either order. Accepts the
        forms of CGNDate::parseDate() and CGNTime::parseTime(). A comma, "at" or the "T" of ISO 8601
        may separate date and time. "Z", "UTC" or an offset such as "+09:00" may follow the time and
        then replaces the time zone of the thread for the conversion. The fields of the value are
        always local to the time zone of the thread. A local time that occurs twice when clocks
        change means the first occurrence. Returns 1 on success. On failure, returns 0, leaves the
        value unchanged and sets the range status:
        - 2: the date is missing, does not exist or is out of range.
        - 3: the time is out of range.
        - 4: the time is after the last moment.
        - 5: the text after the date is not a time. */
    unsigned char FromString(const CGNString& text);
    /** Parses a date and a time from two texts, as above. An empty time means midnight. */
    unsigned char FromString(const CGNString& date, const CGNString& time);
    /** Reads a date, a time or both from a complete text into the fields of the value. The fields
        are not checked against the range of moments. The seconds since 1970 are unchanged. An
        offset after the time is skipped. Returns 1 if the whole text was read. Sets the range
        status as FromString() does.
        @param text the text.
        @param found receives 1 or 0 for each of year, month, day, hour, minute and second, in
            this order, to mark those present in the text; may be null.
        @param size number of elements of found. */
    unsigned char parseDateTime(const CGNString& text, unsigned char* found, int size);

    /* Format-driven and free-form parsing. Each function works as the function of the same name in
       CGNDate or CGNTime, but stores the date and time in the value itself. */
    /** See CGNDate::GetDateFromString(). */
    unsigned char GetDateFromString(const CGNString& text, CGNString& rest);
    /** See CGNDate::GetLongDateFromString(). */
    unsigned char GetLongDateFromString(const CGNString& text, CGNString& rest);
    /** See CGNDate::GetShortDateFromString(). */
    unsigned char GetShortDateFromString(const CGNString& text, CGNString& rest);
    /** See CGNDate::GetDateFromStringUsingFormat(). */
    unsigned char GetDateFromStringUsingFormat(const CGNString& text, CGNString& rest,
                                               const CGNString& format);
    /** See CGNDate::GetMonthNumFromString(). */
    unsigned char GetMonthNumFromString(const CGNString& text, CGNString& rest);
    /** See CGNDate::GetMonthAbbrevFromString(). */
    unsigned char GetMonthAbbrevFromString(const CGNString& text, CGNString& rest);
    /** See CGNDate::GetMonthNameFromString(). */
    unsigned char GetMonthNameFromString(const CGNString& text, CGNString& rest);
    /** See CGNDate::GetDayNumFromString(). */
    unsigned char GetDayNumFromString(const CGNString& text, CGNString& rest);
    /** See CGNDate::GetDayAbbrevFromString(). */
    unsigned char GetDayAbbrevFromString(const CGNString& text, CGNString& rest);
    /** See CGNDate::GetDayNameFromString(). */
    unsigned char GetDayNameFromString(const CGNString& text, CGNString& rest);
    /** See CGNDate::Get4DigitYearFromString(). */
    unsigned char Get1DigitYearFromString(const CGNString& text, CGNString& rest);
    /** See CGNDate::Get4DigitYearFromString(). */
    unsigned char Get2DigitYearFromString(const CGNString& text, CGNString& rest);
    /** See CGNDate::Get4DigitYearFromString(). */
    unsigned char Get4DigitYearFromString(const CGNString& text, CGNString& rest);
    /** See CGNDate::GetDateSepFromString(). */
    unsigned char GetDateSepFromString(const CGNString& text, CGNString& rest);
    /** See CGNDate::GetMatchingCharFromString(). */
    unsigned char GetMatchingCharFromString(const CGNString& text, CGNString& rest, char c);
    /** See CGNDate::GetEmperorFromString(). */
    long GetEmperorFromString(const CGNString& text, CGNString& rest);
    /** See CGNTime::GetTimeFromString(). */
    unsigned char GetTimeFromString(const CGNString& text, CGNString& rest);
    /** See CGNDate::parseDate(). */
    unsigned char parseDate(const CGNString& text, CGNString& rest);
    /** See CGNDate::parseNumDate(). */
    unsigned char parseNumDate(const CGNString& text, CGNString& rest);
    /** See CGNDate::parseCharDate(). */
    unsigned char parseCharDate(const CGNString& text, CGNString& rest);
    /** See CGNDate::parseKanjiDate(). */
    unsigned char parseKanjiDate(const CGNString& text, CGNString& rest);
    /** See CGNTime::parseTime(). */
    unsigned char parseTime(const CGNString& text, CGNString& rest);
    /** See CGNDate::extractDateWord(). */
    static unsigned char extractDateWord(const CGNString& text, CGNString& word, CGNString& rest);
    /** See CGNTime::extractTimeWord(). */
    static unsigned char extractTimeWord(const CGNString& text, CGNString& word, CGNString& rest);
    /** See CGNTime::FindAMPMMarker(). */
    static unsigned char FindAMPMMarker(const CGNString& text, long& pm, CGNString& rest);

    /** The mutex that serialises the clock and time zone functions of this class; null before
        ModuleInit(). */
    static _osmutex* osMutexLocalTime;

  private:
    void TakeFields(const struct tm& local);
    template <class Read>
    unsigned char ReadWith(const CGNString& text, CGNString& rest, Read read);
    template <class Read>
    unsigned char ParseWith(const CGNString& text, CGNString& rest, Read read);
    template <class Found>
    unsigned char Take(const Found& moment);
    template <class Write>
    unsigned char Component(CGNString& out, Write write) const;
    unsigned char ReadIn(const CLCLocale* locale, const CGNString& text);
    unsigned char ReadIn(const CLCLocale* locale, const CGNString& date, const CGNString& time);
    unsigned char FormatIn(CLCLocale* locale, long style);
    unsigned char AddDateIn(CLCLocale* locale, long style);
    unsigned char AddTimeIn(CLCLocale* locale);
    friend class CLCDateTime;

    std::int32_t m_hour;
    std::int32_t m_minute;
    std::int32_t m_second;
    std::int32_t m_year;
    std::int32_t m_month;
    std::int32_t m_day;
    std::int32_t m_weekday;
    CGNString m_display;
    struct tm m_working;
    std::int32_t m_seconds;
    std::int32_t m_spare;
    std::int32_t m_rangeStatus;
};

/** A moment that is formatted and parsed in its own locale instead of the global one, for example
    in the locale of a server's user:

        CLCLocale german;
        german.SetLocale("de_DE");
        CLCDateTime moment(&german, 1271772000L);
        moment.FormatForDisplay(2);                  // "Dienstag, 20. April 2010 16:00:00"

    Texts are in the current code set. The locale's names must be in that code set too. */
class GENUTIL_API CLCDateTime {
  public:
    /** Constructs the empty value.
        @param locale the locale, or null for the global one. The object keeps the pointer; the
            caller owns the locale and must keep it until the object is destroyed. */
    explicit CLCDateTime(CLCLocale* locale);
    /** Constructs a moment.
        @param locale as above.
        @param seconds seconds since 1970, as for CGNDateTime. */
    CLCDateTime(CLCLocale* locale, long seconds);
    CLCDateTime(const CLCDateTime& other);            /**< Copies every field. */
    CLCDateTime& operator=(const CLCDateTime& other); /**< Copies every field. */
    ~CLCDateTime();

    /** Returns the moment with its fields and the status of the last parse. The functions of the
        returned object use the global locale. */
    const CGNDateTime& Moment() const { return m_moment; }
    /** Sets the moment. */
    void Set(const CGNDateTime& moment) { m_moment = moment; }

    /** See CGNDateTime::FormatForDisplay(). This function and those below use the locale of this
        object. */
    unsigned char FormatForDisplay(long style);
    /** See CGNDateTime::FormatDateForDisplay(). */
    unsigned char FormatDateForDisplay(long style);
    /** See CGNDateTime::FormatTimeForDisplay(). */
    unsigned char FormatTimeForDisplay();
    /** See CGNDateTime::GetDisplayBuffer(). */
    void GetDisplayBuffer(CGNString& out) const;
    /** See CGNDateTime::FromString(). */
    unsigned char FromString(const CGNString& text);
    /** See CGNDateTime::FromString(). */
    unsigned char FromString(const CGNString& date, const CGNString& time);

  private:
    CLCLocale* Locale() const;

    CLCLocale* m_locale;
    CGNDateTime m_moment;
};

#endif

/* CGNDateTime: a moment, in seconds since 1 January 1970 UTC, with its local date and time.

   Moments are those of a signed 32-bit number: from second 0 to 03:14:07 UTC on 19 January 2038. A
   larger number, where a long holds one, counts as the nearest of these. The fields are those of
   the zone that the thread had when the value was made (gentimezone.h). */
#ifndef GENUTIL_GENMOMENT_H
#define GENUTIL_GENMOMENT_H

#include <cstdint>
#include <ctime>

#include "genexport.h"
#include "genlocale.h"
#include "genstr.h"
#include "osthread.h"

/** A moment with its local date and time and with what formatting last gave. Its months count from
    0 and its weekdays from 0 (Sunday), as in struct tm and unlike in CGNDate. */
class GENUTIL_API CGNDateTime {
  public:
    /* -- Construction and state ------------------------------------------------------------ */

    /** The empty value. */
    CGNDateTime();
    /** The empty value; the locale has no effect. */
    explicit CGNDateTime(CLCLocale* locale);
    /** @param seconds since 1970. A negative number stays in the value, but its date and time are
        those of second 2147483647. */
    explicit CGNDateTime(long seconds);
    /** Takes the local date and time of a record and formats them in style 3. The seconds since
        1970 stay 0: programs compute them with MkTimeTS when they want them. */
    explicit CGNDateTime(struct tm* local);
    CGNDateTime(const CGNDateTime& other);            /**< a copy of all of it */
    CGNDateTime& operator=(const CGNDateTime& other); /**< takes all of it */
    ~CGNDateTime();

    /** @return 1 when date, time and seconds are all 0; the weekday plays no part. */
    unsigned char IsEmpty() const;
    /** Back to the empty value; the range status stays. */
    void Empty();

    /** @return the seconds since 1970. */
    long GetSecsFrom70() const { return m_seconds; }
    int GetHour() const { return m_hour; }     /**< @return 0 to 23 */
    int GetMinute() const { return m_minute; } /**< @return 0 to 59 */
    int GetSecond() const { return m_second; } /**< @return 0 to 59 */
    /** @return 1 a valid moment; 2 a date out of range or none; 3 a time out of range; 4 a time
        behind the last on the last day; 5 a time that was not readable. */
    long GetDateTimeRangeStatus() const { return m_rangeStatus; }
    /** Copies what was last formatted. @param out receives it. */
    void GetDisplayBuffer(CGNString& out) const { out = m_display; }

    /** Fills a record with the present local time and writes date and time over it.
        @param out receives it. */
    void ToTM(struct tm* out) const;

    /* -- Clock and zone; any thread. The same as in CGNDate, under a mutex of this class. --- */

    static unsigned char ModuleInit();                      /**< see CGNDate::ModuleInit */
    static void LocalTimeTS(const long& t, struct tm& out); /**< see CGNDate::LocalTimeTS */
    static long MkTimeTS(struct tm* t);                     /**< see CGNDate::MkTimeTS */
    static long TimeTS(long* t);                            /**< see CGNDate::TimeTS */
    static long Now();                                      /**< see CGNDate::Now */
    /** @return the moment at which the present day began in the zone of the thread; where clocks
        change at midnight, within an hour of it. */
    static long GetLocalMidnightToday();

    /* -- Range ----------------------------------------------------------------------------- */

    /** Texts of the first and the last date that a moment can have. @param least receives the
       first.
        @param most receives the last. @param style as CGNDate::AddDateString. */
    static void GetMinMaxDateRange(CGNString& least, CGNString& most, long style);
    /** Texts of 00:00:00 and 23:59:59. */
    static void GetMinMaxTimeRange(CGNString& least, CGNString& most);
    /** Texts of the first and the last moment. */
    static void GetMinMaxDateTimeRange(CGNString& least, CGNString& most, long style);
    /** @return the local year of second 0, as years since 1900: 70, or 69 west of Greenwich. */
    static int MinYear();
    /** The local time of second 2147483647. */
    static void MaxTime(int* hour, int* minute, int* second);
    /** Whether a date lies in the range. @param year years since 1900. @param month from 0. @param
        day from 1. */
    static unsigned char IsValidDate(int year, int month, int day);
    /** Checks a local date and time against the range and the calendar; the last day is 18 January
        2038 in every zone. The range status follows. @return whether they are valid. */
    unsigned char VerifyDateTime(struct tm* local);
    /** Checks that a local date and time exist in the zone of the thread. The range status becomes
       2 when they do not. @return whether they do; 0, with the status as it was, when it is not a
        moment at all. */
    unsigned char VerifyDay(struct tm* local);

    /* -- Writing --------------------------------------------------------------------------- */

    /** Replaces the display buffer by date, blank and time. @param style as CGNDate::AddDateString.
        @return 0 for an empty value, with an empty buffer. */
    unsigned char FormatForDisplay(long style);
    /** Replaces the display buffer by the date; for an empty value it stays. @return 0 for an empty
        value and a malformed format. */
    unsigned char FormatDateForDisplay(long style);
    /** Replaces the display buffer by the time. @return 1. */
    unsigned char FormatTimeForDisplay();
    /** Appends the date to the display buffer: as CGNDate::AddDateString, but one and two "y" are
        years of so many digits, and years are those of eras where the locale counts so. */
    unsigned char AddDateString(long style);
    /** Appends the time to the display buffer. @return 1. */
    unsigned char AddTimeString();

    /** @return 1 when the global locale counts hours to 12. */
    static unsigned char Is12Hour();
    /** The time separator of the global locale. @param out receives it. @return 1. */
    static unsigned char TimeSep(CGNString& out);

    /* Each replaces out by one component and returns 1. */
    unsigned char DayNum(CGNString& out) const;      /**< "5" */
    unsigned char DayNumLZ(CGNString& out) const;    /**< "05" */
    unsigned char WeekDayNum(CGNString& out) const;  /**< "1" is Sunday */
    unsigned char DayAbbrev(CGNString& out) const;   /**< in the global locale */
    unsigned char DayName(CGNString& out) const;     /**< in the global locale */
    unsigned char MonthNum(CGNString& out) const;    /**< "3" is March */
    unsigned char MonthNumLZ(CGNString& out) const;  /**< "03" */
    unsigned char MonthAbbrev(CGNString& out) const; /**< in the global locale */
    unsigned char MonthName(CGNString& out) const;   /**< in the global locale */
    unsigned char Year1Digit(CGNString& out) const;  /**< of the year modulo 100: "5" */
    unsigned char Year2Digit(CGNString& out) const;  /**< of the year modulo 100: "05" */
    unsigned char Year4Digit(CGNString& out) const;  /**< "2010"; an era's year in two digits */
    static unsigned char DateSep(CGNString& out);    /**< the locale's date separator */
    unsigned char Emperor(CGNString& out) const;     /**< the era's name; empty without one */
    unsigned char Hour12(CGNString& out) const;      /**< as in CGNTime, and so the following */
    unsigned char Hour12LZ(CGNString& out) const;    /**< see CGNTime */
    unsigned char Hour24(CGNString& out) const;      /**< see CGNTime */
    unsigned char Hour24LZ(CGNString& out) const;    /**< see CGNTime */
    unsigned char Minute(CGNString& out) const;      /**< see CGNTime */
    unsigned char MinuteLZ(CGNString& out) const;    /**< see CGNTime */
    unsigned char Second(CGNString& out) const;      /**< see CGNTime */
    unsigned char SecondLZ(CGNString& out) const;    /**< see CGNTime */
    unsigned char AMPMMarker(CGNString& out) const;  /**< see CGNTime */

    /* -- Reading --------------------------------------------------------------------------- */

    /** Reads a whole text with a date, or with a date and a time in either order, in the forms that
        CGNDate::parseDate and CGNTime::parseTime know. A comma, "at" or the "T" of ISO 8601 may
        stand between them, and "Z", "UTC" or an offset such as "+09:00" behind the time, which is
        then not that of the zone of the thread. The fields of the value are those of that zone in
        any case. A time that stands twice when clocks change is the first.
        On failure the value stays, and the range status tells why: 2 no date, none that exists or
        none that a moment can have, 3 a time out of range, 4 one behind the last moment, 5 text
        behind the date that is no time.
        @return whether it was read. */
    unsigned char FromString(const CGNString& text);
    /** The same from two texts; an empty time is midnight. */
    unsigned char FromString(const CGNString& date, const CGNString& time);
    /** Reads a date, a time or both into the fields of the value, unchecked against the range; the
        seconds since 1970 stay, and an offset behind the time is skipped.
        @param text the text. @param found receives 1 or 0 for each of year, month, day, hour,
        minute and second, in this order, for what the text had; may be null. @param size elements
        of found. @return whether the whole text was read; the range status as for FromString. */
    unsigned char parseDateTime(const CGNString& text, unsigned char* found, int size);

    /* As the functions of the same names in CGNDate and CGNTime; they leave date and time in the
       value itself. */
    /** see CGNDate::GetDateFromString */
    unsigned char GetDateFromString(const CGNString& text, CGNString& rest);
    /** see CGNDate::GetLongDateFromString */
    unsigned char GetLongDateFromString(const CGNString& text, CGNString& rest);
    /** see CGNDate::GetShortDateFromString */
    unsigned char GetShortDateFromString(const CGNString& text, CGNString& rest);
    /** see CGNDate::GetDateFromStringUsingFormat */
    unsigned char GetDateFromStringUsingFormat(const CGNString& text, CGNString& rest,
                                               const CGNString& format);
    /** see CGNDate::GetMonthNumFromString */
    unsigned char GetMonthNumFromString(const CGNString& text, CGNString& rest);
    /** see CGNDate::GetMonthAbbrevFromString */
    unsigned char GetMonthAbbrevFromString(const CGNString& text, CGNString& rest);
    /** see CGNDate::GetMonthNameFromString */
    unsigned char GetMonthNameFromString(const CGNString& text, CGNString& rest);
    /** see CGNDate::GetDayNumFromString */
    unsigned char GetDayNumFromString(const CGNString& text, CGNString& rest);
    /** see CGNDate::GetDayAbbrevFromString */
    unsigned char GetDayAbbrevFromString(const CGNString& text, CGNString& rest);
    /** see CGNDate::GetDayNameFromString */
    unsigned char GetDayNameFromString(const CGNString& text, CGNString& rest);
    /** see CGNDate::Get4DigitYearFromString */
    unsigned char Get1DigitYearFromString(const CGNString& text, CGNString& rest);
    /** see CGNDate::Get4DigitYearFromString */
    unsigned char Get2DigitYearFromString(const CGNString& text, CGNString& rest);
    /** see CGNDate::Get4DigitYearFromString */
    unsigned char Get4DigitYearFromString(const CGNString& text, CGNString& rest);
    /** see CGNDate::GetDateSepFromString */
    unsigned char GetDateSepFromString(const CGNString& text, CGNString& rest);
    /** see CGNDate::GetMatchingCharFromString */
    unsigned char GetMatchingCharFromString(const CGNString& text, CGNString& rest, char c);
    /** see CGNDate::GetEmperorFromString */
    long GetEmperorFromString(const CGNString& text, CGNString& rest);
    /** see CGNTime::GetTimeFromString */
    unsigned char GetTimeFromString(const CGNString& text, CGNString& rest);
    /** see CGNDate::parseDate */
    unsigned char parseDate(const CGNString& text, CGNString& rest);
    /** see CGNDate::parseNumDate */
    unsigned char parseNumDate(const CGNString& text, CGNString& rest);
    /** see CGNDate::parseCharDate */
    unsigned char parseCharDate(const CGNString& text, CGNString& rest);
    /** see CGNDate::parseKanjiDate */
    unsigned char parseKanjiDate(const CGNString& text, CGNString& rest);
    /** see CGNTime::parseTime */
    unsigned char parseTime(const CGNString& text, CGNString& rest);
    /** see CGNDate::extractDateWord */
    static unsigned char extractDateWord(const CGNString& text, CGNString& word, CGNString& rest);
    /** see CGNTime::extractTimeWord */
    static unsigned char extractTimeWord(const CGNString& text, CGNString& word, CGNString& rest);
    /** see CGNTime::FindAMPMMarker */
    static unsigned char FindAMPMMarker(const CGNString& text, long& pm, CGNString& rest);

    /** Serialises the clock and zone functions of this class; null before ModuleInit. */
    static _osmutex* osMutexLocalTime;

  private:
    static void CheckLayout();
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

/** A moment that is written and read in a locale of its own instead of the global one, as for the
    users of a server:

        CLCLocale german;
        german.SetLocale("de_DE");
        CLCDateTime moment(&german, 1271772000L);
        moment.FormatForDisplay(2);                  // "Dienstag, 20. April 2010 16:00:00"

    Texts are in the code set that is current, as the names of the locale must be. */
class GENUTIL_API CLCDateTime {
  public:
    /** The empty value. @param locale is kept, stays the caller's and must outlive the object; null
        means the global locale. */
    explicit CLCDateTime(CLCLocale* locale);
    /** @param locale as above. @param seconds since 1970, as CGNDateTime takes them. */
    CLCDateTime(CLCLocale* locale, long seconds);
    CLCDateTime(const CLCDateTime& other);            /**< a copy of all of it */
    CLCDateTime& operator=(const CLCDateTime& other); /**< takes all of it */
    ~CLCDateTime();

    /** @return the moment, with its fields and the status of the last reading; its own functions go
        by the global locale. */
    const CGNDateTime& Moment() const { return m_moment; }
    /** Takes a moment. */
    void Set(const CGNDateTime& moment) { m_moment = moment; }

    /** As the functions of the same names in CGNDateTime, in the locale of this object. */
    unsigned char FormatForDisplay(long style);
    unsigned char FormatDateForDisplay(long style);                         /**< the same */
    unsigned char FormatTimeForDisplay();                                   /**< the same */
    void GetDisplayBuffer(CGNString& out) const;                            /**< the same */
    unsigned char FromString(const CGNString& text);                        /**< the same */
    unsigned char FromString(const CGNString& date, const CGNString& time); /**< the same */

  private:
    CLCLocale* Locale() const;

    CLCLocale* m_locale;
    CGNDateTime m_moment;
};

#endif

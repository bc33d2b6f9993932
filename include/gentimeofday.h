/* CGNTime: a time of day without a date. */
#ifndef GENUTIL_GENTIMEOFDAY_H
#define GENUTIL_GENTIMEOFDAY_H

#include <cstdint>

#include "genexport.h"
#include "genstr.h"

/** Hour, minute and second, with what formatting last gave and reading last found. Midnight is the
    same value as the empty time. */
class GENUTIL_API CGNTime {
  public:
    /** The empty time. */
    CGNTime();
    /** Takes the three values unchecked and formats them into the display buffer. */
    CGNTime(int hour, int minute, int second);
    /** @param secondsFromMidnight below 0 counts as 0, above 86399 as 86399. */
    explicit CGNTime(long secondsFromMidnight);
    CGNTime(const CGNTime& other);            /**< a copy of all of it */
    CGNTime& operator=(const CGNTime& other); /**< takes all of it */
    ~CGNTime();

    /** @return 1 when hour, minute, second and seconds from midnight are 0. */
    unsigned char IsEmpty() const;
    /** Empties the display buffer and zeroes all numbers but the range status. */
    void Empty();

    int GetHour() const { return m_hour; }     /**< @return 0 to 23 */
    int GetMinute() const { return m_minute; } /**< @return 0 to 59 */
    int GetSecond() const { return m_second; } /**< @return 0 to 59 */
    /** @return 0 to 86399. */
    long GetSecondsFromMidnight() const { return m_secondsFromMidnight; }
    /** @return 1 a time that was verified, 3 one out of range, 5 text that was not readable. */
    long GetTimeRangeStatus() const { return m_rangeStatus; }
    /** Copies what was last formatted. @param out receives it. */
    void GetDisplayBuffer(CGNString& out) const { out = m_display; }

    /** Checks hour (0 to 23), minute and second (0 to 59). The range status becomes 1, or 3.
        @return whether all are in range. */
    unsigned char VerifyTime(int hour, int minute, int second);

    /** Replaces the display buffer by the time. @return 1. */
    unsigned char FormatForDisplay();
    /** Appends the time, in the time format of the global locale, to the display buffer.
        @return 1. */
    unsigned char AddTimeString();

    /** @return 1 when the global locale counts hours to 12. */
    static unsigned char Is12Hour();
    /** The time separator of the global locale. @param out receives it. @return 1. */
    static unsigned char TimeSep(CGNString& out);
    /** The earliest and the latest time of a day as they are displayed. @param earliest receives
        00:00:00. @param latest receives 23:59:59. */
    static void GetMinMaxTimeRange(CGNString& earliest, CGNString& latest);

    /* Each replaces out by one component of the time and returns 1. */
    unsigned char Hour12(CGNString& out) const;   /**< "1" to "12" */
    unsigned char Hour12LZ(CGNString& out) const; /**< "01" to "12" */
    unsigned char Hour24(CGNString& out) const;   /**< "0" to "23" */
    unsigned char Hour24LZ(CGNString& out) const; /**< "00" to "23" */
    unsigned char Minute(CGNString& out) const;   /**< "5" */
    unsigned char MinuteLZ(CGNString& out) const; /**< "05" */
    unsigned char Second(CGNString& out) const;   /**< "9" */
    unsigned char SecondLZ(CGNString& out) const; /**< "09" */
    unsigned char AMPMMarker(
        CGNString& out) const; /**< the locale's text for the half of the day */

    /** Reads a whole text as a time, as the locale writes it or in a form that parseTime knows; the
        time follows. Text that cannot be read sets the range status 5, a time out of range 3; the
        time then stays. @return whether a time was read. */
    unsigned char FromString(const CGNString& text);

    /** Reads up to three numbers, for hour, minute and second, with the separator and the AM and PM
        texts of the global locale into the scratch values. Seconds from midnight are recomputed
        from the time itself, not from what was read: copy that over first. 12 AM also sets the
        hour to 0.
        @param text the text. @param rest receives what is left; the whole text when a number is out
        of range, and the range status is then 3.
        @return whether a time was read; a text for AM or PM where hours count to 24 is a failure.
     */
    unsigned char GetTimeFromString(const CGNString& text, CGNString& rest);

    /** Reads a time from the front of text into the scratch values: as GetTimeFromString, and also
        with dots; with "h", "m", "s", "Uhr" or the characters of China, Japan and Korea behind the
        numbers; with the AM and PM of the locale or of English in front or behind, in any letter
        case and also where hours count to 24; in digits of any script or width. A fraction of a
        second is read and dropped.
        @param text the text. @param rest receives what is left; on failure it is left alone.
        @return whether a time was read, with range status 1; else that is 5 for text that is no
        time and 3 for one out of range. */
    unsigned char parseTime(const CGNString& text, CGNString& rest);
    /** As CGNDate::extractDateWord. */
    static unsigned char extractTimeWord(const CGNString& text, CGNString& word, CGNString& rest);
    /** Looks for an AM or PM text, of the locale or in English, at the front of text, behind
       blanks, in any letter case. @param text the text. @param pm receives 0 or 1. @param rest
       receives what follows. @return whether there is one; if not, pm and rest are left alone. */
    static unsigned char FindAMPMMarker(const CGNString& text, long& pm, CGNString& rest);

  private:
    static void CheckLayout();
    friend struct TimeAccess;

    std::int32_t m_hour;
    std::int32_t m_minute;
    std::int32_t m_second;
    std::int32_t m_parsedHour;
    std::int32_t m_parsedMinute;
    std::int32_t m_parsedSecond;
    std::int32_t m_secondsFromMidnight;
    CGNString m_display;
    std::int32_t m_rangeStatus;
};

#endif

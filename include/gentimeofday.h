/* CGNTime: a time of day without a date. */
#ifndef GENUTIL_GENTIMEOFDAY_H
#define GENUTIL_GENTIMEOFDAY_H

#include <cstdint>

#include "genexport.h"
#include "genstr.h"

/** A time of day. Also keeps the text that was last formatted and the values that were last parsed.
    Midnight and the empty time are the same value. */
class GENUTIL_API CGNTime {
  public:
    /** Constructs the empty time. */
    CGNTime();
    /** Stores the three values unchecked and formats them into the display buffer. */
    CGNTime(int hour, int minute, int second);
    /** Constructs a time from seconds since midnight. A number below 0 is treated as 0, a number
        above 86399 as 86399. */
    explicit CGNTime(long secondsFromMidnight);
    CGNTime(const CGNTime& other);            /**< Copies every field. */
    CGNTime& operator=(const CGNTime& other); /**< Copies every field. */
    ~CGNTime();

    /** Returns 1 if hour, minute, second and seconds since midnight are all 0. */
    unsigned char IsEmpty() const;
    /** Clears the display buffer and every number except the range status. */
    void Empty();

    int GetHour() const { return m_hour; }     /**< Returns the hour, 0 to 23. */
    int GetMinute() const { return m_minute; } /**< Returns the minute, 0 to 59. */
    int GetSecond() const { return m_second; } /**< Returns the second, 0 to 59. */
    /** Returns the seconds since midnight, 0 to 86399. */
    long GetSecondsFromMidnight() const { return m_secondsFromMidnight; }
    /** Returns the range status: 1 for a verified time, 3 for a time out of range, 5 for text that
        is not a time. */
    long GetTimeRangeStatus() const { return m_rangeStatus; }
    /** Copies the text that was last formatted to out. */
    void GetDisplayBuffer(CGNString& out) const { out = m_display; }

    /** Returns 1 if hour is 0 to 23 and minute and second are 0 to 59. Sets the range status to 1
        on success and to 3 on failure. */
    unsigned char VerifyTime(int hour, int minute, int second);

    /** Replaces the display buffer with the time. Always returns 1. */
    unsigned char FormatForDisplay();
    /** Appends the time to the display buffer in the time format of the global locale. Always
        returns 1. */
    unsigned char AddTimeString();

    /** Returns 1 if the global locale uses a 12-hour clock. */
    static unsigned char Is12Hour();
    /** Copies the time separator of the global locale to out. Always returns 1. */
    static unsigned char TimeSep(CGNString& out);
    /** Formats the first and the last second of a day.
        @param earliest receives 00:00:00 as displayed.
        @param latest receives 23:59:59 as displayed. */
    static void GetMinMaxTimeRange(CGNString& earliest, CGNString& latest);

    /* Component formatters. Each function replaces out with one component of the time and returns
       1. */
    unsigned char Hour12(CGNString& out) const;   /**< Formats the hour, "1" to "12". */
    unsigned char Hour12LZ(CGNString& out) const; /**< Formats the hour, "01" to "12". */
    unsigned char Hour24(CGNString& out) const;   /**< Formats the hour, "0" to "23". */
    unsigned char Hour24LZ(CGNString& out) const; /**< Formats the hour, "00" to "23". */
    unsigned char Minute(CGNString& out) const;   /**< Formats the minute: "5". */
    unsigned char MinuteLZ(CGNString& out) const; /**< Formats the minute with two digits: "05". */
    unsigned char Second(CGNString& out) const;   /**< Formats the second: "9". */
    unsigned char SecondLZ(CGNString& out) const; /**< Formats the second with two digits: "09". */
    /** Writes the AM or PM text of the locale. */
    unsigned char AMPMMarker(CGNString& out) const;

    /** Parses a complete text as a time. Accepts the time format of the locale and every form that
        parseTime() accepts. Returns 1 and sets the time on success. On failure, returns 0 and
        leaves the time unchanged. The range status is then 5 if the text is not a time and 3 if the
        time is out of range. */
    unsigned char FromString(const CGNString& text);

    /** Reads up to three numbers for hour, minute and second into the scratch fields. Accepts the
        separator and the AM and PM texts of the global locale. For 12 AM, also sets the hour of the
        time itself to 0. The seconds since midnight are recomputed from the current time, not from
        the scratch fields. Returns 1 if a time was read. An AM or PM text is an error if the locale
        uses a 24-hour clock.
        @param text the text.
        @param rest receives the remaining text. If a number is out of range, it receives the
            whole text and the range status is 3. */
    unsigned char GetTimeFromString(const CGNString& text, CGNString& rest);

    /** Reads a time from the start of text into the scratch fields. Accepts everything that
        GetTimeFromString() accepts, and also:
        - dots as separators,
        - "h", "m", "s", "Uhr" or the Chinese, Japanese or Korean unit characters after the
          numbers,
        - AM and PM texts of the locale or in English, before or after the time, in any letter
          case, with a 12-hour or a 24-hour clock,
        - digits of any script or width.

        A fraction of a second is skipped. Returns 1 and sets the range status to 1 if a time was
        read. Otherwise the range status is 5 for text that is not a time and 3 for a time out of
        range.
        @param text the text.
        @param rest receives the remaining text; unchanged on failure. */
    unsigned char parseTime(const CGNString& text, CGNString& rest);
    /** Reads the first word of a text. See CGNDate::extractDateWord(). */
    static unsigned char extractTimeWord(const CGNString& text, CGNString& word, CGNString& rest);
    /** Reads an AM or PM text, of the locale or in English, from the start of text. Ignores leading
        blanks and letter case. Returns 1 if one was found.
        @param text the text.
        @param pm receives 0 for AM or 1 for PM; unchanged if none was found.
        @param rest receives the remaining text; unchanged if none was found. */
    static unsigned char FindAMPMMarker(const CGNString& text, long& pm, CGNString& rest);

  private:
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

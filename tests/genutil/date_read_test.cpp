// Dates, times and moments as people type them.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "gendate.h"
#include "tests/support/custom_locale.h"
#include "tests/support/zone_guard.h"

namespace {

// What was read: "2010-03-05 5" with the weekday (1 is Sunday), or the status in words.
std::string Read(const CGNString& text) {
    CGNDate date(1, 0, 1, 1, 1);
    const bool read = date.FromString(text) != 0;
    EXPECT_EQ(read, date.GetDateStatus() == 0) << static_cast<const char*>(text);
    if (!read) {
        EXPECT_EQ(date.GetYear() * 10000 + date.GetMonth() * 100 + date.GetDay(), 10101);
        return date.GetDateStatus() == 1 ? "invalid" : "none";
    }
    char out[64];
    std::snprintf(out, sizeof out, "%s%04d-%02d-%02d %d", date.GetYearBC() ? "BC " : "",
                  date.GetYear(), date.GetMonth(), date.GetDay(), date.GetWeekday());
    return out;
}

std::string ReadTime(const CGNString& text) {
    CGNTime time(12, 34, 56);
    const bool read = time.FromString(text) != 0;
    EXPECT_EQ(read, time.GetTimeRangeStatus() == 1) << static_cast<const char*>(text);
    EXPECT_TRUE(read || time.GetSecondsFromMidnight() == 45296);
    if (!read) return time.GetTimeRangeStatus() == 3 ? "range" : "none";
    EXPECT_EQ(time.GetSecondsFromMidnight(),
              time.GetHour() * 3600 + time.GetMinute() * 60 + time.GetSecond());
    char out[32];
    std::snprintf(out, sizeof out, "%02d:%02d:%02d", time.GetHour(), time.GetMinute(),
                  time.GetSecond());
    return out;
}

// A date of this year, as a date without a year is.
std::string ThisYear(const char* monthAndDay) {
    std::tm local;
    CGNDate::LocalTimeTS(CGNDate::Now(), local);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%s", local.tm_year + 1900, monthAndDay);
    return Read(text);
}

struct Row {
    int line;
    const char *text, *read;
};

template <std::size_t N>
void CheckDates(const Row (&rows)[N]) {
    for (const Row& row : rows) {
        const std::string expected = row.read[0] == '*' ? ThisYear(row.read + 1) : row.read;
        EXPECT_EQ(Read(row.text), expected) << row.line;
    }
}

constexpr char kMarch5[] = "2010-03-05 6", kMay3[] = "2010-05-03 2";

}  // namespace

TEST(DateRead, AmericanDates) {
    const CustomLocale locale("en_US", "M/d/yyyy", "dddd, MMMM d, yyyy", "h:mm:ss tt");
    static constexpr Row kRows[] = {
        {__LINE__, "3/5/2010", kMarch5},
        {__LINE__, "  3-5-10 ", kMarch5},
        {__LINE__, "3.5.10.", kMarch5},
        {__LINE__, "3 5 2010", kMarch5},
        {__LINE__, "3, 5, 2010", kMarch5},
        {__LINE__, "2010-03-05", kMarch5},
        {__LINE__, "20100305", kMarch5},
        {__LINE__, "2010/3/5", kMarch5},
        {__LINE__, "75/3/5", "1975-03-05 4"},
        {__LINE__, "3/5", "*03-05"},
        {__LINE__, "3.5.", "*03-05"},
        {__LINE__, "Fri 3/5/2010", kMarch5},
        {__LINE__, "13/5/2010", "invalid"},  // day and month do not change places
        {__LINE__, "2/29/2010", "invalid"},
        {__LINE__, "2/29/2012", "2012-02-29 4"},
        {__LINE__, "10/10/1582", "invalid"},
        {__LINE__, "0/5/2010", "invalid"},
        {__LINE__, "3/32/2010", "invalid"},
        {__LINE__, "3/2010/5", "invalid"},
        {__LINE__, "3/5/12000", "invalid"},
        {__LINE__, "3/5/0000", "invalid"},
        {__LINE__, "3/5/99999999999999999999", "invalid"},
        {__LINE__, "99999999999/5/2010", "invalid"},
        {__LINE__, "00000101", "invalid"},
        {__LINE__, "3/5-10", "none"},
        {__LINE__, "3/5 2010", "none"},
        {__LINE__, "3/2010", "none"},
        {__LINE__, "2010", "none"},
        {__LINE__, "3/5/", "none"},
        {__LINE__, "3/5/2010x", "none"},
        {__LINE__, "3/5/2010 12:00", "none"},
        {__LINE__, "", "none"},
        {__LINE__, " ", "none"},
        {__LINE__, "today", "none"},
        {__LINE__, "\xFF\xFE\x01", "none"},
        {__LINE__, "Friday, March 5, 2010", kMarch5},
        {__LINE__, "march 5, 2010", kMarch5},
        {__LINE__, "MAR. 5 2010", kMarch5},
        {__LINE__, "March 5th, '10", kMarch5},
        {__LINE__, "the 5th of March, 2010", kMarch5},
        {__LINE__, "5-Mar-10", kMarch5},
        {__LINE__, "5Mar2010", kMarch5},
        {__LINE__, "fri., 5 mar 2010", kMarch5},
        {__LINE__, "2010 March 5", kMarch5},
        {__LINE__, "2010-Mar-05 (Fri)", kMarch5},
        {__LINE__, "Sept 9 2009", "2009-09-09 4"},
        {__LINE__, "5 March", "*03-05"},
        {__LINE__, "March 5", "*03-05"},
        {__LINE__, "March 2010", "none"},
        {__LINE__, "March 32, 2010", "invalid"},
        {__LINE__, "31 April 2010", "invalid"},
        {__LINE__, "Marching 5 2010", "none"},
        {__LINE__, "Friday", "none"},
        {__LINE__, "3/15/44 B.C.", "BC 0044-03-15 4"},
        {__LINE__, "March 15, 44 BC", "BC 0044-03-15 4"},
        {__LINE__, "March 15, B.C. 44", "BC 0044-03-15 4"},
        {__LINE__, "Wednesday, March 15, 0044 B.C.", "BC 0044-03-15 4"},
        {__LINE__, "3/15/5000 B.C.", "invalid"},
        {__LINE__, "3/15/0 B.C.", "invalid"},
    };
    CheckDates(kRows);
}

TEST(DateRead, OtherOrdersAndLanguages) {
    {
        const CustomLocale german("de_DE", "dd.MM.yyyy", "dddd, d. MMMM yyyy", "HH:mm:ss");
        static constexpr Row kRows[] = {
            {__LINE__, "5.3.10", kMarch5},
            {__LINE__, "3/5/2010", kMay3},
            {__LINE__, "5.3.", "*03-05"},
            {__LINE__, "5. M\xE4rz 2010", kMarch5},
            {__LINE__, "5. M\xC4RZ 2010", kMarch5},
            {__LINE__, "Freitag, den 5. M\xE4r. 2010", kMarch5},
            {__LINE__, "Fr, 5. M\xE4r. 2010", kMarch5},
            {__LINE__, "3. Mai 2010", kMay3},
            {__LINE__, "may 3, 2010", kMay3},
            {__LINE__, "2010-05-03", kMay3},
            {__LINE__, "31.12.99", "1999-12-31 6"},
        };
        CheckDates(kRows);
    }
    {
        const CustomLocale french("fr_FR", "dd/MM/yyyy", "dddd d MMMM yyyy", "HH:mm:ss");
        // An abbreviated Tuesday reads like a month in English.
        EXPECT_EQ(Read("mar. 1er juin 2010"), "2010-06-01 3");
        EXPECT_EQ(Read("mar 5 2010"), kMarch5);
    }
    {
        const CustomLocale russian("ru_RU", "dd.MM.yyyy", "d MMMM yyyy '\xE3.'", "HH:mm:ss");
        EXPECT_EQ(Read("5 \xEC\xE0\xF0\xF2\xE0 2010 \xE3."), kMarch5);  // in the genitive
        EXPECT_EQ(Read("3 \xCC\xE0\xFF 2010"), kMay3);
        EXPECT_EQ(Read("5 \xEC\xE0\xF0\xF2 2010 \xE3."), kMarch5);
    }
    {
        const CustomLocale spanish("es_ES", "d/M/yyyy", "dddd, d' de 'MMMM' de 'yyyy", "H:mm:ss");
        EXPECT_EQ(Read("5 de marzo de 2010"), kMarch5);
        EXPECT_EQ(Read("3 mayo 2010"), kMay3);
    }
    {
        const CustomLocale thai("th_TH", "d/M/yyyy", "d MMMM yyyy", "HH:mm:ss");
        EXPECT_EQ(Read("\xF5/\xF3/\xF2\xF0\xF1\xF0"), kMarch5);  // in Thai digits
        CGNString month, day;
        thai->MonthAbbrev(2, month);
        CGNString text("5 ");
        text += month;
        text += " 2010";
        EXPECT_EQ(Read(text), kMarch5);
    }
    {
        const CustomLocale arabic("ar_SA", "d/M/yyyy", "dddd\xA1 d MMMM yyyy", "h:mm:ss tt");
        CGNString month, day;
        arabic->MonthName(2, month);
        arabic->DayName(4, day);
        CGNString text(day);
        text += "\xA1 5 ";  // an Arabic comma
        text += month;
        text += " 2010";
        EXPECT_EQ(Read(text), kMarch5);
        EXPECT_EQ(Read("5/3/10"), kMarch5);
    }
    const CustomLocale korean("ko_KR", "yyyy. M. d.", "yyyy'\xB3\xE2' M'\xBF\xF9' d'\xC0\xCF' dddd",
                              "tt h:mm:ss");
    korean->SetDateSep(". ");
    EXPECT_EQ(Read("2010. 3. 5."), kMarch5);
    EXPECT_EQ(Read("2010.3.5"), kMarch5);
    EXPECT_EQ(Read("3. 5."), ThisYear("03-05"));
    EXPECT_EQ(Read("2010\xB3\xE2 3\xBF\xF9 5\xC0\xCF"), kMarch5);
    EXPECT_EQ(Read("3\xBF\xF9 5\xC0\xCF"), ThisYear("03-05"));
}

// Year, month, day in Shift-JIS.
#define Y "\x94\x4E"
#define M "\x8C\x8E"
#define D "\x93\xFA"
#define HEISEI "\x95\xBD\x90\xAC"
#define SHOWA "\x8F\xBA\x98\x61"

TEST(DateRead, JapaneseDates) {
    static constexpr Row kRows[] = {
        {__LINE__, "2010" Y "3" M "5" D, kMarch5},
        {__LINE__, "2010" Y " 03" M " 05" D "(\x8B\xE0)", kMarch5},
        {__LINE__, "\x82\x51\x82\x4F\x82\x50\x82\x4F" Y "\x82\x52" M "\x82\x54" D, kMarch5},
        {__LINE__, "\x82\x51\x82\x4F\x82\x50\x82\x4F\x81\x5E\x82\x52\x81\x5E\x82\x54", kMarch5},
        {__LINE__, "\x93\xF1\x81\x5A\x88\xEA\x81\x5A" Y "\x8E\x4F" M "\x8C\xDC" D, kMarch5},
        {__LINE__, "2011" Y "\x8F\x5C\x93\xF1" M "\x93\xF1\x8F\x5C\x88\xEA" D, "2011-12-21 4"},
        {__LINE__, "3" M "5" D, "*03-05"},
        {__LINE__, HEISEI "22" Y "3" M "5" D, kMarch5},
        {__LINE__, HEISEI " 22.3.5", kMarch5},
        {__LINE__, HEISEI "\x8C\xB3" Y "3" M "5" D, "1989-03-05 1"},
        {__LINE__, SHOWA "63" Y "3" M "5" D, "1988-03-05 7"},
        {__LINE__, SHOWA "64" Y "1" M "7" D, "1989-01-07 7"},
        {__LINE__, SHOWA "65" Y "1" M "7" D, "invalid"},
        {__LINE__, HEISEI "0" Y "3" M "5" D, "invalid"},
        {__LINE__, "H22.3.5", kMarch5},
        {__LINE__, "s63/3/5", "1988-03-05 7"},
        {__LINE__, "10/3/5", kMarch5},
        {__LINE__, "3/5/2010", kMarch5},
        {__LINE__, "2010/13/5", "invalid"},
        {__LINE__, "2010" Y "13" M "5" D, "invalid"},
        {__LINE__, "2010" Y "3" M, "none"},
        {__LINE__, "2010" Y "3" M "5", "none"},
        {__LINE__, HEISEI, "none"},
        {__LINE__, "\x94", "none"},
        {__LINE__, "\x8B\xE0\x97\x6A" D " 2010/3/5", kMarch5},
        {__LINE__, "5 March 2010", kMarch5},
    };
    const CustomLocale locale("ja_JP", "yyyy/MM/dd", "yyyy'" Y "'M'" M "'d'" D "'", "H:mm:ss");
    CheckDates(kRows);
    CGNDate date;
    CGNString rest("kept");
    EXPECT_EQ(date.parseKanjiDate(SHOWA "63" Y "3" M "5" D "x", rest), 1);
    EXPECT_TRUE(rest == "x");
    EXPECT_EQ(date.parseKanjiDate("2010/3/5", rest), 0);
    EXPECT_EQ(date.GetDateStatus(), 2);
    EXPECT_TRUE(rest == "x");
    // The same in the other encoding of Japanese.
    InitMbutilExt(mbEucJp);
    EXPECT_EQ(Read("\xCA\xBF\xC0\xAE"
                   "22\xC7\xAF"
                   "3\xB7\xEE"
                   "5\xC6\xFC"),
              kMarch5);
}

TEST(DateRead, LeavesWhatFollows) {
    const CustomLocale locale("en_US", "M/d/yyyy", "dddd, MMMM d, yyyy", "h:mm:ss tt");
    const struct {
        int line;
        const char *text, *rest;
    } kRows[] = {
        {__LINE__, "3/5/10 12:30", " 12:30"},     {__LINE__, "3 5 12:30", " 12:30"},
        {__LINE__, "5 March 10:30", " 10:30"},    {__LINE__, "March 5 10 pm", " 10 pm"},
        {__LINE__, "2010-03-05T10:30", "T10:30"}, {__LINE__, "3/5/10 PM 1:05", " PM 1:05"},
        {__LINE__, "5 March 2010, 9 h", ", 9 h"}, {__LINE__, "March 5, 10h30", ", 10h30"},
        {__LINE__, "3/5/10 Fri 10:00", " 10:00"},
    };
    for (const auto& row : kRows) {
        CGNDate date;
        CGNString rest(row.text);
        EXPECT_EQ(date.parseDate(rest, rest), 1) << row.line;
        EXPECT_STREQ(rest, row.rest) << row.line;
    }
    CGNDate date;
    CGNString word, rest(
                        "Fri 5\xE9"
                        "3, x");
    std::string words;
    while (CGNDate::extractDateWord(rest, word, rest)) {
        words += static_cast<const char*>(word);
        words += '|';
    }
    EXPECT_EQ(words, "Fri|5|\xE9|3|,|x|");
    EXPECT_TRUE(word.IsEmpty() && rest.IsEmpty());
    EXPECT_EQ(date.parseCharDate("3/5/2010", rest) + date.parseNumDate("March 5", rest), 0);
}

TEST(DateRead, Times) {
    {
        const CustomLocale locale("en_US", "M/d/yyyy", "", "h:mm:ss tt");
        static constexpr Row kRows[] = {
            {__LINE__, "1:05 PM", "13:05:00"},
            {__LINE__, " 1:05:09pm ", "13:05:09"},
            {__LINE__, "1.05 p.m.", "13:05:00"},
            {__LINE__, "PM 1:05", "13:05:00"},
            {__LINE__, "12 am", "00:00:00"},
            {__LINE__, "12 pm", "12:00:00"},
            {__LINE__, "13:05", "13:05:00"},
            {__LINE__, "9", "09:00:00"},
            {__LINE__, "10h", "10:00:00"},
            {__LINE__, "10h30", "10:30:00"},
            {__LINE__, "10h 30m 15s", "10:30:15"},
            {__LINE__, "10:30:15.25", "10:30:15"},
            {__LINE__, "10 Uhr 30", "10:30:00"},
            {__LINE__, "10:30 Uhr", "10:30:00"},
            {__LINE__, "23:59:59", "23:59:59"},
            {__LINE__, "24:00", "range"},
            {__LINE__, "10:60", "range"},
            {__LINE__, "13:00 PM", "range"},
            {__LINE__, "10:30:60", "range"},
            {__LINE__, "10:", "none"},
            {__LINE__, "10:30.15", "none"},
            {__LINE__, "1030", "none"},
            {__LINE__, "123:00", "none"},
            {__LINE__, "99999999999", "none"},
            {__LINE__, "am 10 pm", "none"},
            {__LINE__, "pm", "none"},
            {__LINE__, "", "none"},
            {__LINE__, "10:30 x", "none"},
        };
        for (const Row& row : kRows) EXPECT_EQ(ReadTime(row.text), row.read) << row.line;
    }
    {
        const CustomLocale locale("ja_JP", "yyyy/MM/dd", "", "tt h:mm");
        EXPECT_EQ(ReadTime("\x8C\xDF\x8C\xE3"
                           "1\x8E\x9E"
                           "5\x95\xAA"
                           "9\x95\x62"),
                  "13:05:09");
        EXPECT_EQ(ReadTime("\x82\x50\x82\x52\x81\x46\x82\x4F\x82\x54"), "13:05:00");
        EXPECT_EQ(ReadTime("1:05 PM"), "13:05:00");
    }
    const CustomLocale locale("de_DE", "dd.MM.yyyy", "", "HH.mm");
    EXPECT_EQ(ReadTime("1.05 PM"), "13:05:00");  // also where hours count to 24
    long pm = 7;
    CGNString rest("kept");
    EXPECT_EQ(CGNTime::FindAMPMMarker("x", pm, rest), 0);
    EXPECT_EQ(CGNTime::FindAMPMMarker("PMX", pm, rest), 0);
    EXPECT_TRUE(pm == 7 && rest == "kept");
    EXPECT_EQ(CGNTime::FindAMPMMarker(" a.m. x", pm, rest), 1);
    EXPECT_TRUE(pm == 0 && rest == " x");
}

TEST(DateRead, Moments) {
    const ZoneGuard zone("Asia/Tokyo");
    {
        const CustomLocale locale("en_US", "M/d/yyyy", "dddd, MMMM d, yyyy", "h:mm:ss tt");
        constexpr long kMoment = 1269093600;  // 20 March 2010, 23:00 in Tokyo
        const struct {
            int line;
            const char* text;
            long seconds;  // or the status, below 0
        } kRows[] = {
            {__LINE__, "3/20/2010 11:00:00 PM", kMoment},
            {__LINE__, "Saturday, March 20, 2010 11:00:00 PM", kMoment},
            {__LINE__, "20 March 2010 at 23:00", kMoment},
            {__LINE__, "March 20, 2010, 11 pm", kMoment},
            {__LINE__, "11 pm, March 20, 2010", kMoment},
            {__LINE__, "23:00 3/20/10", kMoment},
            {__LINE__, "2010-03-20 23:00", kMoment},
            {__LINE__, "2010-03-20T23:00:00", kMoment},
            {__LINE__, "20100320T2300", kMoment},
            {__LINE__, "2010-03-20T14:00:00Z", kMoment},
            {__LINE__, "2010-03-20T09:30:00.5-04:30", kMoment},
            {__LINE__, "Sat, 20 Mar 2010 15:00:00 +0100", kMoment},
            {__LINE__, "Sat, 20 Mar 2010 14:00:00 GMT", kMoment},
            {__LINE__, "3/20/2010", kMoment - 23 * 3600},
            {__LINE__, "1/1/1970 9:00", 0},
            {__LINE__, "1/18/2038 12:14:07", 2147397247},
            {__LINE__, "1/1/1970 8:59", -2},
            {__LINE__, "1970-01-01T00:00:00+01:00", -2},
            {__LINE__, "1/19/2038", -2},
            {__LINE__, "1/18/2038 12:14:08", -4},
            {__LINE__, "3/20/44 B.C.", -2},
            {__LINE__, "2/30/2010", -2},
            {__LINE__, "23:00", -2},
            {__LINE__, "", -2},
            {__LINE__, "x", -2},
            {__LINE__, "3/20/2010 25:00", -3},
            {__LINE__, "3/20/2010 x", -5},
            {__LINE__, "3/20/2010 10:00 x", -5},
            {__LINE__, "3/20/2010 10:00 -5", -5},
            {__LINE__, "3/20/2010T10", 1269046800},
        };
        for (const auto& row : kRows) {
            CGNDateTime moment(5L);
            const bool read = moment.FromString(row.text) != 0;
            EXPECT_EQ(read ? moment.GetSecsFrom70() : -moment.GetDateTimeRangeStatus(), row.seconds)
                << row.line;
            EXPECT_EQ(read, moment.GetDateTimeRangeStatus() == 1) << row.line;
            EXPECT_TRUE(read || moment.GetSecsFrom70() * 100 + moment.GetHour() == 509);
            CGNDateTime same(moment.GetSecsFrom70());
            same.FormatForDisplay(1);
            moment.FormatForDisplay(1);
            CGNString a, b;
            same.GetDisplayBuffer(a);
            moment.GetDisplayBuffer(b);
            EXPECT_TRUE(a == b) << row.line;
        }
        CGNDateTime moment;
        EXPECT_EQ(moment.FromString("20 March 2010", "11 pm"), 1);
        EXPECT_EQ(moment.GetSecsFrom70(), kMoment);
        EXPECT_EQ(moment.FromString("20 March 2010", " "), 1);
        EXPECT_EQ(moment.GetHour(), 0);
        EXPECT_EQ(moment.FromString("20 March 2010 10:00", "x"), 0);
        EXPECT_EQ(moment.GetDateTimeRangeStatus(), 2);
        EXPECT_EQ(moment.FromString("20 March 2010", "x"), 0);
        EXPECT_EQ(moment.GetDateTimeRangeStatus(), 5);
        unsigned char found[7];
        EXPECT_EQ(moment.parseDateTime("March 5, 10:30", found, 7), 1);
        EXPECT_EQ(std::string(found, found + 7), std::string("\0\1\1\1\1\0\0", 7));
        EXPECT_EQ(moment.parseDateTime("noon", found, 2), 0);
        EXPECT_EQ(found[0] + found[1], 0);
        EXPECT_EQ(moment.parseDateTime("9 pm", nullptr, 0), 1);
        EXPECT_EQ(moment.GetHour(), 21);
    }
    {  // clocks go from 2 to 3
        ZoneGuard::Set("America/New_York");
        const CustomLocale locale("en_US", "M/d/yyyy", "", "h:mm:ss tt");
        CGNDateTime moment;
        EXPECT_EQ(moment.FromString("3/14/2010 2:30"), 0);
        EXPECT_EQ(moment.GetDateTimeRangeStatus(), 2);
        EXPECT_EQ(moment.FromString("3/14/2010 3:00"), 1);
        EXPECT_EQ(moment.GetSecsFrom70(), 1268550000);
    }
}

// What a locale writes in either style it reads.
TEST(DateRead, LocaleBoundMoments) {
    const ZoneGuard zone("Europe/Berlin");
    for (const char* name : {"en_US", "en_GB", "de_DE", "fr_FR", "ru_RU", "ja_JP", "zh_TW", "ko_KR",
                             "th_TH", "ar_SA", "he_IL", "pl_PL", "es_ES", "hu_HU", "fi_FI"}) {
        CLCLocale locale;
        locale.SetLocale(name);
        const CodeSetGuard codeSet(locale.GetCodeSet());
        for (long style = 1; style <= 2; ++style) {
            for (long seconds = 86400; seconds < 2147000000; seconds += 61234567) {
                CLCDateTime moment(&locale, seconds), again(&locale);
                EXPECT_EQ(moment.FormatForDisplay(style), 1);
                CGNString text;
                moment.GetDisplayBuffer(text);
                EXPECT_EQ(again.FromString(text), 1) << name << ' ' << text;
                EXPECT_EQ(again.Moment().GetSecsFrom70(), seconds) << name << ' ' << text;
            }
        }
    }
}

TEST(DateRead, LongTexts) {
    const CustomLocale locale("en_US", "M/d/yyyy", "dddd, MMMM d, yyyy", "h:mm:ss tt");
    for (const char* piece :
         {"1", " ", "/", "1/", "March ", "5 March ", "B", "\xFF", "(", "a.m. "}) {
        std::string text;
        while (text.size() < 1000000) text += piece;
        CGNDate date;
        CGNTime time;
        CGNDateTime moment;
        const CGNString all(text.c_str());
        EXPECT_EQ(date.FromString(all) + time.FromString(all) + moment.FromString(all), 0) << piece;
        EXPECT_NE(date.GetDateStatus(), 0);
        EXPECT_EQ(time.GetTimeRangeStatus(), 5);
    }
}

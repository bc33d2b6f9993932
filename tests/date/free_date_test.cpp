// Dates, times and moments as people type them.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "gendate.h"
#include "tests/support/custom_locale.h"
#include "tests/support/texts.h"
#include "tests/support/zone_guard.h"

namespace {

// The date that was read, as "2010-03-05 6" with the weekday (1 is Sunday), or the status.
std::string Read(const CGNString& text) {
    CGNDate date(1, 0, 1, 1, 1);
    const bool read = date.FromString(text) != 0;
    EXPECT_EQ(read, date.GetDateStatus() == 0) << static_cast<const char*>(text);
    char out[64];
    std::snprintf(out, sizeof out, "%s%04d-%02d-%02d %d", date.GetYearBC() ? "BC " : "",
                  date.GetYear(), date.GetMonth(), date.GetDay(), date.GetWeekday());
    if (read) return out;
    EXPECT_STREQ(out, "0001-01-01 1") << static_cast<const char*>(text);  // unchanged
    return date.GetDateStatus() == 1 ? "invalid" : "none";
}

std::string ReadTime(const CGNString& text) {
    CGNTime time(12, 34, 56);
    const bool read = time.FromString(text) != 0;
    EXPECT_EQ(read, time.GetTimeRangeStatus() == 1) << static_cast<const char*>(text);
    const long seconds = time.GetSecondsFromMidnight();
    if (!read) {
        EXPECT_EQ(seconds, 12 * 3600 + 34 * 60 + 56) << static_cast<const char*>(text);
        return time.GetTimeRangeStatus() == 3 ? "range" : "none";
    }
    EXPECT_EQ(seconds, time.GetHour() * 3600 + time.GetMinute() * 60 + time.GetSecond());
    char out[32];
    std::snprintf(out, sizeof out, "%02d:%02d:%02d", time.GetHour(), time.GetMinute(),
                  time.GetSecond());
    return out;
}
// The date that a text without a year means.
std::string ThisYear(const char* monthAndDay) {
    std::tm local;
    CGNDate::LocalTimeTS(CGNDate::Now(), local);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%s", local.tm_year + 1900, monthAndDay);
    return Read(text);
}

// Texts with the same date; "*" stands for the present year.
struct Row {
    std::string read;
    std::vector<CGNString> texts;
};
void CheckDates(const std::vector<Row>& rows) {
    for (const Row& row : rows)
        for (const CGNString& text : row.texts)
            EXPECT_EQ(Read(text), row.read[0] == '*' ? ThisYear(row.read.c_str() + 1) : row.read)
                << static_cast<const char*>(text);
}

constexpr char kMarch5[] = "2010-03-05 6", kMay3[] = "2010-05-03 2";

}  // namespace

TEST(DateRead, ReadsAmericanDates) {
    const CustomLocale locale("en_US", "M/d/yyyy", "dddd, MMMM d, yyyy", "h:mm:ss tt");
    CheckDates({
        {kMarch5,
         {"3/5/2010", "  3-5-10 ", "3.5.10.", "3 5 2010", "3, 5, 2010", "2010-03-05", "20100305",
          "2010/3/5", "Fri 3/5/2010", "Friday, March 5, 2010", "march 5, 2010", "MAR. 5 2010",
          "March 5th, '10", "the 5th of March, 2010", "5-Mar-10", "5Mar2010", "fri., 5 mar 2010",
          "2010 March 5", "2010-Mar-05 (Fri)"}},
        {"1975-03-05 4", {"75/3/5"}},
        {"2012-02-29 4", {"2/29/2012"}},
        {"2009-09-09 4", {"Sept 9 2009"}},
        {"*03-05", {"3/5", "3.5.", "5 March", "March 5"}},
        {"BC 0044-03-15 4",
         {"3/15/44 B.C.", "March 15, 44 BC", "March 15, B.C. 44",
          "Wednesday, March 15, 0044 B.C."}},
        {"invalid",  // in the first day and month do not change places
         {"13/5/2010", "2/29/2010", "10/10/1582", "0/5/2010", "3/32/2010", "3/2010/5", "3/5/12000",
          "3/5/0000", "3/5/99999999999999999999", "99999999999/5/2010", "00000101",
          "March 32, 2010", "31 April 2010", "3/15/5000 B.C.", "3/15/0 B.C."}},
        {"none",
         {"3/5-10", "3/5 2010", "3/2010", "2010", "3/5/", "3/5/2010x", "3/5/2010 12:00", "", " ",
          "today", "\xFF\xFE\x01", "March 2010", "Marching 5 2010", "Friday"}},
    });
}

TEST(DateRead, ReadsOtherOrdersAndLanguages) {
    {
        const CustomLocale german("de_DE", "dd.MM.yyyy", "dddd, d. MMMM yyyy", "HH:mm:ss");
        CheckDates({{kMarch5,
                     {"5.3.10", "5. M\xE4rz 2010", "5. M\xC4RZ 2010",
                      "Freitag, den 5. M\xE4r. 2010", "Fr, 5. M\xE4r. 2010"}},
                    {kMay3, {"3/5/2010", "3. Mai 2010", "may 3, 2010", "2010-05-03"}},
                    {"*03-05", {"5.3."}},
                    {"1999-12-31 6", {"31.12.99"}}});
    }
    {  // an abbreviated Tuesday reads like a month in English
        const CustomLocale french("fr_FR", "dd/MM/yyyy", "dddd d MMMM yyyy", "HH:mm:ss");
        CheckDates({{"2010-06-01 3", {"mar. 1er juin 2010"}}, {kMarch5, {"mar 5 2010"}}});
    }
    {  // with months in the nominative and the genitive
        const CustomLocale russian("ru_RU", "dd.MM.yyyy", "d MMMM yyyy '\xE3.'", "HH:mm:ss");
        CheckDates(
            {{kMarch5, {"5 \xEC\xE0\xF0\xF2\xE0 2010 \xE3.", "5 \xEC\xE0\xF0\xF2 2010 \xE3."}},
             {kMay3, {"3 \xCC\xE0\xFF 2010"}}});
    }
    {
        const CustomLocale spanish("es_ES", "d/M/yyyy", "dddd, d' de 'MMMM' de 'yyyy", "H:mm:ss");
        CheckDates({{kMarch5, {"5 de marzo de 2010"}}, {kMay3, {"3 mayo 2010"}}});
    }
    CGNString month, day, text;
    {
        const CustomLocale thai("th_TH", "d/M/yyyy", "d MMMM yyyy", "HH:mm:ss");
        thai->MonthAbbrev(2, month);
        text.sprintf("5 %s 2010", static_cast<const char*>(month));
        CheckDates({{kMarch5, {text, "\xF5/\xF3/\xF2\xF0\xF1\xF0"}}});  // the latter in Thai digits
    }
    {  // with an Arabic comma
        const CustomLocale arabic("ar_SA", "d/M/yyyy", "dddd\xA1 d MMMM yyyy", "h:mm:ss tt");
        arabic->MonthName(2, month);
        arabic->DayName(4, day);
        text.sprintf("%s\xA1 5 %s 2010", static_cast<const char*>(day),
                     static_cast<const char*>(month));
        CheckDates({{kMarch5, {text, "5/3/10"}}});
    }
    const CustomLocale korean("ko_KR", "yyyy. M. d.", "yyyy'\xB3\xE2' M'\xBF\xF9' d'\xC0\xCF' dddd",
                              "tt h:mm:ss");
    korean->SetDateSep(". ");
    CheckDates({{kMarch5, {"2010. 3. 5.", "2010.3.5", "2010\xB3\xE2 3\xBF\xF9 5\xC0\xCF"}},
                {"*03-05", {"3. 5.", "3\xBF\xF9 5\xC0\xCF"}}});
}

// Year, month, day in Shift-JIS.
#define Y "\x94\x4E"
#define M "\x8C\x8E"
#define D "\x93\xFA"
#define HEISEI "\x95\xBD\x90\xAC"
#define SHOWA "\x8F\xBA\x98\x61"

TEST(DateRead, ReadsJapaneseDates) {
    const CustomLocale locale("ja_JP", "yyyy/MM/dd", "yyyy'" Y "'M'" M "'d'" D "'", "H:mm:ss");
    CheckDates({
        {kMarch5,
         {"2010" Y "3" M "5" D, "2010" Y " 03" M " 05" D "(\x8B\xE0)",
          "\x82\x51\x82\x4F\x82\x50\x82\x4F" Y "\x82\x52" M "\x82\x54" D,
          "\x82\x51\x82\x4F\x82\x50\x82\x4F\x81\x5E\x82\x52\x81\x5E\x82\x54",
          "\x93\xF1\x81\x5A\x88\xEA\x81\x5A" Y "\x8E\x4F" M "\x8C\xDC" D, HEISEI "22" Y "3" M "5" D,
          HEISEI " 22.3.5", "H22.3.5", "10/3/5", "3/5/2010", "\x8B\xE0\x97\x6A" D " 2010/3/5",
          "5 March 2010"}},
        {"2011-12-21 4", {"2011" Y "\x8F\x5C\x93\xF1" M "\x93\xF1\x8F\x5C\x88\xEA" D}},
        {"*03-05", {"3" M "5" D}},
        {"1989-03-05 1", {HEISEI "\x8C\xB3" Y "3" M "5" D}},
        {"1988-03-05 7", {SHOWA "63" Y "3" M "5" D, "s63/3/5"}},
        {"1989-01-07 7", {SHOWA "64" Y "1" M "7" D}},
        {"invalid",
         {SHOWA "65" Y "1" M "7" D, HEISEI "0" Y "3" M "5" D, "2010/13/5", "2010" Y "13" M "5" D}},
        {"none", {"2010" Y "3" M, "2010" Y "3" M "5", HEISEI, "\x94"}},
    });
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

TEST(DateRead, ReturnsTheRestOfTheText) {
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
    EXPECT_FALSE(date.parseCharDate("3/5/2010", rest) || date.parseNumDate("March 5", rest));
}

TEST(DateRead, ReadsTimes) {
    {
        const CustomLocale locale("en_US", "M/d/yyyy", "", "h:mm:ss tt");
        const struct {
            std::string read;
            std::vector<const char*> texts;
        } kRows[] = {
            {"13:05:00", {"1:05 PM", "1.05 p.m.", "PM 1:05", "13:05"}},
            {"13:05:09", {" 1:05:09pm "}},
            {"00:00:00", {"12 am"}},
            {"12:00:00", {"12 pm"}},
            {"09:00:00", {"9"}},
            {"10:00:00", {"10h"}},
            {"10:30:00", {"10h30", "10 Uhr 30", "10:30 Uhr"}},
            {"10:30:15", {"10h 30m 15s", "10:30:15.25"}},
            {"23:59:59", {"23:59:59"}},
            {"range", {"24:00", "10:60", "13:00 PM", "10:30:60"}},
            {"none",
             {"10:", "10:30.15", "1030", "123:00", "99999999999", "am 10 pm", "pm", "", "10:30 x"}},
        };
        for (const auto& row : kRows)
            for (const char* text : row.texts) EXPECT_EQ(ReadTime(text), row.read) << text;
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

TEST(DateRead, ReadsMoments) {
    const ZoneGuard zone("Asia/Tokyo");
    {
        const CustomLocale locale("en_US", "M/d/yyyy", "dddd, MMMM d, yyyy", "h:mm:ss tt");
        constexpr long kMoment = 1269093600;  // 20 March 2010, 23:00 in Tokyo
        const struct {
            long seconds;  // or the status, below 0
            std::vector<const char*> texts;
        } kRows[] = {
            {kMoment,
             {"3/20/2010 11:00:00 PM", "Saturday, March 20, 2010 11:00:00 PM",
              "20 March 2010 at 23:00", "March 20, 2010, 11 pm", "11 pm, March 20, 2010",
              "23:00 3/20/10", "2010-03-20 23:00", "2010-03-20T23:00:00", "20100320T2300",
              "2010-03-20T14:00:00Z", "2010-03-20T09:30:00.5-04:30",
              "Sat, 20 Mar 2010 15:00:00 +0100", "Sat, 20 Mar 2010 14:00:00 GMT"}},
            {kMoment - 23 * 3600, {"3/20/2010"}},
            {kMoment - 13 * 3600, {"3/20/2010T10"}},
            {0, {"1/1/1970 9:00"}},
            {2147397247, {"1/18/2038 12:14:07"}},
            {-2,
             {"1/1/1970 8:59", "1970-01-01T00:00:00+01:00", "1/19/2038", "3/20/44 B.C.",
              "2/30/2010", "23:00", "", "x"}},
            {-3, {"3/20/2010 25:00"}},
            {-4, {"1/18/2038 12:14:08"}},
            {-5, {"3/20/2010 x", "3/20/2010 10:00 x", "3/20/2010 10:00 -5"}},
        };
        const auto check = [](const char* text, long seconds) {
            SCOPED_TRACE(text);
            CGNDateTime moment(5L);
            const bool read = moment.FromString(text) != 0;
            EXPECT_EQ(read ? moment.GetSecsFrom70() : -moment.GetDateTimeRangeStatus(), seconds);
            EXPECT_EQ(read, moment.GetDateTimeRangeStatus() == 1);
            if (!read) {  // unchanged
                EXPECT_EQ(moment.GetSecsFrom70(), 5);
                EXPECT_EQ(moment.GetHour(), 9);
            }
            CGNDateTime same(moment.GetSecsFrom70());
            same.FormatForDisplay(1);
            moment.FormatForDisplay(1);
            EXPECT_EQ(Display(same), Display(moment));
        };
        for (const auto& row : kRows)
            for (const char* text : row.texts) check(text, row.seconds);
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
        EXPECT_FALSE(found[0] || found[1]);
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

// Each locale reads both of its formats.
TEST(DateRead, ReadsFormattedMomentsOfEachLocale) {
    const ZoneGuard zone("Europe/Berlin");
    for (const char* name : {"en_US", "en_GB", "de_DE", "fr_FR", "ru_RU", "ja_JP", "zh_TW", "ko_KR",
                             "th_TH", "ar_SA", "he_IL", "pl_PL", "es_ES", "hu_HU", "fi_FI"}) {
        CLCLocale locale;
        locale.SetLocale(name);
        const CodeSetGuard codeSet(locale.GetCodeSet());
        for (long style = 1; style <= 2; ++style) {
            for (int i = 0; i < 35; ++i) {
                const long seconds = 86400 + 61234567L * i;
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

TEST(DateRead, RefusesLongTextsQuickly) {
    const CustomLocale locale("en_US", "M/d/yyyy", "dddd, MMMM d, yyyy", "h:mm:ss tt");
    for (const char* piece :
         {"1", " ", "/", "1/", "March ", "5 March ", "B", "\xFF", "(", "a.m. "}) {
        std::string text;
        while (text.size() < 1000000) text += piece;
        CGNDate date;
        CGNTime time;
        CGNDateTime moment;
        const CGNString all(text.c_str());
        EXPECT_FALSE(date.FromString(all) || time.FromString(all) || moment.FromString(all))
            << piece;
        EXPECT_NE(date.GetDateStatus(), 0);
        EXPECT_EQ(time.GetTimeRangeStatus(), 5);
    }
}

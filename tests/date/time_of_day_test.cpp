// CGNTime: its value, its text, its reading in the locale's format.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "gendate.h"
#include "tests/support/custom_locale.h"
#include "tests/support/texts.h"

TEST(TimeOfDay, IsClampedToTheDay) {
    const struct {
        int line;
        long seconds;
        int hour, minute, second;
    } kRows[] = {
        {__LINE__, -1, 0, 0, 0},       {__LINE__, 0, 0, 0, 0},
        {__LINE__, 47109, 13, 5, 9},   {__LINE__, 86399, 23, 59, 59},
        {__LINE__, 86400, 23, 59, 59}, {__LINE__, 2147483647, 23, 59, 59},
    };
    for (const auto& row : kRows) {
        const CGNTime time(row.seconds);
        EXPECT_EQ(time.GetHour(), row.hour) << row.line;
        EXPECT_EQ(time.GetMinute(), row.minute) << row.line;
        EXPECT_EQ(time.GetSecond(), row.second) << row.line;
        EXPECT_EQ(time.GetSecondsFromMidnight(), row.hour * 3600 + row.minute * 60 + row.second);
        EXPECT_EQ(time.IsEmpty(), row.seconds <= 0) << row.line;
    }
    CGNTime time(1, 2, 3);
    EXPECT_EQ(time.VerifyTime(23, 59, 59), 1);
    EXPECT_EQ(time.GetTimeRangeStatus(), 1);
    for (const auto& [hour, minute, second] :
         {std::array{24, 0, 0}, {-1, 0, 0}, {0, 60, 0}, {0, -1, 0}, {0, 0, 60}, {0, 0, -1}}) {
        EXPECT_EQ(time.VerifyTime(hour, minute, second), 0);
        EXPECT_EQ(time.GetTimeRangeStatus(), 3);
    }
    time.Empty();
    EXPECT_TRUE(time.IsEmpty());
    EXPECT_EQ(Display(time), "");
    EXPECT_EQ(time.GetTimeRangeStatus(), 3);
}

TEST(TimeOfDay, FormatsByTheLocalesFormat) {
    const struct {
        int line;
        const char* pattern;
        int hour;
        const char* text;
    } kRows[] = {
        {__LINE__, "h:mm:ss tt", 13, "1:05:09 PM"},
        {__LINE__, "hh:m:s tt", 0, "12:5:9 AM"},
        {__LINE__, "H:mm", 9, "9:05"},
        {__LINE__, "HHH", 9, "099"},
        {__LINE__, "hhhhh", 12, "121212"},
        {__LINE__, "t", 9, ""},
        {__LINE__, "ttt H", 9, "AM 9"},
        {__LINE__, "H'h'mm'' 'open", 9, "9h05 "},
        {__LINE__, "d/H", 9, "d/9"},
        {__LINE__, "H\xE9", 9, "9\xE9"},
    };
    for (const auto& row : kRows) {
        const CustomLocale locale("en_US", "", "", row.pattern);
        CGNTime time(row.hour, 5, 9);
        EXPECT_EQ(Display(time), row.text) << row.line;
        EXPECT_EQ(time.AddTimeString(), 1);
        EXPECT_EQ(Display(time), std::string(row.text) + row.text) << row.line;
    }
    const CustomLocale japanese("ja_JP", "", "", "tt h'\x8E\x9E'm'\x95\xAA'");
    EXPECT_EQ(Display(CGNTime(13, 5, 9)),
              "\x8C\xDF\x8C\xE3 1\x8E\x9E"
              "5\x95\xAA");
    CGNString earliest, latest;
    CGNTime::GetMinMaxTimeRange(earliest, latest);
    EXPECT_TRUE(latest ==
                "\x8C\xDF\x8C\xE3 11\x8E\x9E"
                "59\x95\xAA");
    EXPECT_EQ(CGNTime::Is12Hour(), 1);
}

// The result goes to scratch fields, all of which only a moment shows.
TEST(TimeOfDay, ReadsInTheLocalesFormat) {
    const struct {
        int time;  // hhmmss; -1 no time, -3 out of range
        const char* pattern;
        std::vector<const char*> texts;
    } kRows[] = {
        {130500, "h:mm tt", {"1:05 PM"}},
        {0, "h:mm tt", {"12:00 AM"}},
        {123000, "h:mm tt", {"12:30PM"}},
        {90507, "h:mm tt", {" 9 : 5 : 7 "}},
        {90000, "h:mm tt", {"9"}},
        {231500, "h:mm tt", {"23:15"}},
        {120000, "h:mm tt", {"12"}},
        {103000, "h:mm tt", {"10 30"}},
        {-3, "h:mm tt", {"13:00 PM", "24:00", "10:60", "10:00:60"}},
        {-1,
         "h:mm tt",
         {"123:00", "10:", ":10", "10::30", "", "PM", "PM 1:05", "1:05 PM x", "1:05 PM AM",
          "1:05 pm", "1:2:3:4"}},
        {130500, "tt h:mm", {"PM 1:05"}},
        {-1, "tt h:mm", {"1:05 PM", "AM PM 1:05"}},
        {-1, "H:mm", {"10:00 AM"}},
        {-3, "H:mm", {"13:00 PM"}},
        {103000, "H.mm", {"10.30"}},
        {-1, "H.mm", {"10:30"}},
    };
    for (const auto& row : kRows) {
        const CustomLocale locale("en_US", "", "", row.pattern);
        locale->SetTimeSep(row.pattern[1] == '.' ? "." : ":");
        for (const char* text : row.texts) {
            CGNDateTime moment;
            CGNString rest("kept");
            const bool read = moment.GetTimeFromString(text, rest) != 0;
            const int time =
                moment.GetHour() * 10000 + moment.GetMinute() * 100 + moment.GetSecond();
            const int failure = moment.GetDateTimeRangeStatus() == 3 ? -3 : -1;
            EXPECT_EQ(read ? time : failure, row.time) << text;
            EXPECT_STREQ(rest, read ? "" : row.time == -3 ? text : "kept") << text;
        }
    }
    const CustomLocale locale("ja_JP", "", "", "H:mm");
    CGNTime time(12, 30, 0);
    CGNString rest;
    EXPECT_EQ(time.GetTimeFromString("10\x8E\x9E"
                                     "5\x95\xAA",
                                     rest),
              1);
    EXPECT_EQ(time.GetSecondsFromMidnight(), 45000);  // its own value, not the one that was read
    locale->Customize("h:mm tt", "", "", 1, "", 1, 1, "", "", "", "ja_JP");
    locale->SetAMPMMarker(0, "AM");
    EXPECT_EQ(time.GetTimeFromString("12:07 AM", rest), 1);
    EXPECT_EQ(time.GetHour(), 0);
    EXPECT_EQ(time.GetSecondsFromMidnight(), 1800);
}

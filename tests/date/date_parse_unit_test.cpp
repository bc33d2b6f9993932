// Dates read in the formats of a locale.
#include <gtest/gtest.h>

#include "gendate.h"
#include "genutil/date/date_parse.h"
#include "genutil/date/present_year.h"

using namespace genutil;

constexpr char kLong[] = "dddd, MMMM dd, yyyy";

TEST(DateParse, ReadsInAFormat) {
    const int present = PresentYear(), century = present - present % 100;
    const struct {
        int line;
        const char *pattern, *text, *rest;
        int year, month, day;  // month 0: cannot be read
    } kRows[] = {
        {__LINE__, "M/d/yy", "3/5/10", "", 2010, 3, 5},
        {__LINE__, "M/d/yy", " 3 / 5 / 10 12:00", " 12:00", 2010, 3, 5},
        {__LINE__, "M/d/yy", "3/5", "", present, 3, 5},
        {__LINE__, "M/d/yy", "3/5 x", " x", present, 3, 5},
        {__LINE__, "M/d/yy", "3/5/", "", century, 3, 5},
        {__LINE__, "M/d/yy", "3-5-10", "", 0, 0, 0},
        {__LINE__, "M/d/yy", "13/5/10", "", 0, 0, 0},
        {__LINE__, "M/d/yy", "3/32/10", "", 0, 0, 0},
        {__LINE__, "M/d/yy", "123/5/10", "", 0, 0, 0},
        {__LINE__, "M/d/yy", "3/012/10", "", 0, 0, 0},
        {__LINE__, "M/d/gg", "3/5/", "", 0, 0, 0},
        {__LINE__, "M/d/yy", "", "", 0, 0, 0},
        {__LINE__, "M/d/yyyy", "3/5/12000", "", 9999, 3, 5},
        {__LINE__, "M/d/yyyy", "3/5/99999999999", "", 9999, 3, 5},
        {__LINE__, "M/d/yyyy", "3/5/007", "", 7, 3, 5},
        {__LINE__, "M/d/yyyy", "3/5/B.C. 44", "", -43, 3, 5},
        {__LINE__, "M/d/yyyy", "3/5/44 B.C.", "44 B.C.", -43, 3, 5},
        {__LINE__, "M/d/yyyy", "3/5/5000 B.C.", "5000 B.C.", -4712, 3, 5},
        {__LINE__, kLong, "Friday, March 05, 2010", "", 2010, 3, 5},
        {__LINE__, kLong, "FridayMarch05 2010", "", 2010, 3, 5},
        {__LINE__, "MMMM dd, yyyy", "march 05, 2010", "", 0, 0, 0},
        {__LINE__, "ddd MMM", "Fri Mar 7", " 7", 1, 3, 3},
        {__LINE__, "d'th' M", "5th 3", "", 1, 3, 5},
        {__LINE__, "d't h' M", "5 t h 3", "", 1, 3, 5},
        {__LINE__, "d'th' M", "5 3", "", 0, 0, 0},
        {__LINE__, "M/d/", "3/5/", "", 1, 3, 5},
        {__LINE__, "M/d'x'/", "3/5x", "", present, 3, 5},
        {__LINE__, "ggM/d", "3/5", "", 1, 3, 5},
        {__LINE__, "gM/d", "3/5", "", 0, 0, 0},
        {__LINE__, "Wd M", "W 5 3", "", 1, 3, 5},
        {__LINE__, "d", "5", "", 0, 0, 0},
        {__LINE__, "yyy/M/d", "2010/3/5", "", 0, 0, 0},
    };
    const CLCLocale locale;
    for (const auto& row : kRows) {
        DateScratch scratch = {1, 2, 3, 0, kDateValid, false};
        DateReader reader(row.text, locale, scratch);
        const bool read = reader.Date(row.pattern);
        ASSERT_EQ(read, row.month != 0) << row.line;
        EXPECT_STREQ(reader.At(), read ? row.rest : row.text) << row.line;
        EXPECT_EQ(scratch.year, read ? row.year : 1) << row.line;
        EXPECT_EQ(scratch.month, read ? row.month - 1 : 2) << row.line;
        EXPECT_EQ(scratch.day, read ? row.day : 3) << row.line;
    }
}

// Rules of time zones as the variable TZ spells them.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "genutil/zone/zone_rule.h"
#include "tests/support/rows.h"

using namespace genutil;

namespace {

std::string Describe(const ZoneChange& change) {
    char text[64];
    if (change.kind == ZoneChange::kMonthWeekDay)
        std::snprintf(text, sizeof text, " M%d.%d.%d/%d", change.month, change.week, change.weekday,
                      change.time);
    else
        std::snprintf(text, sizeof text, " %c%d/%d",
                      change.kind == ZoneChange::kDayFromZero ? 'D' : 'J', change.day, change.time);
    return text;
}

std::string Parse(const char* text) {
    ZoneRule rule;
    if (!ParseZoneRule(text, &rule)) return "no rule";
    std::string out = rule.standardName + std::string(" ") + std::to_string(rule.standardOffset);
    if (!*rule.daylightName) return out;
    out += std::string(" ") + rule.daylightName + " " + std::to_string(rule.daylightOffset);
    return out + Describe(rule.toDaylight) + Describe(rule.toStandard);
}

}  // namespace

TEST(ZoneRule, ParsesOffsetsNamesAndChanges) {
    ExpectTexts(Parse,
                {
                    {__LINE__, "JST-9", "JST 32400"},
                    {__LINE__, "NST+3:30:15", "NST -12615"},
                    {__LINE__, "<+0330>-3:30", "+0330 12600"},
                    {__LINE__, "EST5EDT", "EST -18000 EDT -14400 M3.2.0/7200 M11.1.0/7200"},
                    {__LINE__, "CET-1CEST,M3.5.0,M10.5.0/3",
                     "CET 3600 CEST 7200 M3.5.0/7200 M10.5.0/10800"},
                    {__LINE__, "<-02>2<-01>,M3.5.0/-1,M10.5.0/0",
                     "-02 -7200 -01 -3600 M3.5.0/-3600 M10.5.0/0"},
                    {__LINE__, "AAA1BBB,J60/26:30,300", "AAA -3600 BBB 0 J60/95400 D300/7200"},
                    {__LINE__, "AAA24", "AAA -86400"},
                });
}
TEST(ZoneRule, RefusesOtherTexts) {
    static const char* const kNames[] = {
        "",       "JST",    "JS-9",   "9",      "JST-9 ",     "JST-25",           "JST-9:60",
        "JST--9", "<JST-9", "<JS>-9", "EST5ED", "Asia/Tokyo", "ABCDEFGHIJKLMNOP5"};
    for (const char* text : kNames) EXPECT_EQ(Parse(text), "no rule") << text;
    EXPECT_EQ(Parse("EST99999999999999999999"), "no rule");
    const std::string zone = "EST5EDT,";
    for (const char* changes : {"", "M3.2.0", "M0.2.0,M11.1.0", "M3.6.0,M11.1.0", "M3.2.7,M11.1.0",
                                "M3.2.0,M11.1.0,", "J0,J365", "0,366", "M3.2.0/168,M11.1.0"})
        EXPECT_EQ(Parse((zone + changes).c_str()), "no rule") << changes;
}

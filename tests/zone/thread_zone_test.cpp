// The zone of the process and of threads; local time by the system's own rules.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <utility>

#include "gendate.h"
#include "osthread.h"
#include "tests/support/broken_down.h"
#include "tests/support/worker.h"

namespace {

std::string TZ() {
    return static_cast<const char*>(OSTimeZone::GetInstance()->GetTZ());
}

class TimeZone : public testing::Test {
  protected:
    TimeZone() {
        OSSetThreaded();
        CGNDate::ModuleInit();
        CGNDateTime::ModuleInit();
        OSTimeZone::Free();
        mbSetTZone(nullptr);
    }
    ~TimeZone() override {
        OSTimeZone::Free();
        mbSetTZone(nullptr);
    }
};

int HourOf(long seconds) {
    std::tm local;
    CGNDateTime::LocalTimeTS(seconds, local);
    return local.tm_hour;
}

}  // namespace

TEST_F(TimeZone, ProcessZoneIsTheEnvironmentVariable) {
    mbSetTZone("JST-9");
    OSTimeZone* zone = OSTimeZone::GetInstance();
    EXPECT_TRUE(zone->GetSystemTZ() == "JST-9");
    zone->SetTZ("AAA3");
    EXPECT_EQ(TZ(), "AAA3");
    EXPECT_EQ(HourOf(1269093600), 11);
    EXPECT_TRUE(zone->GetSystemTZ() == "JST-9");
    zone->SetTZ(std::string(125, 'x').c_str());
    EXPECT_EQ(TZ(), "AAA3");
    EXPECT_GT(CGNDateTime::Now(), 1700000000);  // restores the zone of the start
    EXPECT_EQ(TZ(), "JST-9");
    EXPECT_EQ(HourOf(1269093600), 23);
    zone->SetTZ("AAA3");
    const OSTimeZone copy(*zone);
    EXPECT_TRUE(copy.GetSystemTZ() == "JST-9");
    OSTimeZone::Free();
    EXPECT_STREQ(std::getenv("TZ"), "AAA3");  // outlives the object that set it
    EXPECT_TRUE(OSTimeZone::GetInstance()->GetSystemTZ() == "AAA3");
    OSTimeZone::GetInstance()->SetTZ("");
    EXPECT_EQ(TZ(), "");
    OSTimeZone::GetInstance()->SetTZ(nullptr);
    EXPECT_EQ(TZ(), "");
}

TEST_F(TimeZone, ThreadZoneIsItsLocalVariable) {
    mbSetTZone("AAA3");
    OSTimeZone::GetInstance();
    Worker([] {
        OSTimeZone::GetInstance()->SetThreadTZ();
        EXPECT_EQ(TZ(), "AAA3");  // without a variable nothing changes
        CGNLclSt::Instance()->Init(4);
        char zone[] = "Asia/Tokyo";
        CGNLclSt::Instance()->SetLocalVariable("timezone", zone);
        EXPECT_EQ(HourOf(1269093600), 23);
        EXPECT_EQ(TZ(), "Asia/Tokyo");
        std::tm local = BrokenDown(2010, 3, 20, 23);
        EXPECT_EQ(CGNDate::MkTimeTS(&local), 1269093600);
        std::strcpy(zone, "BBB-1");  // the text counts, not where it is
        EXPECT_EQ(HourOf(1269093600), 15);
        mbSetTZone("AAA3");  // as other parts of a program may
        EXPECT_EQ(HourOf(1269093600), 15);
        EXPECT_EQ(TZ(), "BBB-1");
    }).Join();
}

// Eight threads in eight zones, through both classes, whose mutexes are not the same.
TEST_F(TimeZone, ThreadsHaveZonesOfTheirOwn) {
    const char* const kZones[] = {"AAA0",  "BBB-1", "CCC-2", "DDD-3",
                                  "EEE-4", "FFF-5", "GGG-6", "Asia/Tokyo"};
    const int kHours[] = {14, 15, 16, 17, 18, 19, 20, 23};
    std::atomic<int> wrong{0};
    OSTimeZone::GetInstance();  // which comes first
    AtTheSameTime(8, [&](int i) {
        CGNLclSt::Instance()->Init(4);
        std::string zone(kZones[i]);
        CGNLclSt::Instance()->SetLocalVariable("timezone", zone.data());
        for (int round = 0; round < 300; ++round) {
            std::tm local;
            if ((i + round) % 2)
                CGNDate::LocalTimeTS(1269093600, local);
            else
                CGNDateTime::LocalTimeTS(1269093600, local);
            wrong += local.tm_hour != kHours[i];
        }
    });
    EXPECT_EQ(wrong, 0);
}

// The changes of clocks in zones of the tz database and in rules.
TEST_F(TimeZone, KnowsWhenClocksChange) {
    const struct {
        int line;
        const char* zone;
        long change;        // the first second of the new offset
        int before, after;  // seconds east of Greenwich
    } kRows[] = {
        {__LINE__, "America/New_York", 1268550000, -18000, -14400},
        {__LINE__, "America/New_York", 1289109600, -14400, -18000},
        {__LINE__, "America/Los_Angeles", 1268560800, -28800, -25200},
        {__LINE__, "Europe/Berlin", 1269738000, 3600, 7200},
        {__LINE__, "Europe/Berlin", 1288486800, 7200, 3600},
        {__LINE__, "Europe/London", 1269738000, 0, 3600},
        {__LINE__, "Australia/Sydney", 1270310400, 39600, 36000},
        {__LINE__, "Australia/Sydney", 1286035200, 36000, 39600},
        {__LINE__, "Pacific/Auckland", 1270303200, 46800, 43200},
        {__LINE__, "CET-1CEST,M3.5.0,M10.5.0/3", 1288486800, 7200, 3600},
        {__LINE__, "LHST-10:30LHDT-11,M10.1.0,M4.1.0", 1286033400, 37800, 39600},
        {__LINE__, "EST5EDT,0/0,J365/25", 1262322000, -14400, -14400},
        {__LINE__, "AAA1BBB,J60,J300", 1330570800, -3600, 0},     // 1 March of a leap year
        {__LINE__, "AAA1BBB,M2.5.1,J300", 1266807600, -3600, 0},  // the last of four Mondays
    };
    const auto offset = [](long seconds) {
        std::tm local;
        CGNDateTime::LocalTimeTS(seconds, local);
        const long day =
            CGNDate::DateToJulianDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday) -
            2440588L;
        EXPECT_EQ(local.tm_wday, (day + 4) % 7);
        return static_cast<int>(day * 86400 + local.tm_hour * 3600 + local.tm_min * 60 +
                                local.tm_sec - seconds);
    };
    for (const auto& row : kRows) {
        ASSERT_EQ(mbSetTZone(row.zone), 1) << row.line;
        EXPECT_EQ(offset(row.change - 1), row.before) << row.line;
        EXPECT_EQ(offset(row.change), row.after) << row.line;
        std::tm local;
        for (long seconds : {row.change - 7201, row.change - 1, row.change, row.change + 7200}) {
            CGNDateTime::LocalTimeTS(seconds, local);
            EXPECT_EQ(CGNDateTime::MkTimeTS(&local), seconds) << row.line;
        }
    }
    mbSetTZone("America/New_York");
    // The hour that the clocks skip, and fields out of range.
    std::tm local = BrokenDown(2009, 15, 13, 26, 30);
    EXPECT_EQ(CGNDate::MkTimeTS(&local), 1268551800);
    EXPECT_EQ(local.tm_hour, 3);
    EXPECT_EQ(local.tm_isdst, 1);
    local = BrokenDown(2010, 11, 7, 1);
    EXPECT_EQ(CGNDate::MkTimeTS(&local), 1289106000);  // the first of two
    local.tm_isdst = 0;
    EXPECT_EQ(CGNDate::MkTimeTS(&local), 1289109600);
    local.tm_year = 2147483647;
    EXPECT_EQ(CGNDate::MkTimeTS(&local), -1);
    EXPECT_EQ(local.tm_year, 2147483647);
}

TEST_F(TimeZone, UnknownZonesAreUtc) {
    for (const auto& [zone, hour] : {std::pair{"Nowhere/Land", 14},
                                     {":", 14},
                                     {":Asia/Tokyo", 23},
                                     {"Tokyo Standard Time", 23}}) {
        OSTimeZone::GetInstance()->SetTZ(zone);
        EXPECT_EQ(HourOf(1269093600), hour) << zone;
    }
}

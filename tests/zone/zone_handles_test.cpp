// Time zones by name, and their catalogue.
#include <gtest/gtest.h>

#include <cstring>
#include <ctime>
#include <map>
#include <string>

#include "genlocale.h"
#include "mbutil.h"
#include "tests/support/code_set_guard.h"

namespace {

std::map<std::string, std::string> AllZones() {
    std::map<std::string, std::string> zones;
    char name[48], display[128];
    mbTZoneCursor cursor = mbFirstTZone;
    while (int length = mbGetNextTZone(name, sizeof name, &cursor)) {
        EXPECT_EQ(length, static_cast<int>(std::strlen(name)));
        EXPECT_EQ(mbDisplayTZone(display, sizeof display, name), 1) << name;
        EXPECT_TRUE(zones.emplace(name, display).second) << name << " stands twice";
    }
    return zones;
}

std::string Display(const char* name) {
    char text[128];
    mbDisplayTZone(text, sizeof text, name);
    return text;
}

template <class Function>
std::string Name(Function function, const char* of) {
    char text[64];
    const int length = function(text, sizeof text, of);
    EXPECT_EQ(length, static_cast<int>(std::strlen(text)));
    return text;
}

std::string CurrentZone() {
    char name[64];
    mbGetTZone(name, sizeof name);
    return name;
}

class Zones : public testing::Test {
  protected:
    void TearDown() override { mbSetTZone(nullptr); }
};

}  // namespace

TEST_F(Zones, ListsZonesFromWestToEast) {
    const CodeSetGuard guard(mbWestern);
    auto zones = AllZones();
    EXPECT_GT(zones.size(), 120u);
    const std::pair<const char*, const char*> kRows[] = {{"Asia/Tokyo", "(UTC+09:00) "},
                                                         {"America/New_York", "(UTC-05:00) "},
                                                         {"Asia/Kathmandu", "(UTC+05:45) "},
                                                         {"America/St_Johns", "(UTC-03:30) "},
                                                         {"Australia/Sydney", "(UTC+10:00) "}};
    for (const auto& [name, offset] : kRows) {
        const std::string text = Display(name);
        EXPECT_EQ(text.substr(0, 12), offset) << name;
    }
    EXPECT_NE(zones["Asia/Tokyo"].find("Tokyo"), std::string::npos);
    char zone[48];
    mbTZoneCursor each = mbFirstTZone;
    for (int minutes = -24 * 60; mbGetNextTZone(zone, sizeof zone, &each);) {
        const std::string text = Display(zone);  // "(UTC-03:30) ..."
        const int magnitude = std::stoi(text.substr(5, 2)) * 60 + std::stoi(text.substr(8, 2));
        const int next = text[4] == '-' ? -magnitude : magnitude;
        EXPECT_LE(minutes, next) << text << " lies west of the zone before it";
        minutes = next;
    }
    char name[4] = "?";
    mbTZoneCursor cursor = mbFirstTZone;
    EXPECT_GT(mbGetNextTZone(name, sizeof name, &cursor), 4);
    EXPECT_STREQ(name, "");
    EXPECT_EQ(mbDisplayTZone(name, sizeof name, "Nowhere/Land"), 0);
    EXPECT_EQ(mbDisplayTZone(name, sizeof name, "../zone.tab"), 0);
    EXPECT_EQ(mbDisplayTZone(name, sizeof name, nullptr), 0);
    EXPECT_EQ(mbDisplayTZone(name, sizeof name, "Asia/Tokyo"), 1);
    EXPECT_STREQ(name, "(UT");
}

TEST_F(Zones, TranslatesNamesOfZones) {
    EXPECT_EQ(Name(mbGetWindowsTZone, "Asia/Tokyo"), "Tokyo Standard Time");
    EXPECT_EQ(Name(mbGetWindowsTZone, "Japan"), "Tokyo Standard Time");
    EXPECT_EQ(Name(mbGetWindowsTZone, "US/Eastern"), "Eastern Standard Time");
    EXPECT_EQ(Name(mbGetWindowsTZone, "asia/tokyo"), "");
    EXPECT_EQ(Name(mbGetWindowsTZone, ""), "");
    EXPECT_EQ(Name(mbGetTZoneOfWindows, "W. Europe Standard Time"), "Europe/Berlin");
    EXPECT_EQ(Name(mbGetTZoneOfWindows, "Tokyo"), "");
    char tiny[10] = "?";
    EXPECT_EQ(mbGetTZoneOfWindows(tiny, sizeof tiny, "Tokyo Standard Time"), 0);
    EXPECT_STREQ(tiny, "");
    EXPECT_EQ(Name(mbGetTZoneRule, "Tokyo Standard Time").substr(3), "-9");
    EXPECT_EQ(Name(mbGetTZoneRule, "Asia/Tokyo").substr(3), "-9");
    EXPECT_EQ(Name(mbGetTZoneRule, "America/New_York").substr(0, 8), "EST5EDT,");
    EXPECT_EQ(Name(mbGetTZoneRule, "Nowhere"), "");
}

TEST_F(Zones, SetsTheZoneOfTheProcess) {
    std::time_t noon = 1700000000;  // 14 November 2023, 22:13:20 UTC
    const auto hour = [&] { return std::localtime(&noon)->tm_hour; };
    EXPECT_EQ(mbSetTZone("Asia/Tokyo"), 1);
    EXPECT_EQ(CurrentZone(), "Asia/Tokyo");
    EXPECT_EQ(hour(), 7);
    EXPECT_EQ(mbSetTZone("Eastern Standard Time"), 1);
    EXPECT_EQ(CurrentZone(), "Eastern Standard Time");
    EXPECT_EQ(hour(), 17);
    EXPECT_EQ(mbSetTZone("Nowhere/Land"), 0);
    EXPECT_EQ(CurrentZone(), "Eastern Standard Time");
    EXPECT_EQ(hour(), 17);
    EXPECT_EQ(mbSetTZone("XYZ3"), 1);
    EXPECT_EQ(CurrentZone(), "XYZ3");
    EXPECT_EQ(hour(), 19);
    EXPECT_EQ(mbSetTZone(""), 1);
    EXPECT_NE(CurrentZone(), "XYZ3");
}

TEST_F(Zones, FillsTheCatalogue) {
    const CodeSetGuard guard(mbWestern);
    CLCTimeZoneInfo::Free();
    EXPECT_EQ(CLCTimeZoneInfo::GetInfoItem(0), nullptr);
    auto zones = AllZones();
    ASSERT_EQ(CLCTimeZoneInfo::GetInfoCount(), static_cast<long>(zones.size()));
    for (long i = 0; i < CLCTimeZoneInfo::GetInfoCount(); ++i) {
        const CLCTimeZoneInfo* row = CLCTimeZoneInfo::GetInfoItem(i);
        EXPECT_EQ(zones[static_cast<const char*>(row->GetName())],
                  static_cast<const char*>(row->GetDisplayText()));
    }
    EXPECT_EQ(CLCTimeZoneInfo::GetInfoItem(-1), nullptr);
    EXPECT_EQ(CLCTimeZoneInfo::GetInfoItem(static_cast<long>(zones.size())), nullptr);
    EXPECT_NE(CLCTimeZoneInfo::GetInfoItemFromTimeZone("Asia/Tokyo"), nullptr);
    EXPECT_EQ(CLCTimeZoneInfo::GetInfoItemFromTimeZone("asia/tokyo"), nullptr);
    EXPECT_EQ(CLCTimeZoneInfo::GetInfoItemFromTimeZone(nullptr), nullptr);
    CLCTimeZoneInfo::Free();
    CLCTimeZoneInfo own;  // registers itself, so that there is nothing to build
    const CLCTimeZoneInfo copy(own);
    EXPECT_EQ(CLCTimeZoneInfo::GetInfoCount(), 1);
    EXPECT_EQ(CLCTimeZoneInfo::GetInfoItem(0), &own);
}

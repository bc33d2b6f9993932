#include "tools/genutil/moment.h"

#include <cstdio>
#include <cstdlib>

#include "gendate.h"
#include "mbutil.h"
#include "tools/genutil/command.h"

std::string DescribeMoment(long seconds) {
    constexpr int kDayOf1970 = 2440588;
    std::tm local;
    CGNDateTime::LocalTimeTS(seconds, local);
    const int day =
        CGNDate::DateToJulianDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
    const long long shown =
        (day - kDayOf1970) * 86400LL + local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec;
    const int minutes = static_cast<int>((shown - seconds) / 60);
    char zone[128], text[256];
    mbGetTZone(zone, sizeof zone);
    std::snprintf(text, sizeof text,
                  "%04d-%02d-%02dT%02d:%02d:%02d%c%02d:%02d in %s, %ld seconds since 1970",
                  local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                  local.tm_min, local.tm_sec, minutes < 0 ? '-' : '+', std::abs(minutes) / 60,
                  std::abs(minutes) % 60, zone[0] ? zone : "the machine's zone", seconds);
    return text;
}

bool UseZone(const std::string& name) {
    if (name.empty() || mbSetTZone(name.c_str())) return true;
    Complain("zone '" + name + "' is not known; genutil zones lists the known ones");
    return false;
}

bool ParseSeconds(const std::string& text, long* seconds) {
    if (text.empty() || text == "now") {
        *seconds = CGNDateTime::Now();
        return true;
    }
    char* end = nullptr;
    const long long value = std::strtoll(text.c_str(), &end, 10);
    if (*end != 0 || value < 0 || value > 2147483647) {
        Complain("'" + text + "' is not a number of seconds from 0 to 2147483647");
        return false;
    }
    *seconds = static_cast<long>(value);
    return true;
}

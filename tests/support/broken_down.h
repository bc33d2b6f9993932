// A moment by its fields, with months and years as people count them.
#pragma once

#include <ctime>

inline std::tm BrokenDown(int year, int month, int day, int hour, int minute = 0, int second = 0) {
    std::tm fields = {};
    fields.tm_year = year - 1900;
    fields.tm_mon = month - 1;
    fields.tm_mday = day;
    fields.tm_hour = hour;
    fields.tm_min = minute;
    fields.tm_sec = second;
    fields.tm_isdst = -1;
    return fields;
}

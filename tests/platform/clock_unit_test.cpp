// The clock of the platform layer.
#include <gtest/gtest.h>

#include "osutil/platform/time/clock.h"

using namespace genutil::platform;

TEST(Clock, ReadsMomentsAfter2038) {
    static const struct {
        std::int64_t moment;
        int year, month, second;
    } kRows[] = {{1000000000, 2001, 9, 40}, {4117996801, 2100, 6, 1}, {16000000000, 2477, 1, 40}};
    for (const auto& row : kRows) {  // mid-month, so that the zone does not matter
        const LocalTime local = LocalTimeOf(row.moment);
        EXPECT_EQ(local.year, row.year);
        EXPECT_EQ(local.month, row.month);
        EXPECT_EQ(local.second, row.second);
    }
}

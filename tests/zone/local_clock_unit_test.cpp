// The clock of the date classes when memory runs out.
#include <gtest/gtest.h>

#include "gendate.h"
#include "gentimezone.h"
#include "mbutil.h"
#include "osthread.h"
#include "tests/support/allocation_gate.h"
#include "tests/support/reported_failures.h"

TEST(ZonedClock, ReadingNeedsNoAllocation) {
    OSSetThreaded();
    OSTimeZone::Free();
    mbSetTZone("XYZ3");
    OSTimeZone* zone = OSTimeZone::GetInstance();
    ASSERT_STREQ(zone->GetSystemTZ(), "XYZ3");
    for (const char* between : {"XYZ3", "ABC-4"}) {
        zone->SetTZ(between);
        const ReportedFailures failures;
        const AllocationGate noMemory(0);
        EXPECT_GT(CGNDate::Now(), 0);
        EXPECT_EQ(noMemory.Count(), 0);
    }
    EXPECT_STREQ(zone->GetTZ(), "XYZ3");
    mbSetTZone(nullptr);
    OSTimeZone::Free();
}

TEST(ZonedClock, ZoneIsReadAgainAfterAFailedAllocation) {
    OSSetThreaded();
    OSTimeZone::GetInstance();
    std::tm local;
    CGNDate::LocalTimeTS(0, local);  // makes the thread's record
    mbSetTZone("QQQ-3");
    const ReportedFailures failures;
    {
        const AllocationGate noMemory(0);
        CGNDate::LocalTimeTS(0, local);
        EXPECT_EQ(local.tm_hour, 0);
    }
    CGNDate::LocalTimeTS(0, local);
    EXPECT_EQ(local.tm_hour, 3);
    mbSetTZone(nullptr);
    OSTimeZone::Free();
}

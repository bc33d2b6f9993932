// Readers of dates when memory runs out.
#include <gtest/gtest.h>

#include "gendate.h"
#include "tests/support/allocation_gate.h"
#include "tests/support/custom_locale.h"
#include "tests/support/reported_failures.h"
#include "tests/support/zone_guard.h"

// Whatever fails, a text is read as it is or not at all: never in the order of another locale.
TEST(DateRead, FailedAllocationsNeverChangeTheResult) {
    const ZoneGuard zone("Asia/Tokyo");
    const CGNDateTime loaded(60L);  // the zone is known before memory runs out
    const CGNString texts[] = {"5.3.2010 10:30", "5 de marzo de 2010 10:30", "5/3/10, 10h30"};
    // Patterns are kept, so that each round needs formats of its own.
    int round = 0;
    const auto format = [&round](const char* parts) {
        CGNString pattern("'");
        for (int i = ++round; i > 0; i /= 2) pattern += i % 2 ? "a" : "b";
        pattern += "'";
        pattern += parts;
        return pattern;
    };
    for (int failing = 0; failing < 40; ++failing) {
        for (const CGNString& text : texts) {
            const CGNString shortDate = format("d/M/yyyy"), longDate = format("dddd' de 'MMMM");
            const CustomLocale locale("es_ES", shortDate, longDate, format("H:mm"));
            CGNDateTime moment(60L);
            moment.FormatForDisplay(7);
            const ReportedFailures failures;
            bool read = false;
            {
                const AllocationGate gate(failing, 1);
                read = moment.FromString(text) != 0;
            }
            EXPECT_EQ(moment.GetSecsFrom70(), read ? 1267752600 : 60) << failing << text;
            EXPECT_TRUE(read || failures.Count() > 0) << failing << text;
        }
    }
}

// Singletons, made and freed again and again: nothing leaks (the
// address sanitizer looks), and each new one is as the first was.
#include <gtest/gtest.h>

#include "genutil.h"
#include "tests/support/zone_guard.h"

namespace {

TEST(Lifecycle, SingletonsStartAndStopAThousandTimes) {
    const ZoneGuard zone("Asia/Tokyo");
    const CGNString language = CLCGlobalLocale::Instance()->GetLangName();
    const CGNString system = OSTimeZone::GetInstance()->GetSystemTZ();
    for (int round = 0; round < 1000; ++round) {
        ASSERT_NE(CGNAssert::Instance(), nullptr);
        ASSERT_EQ(CGNGlobalTrace::Instance()->Init(), 1);
        ASSERT_EQ(CGNGlobalTrace::Instance()->GetTraceSetting(), 0);
        CGNGlobalTrace::Instance()->ResetMask(7);
        ASSERT_EQ(CLCGlobalLocale::Instance()->GetLangName(), language);
        CLCGlobalLocale::Instance()->SetLocale("fr_FR");
        ASSERT_EQ(OSTimeZone::GetInstance()->GetSystemTZ(), system);
        ASSERT_NE(CGNLclSt::Instance(), nullptr);
        CGNAssert::Free();
        CGNGlobalTrace::Free();
        CLCGlobalLocale::Free();
        OSTimeZone::Free();
        CGNLclSt::Free();
    }
}

}  // namespace

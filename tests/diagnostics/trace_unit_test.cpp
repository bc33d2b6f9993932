// Trace and assertions when memory has run out.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "gendiag.h"
#include "genutil/diagnostics/message_format.h"
#include "osthread.h"
#include "tests/support/allocation_gate.h"
#include "tests/support/worker.h"

TEST(MessageFormat, IsRefusedIfItStoresOrTakesWidths) {
    for (const char* good : {"", "text", "%d of %s", "100%%", "%-5.2f|%+08lX|% hhd", "\x83\x6E%s"})
        EXPECT_TRUE(genutil::IsMessageFormat(good)) << good;
    for (const char* bad : {"%n", "%s%hhn", "%*d", "%.*s", "%-08lln", "50%", "%%%n"})
        EXPECT_FALSE(genutil::IsMessageFormat(bad)) << bad;
}

TEST(WithoutMemory, TraceCutsLines) {
    CGNTrace trace;
    trace.ResetMask(1);
    trace.ResetOutput(2);
    trace.DisableDateTime();
    const CGNString module("m"), none;
    for (const std::size_t length : {5u, 1010u, 1020u, 1021u, 1022u, 1023u, 5000u})
        for (const bool hasModule : {true, false}) {
            const std::string text(length, 'x');
            std::string line = Printed([&] {
                const AllocationGate noMemory(0);
                trace.WriteMsg("p", 1, hasModule ? module : none, "%s", text.c_str());
            });
            std::erase(line, '\r');
            EXPECT_LE(line.size(), 1024u);
            EXPECT_GE(line.size(), std::min<std::size_t>(length + 8, 1018));
            EXPECT_EQ(line.find('\n'), line.size() - 1) << length;
        }
}

TEST(WithoutMemory, AssertionStillCallsBack) {
    OSSetThreaded();
    static int calls;
    calls = 0;
    CGNAssert::Free();
    CGNAssert* assertion = CGNAssert::Instance();
    assertion->SetNativeAssert(0);
    assertion->Init([](void*) -> unsigned char { return static_cast<unsigned char>(++calls); },
                    nullptr);
    CGNGlobalTrace::Free();
    CGNLclSt::Free();
    {
        const AllocationGate noMemory(0);
        EXPECT_EQ(CGNGlobalTrace::Instance(), nullptr);
        EXPECT_EQ(CGNLclSt::Instance(), nullptr);
        EXPECT_EQ(assertion->cgnassert(0, "file", 1), 1);
        EXPECT_EQ(assertion->cgnassert(0, "file", 1), 2);
        CGNAssert::Free();
        EXPECT_EQ(CGNAssert::Instance(), nullptr);
    }
    EXPECT_NE(CGNLclSt::Instance(), nullptr);
}

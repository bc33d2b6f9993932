// The machine as programs see it.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "osutil.h"
#include "tests/support/temporary_file.h"
#include "tests/support/texts.h"

namespace {

TEST(SystemInfo, NamesProcessorAndSystem) {
    CGNString processor, system;
    OSInfo::GetHardware(processor);
    OSInfo::GetOS(system);
    const int versions = OSInfo::OSisWin95() + OSInfo::OSisWin32s() + OSInfo::OSisWin2000() +
                         OSInfo::OSisWinXP() + OSInfo::OSisWinVista();
#ifdef _WIN32
    EXPECT_TRUE(processor == "PC Pentium" || processor == "Unknown");
    // Of every version later than those that have names of their own.
    EXPECT_EQ(system, "Windows NT or NT Server");
    EXPECT_LE(versions, OSInfo::OSisWinVista());
#else
    EXPECT_EQ(processor, "Unknown");
    EXPECT_EQ(versions, 0);
    const std::string facts = BytesOf("/etc/os-release");
    EXPECT_NE(facts.find(Join({"PRETTY_NAME=\"", Bytes(system), "\""})), facts.npos);
#endif
}

TEST(SystemInfo, ReportsMemory) {
    OSMemoryStatus status;
    OSGetMemoryStatus(status);
    EXPECT_LE(status.memoryLoad, 100u);
    EXPECT_GT(status.totalPageFile, 64u << 20);
    EXPECT_LE(status.availablePageFile, status.totalPageFile);
    for (int i = 0; i < 2; ++i) {
        const long percent = OSUtilPercentMemoryUsed();
        EXPECT_TRUE(percent >= 0 && percent <= 100) << percent;
    }
}

TEST(SystemInfo, FindsTheHostName) {
    char name[65];
    std::memset(name, 'x', sizeof name);
    OSGetHostnameNoDomain(name);
    EXPECT_EQ(name[64], 'x');
    ASSERT_NE(std::memchr(name, 0, 64), nullptr);
    EXPECT_GT(std::strlen(name), 0u);
    OSGetHostnameNoDomain(nullptr);
}

}  // namespace

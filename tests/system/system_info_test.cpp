// The machine as programs see it.
#include <gtest/gtest.h>
#ifndef _WIN32
#include <sched.h>
#endif

#include <cstring>
#include <string>
#include <thread>

#include "osutil.h"
#include "tests/support/temporary_file.h"
#include "tests/support/texts.h"

namespace {

TEST(SystemInfo, NamesProcessorAndSystem) {
    CGNString processor, system, name;
    OSInfo::GetHardware(processor);
    OSInfo::GetOS(system);
    OSInfo::GetSystem(name);
    // Of every system later than those that have names of their own.
    EXPECT_EQ(system, "Windows NT or NT Server");
    const int versions = OSInfo::OSisWin95() + OSInfo::OSisWin32s() + OSInfo::OSisWin2000() +
                         OSInfo::OSisWinXP() + OSInfo::OSisWinVista();
#ifdef _WIN32
    EXPECT_TRUE(processor == "PC Pentium" || processor == "Unknown");
    EXPECT_EQ(name.Find("Windows "), 0) << name;
    EXPECT_LE(versions, OSInfo::OSisWinVista());
#else
    EXPECT_EQ(processor, "Unknown");
    EXPECT_EQ(versions, 0);
    const std::string facts = BytesOf("/etc/os-release");
    EXPECT_NE(facts.find(Join({"PRETTY_NAME=\"", Bytes(name), "\""})), facts.npos);
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

TEST(SystemInfo, ReportsWhatAProgramCanUse) {
    OSMemoryStatus status;
    OSGetMemoryStatus(status);
    EXPECT_GE(OSInfo::GetProcessorCount(), 1);
    EXPECT_LE(OSInfo::GetProcessorCount(), static_cast<int>(std::thread::hardware_concurrency()));
    EXPECT_GT(OSInfo::GetMemorySize(), 64u << 20);
    EXPECT_LE(OSInfo::GetMemorySize(), status.totalPageFile);
    CGNString path;
    EXPECT_EQ(OSInfo::GetProgramPath(path), 1);
    struct _stat file;
    EXPECT_EQ(OSFileStat(path, file), 0) << path;
    EXPECT_NE(path.Find("api_tests"), -1) << path;
#ifndef _WIN32
    cpu_set_t all, one;
    CPU_ZERO(&one);
    CPU_SET(static_cast<unsigned>(sched_getcpu()), &one);
    ASSERT_EQ(sched_getaffinity(0, sizeof all, &all), 0);
    ASSERT_EQ(sched_setaffinity(0, sizeof one, &one), 0);
    EXPECT_EQ(OSInfo::GetProcessorCount(), 1);
    sched_setaffinity(0, sizeof all, &all);
#endif
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

// Limits of control groups, in the files of both versions.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "osutil/platform/posix/system/group_limits.h"

using genutil::platform::GroupLimits;
using genutil::platform::ReadGroupLimits;

namespace {

namespace fs = std::filesystem;

TEST(GroupLimits, AreTheStrictestOfAllGroups) {
    const GroupLimits none;
    const struct {
        int line;
        std::map<std::string, const char*> files;
        const char* groups;
        int processors;
        std::uint64_t memory;
    } rows[] = {
        {__LINE__,
         {{"cpu.max", "max 100000"}, {"memory.max", "max"}},
         "0::/\n",
         none.processors,
         none.memory},
        {__LINE__, {{"cpu.max", "150000 100000"}, {"memory.max", "1048576"}}, "0::/\n", 2, 1048576},
        {__LINE__, {{"cpu.max", "1000 100000"}}, "0::/\n", 1, none.memory},
        {__LINE__,
         {{"a/cpu.max", "300000 100000"},
          {"a/b/cpu.max", "400000 100000"},
          {"a/b/memory.max", "5"}},
         "0::/a/b\n",
         3,
         5},
        {__LINE__, {{"memory.max", "7"}}, "0::/on/the/host\n", none.processors, 7},
        {__LINE__,
         {{"cpu/cpu.cfs_quota_us", "-1"}, {"cpu/cpu.cfs_period_us", "100000"}},
         "4:cpu,cpuacct:/\n",
         none.processors,
         none.memory},
        {__LINE__,
         {{"cpu/d/cpu.cfs_quota_us", "250000"},
          {"cpu/d/cpu.cfs_period_us", "100000"},
          {"memory/d/memory.limit_in_bytes", "9"}},
         "4:cpu,cpuacct:/d\n9:memory:/d\nrubbish\n",
         3,
         9},
        {__LINE__,
         {{"cpu.max", "5 0"}, {"memory.max", "x"}},
         "0::/\n",
         none.processors,
         none.memory},
    };
    const fs::path root = fs::absolute("groups");
    for (const auto& row : rows) {
        fs::remove_all(root);
        fs::create_directories(root);
        for (const auto& [name, text] : row.files) {
            fs::create_directories((root / name).parent_path());
            std::ofstream(root / name) << text << "\n";
        }
        std::ofstream(root / "self") << row.groups;
        const GroupLimits limits = ReadGroupLimits(root.c_str(), (root / "self").c_str());
        EXPECT_EQ(limits.processors, row.processors) << row.line;
        EXPECT_EQ(limits.memory, row.memory) << row.line;
    }
    fs::remove_all(root);
    EXPECT_EQ(ReadGroupLimits("/none", "/none").processors, none.processors);
}

}  // namespace

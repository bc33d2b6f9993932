// Versions of files.
#include <gtest/gtest.h>

#include <string>

#include "osutil.h"
#include "tests/support/temporary_file.h"

TEST(BuildVersion, ReadsTheVersionOfAFile) {
    const TemporaryFile empty, noLibrary("MZ and no more");
    constexpr char kTexts[] = TEST_RESOURCES "texts.dll", kLate[] = TEST_RESOURCES "late.dll";
    const struct {
        int line;
        const char* file;
        const char* text = "Version 0.0.00  ";
        long numbers[5] = {};
        long language = 0;  // 0: nothing is read
    } kRows[] = {
        {__LINE__, kTexts, "Version 7.6.04  002 ", {7, 6, 4, 2, 2}, 0x411},
        {__LINE__, kLate, "Version -1.0.12345  ", {-1, 0, 12345, 0, 0}, 9},
        {__LINE__, LIBRARY_RESOURCES "0011/genmsg.dll", "Version 1.0.00  ", {1}, 0x11},
        {__LINE__, TEST_RESOURCES "other.dll"},
        {__LINE__, TEST_RESOURCES "missing.dll"},
        {__LINE__, TEST_RESOURCES},
        {__LINE__, empty.Path()},
        {__LINE__, noLibrary.Path()},
        {__LINE__, ""},
        {__LINE__, nullptr},
    };
    for (const auto& row : kRows) {
        COSBuildVersion version(row.file);
        EXPECT_STREQ(version.GetVersionString(), "Version 0.0.00  ") << row.line;
        EXPECT_EQ(version.Init(), row.language != 0) << row.line;
        EXPECT_STREQ(version.GetVersionString(), row.text) << row.line;
        EXPECT_EQ(version.GetVersionMajorNumber(), row.numbers[0]) << row.line;
        EXPECT_EQ(version.GetVersionMinorNumber(), row.numbers[1]) << row.line;
        EXPECT_EQ(version.GetVersionMaintenanceNumber(), row.numbers[2]) << row.line;
        EXPECT_EQ(version.GetVersionPatchNumber(), row.numbers[3]) << row.line;
        EXPECT_EQ(version.GetVersionBuildNumber(), row.numbers[4]) << row.line;
        EXPECT_EQ(version.GetLCID(), row.language) << row.line;
    }
}

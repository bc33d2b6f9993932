// Versions of files.
#include <gtest/gtest.h>

#include <string>

#include "osutil.h"
#include "tests/support/temporary_file.h"

TEST(BuildVersion, IsReadFromTheFile) {
    const TemporaryFile empty, noLibrary("MZ and no more");
    const struct {
        int line;
        const char* file;
        bool read;
        const char* text;
        long numbers[5];
        long language;
    } kRows[] = {
        {__LINE__,
         TEST_RESOURCES "texts.dll",
         true,
         "Version 7.6.04  002 ",
         {7, 6, 4, 2, 2},
         0x411},
        {__LINE__,
         TEST_RESOURCES "late.dll",
         true,
         "Version -1.0.12345  ",
         {-1, 0, 12345, 0, 0},
         9},
        {__LINE__, LIBRARY_RESOURCES "0011/genmsg.dll", true, "Version 1.0.00  ", {1}, 0x11},
        {__LINE__, TEST_RESOURCES "other.dll", false, "Version 0.0.00  ", {}, 0},
        {__LINE__, TEST_RESOURCES "missing.dll", false, "Version 0.0.00  ", {}, 0},
        {__LINE__, TEST_RESOURCES, false, "Version 0.0.00  ", {}, 0},
        {__LINE__, empty.Path(), false, "Version 0.0.00  ", {}, 0},
        {__LINE__, noLibrary.Path(), false, "Version 0.0.00  ", {}, 0},
        {__LINE__, "", false, "Version 0.0.00  ", {}, 0},
        {__LINE__, nullptr, false, "Version 0.0.00  ", {}, 0},
    };
    for (const auto& row : kRows) {
        COSBuildVersion version(row.file);
        EXPECT_STREQ(version.GetVersionString(), "Version 0.0.00  ") << row.line;
        EXPECT_EQ(version.Init(), row.read) << row.line;
        EXPECT_STREQ(version.GetVersionString(), row.text) << row.line;
        EXPECT_EQ(version.GetVersionMajorNumber(), row.numbers[0]) << row.line;
        EXPECT_EQ(version.GetVersionMinorNumber(), row.numbers[1]) << row.line;
        EXPECT_EQ(version.GetVersionMaintenanceNumber(), row.numbers[2]) << row.line;
        EXPECT_EQ(version.GetVersionPatchNumber(), row.numbers[3]) << row.line;
        EXPECT_EQ(version.GetVersionBuildNumber(), row.numbers[4]) << row.line;
        EXPECT_EQ(version.GetLCID(), row.language) << row.line;
    }
}

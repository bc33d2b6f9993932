// Names that only this system allows.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "osfile.h"

namespace fs = std::filesystem;

TEST(FileNames, ListsLeaveOutNamesThatAPathWouldTakeForSeveral) {
    fs::remove_all("names_test");
    fs::create_directories("names_test/top/d");
    fs::create_directories("names_test/top/..\\x");
    for (const char* name :
         {"secret", "top/..\\secret", "top/a\\b", "top/..\\x/f", "top/d/f", "top/g"})
        std::ofstream(fs::path("names_test") / name) << name;
    for (const unsigned char recurse : {0, 1}) {
        CGNStringList found(10, 10);
        EXPECT_EQ(OSGetFileList("names_test/top", "*", found, recurse, 1), 0);
        EXPECT_EQ(found.GetCount(), 1 + recurse);
        for (int i = 0; i < found.GetCount(); ++i) {
            EXPECT_TRUE(found.GetItem(i)->Find("secret", 0) < 0) << *found.GetItem(i);
        }
    }
    EXPECT_EQ(OSDeleteDirectoryTree("names_test/top"), 0);  // all of it, and nothing else
    EXPECT_FALSE(fs::exists("names_test/top"));
    EXPECT_TRUE(fs::exists("names_test/secret"));
    fs::remove_all("names_test");
}

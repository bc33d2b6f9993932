// Names that only this system allows.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "osfile.h"

namespace fs = std::filesystem;

TEST(Pipes, AreWrittenOnlyIfThereIsAReader) {
    constexpr char kPipe[] = "written_pipe";
    char bytes[] = "text", got[8] = "";
    fs::remove(kPipe);
    ASSERT_EQ(mkfifo(kPipe, 0600), 0);
    EXPECT_EQ(OSWriteBinaryFileContents(bytes, 4, kPipe, osOverwriteIfExists), 0);
    EXPECT_EQ(OSWriteBinaryFileContents(bytes, 4, kPipe, osAppendIfExists), 0);
    EXPECT_EQ(OSWriteFieldOffset(kPipe, bytes), 0);
    const int reader = open(kPipe, O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(OSWriteBinaryFileContents(bytes, 4, kPipe, osOverwriteIfExists), 4);
    EXPECT_EQ(read(reader, got, sizeof got), 4);
    close(reader);
    fs::remove(kPipe);
}

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

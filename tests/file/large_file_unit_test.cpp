// Files with more bytes than 31 and 32 bits count, nearly all of which are holes.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "gendiag.h"
#include "mbutil.h"
#include "osfile.h"
#include "osutil/platform/file/streams.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/reported_failures.h"

namespace {

constexpr std::int64_t k2Gb = std::int64_t{1} << 31, k4Gb = std::int64_t{1} << 32;

// Ends in a text; has so many bytes before it.
struct LargeFile {
    static constexpr char kPath[] = "large_file_test.bin";

    LargeFile(std::int64_t hole, const std::string& end) {
        std::ofstream file(kPath, std::ios::binary);
        file << "0123456789";
        file.seekp(hole);
        file << end;
    }
    ~LargeFile() { std::filesystem::remove(kPath); }
};

TEST(LargeFile, ReadsUpToTheTrailer) {
    const struct {
        int line;
        std::int64_t hole;
        const char* end;
        const char* contents;  // up to the length in the trailer
    } kRows[] = {
        {__LINE__, k2Gb - 10, "DATA:7", "0123456"},
        {__LINE__, k2Gb + 10, "DATA:7", "0123456"},
        {__LINE__, k4Gb + 1, "DATA:9", "012345678"},
        {__LINE__, k2Gb, "DATA:2147483648", ""},
        {__LINE__, k4Gb, "DATA:4294967301", ""},  // 5 in 32 bits
        {__LINE__, k4Gb, "DATA:-4294967291", ""},
        {__LINE__, k4Gb, "12345", ""},  // no trailer: all of the file, whose size is 5 in 32 bits
    };
    const ReportedFailures reported;
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.line);
        const LargeFile file(row.hole, row.end);
        char* buffer = nullptr;
        const int size = OSGetBinaryFileContentsWithFieldOffset(buffer, file.kPath, "DATA:");
        EXPECT_EQ(std::string(buffer ? buffer : ""), row.contents);
        EXPECT_EQ(static_cast<std::size_t>(size), std::string(row.contents).size());
        std::free(buffer);
        if (row.hole + static_cast<int>(std::string(row.end).size()) < k2Gb) continue;
        EXPECT_EQ(OSGetBinaryFileContents(buffer, file.kPath), 0);
        EXPECT_EQ(buffer, nullptr);
    }
    EXPECT_EQ(reported.Count(), 0);  // no such allocation was tried
}

TEST(LargeFile, AppendsAtTheEnd) {
    for (const std::int64_t hole : {k2Gb - 1, k4Gb - 2}) {
        const LargeFile file(hole, "ab");
        char text[] = "cd";
        EXPECT_EQ(OSWriteBinaryFileContents(text, 2, file.kPath, osAppendIfExists), 2);
        EXPECT_EQ(OSWriteFieldOffset(file.kPath, "ef"), 2);
        EXPECT_EQ(std::filesystem::file_size(file.kPath), static_cast<std::uint64_t>(hole + 6));
        std::ifstream end(file.kPath, std::ios::binary);
        end.seekg(hole);
        std::string read;
        end >> read;
        EXPECT_EQ(read, "abcdef");
        struct _stat status = {};
        if (OSFileStat(file.kPath, status) == 0)
            EXPECT_EQ(static_cast<std::int64_t>(status.st_size), hole + 6);
        else
            EXPECT_EQ(sizeof status.st_size, 4u);  // no room for it
    }
}

// The reader returns the rest of a line to the stream by its position.
TEST(LargeFile, ReadsLinesAtLargePositions) {
    const CodeSetGuard japanese(mbShiftJis);
    const LargeFile file(k4Gb + 3, "a\xA4\xA2\xA4\xA4\n");
    std::FILE* const stream = std::fopen(file.kPath, "rb");
    ASSERT_TRUE(stream && genutil::platform::GoTo(stream, k4Gb + 3));
    std::string text;
    char part[4];
    for (int i = 0; i < 2 && mbfgets(part, sizeof part, stream, mbEucJp); ++i)
        text += std::string(part) + '|';
    EXPECT_EQ(text, "a\x82\xA0|\x82\xA2\n|");
    EXPECT_EQ(genutil::platform::PlaceIn(stream), k4Gb + 9);
    std::fclose(stream);
}

}  // namespace

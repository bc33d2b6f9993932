// Patterns as Windows matches them, and files while memory runs out.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "mbutil.h"
#include "osutil.h"
#include "osutil/file/name_pattern.h"
#include "tests/support/allocation_gate.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/reported_failures.h"

namespace fs = std::filesystem;

TEST(NamePattern, MatchesLikeWindows) {
    const struct {
        int line;
        const char *pattern, *matching, *other;  // names, with blanks between them
    } kRows[] = {
        {__LINE__, "*", "a a.b .a . ..", ""},
        {__LINE__, "*.*", "a a.b .a . ..", ""},
        {__LINE__, "*.", "a abc", "a.b .a"},
        {__LINE__, "*.txt", "a.txt A.TXT .txt a.b.txt", "a a.txt.b atxt a.tx"},
        {__LINE__, "a*", "a abc A.b", "b ba .a"},
        {__LINE__, "a*z", "az abz a.z a.b.z", "a.zy a"},
        {__LINE__, "*a*b*c", "abc xaxbxc aabbc", "acb ab cab"},
        {__LINE__, "a.*", "a a.b a.b.c A.", "ab.c b.a"},
        {__LINE__, "*.b*", "a.b a.bc a.b.c", "ab b"},
        {__LINE__, "*.c*", "a.b.c a.c", "a.b b.d bc"},
        {__LINE__, "?", "a B", "ab a.b"},
        {__LINE__, "???", "a ab abc", "abcd a.b"},
        {__LINE__, "a?.txt", "a.txt ab.txt", "abc.txt b.txt a.b.txt"},
        {__LINE__, "a.?", "a a.b", "a.bc ab"},
        {__LINE__, "a?b", "axb", "ab a.b axxb"},
        {__LINE__, "name", "name NAME", "nam names name.x"},
        {__LINE__, "name.", "name", "name.x"},
        {__LINE__, "\x83\x5C*", "\x83\x5C \x83\x5C.x", "\\ \x83"},
        {__LINE__, "\x82\x81?", "\x82\x81 \x82\x60\x95\x5C", "\x82\x81\x95\x5C\x95\x5C"},
        {__LINE__, "\xB1\xFE", "\xB1\xFE", "\xB1 \xFE"},
    };
    const CodeSetGuard japanese(mbShiftJis);
    for (const auto& row : kRows)
        for (const bool expected : {true, false}) {
            std::istringstream names(expected ? row.matching : row.other);
            genutil::NamePattern pattern(row.pattern);
            for (std::string name; names >> name;)
                EXPECT_EQ(pattern.Matches(name.c_str()), expected) << row.line << ' ' << name;
        }
}

// Each allocation fails once: the call succeeds or returns an error, the failure is reported, and
// nothing else is removed.
TEST(FileMemory, FailedAllocationsAreReported) {
    const CodeSetGuard japanese(mbShiftJis);
    const fs::path top = fs::absolute("file_memory_test");
    const CGNString folder("file_memory_test"), pattern("*.x");
    const std::string longName(330, '\xB1');
    const std::function<bool()> calls[] = {
        [] {
            char* text;
            const bool read = OSGetFileContents(text, "file_memory_test/d/a") == 1;
            EXPECT_EQ(read, text != nullptr);
            std::free(text);
            return read;
        },
        [] {
            char* text;
            const bool read =
                OSGetFileContentsWithFieldOffset(text, "file_memory_test/d/a", "M") == 1;
            EXPECT_EQ(read, text != nullptr);
            std::free(text);
            return read;
        },
        [&] {
            CGNStringList list;
            const int result = OSGetFileList(folder, pattern, list, 1, 1);
            EXPECT_TRUE(result != 0 || list.GetCount() == 1) << "a file was lost";
            return list.GetCount() == 1;
        },
        [&] { return OSCreateDirectory(longName.c_str()) == osFileNotFound; },
        [] {
            CGNString name;
            const bool made = OSGetReportTempFileName("prefix", "qualifier", name);
            EXPECT_EQ(made, !name.IsEmpty());
            return made;
        },
        [] {
            OSRemovePatternFromDirectory("file_memory_test/d",
                                         [](CGNString& name) -> unsigned char {
                                             return name == "." || name == "b" || name == "sub";
                                         });
            return !fs::exists("file_memory_test/d/a") && !fs::exists("file_memory_test/d/sub/b.x");
        },
        [] { return OSRemoveDirectoryAndContents("file_memory_test/d/sub") == 0; },
        [] { return OSDeleteDirectoryTree("file_memory_test/d") == 0; },
    };
    int which = 0;
    for (const auto& call : calls) {
        SCOPED_TRACE(which++);
        for (int passing = 0;; ++passing) {
            ASSERT_LT(passing, 200);
            fs::create_directories(top / "d" / "sub");
            for (const char* name : {"kept", "d/a", "d/b", "d/sub/b.x"})
                if (!fs::exists(top / name)) std::ofstream(top / name) << "text M:4";
            const ReportedFailures reports;
            bool good, failed;
            {
                const AllocationGate gate(passing, 1);
                good = call();
                failed = gate.Count() > passing;
            }
            EXPECT_TRUE(fs::exists(top / "kept"));
            if (!failed) {
                EXPECT_TRUE(good || which == 4);
                break;
            }
            EXPECT_TRUE(good || reports.Count() > 0) << passing;
        }
    }
    fs::remove_all(top);
}

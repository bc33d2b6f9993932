// Trace: categories, the forms of a line, the file that starts over, many threads.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "gendiag.h"
#include "osfile.h"
#include "osthread.h"
#include "tests/support/temporary_file.h"
#include "tests/support/worker.h"
#include "tests/support/zone_guard.h"

namespace {

// With line ends of one byte and without the thread.
std::string Plain(std::string text) {
    std::erase(text, '\r');
    for (std::size_t at; (at = text.find("TID ")) != std::string::npos;)
        text.erase(at, text.find(":: ", at) + 3 - at);
    return text;
}

// A trace into a file of its own, without dates unless a test turns them on.
class FileTrace {
  public:
    explicit FileTrace(long maxSize = 0) {
        trace.Init();
        trace.ResetMask(0x0003);
        trace.DisableDateTime();
        CGNString path(file.Path());
        opened = trace.ResetOutput(1, path, maxSize);
    }
    std::string Lines() const { return Plain(file.Bytes()); }
    void ExpectOutput(char output, const CGNString& name, long size) const {
        char outputNow;
        CGNString nameNow;
        long sizeNow;
        trace.GetOutput(&outputNow, &nameNow, &sizeNow);
        EXPECT_EQ(outputNow, output);
        EXPECT_EQ(nameNow, name);
        EXPECT_EQ(sizeNow, size);
    }
    const TemporaryFile file;
    CGNTrace trace;
    bool opened;
};

TEST(Trace, WritesEnabledCategories) {
    static const struct {
        short setting, mask;
        bool enabled;
    } kRows[] = {{0x0003, 0x0001, true},  {0x0003, 0x0004, false}, {0x0003, 0x0007, true},
                 {0x0003, 0x0005, false}, {0x0003, 0, false},      {0, 0x0001, false},
                 {0x0100, -255, true},    {0x0002, -255, false},   {-255, -255, true}};
    for (const auto& row : kRows) {
        CGNTrace trace;
        trace.Init();
        trace.ResetMask(row.setting);
        EXPECT_FALSE(trace.IsEnabled(row.mask));  // no output yet
        trace.ResetOutput(2);
        EXPECT_EQ(trace.IsEnabled(row.mask), row.enabled) << row.setting << ' ' << row.mask;
        EXPECT_EQ(trace.GetTraceSetting(), row.setting);
    }
}

TEST(Trace, FormatsLines) {
    FileTrace t;
    CGNString path(t.file.Path());
    ASSERT_TRUE(t.trace.ResetOutput(3, path, 0));
    const CGNTraceFileLine here(7, "x");
    const std::string printed = Plain(Printed([&] {
        t.trace.WriteMsg(here, 1, "module", "%d and %s", 5, "text");
        t.trace.WriteMsg(here, 1, "", "no module");
        t.trace.WriteMsg(nullptr, 1, "m", "no position");
        t.trace.WriteMsg(here, 4, "m", "not enabled");
        t.trace.DisableFileLine();
        t.trace.WriteMsg(here, 1, "", "position off: 100%%");
    }));
    EXPECT_EQ(t.Lines(),
              "module : 5 and text : Line     7 in x\nno module : Line     7 in x\n"
              "m : no position\nposition off: 100%\n");
    EXPECT_EQ(printed,  // always with the separator
              "module : 5 and text : Line     7 in x\n : no module : Line     7 in x\n"
              "m : no position\n : position off: 100%\n");
}

TEST(Trace, LinesBeginWithTheDate) {
    FileTrace t;
    t.trace.EnableDateTime();
    const auto expected = [] {
        const std::time_t now = std::time(nullptr);
        char line[40];
        std::strftime(line, sizeof line, "%m/%d/%y %H:%M:%S :: m : dated\n", std::localtime(&now));
        return std::string(line);
    };
    const std::string before = expected();
    t.trace.WriteMsg(nullptr, 1, "m", "dated");
    const std::string line = t.Lines();
    EXPECT_TRUE(line == before || line == expected()) << line;
}

// The zone of the thread counts, and a change of it within a second.
TEST(Trace, DatesLinesInTheZoneOfTheThread) {
    OSSetThreaded();
    const ZoneGuard machine(nullptr);  // threads leave their zone to the process
    FileTrace t;
    t.trace.EnableDateTime();
    std::time_t before, after;
    do {
        t.trace.ResetOutput(0);
        std::remove(t.file.Path());
        CGNString path(t.file.Path());
        ASSERT_TRUE(t.trace.ResetOutput(1, path, 0));
        before = std::time(nullptr);
        for (const char* zone : {"UTC+0", "XYZ-9", "ABC+5", "XYZ-9"}) {
            Worker worker([&] {
                CGNLclSt::Instance()->Init(2);
                CGNLclSt::Instance()->SetLocalVariable("timezone", const_cast<char*>(zone));
                t.trace.WriteMsg(nullptr, 1, "", "%s", zone);
            });
        }
        after = std::time(nullptr);
    } while (before != after);
    std::string expected;
    for (const auto& [zone, hours] :
         {std::pair{"UTC+0", 0}, {"XYZ-9", 9}, {"ABC+5", -5}, {"XYZ-9", 9}}) {
        const std::time_t shifted = before + hours * 3600;
        char line[40];
        std::strftime(line, sizeof line, "%m/%d/%y %H:%M:%S :: ", std::gmtime(&shifted));
        expected += line + std::string(zone) + "\n";
    }
    EXPECT_EQ(t.Lines(), expected);
}

// Four zones at once: every line has the time of its thread's zone.
TEST(Trace, DatesLinesOfConcurrentThreads) {
    OSSetThreaded();
    const ZoneGuard machine(nullptr);
    static const struct {
        const char* zone;
        int seconds;
    } kZones[] = {{"UTC+0", 0}, {"XYZ-9", 32400}, {"ABC+5", -18000}, {"NPT-5:45", 20700}};
    FileTrace t;
    t.trace.EnableDateTime();
    const std::time_t before = std::time(nullptr);
    AtTheSameTime(4, [&](int i) {
        CGNLclSt::Instance()->Init(2);
        CGNLclSt::Instance()->SetLocalVariable("timezone", const_cast<char*>(kZones[i].zone));
        for (int line = 0; line < 500; ++line) t.trace.WriteMsg(nullptr, 1, "", "%d", i);
    });
    const std::time_t after = std::time(nullptr);
    std::istringstream lines(t.Lines());
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        const auto& zone = kZones[line.back() - '0'];
        bool isOfZone = false;
        for (std::time_t at = before; at <= after && !isOfZone; ++at) {
            const std::time_t shifted = at + zone.seconds;
            char expected[40];
            std::strftime(expected, sizeof expected,
                          "%m/%d/%y %H:%M:%S :: ", std::gmtime(&shifted));
            isOfZone = line.compare(0, 21, expected) == 0;
        }
        ASSERT_TRUE(isOfZone) << line << " in " << zone.zone;
    }
    EXPECT_EQ(count, 2000);
}

TEST(Trace, KeepsTheErrorsOfItsCaller) {
    FileTrace t;
    errno = 42;
    t.trace.WriteMsg("p", 1, "m", "%s", std::string(5000, 'x').c_str());
    EXPECT_EQ(errno, 42);
}

TEST(Trace, WritesLongMessages) {
    FileTrace t;
    std::string expected;
    for (std::size_t length :
         {1000u, 1015u, 1016u, 1017u, 1018u, 1019u, 1020u, 1024u, 5000u, 1000000u}) {
        const std::string text(length, 'x');
        t.trace.WriteMsg("p", 1, "m", "%s", text.c_str());
        expected += "m : " + text + " : p\n";
    }
    EXPECT_EQ(t.Lines(), expected);
}

TEST(Trace, StartsOverWhenTheFileIsFull) {
    FileTrace t;
    const auto write = [&](CGNTrace& trace, const char* text) {
        trace.WriteMsg(nullptr, 1, "m", "%s", text);
        return t.Lines();
    };
    EXPECT_EQ(write(t.trace, "1"), "m : 1\n");
    const long size = static_cast<long>(t.file.Bytes().size());
    t.trace.ResetSize(size + 1);
    EXPECT_EQ(write(t.trace, "2"), "m : 1\nm : 2\n");
    t.trace.ResetSize(2 * size);  // which it has
    EXPECT_EQ(write(t.trace, "3"), "m : 3\n");
    t.trace.ResetSize(0);
    EXPECT_EQ(write(t.trace, "4"), "m : 3\nm : 4\n");
    t.trace.ResetSize(sizeof(long) > 4 ? static_cast<long>(1LL << 31) : 2147483647L);
    EXPECT_EQ(write(t.trace, "4b"), "m : 3\nm : 4\nm : 4b\n") << "no limit is negative";
    // A file that was full before it was opened starts over as well.
    CGNTrace second;
    second.Init();
    second.ResetMask(1);
    second.DisableDateTime();
    CGNString path(t.file.Path());
    ASSERT_TRUE(second.ResetOutput(1, path, 5));
    EXPECT_EQ(write(second, "5"), "m : 5\n");
}

TEST(Trace, SwitchesOutputsAndFiles) {
    FileTrace t;
    ASSERT_TRUE(t.opened);
    CGNString path(t.file.Path()), none, missing("no/such/folder/log");
    const auto write = [&](const char* text) { t.trace.WriteMsg(nullptr, 1, "m", "%s", text); };
    write("kept");
    FILE* const open = t.trace.GetTraceFile();
    EXPECT_TRUE(t.trace.ResetOutput(3, path, 100));
    EXPECT_EQ(t.trace.GetTraceFile(), open);  // the same name keeps the file
    EXPECT_TRUE(t.trace.ResetOutput(1));
    EXPECT_FALSE(t.trace.ResetOutput(1, none, 5));
    t.ExpectOutput(1, path, 100);

    // A file that does not open: output and size are stored, lines are dropped, and trying again
    // tries to open.
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(t.trace.ResetOutput(1, missing, 7), i == 1) << "the same name is accepted";
        EXPECT_EQ(t.trace.GetTraceFile(), nullptr);
        write("dropped");
        t.ExpectOutput(1, missing, 7);
        EXPECT_FALSE(t.trace.ResetOutput(1));
    }
    // A file that opens later gets the lines from then on.
    const TemporaryFile late;
    const CGNString folder((std::string(late.Path()) + ".d").c_str());
    CGNString inFolder(folder);
    inFolder += "/log";
    EXPECT_FALSE(t.trace.ResetOutput(1, inFolder, 0));
    write("too early");
    OSCreateDirectory(folder);
    write("in time");
    EXPECT_NE(t.trace.GetTraceFile(), nullptr);
    t.trace.ResetOutput(0);
    OSDeleteDirectoryTree(folder);

    EXPECT_TRUE(t.trace.ResetOutput(1, path, 0));
    write("appended");
    for (const char off : {2, 0}) {  // either closes the file
        EXPECT_TRUE(t.trace.ResetOutput(1, path, 100));
        EXPECT_TRUE(t.trace.ResetOutput(off));
        EXPECT_EQ(t.trace.GetTraceFile(), nullptr);
        t.ExpectOutput(off, none, 0);
    }
    write("off");
    EXPECT_EQ(t.Lines(), "m : kept\nm : appended\n");
}

// Of a file that starts over the last lines are left, which are whole.
TEST(Trace, ThreadsLoseAndMixNoLines) {
    OSSetThreaded();
    constexpr int kThreads = 8;
    for (const long maxSize : {0L, 1L}) {  // the second starts over with each line
        const int lines = maxSize == 0 ? 12500 : 1000;
        FileTrace t(maxSize);
        AtTheSameTime(kThreads, [&](int number) {
            for (int i = 0; i < lines; ++i)
                t.trace.WriteMsg("end", 1, "thread", "%d %d %*d", number, i, i % 50 + 1, i);
        });
        std::vector<int> next(kThreads, 0);
        std::istringstream file(t.file.Bytes());
        for (std::string line; std::getline(file, line);) {
            int id, number, i;
            ASSERT_EQ(std::sscanf(line.c_str(), "TID %d :: thread : %d %d", &id, &number, &i), 3);
            char expected[200];
            std::snprintf(expected, sizeof expected, "TID %d :: thread : %d %d %*d : end", id,
                          number, i, i % 50 + 1, i);
            if (line.back() == '\r') line.pop_back();
            ASSERT_EQ(line, expected);
            int& expectedNext = next.at(static_cast<std::size_t>(number));
            ASSERT_TRUE(i == expectedNext || (maxSize != 0 && expectedNext == 0));
            expectedNext = i + 1;
        }
        for (int count : next) EXPECT_TRUE(count == lines || maxSize != 0) << count;
    }
}

TEST(Trace, ProcessHasOneTrace) {
    CGNGlobalTrace* trace = CGNGlobalTrace::Instance();
    EXPECT_EQ(CGNGlobalTrace::Instance(), trace);
    EXPECT_FALSE(trace->IsEnabled(1));
    CGNGlobalTrace::Free();
    CGNGlobalTrace::Free();
    EXPECT_NE(CGNGlobalTrace::Instance(), nullptr);
    CGNGlobalTrace::Free();
}

}  // namespace

// Trace: categories, the forms of a line, the file that starts over, many threads.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "gendiag.h"
#include "osthread.h"
#include "tests/support/temporary_file.h"

namespace {

// A trace into a file of its own, without dates and positions unless a test turns them on.
class FileTrace {
  public:
    explicit FileTrace(long maxSize = 0) {
        trace.Init();
        trace.ResetMask(0x0003);
        trace.DisableDateTime();
        CGNString path(file.Path());
        opened = trace.ResetOutput(1, path, maxSize);
    }
    // What is in the file, with line ends of one byte and without the thread.
    std::string Lines() const {
        std::string text = file.Bytes();
        std::erase(text, '\r');
        for (std::size_t at; (at = text.find("TID ")) != std::string::npos;)
            text.erase(at, text.find(":: ", at) + 3 - at);
        return text;
    }
    const TemporaryFile file;
    CGNTrace trace;
    bool opened;
};

TEST(Trace, CategoriesDecide) {
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

TEST(Trace, FormsOfALine) {
    FileTrace t;
    const CGNTraceFileLine here(7, "x");
    EXPECT_STREQ(here, "Line     7 in x");
    t.trace.WriteMsg(here, 1, "module", "%d and %s", 5, "text");
    t.trace.WriteMsg(here, 1, "", "no module");
    t.trace.WriteMsg(nullptr, 1, "m", "no position");
    t.trace.WriteMsg(here, 4, "m", "not enabled");
    t.trace.DisableFileLine();
    t.trace.WriteMsg(here, 1, "m", "position off");
    t.trace.WriteMsg(here, 1, "m", "no arguments: 100%%");
    EXPECT_EQ(t.Lines(),
              "module : 5 and text : Line     7 in x\n"
              "no module : Line     7 in x\n"
              "m : no position\n"
              "m : position off\n"
              "m : no arguments: 100%\n");
}

TEST(Trace, LinesBeginWithTheDate) {
    FileTrace t;
    t.trace.EnableDateTime();
    t.trace.WriteMsg(nullptr, 1, "m", "dated");
    const std::string line = t.Lines();
    ASSERT_EQ(line.size(), std::string("11/21/26 09:30:12 :: m : dated\n").size());
    std::string shape = line;
    for (char& c : shape)
        if (c >= '0' && c <= '9') c = '0';
    EXPECT_EQ(shape, "00/00/00 00:00:00 :: m : dated\n");
    EXPECT_LE(line.substr(0, 2), "12");
    EXPECT_LE(line.substr(3, 2), "31");
}

TEST(Trace, LongMessagesAreWhole) {
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

TEST(Trace, StandardOutputAlwaysHasTheSeparator) {
    CGNTrace trace;
    trace.Init();
    trace.ResetMask(1);
    trace.DisableDateTime();
    ASSERT_TRUE(trace.ResetOutput(2));
    testing::internal::CaptureStdout();
    trace.WriteMsg("p", 1, "", "empty module");
    trace.WriteMsg("p", 1, "m", "module");
    std::string text = testing::internal::GetCapturedStdout();
    for (std::size_t at; (at = text.find("TID ")) != std::string::npos;)
        text.erase(at, text.find(":: ", at) + 3 - at);
    EXPECT_EQ(text, " : empty module : p\nm : module : p\n");
}

TEST(Trace, TheFileStartsOverWhenItIsFull) {
    FileTrace t(10);
    t.trace.WriteMsg(nullptr, 1, "m", "1234567890");
    t.trace.WriteMsg(nullptr, 1, "m", "again");
    EXPECT_EQ(t.Lines(), "m : again\n");
    t.trace.ResetSize(0);
    t.trace.WriteMsg(nullptr, 1, "m", "more");
    EXPECT_EQ(t.Lines(), "m : again\nm : more\n");
    // A file that was full before it was opened starts over as well.
    CGNTrace second;
    second.Init();
    second.ResetMask(1);
    second.DisableDateTime();
    CGNString path(t.file.Path());
    ASSERT_TRUE(second.ResetOutput(1, path, 5));
    second.WriteMsg(nullptr, 1, "m", "new");
    EXPECT_EQ(t.Lines(), "m : new\n");
}

TEST(Trace, OutputsAndFiles) {
    FileTrace t;
    ASSERT_TRUE(t.opened);
    CGNString path(t.file.Path()), none, missing("no/such/folder/log");
    t.trace.WriteMsg(nullptr, 1, "m", "kept");
    FILE* const open = t.trace.GetTraceFile();
    EXPECT_TRUE(t.trace.ResetOutput(3, path, 100));
    EXPECT_EQ(t.trace.GetTraceFile(), open);  // the same name keeps the file
    EXPECT_TRUE(t.trace.ResetOutput(1));
    EXPECT_FALSE(t.trace.ResetOutput(1, none, 5));
    char output;
    CGNString name;
    long size;
    t.trace.GetOutput(&output, &name, &size);
    EXPECT_EQ(output, 1);
    EXPECT_EQ(name, path);
    EXPECT_EQ(size, 100);

    // A file that does not open: output and size are stored, lines are dropped, and trying again
    // tries to open.
    EXPECT_FALSE(t.trace.ResetOutput(1, missing, 7));
    EXPECT_EQ(t.trace.GetTraceFile(), nullptr);
    t.trace.WriteMsg(nullptr, 1, "m", "dropped");
    t.trace.GetOutput(&output, &name, &size);
    EXPECT_EQ(output, 1);
    EXPECT_EQ(size, 7);
    EXPECT_FALSE(t.trace.ResetOutput(1, missing, 7));
    EXPECT_FALSE(t.trace.ResetOutput(1));
    EXPECT_TRUE(t.trace.ResetOutput(1, path, 0));
    t.trace.WriteMsg(nullptr, 1, "m", "appended");
    EXPECT_EQ(t.Lines(), "m : kept\nm : appended\n");

    EXPECT_TRUE(t.trace.ResetOutput(0));
    EXPECT_EQ(t.trace.GetTraceFile(), nullptr);
    t.trace.GetOutput(&output, &name, &size);
    EXPECT_EQ(output, 0);
    EXPECT_TRUE(name.IsEmpty());
    t.trace.WriteMsg(nullptr, 1, "m", "off");
    EXPECT_EQ(t.Lines(), "m : kept\nm : appended\n");
}

struct Writer {
    CGNTrace* trace;
    int number;
    int lines;
};

unsigned int WriteLines(void* argument) {
    const auto* writer = static_cast<const Writer*>(argument);
    for (int i = 0; i < writer->lines; ++i)
        writer->trace->WriteMsg("end", 1, "thread", "%d %d %.*s", writer->number, i, i % 50,
                                "01234567890123456789012345678901234567890123456789");
    return 0;
}

TEST(Trace, ManyThreadsLoseAndMixNothing) {
    OSSetThreaded();
    constexpr int kThreads = 8, kLines = 12500;
    FileTrace t;
    std::vector<Writer> writers;
    for (int i = 0; i < kThreads; ++i) writers.push_back({&t.trace, i, kLines});
    std::vector<_osthread*> threads;
    for (Writer& writer : writers) threads.push_back(OSThreadCreate(WriteLines, &writer, nullptr));
    for (_osthread* thread : threads) {
        ASSERT_NE(thread, nullptr);
        OSThreadTerminateWait(thread);
        OSThreadDestroy(thread);
    }
    std::vector<int> next(kThreads, 0);
    std::FILE* file = std::fopen(t.file.Path(), "r");
    ASSERT_NE(file, nullptr);
    char line[200], filling[100], end[10];
    while (std::fgets(line, sizeof line, file)) {
        int id, number, index;
        filling[0] = 0;
        const bool short_ =
            std::sscanf(line, "TID %d :: thread : %d %d  : %9s", &id, &number, &index, end) == 4;
        if (!short_) {
            ASSERT_EQ(std::sscanf(line, "TID %d :: thread : %d %d %99s : %9s", &id, &number, &index,
                                  filling, end),
                      5)
                << line;
        }
        ASSERT_TRUE(number >= 0 && number < kThreads);
        ASSERT_EQ(index, next[static_cast<std::size_t>(number)]++);
        ASSERT_STREQ(end, "end");
    }
    std::fclose(file);
    for (int count : next) EXPECT_EQ(count, kLines);
}

TEST(Trace, TheProcessHasOne) {
    CGNGlobalTrace* trace = CGNGlobalTrace::Instance();
    EXPECT_EQ(CGNGlobalTrace::Instance(), trace);
    EXPECT_FALSE(trace->IsEnabled(1));
    CGNGlobalTrace::Free();
    CGNGlobalTrace::Free();
    EXPECT_NE(CGNGlobalTrace::Instance(), nullptr);
    CGNGlobalTrace::Free();
}

}  // namespace

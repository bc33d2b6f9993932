// Stopwatches and cumulative times.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

#include "gendiag.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/temporary_file.h"

namespace {

std::string g_lines;
void Collect(const char* line) {
    g_lines += line;
}

// The lines that a stopwatch logs during and after `use`.
template <class Use>
std::string Logged(Use use) {
    g_lines.clear();
    {
        OSTime watch("label");
        watch.SetLogHandler(Collect);
        use(watch);
    }
    return g_lines;
}

struct Switched : OSTime {
    using OSTime::m_startTime;
};

class Timing : public testing::Test {
  protected:
    void TearDown() override {
        OSTime::EnableLog(0);
        OSSetPerf(0);
        CGNCummPerf::SetPerfCallBack(nullptr);
    }
};

TEST_F(Timing, FindsDifferencesInMilliseconds) {
    EXPECT_EQ(OSGetMsTimeDiff(10, 500000, 12, 250000), 1750);
    EXPECT_EQ(OSGetMsTimeDiff(12, 250000, 10, 500000), -1750);
    // Values that wrapped around at 32 bits.
    EXPECT_EQ(OSGetMsTimeDiff(5, 2147483000, 5, -2147483296), 1);
    EXPECT_EQ(OSGetMsTimeDiff(2147483647, 999000, -2147483647 - 1, 0), 1);
    long seconds, micro;
    OSGetTime(seconds, micro);
    EXPECT_LE(std::abs(seconds - static_cast<long>(std::time(nullptr))), 1);
    EXPECT_TRUE(micro >= 0 && micro < 1000000 && micro % 1000 == 0);
    const long since = OSGetMsTimeDiff(seconds, micro);
    EXPECT_TRUE(since >= 0 && since < 60000) << since;
}

TEST_F(Timing, ScalesPerformanceTimeTwice) {
    long seconds = 7, value = 8;
    OSPerfTime(seconds, value);
    EXPECT_EQ(seconds, 7);  // switched off: left alone
    EXPECT_EQ(value, 8);
    OSSetPerf(1);
    EXPECT_TRUE(OSGetPerf());
    OSPerfTime(seconds, value);
    const auto ticks = static_cast<unsigned>(value);
    EXPECT_EQ(value, static_cast<int>(ticks));
    // value is the milliseconds times 1000; modulo 2 to the 32 they can be told from the
    // seconds.
    const unsigned rest = ticks - static_cast<unsigned>(seconds) * 1000000u;
    EXPECT_LT(rest, 1000000u);
    EXPECT_EQ(rest % 1000, 0u);
}

TEST_F(Timing, LogsOnlyWhenSwitchedOn) {
    EXPECT_EQ(Logged([](OSTime& watch) { watch.Log("still off"), watch.VaLog("off"); }), "");
    {
        OSTime early;  // starts with its first line
        early.SetLogHandler(Collect);
        OSTime::EnableLog(1);
        early.Log();
        EXPECT_NE(g_lines.find(" : elapsed ms 0\n"), std::string::npos) << g_lines;
    }
    EXPECT_TRUE(OSTime::LogEnabled());
    std::string lines = Logged([](OSTime& watch) {
        watch.Log();
        watch.VaLog("%s %d", "part", 2);
        watch.SetVaTraceMsg("%s", "");
        watch.SetVaTraceMsg(nullptr);
        watch.Log();
        watch.Reset();
    });
    int time, elapsed, end = 0;
    ASSERT_EQ(std::sscanf(lines.c_str(),
                          "label : time %d : elapsed ms %d\npart 2 : time %*d : elapsed ms %*d\n"
                          "part 2 : time %*d : elapsed ms %*d\ntime %*d : elapsed ms %*d\n%n",
                          &time, &elapsed, &end),
              2)
        << lines;
    EXPECT_EQ(static_cast<std::size_t>(end), lines.size());
    EXPECT_TRUE(time >= 0 && time < 60 && elapsed >= 0 && elapsed < 60000);
    Switched::m_startTime = 5;
    OSTime::EnableLog(1);
    EXPECT_EQ(Switched::m_startTime, 5) << "no change, no new start";
    OSTime::EnableLog(0);
    EXPECT_GT(Switched::m_startTime, 5);
}

TEST_F(Timing, CutsLabelsAfterACharacter) {
    OSTime::EnableLog(1);
    const CodeSetGuard guard(5);
    std::string kanji;
    for (int i = 0; i < 600; ++i) kanji += "\x8A\xBF";
    const struct {
        std::string text;
        std::size_t length;
    } kRows[] = {{std::string(5000, 'x'), 1023}, {kanji, 1022}};
    for (const auto& row : kRows) {
        const auto label = [&](OSTime& watch) { watch.SetVaTraceMsg("%s", row.text.c_str()); };
        EXPECT_EQ(Logged(label).find(' '), row.length);
    }
}

TEST_F(Timing, WritesToThePerformanceFile) {
    const TemporaryFile file("old"), second;
    EXPECT_FALSE(CGNPerf::OpenFile("no/such/folder/file"));
    EXPECT_FALSE(OSTime::LogEnabled());
    ASSERT_TRUE(CGNPerf::OpenFile(file.Path()));
    { CGNPerf perf("one"); }
    ASSERT_TRUE(CGNPerf::ChangeFile(second.Path()));
    { CGNPerf perf(CGNString("two")); }
    CGNPerf::CloseFile();
    { CGNPerf dropped("three"); }
    EXPECT_EQ(file.Bytes().substr(0, 11), "one : time ");
    EXPECT_EQ(second.Bytes().substr(0, 11), "two : time ");
    EXPECT_EQ(second.Bytes().find("three"), std::string::npos);
}

using Notice = std::pair<bool, int>;  // whether there was a pair, and the code
std::vector<Notice> g_notices;

TEST_F(Timing, CountsNestedScopesOnce) {
    g_notices.clear();
    CGNCummPerf::SetPerfCallBack([](void* pair, int code) {
        g_notices.push_back({pair != nullptr, code});
    });
    OSSetPerf(1);
    long total = 5;
    {
        const CGNCummPerf outer(&total);
        EXPECT_EQ(total, -1);
        { const CGNCummPerf inner(&total); }
        EXPECT_EQ(total, -1);
        const CGNCummPerf none;
    }
    EXPECT_TRUE(total >= 5 && total < 60000) << total;
    EXPECT_EQ(g_notices, (std::vector<Notice>{{true, 55}, {false, 55}, {false, 66}, {true, 66}}));
    OSSetPerf(0);
    total = 9;
    { const CGNCummPerf off(&total); }
    EXPECT_EQ(total, 9);
}

}  // namespace

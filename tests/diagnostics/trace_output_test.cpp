// Trace: forms of lines that programs choose, files that are kept, sinks, the last lines, and the
// thread that writes.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>
#include <thread>
#include <vector>

#include "gendiag.h"
#include "mbutil.h"
#include "osfile.h"
#include "osthread.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/temporary_file.h"
#include "tests/support/worker.h"
#include "tests/support/zone_guard.h"

namespace {

constexpr char kFile = 1, kSink = 4, kMemory = 8;

std::string Bytes(const std::string& path) {
    std::string text;
    if (FILE* file = std::fopen(path.c_str(), "rb")) {
        for (int c; (c = std::getc(file)) != EOF;)
            if (c != '\r') text += static_cast<char>(c);
        std::fclose(file);
    }
    return text;
}

// Whether a text has a form in which # is any digit.
bool Fits(const std::string& text, const std::string& form) {
    if (text.size() != form.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (form[i] == '#' ? !isDigit : text[i] != form[i]) return false;
    }
    return true;
}

class TraceOutput : public testing::Test {
  protected:
    TraceOutput() : m_path(m_file.Path()) {
        m_trace.Init();
        m_trace.ResetMask(3);
        m_trace.DisableDateTime();
    }
    ~TraceOutput() override {
        m_trace.ResetOutput(0);
        for (int i = 1; i <= 4; ++i) std::remove(Older(i).c_str());
    }
    // The file, or an older one.
    std::string Older(int number) const {
        return m_file.Path() + (number > 0 ? "." + std::to_string(number) : "");
    }
    bool OpenFile(long size = 0) { return m_trace.ResetOutput(kFile, m_path, size); }
    // Lines of one letter in the form "{message}".
    void Write(const std::string& letters) {
        for (const char letter : letters) m_trace.WriteMsg(nullptr, 1, "m", "%c", letter);
    }
    std::string Letters(int number) const {
        std::string text = Bytes(Older(number));
        std::erase(text, '\n');
        return text;
    }

    TemporaryFile m_file;
    CGNString m_path;
    CGNTrace m_trace;
};

using TraceQueue = TraceOutput;
using TraceMemory = TraceOutput;

void Collect(const char* line, long length, void* text) {
    static_cast<std::string*>(text)->append(line, static_cast<std::size_t>(length));
}

TEST_F(TraceOutput, FormatsLinesAsTheProgramChooses) {
    const ZoneGuard zone("XYZ-5:30");
    std::string line;
    ASSERT_TRUE(m_trace.ResetSink(Collect, &line) && m_trace.ResetOutput(kSink));
    const std::string thread = std::to_string(OSGetCurrentThreadID());
    const struct {
        int row;
        const char* format;
        bool utc;
        std::string expected;
    } kRows[] = {
        {__LINE__, "{message}", false, "5 of x\n"},
        {__LINE__, "[{thread}] {module}|{mask}|{position}|{{%%{message}", false,
         "[" + thread + "] mod|1|here|{%5 of x\n"},
        {__LINE__, "%F %T.%L %z {message}", false, "20##-##-## ##:##:##.### +0530 5 of x\n"},
        {__LINE__, "%Y%m%d%H%M%S%L%y%z", true, "20#################+0000\n"},
        {__LINE__, "%D %R %s", true, "##/##/## ##:## ##########\n"},
    };
    for (const auto& row : kRows) {
        line.clear();
        EXPECT_TRUE(m_trace.ResetFormat(row.format, row.utc)) << row.row;
        m_trace.WriteMsg("here", 1, "mod", "%d of %s", 5, "x");
        EXPECT_TRUE(Fits(line, row.expected)) << row.row << ' ' << line;
    }
    for (const char* bad : {"%", "%q", "{", "{messages}", "{message}{message}", "a{thread", "%{"})
        EXPECT_FALSE(m_trace.ResetFormat(bad)) << bad;
    EXPECT_TRUE(m_trace.ResetFormat(nullptr));
    line.clear();
    m_trace.WriteMsg("here", 1, "", "default");
    EXPECT_EQ(line.substr(line.size() - 15), "default : here\n");
}

TEST_F(TraceOutput, WritesJsonInUtf8) {
    const CodeSetGuard guard(5);
    std::string line;
    m_trace.ResetSink(Collect, &line);
    m_trace.ResetOutput(kSink);
    ASSERT_TRUE(m_trace.ResetJson(1));
    m_trace.WriteMsg(nullptr, 2, "m\"", "\x8A\xBF\x83\x5C\t%s", std::string(3000, 'x').c_str());
    EXPECT_TRUE(Fits(line.substr(0, 35), "{\"time\":\"20##-##-##T##:##:##.###Z\",")) << line;
    EXPECT_NE(line.find("Z\",\"thread\":"), std::string::npos);
    const std::string end = ",\"mask\":2,\"module\":\"m\\\"\",\"message\":\"\u6F22\u30BD\\t" +
                            std::string(3000, 'x') + "\"}\n";
    EXPECT_EQ(line.substr(line.find(",\"mask\"")), end);
}

TEST_F(TraceOutput, AdmitsModules) {
    const struct {
        const char *modules, *expected;
    } kRows[] = {{"a", "a"},       {"a,bc", "abc"},  {"bc", "bc"},
                 {"b", ""},        {"-a", "bcnone"}, {"-a,bc", "none"},
                 {"-", "abcnone"}, {"", "abcnone"},  {nullptr, "abcnone"}};
    std::string lines;
    m_trace.ResetSink(Collect, &lines);
    m_trace.ResetOutput(kSink);
    m_trace.ResetFormat("{message}");
    for (const auto& row : kRows) {
        ASSERT_TRUE(m_trace.ResetModules(row.modules));
        lines.clear();
        for (const char* module : {"a", "bc", ""})
            m_trace.WriteMsg(nullptr, 1, module, "%s", *module ? module : "none");
        std::erase(lines, '\n');
        EXPECT_EQ(lines, row.expected) << (row.modules ? row.modules : "null");
    }
}

TEST_F(TraceOutput, KeepsFullFiles) {
    m_trace.ResetFormat("{message}");
    EXPECT_FALSE(m_trace.ResetRotation(-1));
    ASSERT_TRUE(m_trace.ResetRotation(2) && OpenFile(1));  // each line fills a file
    Write("ab");
    EXPECT_EQ(Letters(0) + Letters(1) + Letters(2), "ba");
    Write("cde");
    EXPECT_EQ(Letters(0) + Letters(1) + Letters(2) + Letters(3), "edc");
    // A file that another process renamed is left to it.
    std::rename(Older(0).c_str(), Older(4).c_str());
    const bool wasRenamed = !Letters(4).empty();  // not while it is open on Windows
    Write("f");
    EXPECT_EQ(Letters(0) + Letters(1), wasRenamed ? "fd" : "fe");
    // A file that cannot be renamed grows.
    const CGNString folder(Older(1).c_str());
    std::remove(Older(1).c_str());
    OSCreateDirectory(folder);
    OSCreateDirectory(CGNString((Older(1) + "/x").c_str()));
    m_trace.ResetRotation(1);
    Write("gh");
    EXPECT_EQ(Letters(0), "fgh");
    OSDeleteDirectoryTree(folder);
    m_trace.ResetRotation(0);
    Write("i");
    EXPECT_EQ(Letters(0) + Letters(1), "i");
}

TEST_F(TraceOutput, StartsAFileEachDay) {
    const ZoneGuard zone("UTC0");
    m_trace.ResetFormat("{message}");
    ASSERT_TRUE(m_trace.ResetRotation(3, 1) && OpenFile());
    Write("ab");
    EXPECT_EQ(Letters(0), "ab");
    // The day of the thread's zone changes when the zone moves by a day.
    const std::time_t now = std::time(nullptr);
    const bool isEarly = std::gmtime(&now)->tm_hour < 12;
    {
        const ZoneGuard elsewhere(isEarly ? "WWW+13" : "EEE-13");
        Write("cd");
        EXPECT_EQ(Letters(0) + "|" + Letters(1), "cd|ab");
    }
    Write("e");
    EXPECT_EQ(Letters(0) + "|" + Letters(1) + "|" + Letters(2), "e|cd|ab");
    // A file of today continues.
    CGNTrace second;
    second.ResetFormat("{message}");
    second.ResetRotation(3, 1);
    second.ResetMask(1);
    ASSERT_TRUE(second.ResetOutput(kFile, m_path, 0));
    second.WriteMsg(nullptr, 1, "", "f");
    EXPECT_EQ(Letters(0), "ef");
}

TEST_F(TraceQueue, LosesAndMixesNoLines) {
    EXPECT_TRUE(OSIsThreaded() || !m_trace.ResetAsync(1));
    OSSetThreaded();
    constexpr int kThreads = 4, kLines = 20000;
    m_trace.ResetFormat("{message}");
    for (const long size : {0L, 100000L}) {
        m_trace.ResetOutput(0);
        std::remove(m_file.Path());
        ASSERT_TRUE(m_trace.ResetRotation(size == 0 ? 0 : 1000) && OpenFile(size));
        ASSERT_TRUE(m_trace.ResetAsync(1));
        AtTheSameTime(kThreads, [&](int thread) {
            for (int i = 0; i < kLines; ++i) {
                m_trace.WriteMsg(nullptr, 1, "m", "%d %d %*d", thread, i, i % 50 + 1, i);
                if (i % 5000 == 4999) m_trace.ResetAsync(static_cast<char>(i % 10000 == 9999));
            }
        });
        m_trace.WriteMsg(nullptr, 1, "m", "%s", std::string(3000000, 'x').c_str());
        m_trace.Flush();
        std::vector<std::string> lines;
        int older = 0;
        while (!Bytes(Older(older + 1)).empty()) ++older;
        EXPECT_EQ(older > 0, size != 0);
        std::string text;
        for (; older >= 0; --older) {
            text += Bytes(Older(older));
            if (older > 0) std::remove(Older(older).c_str());
        }
        std::size_t at = 0;
        std::vector<std::vector<bool>> seen(kThreads, std::vector<bool>(kLines));
        for (int count = 0; count < kThreads * kLines; ++count) {
            const std::size_t end = text.find('\n', at);
            ASSERT_NE(end, std::string::npos) << count;
            const std::string line = text.substr(at, end - at);
            int thread, i;
            ASSERT_EQ(std::sscanf(line.c_str(), "%d %d", &thread, &i), 2);
            char expected[100];
            std::snprintf(expected, sizeof expected, "%d %d %*d", thread, i, i % 50 + 1, i);
            ASSERT_EQ(line, expected);
            ASSERT_FALSE(seen[static_cast<std::size_t>(thread)][static_cast<std::size_t>(i)]);
            seen[static_cast<std::size_t>(thread)][static_cast<std::size_t>(i)] = true;
            at = end + 1;
        }
        EXPECT_EQ(text.size() - at, 3000001u);
    }
}

// Everything at once, for the thread sanitizer: settings, names and lines.
TEST_F(TraceQueue, SettingsChangeWhileThreadsWrite) {
    OSSetThreaded();
    const TemporaryFile dump;
    CGNNamedMutexPool pool;
    ASSERT_TRUE(pool.Init() && m_trace.Init());
    m_trace.ResetOutput(kFile | kMemory, m_path, 500);
    int steps[3] = {};
    AtTheSameTime(4, [&](int thread) {
        for (int i = 0; i < 200; ++i) {
            const int name = i % 3;
            const CGNString text(std::to_string(name).c_str());
            if (!pool.WaitNamedMutex(text, 100000)) continue;
            ++steps[name];
            m_trace.WriteMsg("p", 1, "m", "%d", i);
            pool.ReleaseNamedMutex(text);
            if (i % 20 != 0) continue;
            const char even = i % 40 == 0;
            if (thread == 0) m_trace.ResetFormat(even ? "{message}" : nullptr);
            if (thread == 1) m_trace.ResetAsync(even);
            if (thread == 2) m_trace.ResetRotation(i % 3, even);
            if (thread == 3) CGNTrace::KeepLastLines(i % 5, dump.Path());
            if (even) CGNTrace::WriteLastLines();
        }
    });
    EXPECT_EQ(steps[0] + steps[1] + steps[2], 800);
    CGNTrace::KeepLastLines(0, nullptr);
}

// A sink that needs the writing thread, and one whose argument is released after it was replaced.
TEST_F(TraceQueue, LetsSinksEndIt) {
    OSSetThreaded();
    ASSERT_TRUE(OpenFile() && m_trace.ResetFormat("{message}") && m_trace.ResetAsync(1));
    m_trace.ResetSink(
        [](const char*, long, void* trace) { static_cast<CGNTrace*>(trace)->ResetAsync(0); },
        &m_trace);
    m_trace.ResetOutput(kFile | kSink);
    Write("a");
    EXPECT_EQ(Letters(0), "a");

    std::atomic<bool> isStopping = false, isLate = false;
    std::atomic<long> calls = 0;
    const auto count = [](const char*, long, void* counter) {
        ++**static_cast<std::atomic<long>**>(counter);
    };
    m_trace.ResetOutput(kSink);
    Worker writer([&] {
        while (!isStopping) Write("b");
    });
    for (int i = 0; i < 2000; ++i) {
        std::atomic<long> late = 0, *counter = &calls;
        m_trace.ResetSink(count, &counter);
        for (long before = calls; i % 100 == 0 && calls == before;) std::this_thread::yield();
        m_trace.ResetSink(nullptr, nullptr);
        counter = &late;
        if (i % 100 == 0) std::this_thread::yield();
        if (late != 0) isLate = true;
    }
    isStopping = true;
    writer.Join();
    EXPECT_FALSE(isLate);
}

TEST_F(TraceMemory, KeepsTheLastLines) {
    const TemporaryFile dump;
    std::remove(dump.Path());
    m_trace.ResetFormat("{message}");
    ASSERT_TRUE(m_trace.ResetOutput(kMemory));
    Write("x");
    EXPECT_FALSE(CGNTrace::KeepLastLines(-1, dump.Path()));
    EXPECT_FALSE(CGNTrace::KeepLastLines(1000001, dump.Path()));
    EXPECT_FALSE(CGNTrace::KeepLastLines(3, nullptr));
    ASSERT_TRUE(CGNTrace::KeepLastLines(3, dump.Path()));
    Write("abcde");
    CGNTrace::WriteLastLines();
    EXPECT_EQ(Bytes(dump.Path()), "Last lines:\nc\nd\ne\n");
    m_trace.WriteMsg(nullptr, 1, "", "%s", std::string(5000, 'y').c_str());
    CGNAssert::Free();
    CGNAssert::Instance()->SetNativeAssert(0);
    CGNAssert::Instance()->cgnassert(0, "file", 1);
    CGNAssert::Free();
    EXPECT_EQ(Bytes(dump.Path()), "Last lines:\nc\nd\ne\nLast lines before a failed assertion:\n" +
                                      std::string(499, 'y') + "\n");
    EXPECT_TRUE(CGNTrace::KeepLastLines(0, nullptr));
    Write("f");
    CGNTrace::WriteLastLines();
    EXPECT_EQ(Bytes(dump.Path()).find('f', 60), std::string::npos);
}

}  // namespace

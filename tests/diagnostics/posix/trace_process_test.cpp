// Traces at the end of a process: by exit(), by a crash, and in the child of a fork.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include "gendiag.h"
#include "osthread.h"
#include "tests/support/temporary_file.h"

namespace {

// Runs a function in a child process. Returns the status of wait().
int InChild(const std::function<void()>& act) {
    const pid_t child = fork();
    if (child == 0) {
        alarm(60);
        act();
        std::_Exit(9);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

class TraceProcess : public testing::Test {
  protected:
    TraceProcess() : m_path(m_file.Path()) {
        OSSetThreaded();
        m_trace->Init();
        m_trace->ResetMask(1);
        m_trace->ResetFormat("{message}");
    }
    ~TraceProcess() override { delete m_trace; }
    void Write(int lines) {
        for (int i = 0; i < lines; ++i) m_trace->WriteMsg(nullptr, 1, "", "%d", i);
    }

    TemporaryFile m_file;
    CGNString m_path;
    CGNTrace* m_trace = new CGNTrace;  // not destroyed in children
};

std::string Numbers(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += std::to_string(i) + "\n";
    return text;
}

TEST_F(TraceProcess, ExitLosesNoQueuedLine) {
    EXPECT_EQ(InChild([&] {
                  m_trace->ResetOutput(1, m_path, 0);
                  if (m_trace->ResetAsync(1)) Write(5000);
                  std::exit(0);
              }),
              0);
    EXPECT_EQ(m_file.Bytes(), Numbers(5000));
}

TEST_F(TraceProcess, ChildOfForkWritesAtOnce) {
    ASSERT_TRUE(m_trace->ResetOutput(1, m_path, 0) && m_trace->ResetAsync(1));
    Write(3000);
    EXPECT_EQ(InChild([&] {
                  m_trace->WriteMsg(nullptr, 1, "", "child");
                  m_trace->Flush();
                  delete m_trace;
                  std::_Exit(0);
              }),
              0);
    m_trace->ResetAsync(0);
    const std::string bytes = m_file.Bytes();
    EXPECT_EQ(bytes.size(), Numbers(3000).size() + 6) << "each line once";
    EXPECT_NE(bytes.find("child\n"), std::string::npos);
}

TEST_F(TraceProcess, CrashWritesTheLastLines) {
    const struct {
        const char* what;
        int signal;
        void (*crash)();
    } kRows[] = {
        {"abort", SIGABRT, [] { std::abort(); }},
        {"sent", SIGSEGV, [] { raise(SIGSEGV); }},
        {"access", SIGSEGV, [] { *reinterpret_cast<volatile int*>(std::size_t{64}) = 1; }},
    };
    for (const auto& row : kRows) {
        const TemporaryFile dump;
        const int status = InChild([&] {
            for (const int number : {SIGABRT, SIGSEGV}) signal(number, SIG_DFL);
            m_trace->ResetOutput(8);
            if (!CGNTrace::KeepLastLines(2, dump.Path()) || !CGNTrace::CatchCrashes()) return;
            Write(5);
            row.crash();
        });
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == row.signal) << row.what << status;
        EXPECT_EQ(dump.Bytes(), "Last lines before a crash:\n3\n4\n") << row.what;
    }
}

TEST_F(TraceProcess, ProcessesTakeTurnsToKeepFiles) {
    m_trace->ResetRotation(1000);
    InChild([&] {
        fork();
        fork();
        m_trace->ResetOutput(1, m_path, 1000);
        Write(5000);
        while (wait(nullptr) > 0) continue;
    });
    std::string path = m_file.Path();
    std::ptrdiff_t lines = 0;
    for (int older = 1; std::ifstream file{path}; ++older) {
        lines += std::count(std::istreambuf_iterator<char>(file), {}, '\n');
        if (older > 1) std::remove(path.c_str());
        path = m_file.Path() + ("." + std::to_string(older));
    }
    EXPECT_EQ(lines, 4 * 5000);
}

// Nearly all of the log is a hole.
TEST_F(TraceProcess, LogsBeyond4Gb) {
    constexpr std::streamoff k4Gb = std::streamoff{1} << 32;
    {
        std::ofstream file(m_file.Path(), std::ios::binary);
        file.seekp(k4Gb - 1);
        file << '\n';
    }
    ASSERT_TRUE(m_trace->ResetOutput(1, m_path, 0));
    Write(1);
    EXPECT_EQ(lseek(fileno(m_trace->GetTraceFile()), 0, SEEK_CUR), k4Gb + 2);
    m_trace->ResetRotation(1);
    m_trace->ResetSize(2147483647);
    Write(1);
    EXPECT_EQ(m_file.Bytes(), "0\n");
    std::remove((std::string(m_file.Path()) + ".1").c_str());
}

}  // namespace

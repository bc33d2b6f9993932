// Programs run, started and opened. The child is tests/child/process_child.cpp.
#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#endif

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "osutil.h"
#include "tests/support/code_set_guard.h"
#include "tests/support/texts.h"

namespace {

#ifdef _WIN32
extern "C" __declspec(dllimport) int __stdcall GetProcessHandleCount(void*, unsigned long*);

constexpr bool kWindows = true;
unsigned long CountHandles() {
    unsigned long count = 0;
    const std::intptr_t self = -1;
    GetProcessHandleCount(reinterpret_cast<void*>(self), &count);
    return count;
}
void Set(const char* name, const char* value) {
    _putenv(Join({name, "=", value}).c_str());
}
#else
constexpr bool kWindows = false;
unsigned long CountHandles() {
    const std::filesystem::directory_iterator handles("/proc/self/fd");
    return static_cast<unsigned long>(std::distance(begin(handles), end(handles)));
}
void Set(const char* name, const char* value) {
    setenv(name, value, 1);
}
#endif

std::string Child(const std::string& arguments) {
    return Join({"..\\process_child ", arguments});
}

struct ChildRun {
    std::string output;
    long code;
    explicit ChildRun(const std::string& arguments, const char* before = "") {
        CGNString text(before);
        code = OSRunSyncProcess(Child(arguments).c_str(), text);
        output = Bytes(text);
    }
};

TEST(Process, ReturnsOutputAndExitCode) {
    const struct {
        int line;
        const char *arguments, *output;
        long code;
    } kRows[] = {
        {__LINE__, "print out err 3", "outerr", 3},
        {__LINE__, "print out err", "outerr", 0},
        {__LINE__, "die 200", "", 200},
        {__LINE__, "slow 3", "012", 0},
        {__LINE__, "leave 5", "ab", 5},
        {__LINE__, "close 1500", "early", OS_STILL_ACTIVE},
        {__LINE__, "close 0", "early", kWindows ? OS_STILL_ACTIVE : 0},
    };
    for (const auto& row : kRows) {
        const ChildRun run(row.arguments, "before ");
        EXPECT_EQ(run.output, Join({"before ", row.output})) << row.line;
        // Windows asks at once, and may be ahead of a program that is ending; Wine keeps an output
        // open to the end.
        EXPECT_TRUE(run.code == row.code ||
                    (kWindows && (run.code == OS_STILL_ACTIVE || row.code == OS_STILL_ACTIVE)))
            << row.line << ' ' << run.code;
    }
}

TEST(Process, AppendsTheBytesOfTheOutput) {
    const CodeSetGuard shiftJis(mbShiftJis);
    const ChildRun bytes("bytes"), wide("wide 20001"), many("many 10", "x");
    EXPECT_EQ(bytes.output, std::string("a\0b\r\n\xff", 6));
    ASSERT_EQ(wide.output.size(), 40003u);
    EXPECT_EQ(wide.output.substr(39998), "\x82\xA0\x82\xA0x");
    EXPECT_EQ(many.output.size(), 1u + 10 * 1024 * 1024);
    EXPECT_EQ(many.output.find_first_not_of("x\n"), std::string::npos);
}

TEST(Process, SplitsArgumentsByTheQuotingRules) {
    const struct {
        int line;
        const char *arguments, *read;
    } kRows[] = {
        {__LINE__, "a b", "[a][b]"},
        {__LINE__, "  a \t b  ", "[a][b]"},
        {__LINE__, "\"a b\" \"\" c", "[a b][][c]"},
        {__LINE__, "a\\b\\\\c \\\\server\\", "[a\\b\\\\c][\\\\server\\]"},
        {__LINE__, "a\\\"b \"c\\\"d\" e\\\\\"f g\"", "[a\"b][c\"d][e\\f g]"},
        {__LINE__, "\"a\\\\\" b", "[a\\][b]"},
        {__LINE__, "\"a\"\"b c\" d", "[a\"b c][d]"},
        {__LINE__, "a\"b c\"d", "[ab cd]"},
        {__LINE__, "\"open to the end", "[open to the end]"},
        {__LINE__, "*.cpp ? $HOME ; | > &", "[*.cpp][?][$HOME][;][|][>][&]"},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(ChildRun(Join({"args ", row.arguments})).output, row.read) << row.line;
    CGNString output;
    EXPECT_EQ(OSRunSyncProcess("\"..\\process_child\" args quoted", output), 0);
    EXPECT_EQ(output, "[quoted]");
}

TEST(Process, ReportsProgramsThatCannotStart) {
    for (const char* line :
         {"no-such-program-here -x", "..\\no\\such\\program", "\"..\\pro cess\""}) {
        CGNString output("kept"), error;
        const long code = OSRunSyncProcess(line, output);
        EXPECT_TRUE(code == 2 || (kWindows && code == 3)) << line << ' ' << code;
        EXPECT_EQ(output, "kept");
        EXPECT_EQ(OSRunAsyncProcess(line, error), 0);
        EXPECT_FALSE(error.IsEmpty()) << line;
    }
    CGNString error;
    for (const char* line : {"", " \t", "\"\""}) {
        EXPECT_NE(OSRunSyncProcess(line, error), 0);
        EXPECT_EQ(OSRunAsyncProcess(line, error), 0);
    }
}

TEST(Process, AsyncRunDoesNotWait) {
    CGNString error("kept");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(OSRunAsyncProcess(Child("close 2000").c_str(), error), 1);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1900));
    EXPECT_EQ(error, "kept");
}

TEST(Process, ClosesAllHandles) {
    CGNString text;
    OSRunSyncProcess(Child("die").c_str(), text);
    const unsigned long before = CountHandles();
    for (int i = 0; i < (kWindows ? 20 : 300); ++i) {
        OSRunSyncProcess(Child("print a b").c_str(), text);
        OSRunSyncProcess("no-such-program-here", text);
        OSRunAsyncProcess(Child("die").c_str(), text);
    }
    EXPECT_LE(CountHandles(), before);
}

#ifndef _WIN32
// Signals begin no wait anew.
TEST(Process, SignalsDoNotExtendTheWait) {
    std::signal(SIGALRM, [](int) {});
    const itimerval often = {{0, 50000}, {0, 50000}}, never = {};
    const auto start = std::chrono::steady_clock::now();
    setitimer(ITIMER_REAL, &often, nullptr);
    const ChildRun run("close 3000");
    setitimer(ITIMER_REAL, &never, nullptr);
    EXPECT_EQ(run.code, OS_STILL_ACTIVE);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(2500));
}

// Signals that the caller ignores are not ignored in a program, and the end of its children is no
// business of the program's.
TEST(Process, StartsProgramsWithDefaultSignals) {
    for (const int ignored : {SIGCHLD, SIGTERM, SIGINT}) std::signal(ignored, SIG_IGN);
    CGNString output, error;
    const long code = OSRunSyncProcess("sh -c \"grep SigIgn /proc/self/status; exit 3\"", output);
    unsigned long long mask = ~0ULL;
    std::sscanf(output, "SigIgn: %llx", &mask);
    EXPECT_EQ(mask & 0x7FFFFFFF, 0u);  // those above belong to the C library
    EXPECT_EQ(code, OS_EXIT_CODE_UNKNOWN);
    EXPECT_EQ(OSRunAsyncProcess("true", error), 1);
    for (const int ignored : {SIGCHLD, SIGTERM, SIGINT}) std::signal(ignored, SIG_DFL);
    EXPECT_EQ(OSRunSyncProcess("sh -c \"exit 3\"", output), 3);
}

TEST(Process, ReportsProgramsThatCannotStartToThoseWhoIgnoreChildren) {
    CGNString error;
    std::signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(OSRunAsyncProcess("no-such-program", error), 0);
    EXPECT_FALSE(error.IsEmpty());
    std::signal(SIGCHLD, SIG_DFL);
}

TEST(Process, StartedProgramsAreNotChildren) {
    CGNString error;
    std::filesystem::remove("parent");
    ASSERT_EQ(OSRunAsyncProcess("sh -c \"echo $PPID > made; mv made parent\"", error), 1);
    while (!std::filesystem::exists("parent"))
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    pid_t parent = getpid();
    std::ifstream("parent") >> parent;
    EXPECT_NE(parent, getpid());
    std::filesystem::remove("parent");
}

TEST(Process, ReturnsTheSignalThatEndedAProgram) {
    CGNString output;
    EXPECT_EQ(OSRunSyncProcess("sh -c \"kill -9 $$\"", output), 128 + 9);
}

TEST(Process, OpensDocumentsWithTheSystemsProgram) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::absolute("opener");
    fs::remove_all(folder);
    fs::create_directories(folder);
    fs::copy_file("../process_child", folder / "xdg-open");
    const std::string log = (folder / "log").string(), path = std::getenv("PATH");
    Set("OPENED", log.c_str());
    Set("PATH", Join({folder.string(), ":", path}).c_str());
    std::ofstream("report.txt") << "text";
    for (const char* document : {"report.txt", "https://localhost/page"}) {
        fs::remove(log);
        EXPECT_NE(OSOpenFile(document), 0);
        std::string opened;
        for (int i = 0; i < 500 && opened.find(" in ") == opened.npos; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            std::ifstream read(log);
            std::getline(read, opened);
        }
        const std::string what = *document == 'r' ? fs::absolute(document).string() : document;
        EXPECT_EQ(opened, Join({what, " in ", fs::temp_directory_path().string()}));
    }
    EXPECT_EQ(OSOpenFile("--version:"), 0);
    std::ofstream(folder / "xdg-open.new") << "#!/bin/sh\nexit 4\n";
    fs::permissions(folder / "xdg-open.new", fs::perms::all);
    fs::rename(folder / "xdg-open.new", folder / "xdg-open");
    EXPECT_EQ(OSOpenFile("report.txt"), 0);
    Set("PATH", folder.parent_path().c_str());
    EXPECT_EQ(OSOpenFile("report.txt"), 0);
    Set("PATH", path.c_str());
    fs::remove_all(folder);
}
#endif

TEST(Process, FailsToOpenAMissingDocument) {
    EXPECT_EQ(OSOpenFile("..\\no such report.txt"), 0);
    // A file of that name in the temporary directory is another one.
    const auto planted = std::filesystem::temp_directory_path() / "planted.txt";
    std::ofstream(planted) << "text";
    EXPECT_EQ(OSOpenFile("planted.txt"), 0);
    std::filesystem::remove(planted);
}

#ifdef _WIN32
// A batch file is run by a shell, which splits its line by rules of its own.
TEST(Process, RefusesWhatABatchFileWouldReadOtherwise) {
    std::ofstream("tour.bat") << "@echo [%1]\r\n@exit 3\r\n";
    static const struct {
        const char* line;
        long code;
    } kRows[] = {{"tour.bat plain", 3},        {"\"tour.bat\" \"two words\"", 3},
                 {"tour.bat a&b", 160},        {"tour.bat \"a&b\"", 160},
                 {"TOUR.BAT. %PATH%", 160},    {"\"tour.bat \" a\\\"b", 160},
                 {"tour.bat \"a\"\"b\"", 160}, {"tour.bat a^b", 160}};
    for (const auto& row : kRows) {
        CGNString output, error;
        EXPECT_EQ(OSRunSyncProcess(row.line, output), row.code) << row.line;
        EXPECT_EQ(row.code == 3 || OSRunAsyncProcess(row.line, error) == 0, true) << row.line;
    }
    std::filesystem::remove("tour.bat");
}
#endif

TEST(Environment, ReplacesReferencesToVariables) {
    const std::string longest(255, 'v'), tooLong(300, 'v'), longName(300, 'n');
    Set("GN_A", "12345");
    Set("GN_EMPTY", "");
    Set("GN_SELF", "%GN_SELF%");
    Set("GN_REF", "[%GN_A%]");
    Set("GN_LONG", tooLong.c_str());
    Set(longName.substr(0, 255).c_str(), "cut");
    Set("GN\\B", "no path");
    const struct {
        int line;
        std::string text, expanded;
    } kRows[] = {
        {__LINE__, "%NOSUCH%", "%NOSUCH%"},
        {__LINE__, "", ""},
        {__LINE__, "100%", "100%"},
        {__LINE__, "%GN_A%x", "12345x"},
        {__LINE__, "a%GN_A%%GN_A%b%GN_A", "a1234512345b%GN_A"},
        // The search continues after an unknown name: its second sign begins no other.
        {__LINE__, "%NO%GN_A%", "%NO%GN_A%"},
        {__LINE__, "%%GN_A%%", "%%GN_A%%"},
        // A reference in a value is found only if the search continues before it.
        {__LINE__, "%GN_REF%", "[12345]"},
        {__LINE__, "%GN\\B%", "no path"},
        {__LINE__, "x%GN_LONG%", Join({"x", longest})},
        {__LINE__, Join({"%", longName, "%"}), "cut"},
    };
    for (const auto& row : kRows) {
        const CGNString text(row.text.c_str());
        EXPECT_EQ(Bytes(OSExpandEnvironmentVariables(text)), row.expanded) << row.line;
        EXPECT_EQ(Bytes(text), row.text);
    }
    EXPECT_EQ(Bytes(OSExpandEnvironmentVariables("%GN_SELF%")), "%GN_SELF%");
    std::string many, expanded;
    for (int i = 0; i < 3000; ++i) many += "%GN_ONE%,", expanded += "12345678,";
    Set("GN_ONE", "12345678");  // as long as the reference
    EXPECT_TRUE(Bytes(OSExpandEnvironmentVariables(many.c_str())) == expanded);
    EXPECT_EQ(Bytes(OSExpandEnvironmentVariables("%GN_EMPTY%|")), kWindows ? "%GN_EMPTY%|" : "|");
}

}  // namespace

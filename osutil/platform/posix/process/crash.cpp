#include "osutil/platform/process/crash.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <iterator>

#include "genutil/allocate.h"
#include "osutil/platform/posix/file/paths.h"

namespace genutil::platform {
namespace {

constexpr int kSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
constexpr std::size_t kCount = std::size(kSignals);

struct sigaction g_before[kCount];
std::atomic<void (*)()> g_report{nullptr};
std::atomic<long> g_reporter{0};  // the thread that reports
std::atomic<bool> g_isReported{false};

// Reports once. A thread that fails while another one reports gives that one time, because its own
// end ends the process. A failure of the report itself must not wait.
void Report() {
    const long self = syscall(SYS_gettid);
    long none = 0;
    if (g_reporter.compare_exchange_strong(none, self)) {
        g_report.load()();
        g_isReported = true;
        return;
    }
    constexpr timespec kMillisecond{0, 1000000};
    constexpr int kMostMilliseconds = 10000;
    for (int i = 0; none != self && !g_isReported && i < kMostMilliseconds; ++i)
        nanosleep(&kMillisecond, nullptr);
}

void OnSignal(int number, siginfo_t* info, void*) {
    const int error = errno;
    Report();
    for (std::size_t i = 0; i < kCount; ++i)
        if (kSignals[i] == number) sigaction(number, &g_before[i], nullptr);
    errno = error;
    // A fault of the processor happens again when this function returns. Another signal is sent
    // again.
    if (info->si_code <= 0) raise(number);
}

}  // namespace

bool CatchCrashes(void (*report)()) {
    if (g_report.exchange(report)) return true;
    // For a stack that has overflowed. Each thread needs its own; this is that of the caller.
    stack_t present;
    if (sigaltstack(nullptr, &present) == 0 && (present.ss_flags & SS_DISABLE)) {
        constexpr std::size_t kSize = 64 * 1024;
        if (void* memory = Allocate(kSize)) {
            stack_t stack{};
            stack.ss_sp = memory;
            stack.ss_size = kSize;
            if (sigaltstack(&stack, nullptr) != 0) Release(memory);
        }
    }
    struct sigaction action {};
    action.sa_sigaction = OnSignal;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    bool isDone = true;
    for (std::size_t i = 0; i < kCount; ++i)
        isDone = sigaction(kSignals[i], &action, &g_before[i]) == 0 && isDone;
    return isDone;
}

struct CrashFile {
    char* path;
};

CrashFile* NewCrashFile(const char* path) {
    const SystemPath name(path);
    if (!name.Get()) return nullptr;
    const std::size_t size = std::strlen(name.Get()) + 1;
    void* memory = Allocate(sizeof(CrashFile) + size);
    if (!memory) return nullptr;
    auto* text = static_cast<char*>(memory) + sizeof(CrashFile);
    std::memcpy(text, name.Get(), size);
    return new (memory) CrashFile{text};
}

std::intptr_t OpenCrashFile(const CrashFile* file) {
    return open(file->path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOCTTY, 0666);
}

void WriteCrashFile(std::intptr_t file, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t done = write(static_cast<int>(file), bytes, count);
        if (done <= 0 && errno != EINTR) return;
        if (done <= 0) continue;
        bytes += done;
        count -= static_cast<std::size_t>(done);
    }
}

void CloseCrashFile(std::intptr_t file) {
    if (file >= 0) close(static_cast<int>(file));
}

}  // namespace genutil::platform

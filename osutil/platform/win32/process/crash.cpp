#include "osutil/platform/process/crash.h"

#include <signal.h>

#include <atomic>
#include <cstring>
#include <cwchar>

#include "genutil/allocate.h"
#include "osutil/platform/win32/file/paths.h"
#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {
namespace {

using SignalHandler = void (*)(int);

std::atomic<void (*)()> g_report{nullptr};
std::atomic<DWORD> g_reporter{0};  // the thread that reports
std::atomic<bool> g_isReported{false};
LPTOP_LEVEL_EXCEPTION_FILTER g_filterBefore = nullptr;
SignalHandler g_abortBefore = SIG_DFL;

// Reports once. A thread that fails while another one reports gives that one time, because its own
// end ends the process. A failure of the report itself must not wait.
void Report() {
    const DWORD self = GetCurrentThreadId();
    DWORD none = 0;
    if (g_reporter.compare_exchange_strong(none, self)) {
        g_report.load()();
        g_isReported = true;
        return;
    }
    constexpr int kMostMilliseconds = 10000;
    for (int i = 0; none != self && !g_isReported && i < kMostMilliseconds; ++i) Sleep(1);
}

LONG WINAPI OnException(EXCEPTION_POINTERS* exception) {
    Report();
    return g_filterBefore ? g_filterBefore(exception) : EXCEPTION_CONTINUE_SEARCH;
}

// abort() is a call of the C runtime, which ends the process when this function returns.
void OnAbort(int number) {
    Report();
    signal(number, g_abortBefore);
    if (g_abortBefore != SIG_DFL && g_abortBefore != SIG_IGN) g_abortBefore(number);
}

}  // namespace

bool CatchCrashes(void (*report)()) {
    if (g_report.exchange(report)) return true;
    g_filterBefore = SetUnhandledExceptionFilter(OnException);
    const SignalHandler before = signal(SIGABRT, OnAbort);
    if (before != SIG_ERR) g_abortBefore = before;
    return before != SIG_ERR;
}

struct CrashFile {
    wchar_t* path;
};

CrashFile* NewCrashFile(const char* path) {
    const SystemPath name(path);
    if (!name.Get()) return nullptr;
    const std::size_t size = (std::wcslen(name.Get()) + 1) * sizeof(wchar_t);
    void* memory = Allocate(sizeof(CrashFile) + size);
    if (!memory) return nullptr;
    auto* text = reinterpret_cast<wchar_t*>(static_cast<char*>(memory) + sizeof(CrashFile));
    std::memcpy(text, name.Get(), size);
    return new (memory) CrashFile{text};
}

std::intptr_t OpenCrashFile(const CrashFile* file) {
    return reinterpret_cast<std::intptr_t>(
        CreateFileW(file->path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

void WriteCrashFile(std::intptr_t file, const char* bytes, std::size_t count) {
    DWORD done;
    if (file != -1 && count > 0)
        WriteFile(reinterpret_cast<HANDLE>(file), bytes, static_cast<DWORD>(count), &done, nullptr);
}

void CloseCrashFile(std::intptr_t file) {
    if (file != -1) CloseHandle(reinterpret_cast<HANDLE>(file));
}

}  // namespace genutil::platform

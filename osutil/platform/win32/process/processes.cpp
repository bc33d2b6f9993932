// Programs started with CreateProcess and documents with ShellExecuteEx.
#include "osutil/platform/process/processes.h"

#include "osutil/platform/file/path_units.h"
#include "osutil/platform/win32/file/paths.h"
#include "osutil/platform/win32/scoped_handle.h"

namespace genutil::platform {

namespace {

wchar_t* Wide(const PathUnits& units) {
    return reinterpret_cast<wchar_t*>(units.Get());
}

// The size of a pipe, and of one read from it.
constexpr DWORD kPipeSize = 16384;

// The two ends of a pipe. A program receives `write` and its duplicate. `read` is not inherited.
struct Pipe {
    ScopedObject read, write, writeDouble;

    // Returns 0 or the system's error code.
    DWORD Make() {
        SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
        ScopedObject inheritedRead;
        if (!CreatePipe(inheritedRead.Place(), write.Place(), &inherited, kPipeSize))
            return GetLastError();
        if (!Double(write, TRUE, &writeDouble) || !Double(inheritedRead, FALSE, &read))
            return GetLastError();
        return 0;
    }

  private:
    static bool Double(const ScopedObject& from, BOOL inherited, ScopedObject* to) {
        const HANDLE self = GetCurrentProcess();
        return DuplicateHandle(self, from.Get(), self, to->Place(), 0, inherited,
                               DUPLICATE_SAME_ACCESS) != 0;
    }
};

DWORD StartInto(const PathUnits& line, const Pipe& pipe, ScopedObject* process) {
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES | STARTF_USESHOWWINDOW;
    start.wShowWindow = SW_HIDE;
    start.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    start.hStdOutput = pipe.write.Get();
    start.hStdError = pipe.writeDouble.Get();
    PROCESS_INFORMATION child = {};
    if (!CreateProcessW(nullptr, Wide(line), nullptr, nullptr, TRUE,
                        CREATE_NEW_CONSOLE | CREATE_NEW_PROCESS_GROUP, nullptr, nullptr, &start,
                        &child))
        return GetLastError();
    const ScopedObject thread(child.hThread);
    *process->Place() = child.hProcess;
    return 0;
}

// Passes on output. Returns true if the output ended because the other end was closed.
bool ReadAll(HANDLE pipe, TakeOutput take, void* context) {
    char bytes[kPipeSize];
    DWORD got = 0;
    while (ReadFile(pipe, bytes, sizeof bytes, &got, nullptr)) {
        if (got == 0 || !take(context, bytes, got)) return false;
    }
    return GetLastError() == ERROR_BROKEN_PIPE;
}

}  // namespace

long RunProgram(const char* commandLine, TakeOutput take, void* context) {
    const PathUnits line(commandLine);
    if (!line.Get()) return ERROR_NOT_ENOUGH_MEMORY;
    Pipe pipe;
    ScopedObject process;
    DWORD error = pipe.Make();
    if (error) return static_cast<long>(error);
    error = StartInto(line, pipe, &process);
    pipe.write.Close();
    pipe.writeDouble.Close();
    if (error) return static_cast<long>(error);
    DWORD code = 1;
    if (!ReadAll(pipe.read.Get(), take, context))
        TerminateProcess(process.Get(), code);
    else if (!GetExitCodeProcess(process.Get(), &code))
        code = GetLastError();
    return static_cast<long>(code);
}

unsigned long StartProgram(const char* commandLine) {
    const PathUnits line(commandLine);
    if (!line.Get()) return ERROR_NOT_ENOUGH_MEMORY;
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION child = {};
    if (!CreateProcessW(nullptr, Wide(line), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                        &child))
        return GetLastError();
    const ScopedObject thread(child.hThread), process(child.hProcess);
    return 0;
}

void DescribeError(unsigned long error, char* out, std::size_t size) {
    wchar_t* text = nullptr;
    FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, error, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT),
        reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    NameText(text ? text : L"").CopyTo(out, size);
    LocalFree(text);
}

bool OpenDocument(const char* path) {
    const PathUnits document(path);
    wchar_t temporary[MAX_PATH + 1] = {};
    if (!document.Get() || GetTempPathW(MAX_PATH + 1, temporary) == 0) return false;
    SHELLEXECUTEINFOW request = {};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_NOCLOSEPROCESS;
    request.lpVerb = L"Open";
    request.lpFile = Wide(document);
    request.lpDirectory = temporary;
    request.nShow = SW_SHOWDEFAULT;
    const bool opened = ShellExecuteExW(&request) != 0;
    const ScopedObject process(request.hProcess);
    return opened;
}

bool ReadVariable(const char* name, char* out, std::size_t size) {
    const PathUnits wideName(name);
    wchar_t value[32767];  // the maximum length
    if (!wideName.Get()) return false;
    SetLastError(ERROR_SUCCESS);
    const DWORD length = GetEnvironmentVariableW(Wide(wideName), value, 32767);
    if ((length == 0 && GetLastError() != ERROR_SUCCESS) || length >= 32767) return false;
    const NameText text(value);
    text.CopyTo(out, size);
    return text.Get() != nullptr;
}

}  // namespace genutil::platform

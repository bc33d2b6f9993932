// Programs started with CreateProcess and documents with ShellExecuteEx.
#include "osutil/platform/process/processes.h"

#include <algorithm>
#include <string_view>

#include "genutil/allocate.h"
#include "osutil/platform/file/path_units.h"
#include "osutil/platform/win32/file/paths.h"
#include "osutil/platform/win32/scoped_handle.h"
#include "osutil/process/address.h"

namespace genutil::platform {

namespace {

wchar_t* Wide(const PathUnits& units) {
    return reinterpret_cast<wchar_t*>(units.Get());
}

// Returns true if a line starts a batch file with characters that mean more to the shell which runs
// it than to the quoting rules of programs. "&" in an argument would start another program.
bool ShellWouldReadMore(const wchar_t* line) {
    while (*line == L' ' || *line == L'\t') ++line;
    const bool quoted = *line == L'"';
    if (quoted) ++line;
    const std::wstring_view rest(line);
    const std::size_t end = std::min(rest.find_first_of(quoted ? L"\"" : L" \t"), rest.size());
    std::wstring_view name = rest.substr(0, end);
    // The system ignores blanks and dots at the end of a name.
    while (!name.empty() && (name.back() == L' ' || name.back() == L'.')) name.remove_suffix(1);
    const auto endsIn = [&](const wchar_t* extension) {
        return name.size() >= 4 && CompareStringOrdinal(name.data() + name.size() - 4, 4, extension,
                                                        4, TRUE) == CSTR_EQUAL;
    };
    if (!endsIn(L".bat") && !endsIn(L".cmd")) return false;
    const std::wstring_view arguments = rest.substr(end);
    return arguments.find_first_of(L"%!^&|<>\r\n") != arguments.npos ||
           arguments.find(L"\\\"") != arguments.npos ||
           arguments.find(L"\"\"", quoted ? 1 : 0) != arguments.npos;
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

// The handles that a program inherits. Others that are inheritable at this moment, such as those
// of another thread that starts a program, would stay open in it.
class InheritedHandles {
  public:
    void Add(HANDLE handle) {
        DWORD flags;
        if (handle && GetHandleInformation(handle, &flags) && (flags & HANDLE_FLAG_INHERIT))
            m_handles[m_count++] = handle;
    }
    // Returns false, with the last error, if the list cannot be made.
    bool Make() {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        m_memory.Reset(static_cast<char*>(Allocate(size)));
        auto* const list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_memory.Get());
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        if (!list || !InitializeProcThreadAttributeList(list, 1, 0, &size)) return false;
        m_list = list;
        return UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, m_handles,
                                         m_count * sizeof(HANDLE), nullptr, nullptr) != 0;
    }
    LPPROC_THREAD_ATTRIBUTE_LIST Get() const { return m_list; }
    InheritedHandles() = default;
    InheritedHandles(const InheritedHandles&) = delete;
    InheritedHandles& operator=(const InheritedHandles&) = delete;
    ~InheritedHandles() {
        if (m_list) DeleteProcThreadAttributeList(m_list);
    }

  private:
    HANDLE m_handles[3];
    std::size_t m_count = 0;
    Owned<char> m_memory;
    LPPROC_THREAD_ATTRIBUTE_LIST m_list = nullptr;
};

DWORD StartInto(const PathUnits& line, const Pipe& pipe, ScopedObject* process) {
    STARTUPINFOEXW extended = {};
    STARTUPINFOW& start = extended.StartupInfo;
    start.cb = sizeof extended;
    start.dwFlags = STARTF_USESTDHANDLES | STARTF_USESHOWWINDOW;
    start.wShowWindow = SW_HIDE;
    start.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    start.hStdOutput = pipe.write.Get();
    start.hStdError = pipe.writeDouble.Get();
    InheritedHandles handles;
    for (const HANDLE handle : {start.hStdInput, start.hStdOutput, start.hStdError})
        handles.Add(handle);
    if (!handles.Make()) return GetLastError();
    extended.lpAttributeList = handles.Get();
    PROCESS_INFORMATION child = {};
    if (!CreateProcessW(
            nullptr, Wide(line), nullptr, nullptr, TRUE,
            CREATE_NEW_CONSOLE | CREATE_NEW_PROCESS_GROUP | EXTENDED_STARTUPINFO_PRESENT, nullptr,
            nullptr, &start, &child))
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
    if (ShellWouldReadMore(Wide(line))) return ERROR_BAD_ARGUMENTS;
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
    if (ShellWouldReadMore(Wide(line))) return ERROR_BAD_ARGUMENTS;
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
    // The shell would look for a relative name in the temporary directory, where anybody can put a
    // file of that name.
    const SystemPath name(path);
    const bool isFile = name.Get() && GetFileAttributesW(name.Get()) != INVALID_FILE_ATTRIBUTES;
    const FullPath full(isFile ? Wide(document) : L"");
    if (isFile ? !full.Get() : !IsAddress(path)) return false;
    SHELLEXECUTEINFOW request = {};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_NOCLOSEPROCESS;
    request.lpVerb = L"Open";
    request.lpFile = isFile ? full.Get() : Wide(document);
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

// The machine as described by the system.
#include "osutil/platform/system/machine.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstring>

#include "osutil/platform/win32/file/paths.h"
#include "osutil/platform/win32/windows_api.h"

namespace genutil::platform {

unsigned long ProcessorType() {
    SYSTEM_INFO system = {};
    GetSystemInfo(&system);
    return system.dwProcessorType;
}

std::uint32_t ProcessId() {
    return GetCurrentProcessId();
}

// Uses the extended record if the system has it.
WindowsVersion ReadWindowsVersion() {
    OSVERSIONINFOEXA extended;
    std::memset(&extended, 0x30, sizeof extended);
    extended.dwOSVersionInfoSize = sizeof extended;
    auto* version = reinterpret_cast<OSVERSIONINFOA*>(&extended);
    if (!GetVersionExA(version)) {
        extended.dwOSVersionInfoSize = sizeof(OSVERSIONINFOA);
        if (!GetVersionExA(version)) return {};
    }
    return {true, extended.dwPlatformId, extended.dwMajorVersion, extended.dwMinorVersion};
}

// GetVersionEx reports the version that the program's manifest names.
void ReadSystemName(char* out, std::size_t size) {
    using GetVersion = LONG(WINAPI*)(OSVERSIONINFOW*);
    OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = sizeof version;
    const auto get = reinterpret_cast<GetVersion>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll"), "RtlGetVersion")));
    if (!get || get(&version) != 0) version = {};
    std::snprintf(out, size, "Windows %lu.%lu.%lu", version.dwMajorVersion, version.dwMinorVersion,
                  version.dwBuildNumber);
}

int CountProcessors() {
    DWORD_PTR allowed = 0, present = 0;
    if (!GetProcessAffinityMask(GetCurrentProcess(), &allowed, &present) || allowed == 0) return 1;
    return std::popcount(allowed);
}

std::uint64_t UsableMemory() {
    const std::uint64_t memory = ReadMemory().totalPhysical;
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION job = {};
    const bool limited = QueryInformationJobObject(nullptr, JobObjectExtendedLimitInformation, &job,
                                                   sizeof job, nullptr) &&
                         (job.BasicLimitInformation.LimitFlags & JOB_OBJECT_LIMIT_JOB_MEMORY);
    return limited ? std::min<std::uint64_t>(memory, job.JobMemoryLimit) : memory;
}

void ReadProgramPath(char* out, std::size_t size) {
    PathBuffer<wchar_t> buffer;
    constexpr DWORD kLongest = 32768;
    wchar_t* const path = buffer.Reserve(kLongest);
    const DWORD length = path ? GetModuleFileNameW(nullptr, path, kLongest) : 0;
    NameText(length > 0 && length < kLongest ? path : L"").CopyTo(out, size);
}

Memory ReadMemory() {
    MEMORYSTATUSEX status = {};
    status.dwLength = sizeof status;
    if (!GlobalMemoryStatusEx(&status)) return {};
    return {static_cast<std::uint32_t>(status.dwMemoryLoad),
            status.ullTotalPageFile,
            status.ullAvailPageFile,
            status.ullTotalPhys,
            status.ullAvailPhys,
            status.ullTotalVirtual,
            status.ullAvailVirtual};
}

void ReadHostName(char* out, std::size_t size) {
    out[0] = 0;
    WSADATA sockets;
    if (WSAStartup(MAKEWORD(1, 1), &sockets) != 0) return;
    if (gethostname(out, static_cast<int>(size)) != 0) out[0] = 0;
    out[size - 1] = 0;
    WSACleanup();
}

}  // namespace genutil::platform

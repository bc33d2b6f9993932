// The machine as described by the system.
#include "osutil/platform/system/machine.h"

#include <cstring>

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

bool ReadSystemName(char*, std::size_t) {
    return false;
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

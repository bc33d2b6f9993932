// The machine: processor, system, memory, name.
#include <algorithm>
#include <atomic>

#include "ossystem.h"
#include "osutil/platform/system/machine.h"

using namespace genutil;

namespace {

const char* ProcessorName(unsigned long type) {
    static constexpr struct {
        unsigned long type;
        const char* name;
    } kNames[] = {{386, "PC 80386"},
                  {486, "PC i486"},
                  {586, "PC Pentium"},
                  {4000, "MIPS R4000"},
                  {21064, "Alpha 21064"}};
    for (const auto& row : kNames)
        if (row.type == type) return row.name;
    return "Unknown";
}

bool IsPlatform(unsigned long platform) {
    const platform::WindowsVersion version = platform::ReadWindowsVersion();
    return version.known && version.platform == platform;
}

bool IsVersion(unsigned long major, unsigned long minor) {
    const platform::WindowsVersion version = platform::ReadWindowsVersion();
    return version.known && version.major == major && version.minor == minor;
}

bool MakesSense(std::uint64_t figure) {
    return figure != 0 && figure != UINT64_MAX && figure != UINT32_MAX;
}

}  // namespace

void OSInfo::GetHardware(CGNString& name) {
    name = ProcessorName(platform::ProcessorType());
}

// Programs compare these names, so later systems report the last one.
void OSInfo::GetOS(CGNString& name) {
    if (OSisWin95())
        name = "Windows 95";
    else if (OSisWin32s())
        name = "Win32s";
    else if (OSisWin2000())
        name = "Windows 2000";
    else if (OSisWinXP())
        name = "Windows XP";
    else
        name = "Windows NT or NT Server";
}

void OSInfo::GetSystem(CGNString& name) {
    char text[256];
    platform::ReadSystemName(text, sizeof text);
    name = text;
}

int OSInfo::GetProcessorCount() {
    return platform::CountProcessors();
}

std::uint64_t OSInfo::GetMemorySize() {
    return platform::UsableMemory();
}

unsigned char OSInfo::GetProgramPath(CGNString& path) {
    char text[4096];
    platform::ReadProgramPath(text, sizeof text);
    path = text;
    return !path.IsEmpty();
}

unsigned char OSInfo::OSisWin95() {
    return IsPlatform(1);
}
unsigned char OSInfo::OSisWin32s() {
    return IsPlatform(0);
}
unsigned char OSInfo::OSisWin2000() {
    return IsVersion(5, 0);
}
unsigned char OSInfo::OSisWinXP() {
    return IsVersion(5, 1);
}
unsigned char OSInfo::OSisWinVista() {
    return IsVersion(6, 0);
}

void OSGetMemoryStatus(OSMemoryStatus& status) {
    const platform::Memory memory = platform::ReadMemory();
    status = {memory.load, memory.totalPageFile, memory.availablePageFile};
}

long OSUtilPercentMemoryUsed() {
    static std::atomic<std::uint64_t> first{0};
    const platform::Memory memory = platform::ReadMemory();
    for (const std::uint64_t figure : {memory.totalPhysical, memory.availablePhysical,
                                       memory.totalVirtual, memory.availableVirtual})
        if (!MakesSense(figure)) return -1;
    std::uint64_t total = first.load(std::memory_order_relaxed);
    if (total == 0) {
        total = std::min(memory.totalPhysical, memory.totalVirtual);
        first.store(total, std::memory_order_relaxed);
    }
    const std::uint64_t left = std::min({memory.availablePhysical, memory.availableVirtual, total});
    return static_cast<long>(100 - left * 100 / total);
}

void OSGetHostnameNoDomain(char* name) {
    constexpr std::size_t kSize = 64;
    if (name) platform::ReadHostName(name, kSize);
}

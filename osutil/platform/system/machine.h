// What the library asks of an operating system about the machine. Texts are in the current code
// set.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil::platform {

// The system's number for the kind of the processor, 586 for a Pentium; 0 where it has none.
unsigned long ProcessorType();

// The number of this process: one that was forked has another.
std::uint32_t ProcessId();

// Of Windows; all numbers are 0 elsewhere.
struct WindowsVersion {
    bool known;
    unsigned long platform;  // 0 Win32s, 1 the consumer line, 2 the line of Windows NT
    unsigned long major, minor;
};
WindowsVersion ReadWindowsVersion();

// The name of a system that is not Windows; false on Windows.
bool ReadSystemName(char* out, std::size_t size);

// Bytes, and percent; all 0 when the system does not tell. The paging file is what programs can
// have in all, in memory and on disk.
struct Memory {
    std::uint32_t load;
    std::uint64_t totalPageFile, availablePageFile;
    std::uint64_t totalPhysical, availablePhysical;
    std::uint64_t totalVirtual, availableVirtual;  // of the address space of this process
};
Memory ReadMemory();

// At most size - 1 bytes; empty on failure.
void ReadHostName(char* out, std::size_t size);

}  // namespace genutil::platform

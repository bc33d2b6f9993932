// Platform layer: the machine. Texts are in the current code set.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil::platform {

// Returns the system's number for the processor type, 586 for a Pentium, or 0 if it has none.
unsigned long ProcessorType();

// Returns the number of this process. A forked process has its own.
std::uint32_t ProcessId();

// The version of Windows. All numbers are 0 on other systems.
struct WindowsVersion {
    bool known;
    unsigned long platform;  // 0 Win32s, 1 the consumer line, 2 the line of Windows NT
    unsigned long major, minor;
};
WindowsVersion ReadWindowsVersion();

// Stores the name and the version of the system.
void ReadSystemName(char* out, std::size_t size);

// Returns the number of processors that this process can use, at least 1.
int CountProcessors();

// Returns the bytes of main memory that this process can use; 0 if unknown.
std::uint64_t UsableMemory();

// Stores the path of the program; empty on failure.
void ReadProgramPath(char* out, std::size_t size);

// Memory sizes in bytes, and load in percent; all 0 if the system does not provide them. The paging
// file is the total that programs can use, in memory and on disk.
struct Memory {
    std::uint32_t load;
    std::uint64_t totalPageFile, availablePageFile;
    std::uint64_t totalPhysical, availablePhysical;
    std::uint64_t totalVirtual, availableVirtual;  // of the address space of this process
};
Memory ReadMemory();

// Stores at most size - 1 bytes; empty on failure.
void ReadHostName(char* out, std::size_t size);

}  // namespace genutil::platform

// Platform layer: the last actions of a process that crashes.
#pragma once

#include <cstddef>
#include <cstdint>

namespace genutil::platform {

// Arranges that `report` is called once, on the thread that fails, when the process crashes: by an
// access outside its memory, an invalid instruction, a division by zero, or abort(). Whatever the
// process had arranged for this happens afterwards. Returns false if the system refuses.
bool CatchCrashes(void (*report)());

// A file that can be appended to in a crash. Its path was converted beforehand.
struct CrashFile;
CrashFile* NewCrashFile(const char* path);  // null if allocation fails or there is no path; stays

// These only call the system. A file that could not be opened is -1, and writing to it does
// nothing.
std::intptr_t OpenCrashFile(const CrashFile* file);
void WriteCrashFile(std::intptr_t file, const char* bytes, std::size_t count);
void CloseCrashFile(std::intptr_t file);

}  // namespace genutil::platform

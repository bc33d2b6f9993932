// What the library asks of an operating system about modules: the program, the libraries that are
// loaded into it, and resource libraries. Texts and paths are in the current code set. Memory that
// runs out is reported to the assertion service and fails the call.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genstring.h"

namespace genutil::platform {

// Where the system keeps a module. Null stands for the program.
using Module = void*;

// Loads a library for its resources. The same file gives the same module as long as it is loaded,
// and has to be freed as often. A path without a folder is looked for where the program lies and in
// the current folder; a name without a dot gets ".dll". Null when there is no such library.
Module LoadResourceLibrary(const char* path);
void FreeResourceLibrary(Module module);

// The string of a number: 16-bit characters without a terminator, at least one, which stay where
// they are while the module is loaded. Null when the module has none, or is none that has resources
// here; the program has some on Windows only. A number is taken modulo 65536. Any thread; asks no
// system on Linux.
const unsigned short* FindModuleString(Module module, unsigned id, std::size_t* count);

// The file of a module: one that LoadResourceLibrary gave, the program, or a library that runs in
// this process, by the handle with which the system loaded it or, on Linux, any address in it.
// Empty when it is none.
CGNString ModuleFile(Module module);

// Reads the version resource of any program or DLL into memory that the caller releases
// (allocate.h). Null when the file has none or cannot be read.
unsigned char* ReadVersionResource(const char* path, std::size_t* size);

// The characters that separate folders in a path.
extern const char* const kFolderSeparators;

}  // namespace genutil::platform

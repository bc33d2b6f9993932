// Platform layer: modules, which are the program, the libraries loaded into it, and resource
// libraries. Texts and paths are in the current code set. Failed allocations are reported to the
// assertion service and make the call fail.
#pragma once

#include <cstddef>
#include <cstdint>

#include "genstring.h"

namespace genutil::platform {

// The system's reference to a module. Null denotes the program.
using Module = void*;

// Loads a library for its resources. While a file is loaded, loading it again returns the same
// module, which must be freed as many times. A path without a directory is searched for in the
// program's directory and in the current directory. A name without a dot gets ".dll". Returns null
// if there is no such library.
Module LoadResourceLibrary(const char* path);
void FreeResourceLibrary(Module module);

// Returns the string with a number: at least one 16-bit character, without a terminator, valid
// while the module is loaded. Returns null if the module has no such string or has no resources
// here; the program has some on Windows only. A number is taken modulo 65536. May be called from
// any thread. Makes no system calls on Linux.
const unsigned short* FindModuleString(Module module, unsigned id, std::size_t* count);

// Returns the file of a module: a module returned by LoadResourceLibrary(), the program, or a
// library in this process, identified by its system handle or, on Linux, by any address in it.
// Returns an empty string for anything else.
CGNString ModuleFile(Module module);

// Reads the version resource of any program or DLL into memory that the caller releases
// (allocate.h). Returns null if the file has none or cannot be read.
unsigned char* ReadVersionResource(const char* path, std::size_t* size);

// The characters that separate directories in a path.
extern const char* const kFolderSeparators;

}  // namespace genutil::platform

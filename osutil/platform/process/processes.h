// Platform layer: other programs. Texts are in the current code set.
#pragma once

#include <cstddef>

namespace genutil::platform {

// Receives a piece of a program's output. Returning false terminates the program.
using TakeOutput = bool (*)(void* context, const char* bytes, std::size_t count);

// Runs a program in its own console or session, with the input of this process, and passes on its
// output until the program closes it. Returns the exit code, or kStillActive if the program still
// runs. Returns 1 if the output was not read to its end, or the system's error code if the program
// could not be started.
long RunProgram(const char* commandLine, TakeOutput take, void* context);
constexpr long kStillActive = 259;
constexpr long kUnknownExitCode = 260;  // Linux: the process ignores the ends of its children

// Starts a program that shares only the standard handles. Returns 0 or the system's error code.
unsigned long StartProgram(const char* commandLine);

// Stores the system's text for one of its error codes, truncated if it does not fit, or an empty
// text if there is none.
void DescribeError(unsigned long error, char* out, std::size_t size);

// Opens a document with its associated program, in the temporary directory.
bool OpenDocument(const char* path);

// Stores the value of an environment variable, truncated after the last character that fits.
// Returns false if it is not set.
bool ReadVariable(const char* name, char* out, std::size_t size);

}  // namespace genutil::platform

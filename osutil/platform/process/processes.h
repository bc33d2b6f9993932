// What the library asks of an operating system about other programs. Texts are in the current code
// set.
#pragma once

#include <cstddef>

namespace genutil::platform {

// Takes a piece of a program's output; false ends the program.
using TakeOutput = bool (*)(void* context, const char* bytes, std::size_t count);

// Runs a program in a console or session of its own, its input that of the process, and hands over
// what it prints until it closes its output: its exit code then, or kStillActive; 1 when the output
// was not read to its end; the system's error code when it did not start.
long RunProgram(const char* commandLine, TakeOutput take, void* context);
constexpr long kStillActive = 259;

// Starts a program that shares nothing but the standard handles. 0, or the system's error code.
unsigned long StartProgram(const char* commandLine);

// The system's text for one of its error codes, cut where it does not fit; empty when there is
// none.
void DescribeError(unsigned long error, char* out, std::size_t size);

// Opens a document with the program of its kind, in the temporary directory.
bool OpenDocument(const char* path);

// The value of a variable of the process, cut behind the last character that fits. False when it is
// not set.
bool ReadVariable(const char* name, char* out, std::size_t size);

}  // namespace genutil::platform

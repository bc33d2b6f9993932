// Command lines, split by the quoting rules of Windows programs. Pure.
#pragma once

#include <cstddef>

namespace genutil {

// Returns the maximum number of arguments in a line of so many bytes, including the final null
// pointer.
constexpr std::size_t MostArguments(std::size_t bytes) {
    return bytes / 2 + 2;
}

// Splits a line in place. The arguments refer to its bytes and are followed by a null pointer. The
// first is the program. Returns their number, or 0 if there is no program.
std::size_t SplitCommandLine(char* line, char** arguments);

}  // namespace genutil

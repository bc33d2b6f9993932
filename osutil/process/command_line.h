// Command lines by the quoting rules that Windows programs split theirs by. Pure.
#pragma once

#include <cstddef>

namespace genutil {

// How many arguments a line of so many bytes has at most, with the null pointer behind them.
constexpr std::size_t MostArguments(std::size_t bytes) {
    return bytes / 2 + 2;
}

// Splits a line in its own bytes, which become the arguments, and returns their number; a null
// pointer follows. The first is the program. 0 for a line without one.
std::size_t SplitCommandLine(char* line, char** arguments);

}  // namespace genutil

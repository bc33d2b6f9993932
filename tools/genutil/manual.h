// The manual page and the shell completion, generated from the help texts of the commands.
#pragma once

#include <cstddef>

#include "tools/genutil/command.h"

// Prints the page in the language of manual pages, for the section of programs.
void PrintManual(const Command* const* commands, std::size_t count);

// Prints the completion of commands and their options for bash.
void PrintCompletion(const Command* const* commands, std::size_t count);

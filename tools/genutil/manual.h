// The manual page and the completion of shells, made of what the commands say in their help.
#pragma once

#include <cstddef>

#include "tools/genutil/command.h"

// In the language of manual pages, for the section of programs.
void PrintManual(const Command* const* commands, std::size_t count);

// For bash: commands, and their options.
void PrintCompletion(const Command* const* commands, std::size_t count);

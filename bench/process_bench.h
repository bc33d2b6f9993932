// Functions that each system implements for process_bench.cpp.
#pragma once

#include <array>
#include <cstdio>

struct BenchCommand {
    const char *what, *command;
};
std::array<BenchCommand, 2> Commands();  // one does nothing, one writes 10 MB

std::FILE* OpenPipe(const char* command);
int ClosePipe(std::FILE* pipe);

// Functions that each system implements for file_bench.cpp.
#pragma once

#include <string>

// Reads a whole file with the system's own calls into memory, which it then releases.
bool ReadBare(const char* path);
